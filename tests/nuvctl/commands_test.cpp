// SPDX-License-Identifier: Apache-2.0
// The command line, run in this process.
#include <unistd.h>
#include <zlib.h>

#include <CLI/CLI.hpp>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <regex>

#include "nuv_platform/fake/fake_platform.hpp"
#include "tests/support/hex.hpp"
#include "tests/support/test.hpp"
#include "tests/support/vectors.hpp"
#include "tools/nuvctl/commands/command_line.hpp"
#include "tools/nuvctl/frames/capture_file.hpp"

namespace nuvctl {
namespace {

/// The exit status and what the tool writes, a tab for each newline. The text behind " < " is that
/// of the file behind the arguments; '' is an empty argument.
std::string outcome(const std::string& call) {
    const auto input = call.find(" < ");
    std::istringstream words("nuvctl " + call.substr(0, input));
    std::vector<std::string> arguments(std::istream_iterator<std::string>(words), {});
    std::ranges::replace(arguments, "''", "");
    if (input != std::string::npos) {
        std::ofstream(arguments.emplace_back("input.json")) << call.substr(input + 3);
    }
    std::vector<const char*> argv(arguments.size());
    std::ranges::transform(arguments, argv.begin(), [](const auto& text) { return text.c_str(); });
    std::ostringstream written;
    auto* const out = std::cout.rdbuf(written.rdbuf());
    auto* const err = std::cerr.rdbuf(written.rdbuf());
    const int status = run(static_cast<int>(argv.size()), argv.data());
    std::cout.rdbuf(out);
    std::cerr.rdbuf(err);
    std::string text = std::to_string(status) + "\n" + written.str();
    EXPECT_EQ(text.back(), '\n') << text;
    text.pop_back();
    std::ranges::replace(text, '\n', '\t');
    return text;
}

/// A folder of its own for a test, which is the current one, with the sample capture in it.
class CommandsInAFolder : public testing::Test {
protected:
    void SetUp() override {
        std::filesystem::create_directories(folder_);
        std::filesystem::current_path(folder_);
        std::filesystem::copy(NUV_SOURCE_DIR "/examples/stations.pcap", ".");
    }
    void TearDown() override {
        std::filesystem::current_path(testing::TempDir());
        std::filesystem::remove_all(folder_);
    }

