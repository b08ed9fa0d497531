// SPDX-License-Identifier: Apache-2.0
// The command line, run in this process.
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <regex>

#include "nuv_platform/fake/fake_platform.hpp"
#include "tests/support/test.hpp"
#include "tests/support/vectors.hpp"
#include "tools/nuvctl/commands/command_line.hpp"

namespace nuvctl {
namespace {

/// The exit status and what the tool writes, a tab for each newline. The text behind " < " is that
/// of the file behind the arguments.
std::string outcome(const std::string& call) {
    const auto input = call.find(" < ");
    std::istringstream words("nuvctl " + call.substr(0, input));
    std::vector<std::string> arguments(std::istream_iterator<std::string>(words), {});
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

TEST(Commands, AnswerAsListed) {
    const nuv::platform::FakePlatform platform;
    const auto folder = testing::TempDir() + "nuvctl_commands_" + std::to_string(::getpid());
    std::filesystem::create_directories(folder);
    std::filesystem::current_path(folder);
    std::filesystem::copy(NUV_SOURCE_DIR "/examples/stations.pcap", ".");
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
    std::filesystem::remove_all(folder);
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
    const std::set<std::string> for_all{"--help", "--help-all", "--version"};
    Words expected;
    for (const auto& [key, words] : words_of_parser()) {
        const auto item = manual.find("\n.It Fl " + key.substr(1));
        for (const std::string& word : words) {
            if (key.starts_with("--")) {
                const std::string text = manual.substr(item, manual.find("\n.It", item + 1) - item);
                EXPECT_TRUE(std::regex_search(text, std::regex("\\b" + word + "\\b")))
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
