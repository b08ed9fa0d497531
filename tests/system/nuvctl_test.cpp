// SPDX-License-Identifier: Apache-2.0
// The built nuvctl: its files, pipes and exit status.
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "tests/support/hex.hpp"
#include "tests/support/test.hpp"

namespace nuv::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

struct Outcome {
    int status;
    std::string out, err;
};

auto lines(const std::string& text) { return std::ranges::count(text, '\n'); }

/// Each test has a folder of its own, with the sample capture in it.
class Nuvctl : public testing::Test {
protected:
    void SetUp() override {
        std::filesystem::create_directories(folder_);
        std::filesystem::copy(NUV_SOURCE_DIR "/examples/stations.pcap", folder_);
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    /// Runs a command of bash in the folder; `nuvctl` is the built one.
    Outcome run(const std::string& command) const {
        write("command", "PATH='" NUVCTL_FOLDER "':$PATH; " + command);
        const int status = std::system(("cd '" + folder_ + "' && bash command >out 2>err").c_str());
        return {WEXITSTATUS(status), content("out"), content("err")};
    }
    std::string content(const std::string& name) const {
        std::ifstream in(folder_ + "/" + name, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    void write(const std::string& name, const std::string& text) const {
        std::ofstream(folder_ + "/" + name, std::ios::binary) << text;
    }

private:
    const std::string folder_ = testing::TempDir() + "nuvctl_" + std::to_string(::getpid());
};

TEST_F(Nuvctl, NamesTheFileAndTheReasonAndDecodesTheOthers) {
    constexpr std::size_t file_header = 24;
    constexpr std::size_t record_header = 16;
    std::string sample = content("stations.pcap");
    write("cut.pcap", sample + "p");
    write("text", "hello world.............");
    write("empty", "");
    sample[file_header + record_header] = '\x80';
    write("beacon.pcap", sample);
    sample[file_header - 4] = 1;
    write("ethernet.pcap", sample);
    const Outcome decoded =
        run("nuvctl decode missing . empty text ethernet.pcap cut.pcap beacon.pcap");
    EXPECT_EQ(decoded.status, 1);
    EXPECT_EQ(lines(decoded.out), 8 + 7);
    EXPECT_EQ(lines(decoded.err), 6) << decoded.err;
    for (const char* line :
         {"nuvctl: missing: No such file or directory\n", "nuvctl: .: Is a directory\n",
          "nuvctl: empty: the file is empty\n", "nuvctl: text: not a capture file: ",
          "nuvctl: ethernet.pcap: link type 1 is none of", "nuvctl: cut.pcap: record 9: "}) {
        EXPECT_THAT(decoded.err, HasSubstr(line));
    }
}

TEST_F(Nuvctl, ReadsStandardInputWhereNoFileIsGiven) {
    // pcapng
    write("c.pcapng",
          to_string(from_hex(
              "0A0D0D0A 1C000000 4D3C2B1A 01000000 FFFFFFFFFFFFFFFF 1C000000"
              "01000000 14000000 69000000 FFFF0000 14000000"
              "06000000 44000000 00000000 A2230500403E0C1F 23000000 23000000"
              "0000 0000 020000000001 020000000002 020000000003 0000 3104 0A00 0002 6869 0101 82"
              "00 44000000")));
    EXPECT_THAT(run("nuvctl decode < c.pcapng").out,
                HasSubstr(R"({"file":"-","frame":1,"time":"2015-11-03T12:34:56.123456Z")"));
    EXPECT_EQ(run("nuvctl encode < /dev/null").err, "nuvctl: no JSON to encode\n");
    EXPECT_EQ(run("nuvctl validate - < /dev/null").err, "nuvctl: no JSON to validate\n");
    const Outcome addresses = run(R"(printf '1.2.3.4\r\n\n::1' | nuvctl address)");
    EXPECT_EQ(addresses.status, 0);
    EXPECT_EQ(lines(addresses.out), 2);
    EXPECT_THAT(addresses.out, HasSubstr(R"({"input":"1.2.3.4",)"));
    EXPECT_EQ(run("nuvctl address < .").err, "nuvctl: standard input: Is a directory\n");
}

TEST_F(Nuvctl, EncodesWhatItDecodedIntoLinesAndIntoACapture) {
    const std::string hex = run("nuvctl decode stations.pcap | nuvctl encode").out;
    EXPECT_EQ(lines(hex), 8);
    EXPECT_THAT(hex, StartsWith("21000a00000d686172626f75722d6775657374010482840b16\n"));
    EXPECT_EQ(run("nuvctl decode --pretty stations.pcap | nuvctl encode --output lines -").out, "");
    EXPECT_EQ(content("lines"), hex);
    const Outcome again =
        run("nuvctl decode < stations.pcap > all;"
            "nuvctl encode --format pcap < all | nuvctl decode - | cmp - all");
    EXPECT_EQ(again.err + again.out, "");
    write("c.json", R"({"type":"association_request","time":"2015-11-03T12:34:56.123456Z",
        "station":"02:00:00:00:00:02","bssid":"02:00:00:00:00:03","capability_information":"3104",
        "listen_interval":10,
        "elements":[{"id":54,"fields":{"mdid":1,"capabilities":"00","body_hex":"02000000"}}]})");
    const Outcome edited = run("nuvctl encode c.json");
    EXPECT_EQ(edited.out, "31040a003603010000\n");
    EXPECT_EQ(edited.err,
              "nuvctl: c.json: line 1: elements[0].fields: body_hex does not agree with "
              "the other fields and is not written\n");
}

TEST_F(Nuvctl, EncodesUpToTheFirstObjectThatItRefuses) {
    const std::string json = run("nuvctl decode stations.pcap | head -n 1").out;
    const std::pair<std::string, std::string> rows[] = {
        {"\n{}\n", "nuvctl: c.json: line 3: type: missing\n"},
        {"\n[" + json,
         "nuvctl: c.json: line 4: parse error: after array element, I expect ',' or ']'\n"},
    };
    for (const auto& [refused, error] : rows) {
        write("c.json", std::string(json).append(refused).append(json));
        const Outcome outcome = run("nuvctl encode c.json");
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.err, error);
        EXPECT_EQ(lines(outcome.out), 1) << error;
    }
    EXPECT_EQ(run("nuvctl encode .").err, "nuvctl: .: Is a directory\n");
    EXPECT_EQ(run("nuvctl encode --output . < c.json").err, "nuvctl: .: Is a directory\n");
}

TEST_F(Nuvctl, ReportsOutputThatCannotBeWrittenUnlessItsReaderHasGone) {
    write("c.json", run("nuvctl decode stations.pcap").out);
    std::signal(SIGPIPE, SIG_DFL);  // whoever started the tests may ignore it
    for (const std::string command :
         {"nuvctl address ::1", "nuvctl channel --band 5 --number 36",
          "nuvctl decode stations.pcap", "nuvctl decode --summary stations.pcap",
          "nuvctl encode c.json", "nuvctl encode c.json --format pcap", "nuvctl opclass",
          "nuvctl opclass --table", "nuvctl --help", "nuvctl --version",
          "echo '{\"channel\":0}' | nuvctl validate"}) {
        const Outcome full = run(command + " > /dev/full");
        EXPECT_EQ(full.status, 1) << command;
        EXPECT_EQ(full.err, "nuvctl: cannot write to standard output\n") << command;
        // By the signal, and where that is ignored.
        for (const auto& [trap, status] : {std::pair{"", 128 + SIGPIPE}, {"trap '' PIPE; ", 1}}) {
            const Outcome gone = run(
                std::string(trap).append("exec 3> >(:); wait $!; ").append(command).append(" >&3"));
            EXPECT_EQ(gone.status, status) << command;
            EXPECT_EQ(gone.err, "") << command;
        }
    }
    EXPECT_EQ(run("nuvctl encode --format pcap < /dev/null > /dev/full").err,
              "nuvctl: cannot write to standard output\n");
    for (const std::string format : {"hex", "pcap"}) {
        EXPECT_EQ(run("nuvctl encode c.json --output /dev/full --format " + format).err,
                  "nuvctl: cannot write to /dev/full\n");
    }
}

TEST_F(Nuvctl, PrintsTheSummaryWhenASignalEndsALiveCapture) {
    // As soon as more than a pipe holds is written, nuvctl reads. The job control keeps the signals as
    // they are.
    const std::string read =
        "mkfifo live; set -m; nuvctl decode --summary live & exec 3> live; cat long.pcap >&3; ";
    std::string capture = content("stations.pcap");
    const std::string records = capture.substr(24);
    while (capture.size() < 3 * 65536) {
        capture += records;
    }
    write("long.pcap", capture);
    for (const auto& [before, kill, status] :
         {std::tuple{"", "kill -INT $!", 130},
          {"", "kill -TERM $!", 143},
          {"trap '' INT; ", "kill -INT $!; kill -TERM $!", 143}}) {
        const Outcome outcome = run(before + read + kill + "; wait $!; s=$?; rm live; exit $s");
        EXPECT_EQ(outcome.status, status);
        EXPECT_THAT(outcome.out, HasSubstr("\n02:4E:55:56:81:BE  harbour-seven"));
        EXPECT_THAT(outcome.out, HasSubstr(" of 8 stations\n"));
    }
}

TEST_F(Nuvctl, EndsWithAStatus) {
    EXPECT_EQ(run("nuvctl --help > help; echo $?; nuvctl opclass 1; echo $?; nuvctl; echo $?").out,
              "0\n1\n2\n");
}

}  // namespace
}  // namespace nuv::test