    static std::string content(const std::string& name) {
        std::ifstream in(name, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    static void write(const std::string& name, const std::string& octets) {
        std::ofstream(name, std::ios::binary) << octets;
    }

private:
    const nuv::platform::FakePlatform platform_;
    const std::string folder_ =
        testing::TempDir() + "nuvctl_commands_" + std::to_string(::getpid());
};

TEST_F(CommandsInAFolder, AnswerAsListed) {
    for (const auto& [call, expected] : nuv::test::listed_cases("nuvctl_commands.tsv")) {
        EXPECT_EQ(outcome(call), expected) << call;
    }
    for (const auto& [call, lines] :
         {std::pair{"opclass", 27},

          {"decode --type btm_query,association_request stations.pcap", 8},
          {"decode --type btm_query --type association_request stations.pcap", 8}}) {
        const std::string text = outcome(call);
        EXPECT_EQ(std::ranges::count(text, '\t'), lines) << call;
    }
    // More than is read at once.
    std::string many;
    for (int line = 0; line < 5'000; ++line) {
        many += "{\"channel\":36}\n";
    }
    EXPECT_EQ(
        outcome("validate < " + many + "}"),
        "1\tnuvctl: input.json: line 5001: parse error: unallowed token at this point in JSON "
        "text");
}

TEST_F(CommandsInAFolder, ReadCompressedCaptures) {
    const auto compressed = [](const std::string& octets) {
        const std::unique_ptr<gzFile_s, int (*)(gzFile)> file(gzopen("member", "wb"), gzclose);
        gzwrite(file.get(), octets.data(), static_cast<unsigned>(octets.size()));
        gzflush(file.get(), Z_FINISH);
        return content("member");
    };
    const std::string plain = content("stations.pcap");
    const std::string whole = compressed(plain);
    std::string damaged = whole;
    char& checksum = damaged[damaged.size() - 8];
    checksum = static_cast<char>(~checksum);
    const std::string table = outcome("decode --summary stations.pcap").substr(1);
    for (const auto& [octets, expected] :
         {std::pair{whole, "0" + table},
          {compressed(plain.substr(0, 1000)) + compressed(plain.substr(1000)), "0" + table},
          {whole.substr(0, whole.size() - 1),
           "1\tnuvctl: input: record 9: the gzip data end too early" + table},
          {damaged, "1\tnuvctl: input: record 9: the gzip data are damaged" + table},
          {"\x1F\x8B", "1\tnuvctl: input: not a capture file: the gzip data end too early"}}) {
        write("input", octets);
        EXPECT_EQ(outcome("decode --summary input"), expected);
    }
}

TEST_F(CommandsInAFolder, SayWhatIsWrongWithACapture) {
    const std::string query = nuv::test::to_string(
        nuv::test::from_hex("D000 0000 020000000003 020000000002 020000000003 0000 0A06 02 10"));
    const auto ppi = [&](char link_type) {
        const std::string record = std::string({0, 0, 8, 0, link_type, 0, 0, 0}) + query;
        return capture_record(
            {}, {reinterpret_cast<const std::uint8_t*>(record.data()), record.size()});
    };
    write("ppi.pcap", capture_header(192) + ppi(1) + ppi(105) + ppi(1));
    EXPECT_EQ(
        outcome("decode --summary ppi.pcap"),
        "1\tnuvctl: ppi.pcap: record 1: PPI before link type 1, which is not IEEE 802.11 (105)\t"
        "action frames: btm_query 1");
    write("two.pcapng", nuv::test::to_string(nuv::test::from_hex(
                            "0A0D0D0A 1C000000 4D3C2B1A 01000000 FFFFFFFFFFFFFFFF 1C000000"
                            "01000000 14000000 69000000 FFFF0000 14000000"
                            "01000000 14000000 7F000000 FFFF0000 14000000")));
    EXPECT_EQ(
        outcome("decode two.pcapng"),
        "1\tnuvctl: two.pcapng: record 1: an interface has a type 127 different from the type "
        "of the first interface; extract one interface: tshark -r FILE -Y 'frame.interface_id "
        "== 0' -w ONE, then editcap -F pcap -T ieee-802-11 ONE ONE.pcap");
    write("other.pcap", capture_header(1));
    EXPECT_EQ(outcome("decode other.pcap"),
              "1\tnuvctl: other.pcap: link type 1 is none of IEEE 802.11 (105), Prism (119), "
              "radiotap (127), AVS (163), PPI (192)");
}

TEST_F(CommandsInAFolder, ReplaceAnOutputOnlyWhenItIsComplete) {
    const std::string json = outcome("decode stations.pcap").substr(2);
    write("a.json", json);
    write("refused.json", json + "{}");
    write("out", "old");
    std::filesystem::create_symlink("out", "link");
    std::filesystem::permissions("out", std::filesystem::perms(0640));
    for (const auto& [call, expected] :
         {std::pair{"encode --output a.json a.json",
                    "1\tnuvctl: a.json: the output is also an input"},
          {"encode --output link a.json out", "1\tnuvctl: link: the output is also an input"},
          {"encode --output out missing", "1\tnuvctl: missing: No such file or directory"},
          {"encode --output out refused.json", "1\tnuvctl: refused.json: line 1: type: missing"}}) {
        EXPECT_EQ(outcome(call), expected);
    }
    EXPECT_EQ(content("a.json"), json);
    EXPECT_EQ(content("out"), "old");
    EXPECT_EQ(outcome("encode --output link a.json"), "0");
    EXPECT_EQ(std::ranges::count(content("out"), '\n'), 8);
    EXPECT_EQ(std::filesystem::status("out").permissions(), std::filesystem::perms(0640));
    EXPECT_TRUE(std::filesystem::is_symlink("link"));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator("."), {}), 5);
}

TEST(Commands, ExplainWrongUsage) {
    for (const char* wrong :
         {"", "-x decode", "decode --pretty --summary x", "decode -x y",
          "decode --type probe_request x", "encode --format xml", "opclass x", "channel",
          "channel --band 5", "channel --frequency 5180000 --width 25",
          "address ::/0 --contains here"}) {
        EXPECT_TRUE(std::regex_match(
            outcome(wrong), std::regex("2\tnuvctl: .*\tRun with --help for more information.")))
            << outcome(wrong);
    }
    EXPECT_TRUE(
        std::regex_match(outcome("decode --help"), std::regex("0\t.*Example: nuvctl decode .*")));
}

/// The words of the command line: for "nuvctl" the subcommands and options, for each subcommand its
/// options, for each option its values.
using Words = std::map<std::string, std::set<std::string>>;

void add_words(const CLI::App& app, const std::string& name, Words& words) {
    for (const CLI::App* sub : app.get_subcommands({})) {
        const bool is_group = sub->get_name().empty();
        add_words(*sub, is_group ? name : sub->get_name(), words);
        if (!is_group) {
            words[name].insert(sub->get_name());
        }
    }
    for (const CLI::Option* option : app.get_options()) {
        for (const std::string& long_name : option->get_lnames()) {
            words[name].insert("--" + long_name);
            std::string type = option->get_type_name();  // "TEXT:{hex,pcap}"
            for (std::smatch value; std::regex_search(type, value, std::regex("[{,]([^,}]+)"));) {
                words["--" + long_name].insert(value[1]);
                type = value.suffix();
            }
        }
    }
}

Words words_of_parser() {
    Action action;
    Words words;
    add_words(*make_parser(action), "nuvctl", words);
    return words;
}

std::string tool_file(const std::string& name) {
    std::ifstream in(NUV_SOURCE_DIR "/tools/nuvctl/" + name);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// Calls `function` with each match.
void for_each_match(const std::string& text, const char* pattern, auto function) {
    const std::regex regex(pattern);
    for (std::sregex_iterator match(text.begin(), text.end(), regex), end; match != end; ++match) {
        function(*match);
    }
}

TEST(Commands, AreCompletedByBash) {
    Words words;
    for_each_match(tool_file("nuvctl.bash"), R"((-eq 1|--\w+|\w+)(?: \]|\))[^']*words='([^']*)')",
                   [&](const std::smatch& match) {
                       std::istringstream list(match[2]);
                       words[match[1] == "-eq 1" ? "nuvctl" : match[1].str()] = {
                           std::istream_iterator<std::string>(list), {}};
                   });
    EXPECT_EQ(words, words_of_parser());
}

TEST(Commands, StandInTheManual) {
    const std::string manual = tool_file("nuvctl.1");
    // The synopsis, the description and what holds for all.
    std::vector<Words> parts(1);
    std::string name = "nuvctl";
    for_each_match(manual, R"(\n\.Sh DESC|\n\.Ss (All)|\.Nm\n\.Cm (\w+)|Fl (-[a-z-]+))",
                   [&](const std::smatch& match) {
                       if (match[3].matched) {
                           parts.back()[name].insert("-" + match[3].str());
                       } else if (match[2].matched) {
                           parts.back()["nuvctl"].insert(name = match[2]);
                       } else {
                           parts.emplace_back();
                           name = "nuvctl";
                       }
                   });
    const std::regex special("[.+]");
    const std::set<std::string> for_all{"--help", "--help-all", "--version"};
    Words expected;
    for (const auto& [key, words] : words_of_parser()) {
        const auto item = manual.find("\n.It Fl " + key.substr(1));
        for (const std::string& word : words) {
            if (key.starts_with("--")) {
                const std::string text = manual.substr(item, manual.find("\n.It", item + 1) - item);
                EXPECT_TRUE(std::regex_search(
                    text, std::regex("\\b" + std::regex_replace(word, special, "\\$&") + "\\b")))
                    << key << word;
            } else if (!for_all.contains(word)) {
                expected[key].insert(word);
            }
        }
    }
    EXPECT_EQ(parts, (std::vector<Words>{expected, expected, {{"nuvctl", for_all}}}));
}

}  // namespace
}  // namespace nuvctl
