// SPDX-License-Identifier: Apache-2.0
// Runs the built nuvctl on captures made here of the project's own frames.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

#include "tools/vectors/vectors.hpp"

namespace nuv::test {
namespace {

struct Outcome {
    int status;
    std::string out, err;
};

class NuvctlTest : public testing::Test {
protected:
    void SetUp() override { std::filesystem::create_directories(folder_); }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    /// Runs `nuvctl ARGUMENTS` by a shell, in a folder of its own.
    Outcome nuvctl(const std::string& arguments) const {
        const std::string command =
            "cd '" + folder_ + "' && ('" NUVCTL "' " + arguments + ") >out 2>err";
        const int status = std::system(command.c_str());
        return {WEXITSTATUS(status), content("out"), content("err")};
    }
    std::string content(const std::string& name) const {
        std::ifstream in(folder_ + "/" + name, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    void write(const std::string& name, const Octets& octets) const {
        std::ofstream(folder_ + "/" + name, std::ios::binary) << to_string(octets);
    }
    /// A capture of these records; `missing` octets of each were not captured.
    void capture(const std::string& name, std::uint8_t link_type,
                 const std::vector<Octets>& records, std::uint8_t missing = 0) const {
        Octets file = from_hex("D4C3B2A1 02000400 00000000 00000000 FFFF0000");
        file.insert(file.end(), {link_type, 0, 0, 0});
        for (const Octets& record : records) {
            const auto octet = [](std::size_t n) { return static_cast<std::uint8_t>(n); };
            const std::size_t length = record.size() + missing;
            // 2015-11-03T12:34:56.123456Z
            const Octets header = from_hex("F0A93856 40E20100");
            file.insert(file.end(), header.begin(), header.end());
            file.insert(file.end(), {octet(record.size()), octet(record.size() >> 8U), 0, 0});
            file.insert(file.end(), {octet(length), octet(length >> 8U), 0, 0});
            file.insert(file.end(), record.begin(), record.end());
        }
        write(name, file);
    }

    const std::string folder_ = testing::TempDir() + "nuvctl_" + std::to_string(::getpid());
};

const std::string mac = "0000 0000 020000000001 020000000002 020000000003 0000 ";
const std::string body = "3104 0A00 0002 6869 0101 82 ";

Octets operator+(Octets a, const Octets& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

bool has(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

TEST_F(NuvctlTest, PrintsTheStationsOfTheSampleCapture) {
    const Outcome lines = nuvctl("decode " NUV_SOURCE_DIR "/examples/stations.pcap");
    EXPECT_EQ(lines.status, 0);
    EXPECT_EQ(std::count(lines.out.begin(), lines.out.end(), '\n'), 8);
    EXPECT_FALSE(has(lines.out, R"("error":{)"));
    const Outcome table = nuvctl("decode --summary - < " NUV_SOURCE_DIR "/examples/stations.pcap");
    EXPECT_TRUE(has(table.out, "b/g n ax"));
    EXPECT_TRUE(has(table.out, "8 requests of 8 stations"));
}

TEST_F(NuvctlTest, PrintsAFrameAsDocumented) {
    capture("home.pcap", 105, {from_hex(mac + body)});
    EXPECT_EQ(
        nuvctl("decode home.pcap").out,
        R"({"file":"home.pcap","frame":1,"time":"2015-11-03T12:34:56.123456Z","type":"association_request",)"
        R"("station":"02:00:00:00:00:02","bssid":"02:00:00:00:00:03","current_ap":null,)"
        R"("capability_information":1073,"listen_interval":10,"ssid":"hi","ssid_hex":"6869",)"
        R"("security":"NONE","rsn":null,"error":null,"elements":[)"
        R"({"id":0,"extension":null,"name":"SSID","offset":4,"length":2,"fields":{"body_hex":"6869"}},)"
        R"({"id":1,"extension":null,"name":"Supported Rates and BSS Membership Selectors","offset":8,)"
        R"("length":1,"fields":{"supported_rates":[130]}}]})"
        "\n");
}

TEST_F(NuvctlTest, KnowsThreeLinkTypesAndWhatTheySayOfTheFCS) {
    const Octets frame = from_hex(mac + body);
    const Octets fcs = from_hex("DEADBEEF");
    const Octets avs = from_hex("80211001 00000040") + Octets(0x38);
    const struct {
        Octets record;
        std::uint8_t link_type;
        bool bad;
    } rows[] = {
        {frame, 105, false},
        {Octets(144) + frame, 119, false},
        {avs + frame, 119, false},
        {from_hex("0000 0800 00000000") + frame, 127, false},
        {from_hex("0000 0900 02000000 10") + frame + fcs, 127, false},
        {from_hex("0000 0900 02000000 50") + frame + fcs, 127, true},
        // TSFT before the Flags, a second word of presence bits before both
        {from_hex("0000 1900 030000A0 00000000 00000000 0000000000000000 10") + frame + fcs, 127,
         false},
        // a vendor's namespace of three octets in between
        {from_hex("0000 1A00 000000C0 010000A0 02000000 00112200 0300 AABBCC 10") + frame + fcs,
         127, false},
    };
    for (const auto& row : rows) {
        capture("c.pcap", row.link_type, {row.record});
        const Outcome decoded = nuvctl("decode c.pcap");
        EXPECT_EQ(decoded.err, "");
        EXPECT_TRUE(has(decoded.out, R"("error":null)")) << decoded.out;
        EXPECT_EQ(has(decoded.out, R"("fcs":"bad")"), row.bad) << decoded.out;
        EXPECT_FALSE(has(decoded.out, "truncated")) << decoded.out;
    }
}

TEST_F(NuvctlTest, TakesTheCurrentApOutOfAReassociation) {
    Octets frame = from_hex(mac + "3104 0A00 0A0B0C0D0E0F 0002 6869 0101 82");
    frame[0] = 0x20;
    capture("c.pcap", 105, {frame});
    const std::string out = nuvctl("decode c.pcap").out;
    EXPECT_TRUE(has(out, R"("type":"reassociation_request")"));
    EXPECT_TRUE(has(out, R"("current_ap":"0A:0B:0C:0D:0E:0F")"));
    EXPECT_TRUE(
        has(out, R"("error":null,"elements":[{"id":0,"extension":null,"name":"SSID","offset":10)"));
}

TEST_F(NuvctlTest, ReadsPcapngFromStandardInput) {
    const Octets octets = from_hex(
        "0A0D0D0A 1C000000 4D3C2B1A 01000000 FFFFFFFFFFFFFFFF 1C000000"
        "01000000 14000000 69000000 FFFF0000 14000000"
        "06000000 44000000 00000000 A2230500403E0C1F 23000000 23000000" +
        mac + body + "00 44000000");
    write("c.pcapng", octets);
    EXPECT_TRUE(has(nuvctl("decode - < c.pcapng").out,
                    R"({"file":"-","frame":1,"time":"2015-11-03T12:34:56.123456Z")"));
}

TEST_F(NuvctlTest, FindsTheBodyByTheHeader) {
    const std::string addresses = "0000 020000000001 020000000002 020000000003 ";
    const struct {
        const char* name;
        std::string frame;
        int requests;
    } rows[] = {
        {"behind an HT Control field", "0080" + addresses + "0000 DEADBEEF" + body, 1},
        {"which is broken off", "0080" + addresses + "0000 DEAD", 0},
        {"encrypted", "0040" + addresses + "0000" + body, 0},
        {"second fragment", "0000" + addresses + "0100" + body, 0},
        {"another version of the protocol", "0100" + addresses + "0000" + body, 0},
        {"header broken off", "0000 0000 0200", 0},
    };
    for (const auto& row : rows) {
        capture("c.pcap", 105, {from_hex(row.frame)});
        const std::string out = nuvctl("decode c.pcap").out;
        EXPECT_EQ(has(out, R"("ssid":"hi")"), row.requests == 1) << row.name << out;
        EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), row.requests) << row.name;
    }
}

TEST_F(NuvctlTest, GoesOnBehindWhatCannotBeRead) {
    const struct {
        std::string hex;
        std::vector<std::string> parts;
    } rows[] = {
        {body + "3002 0200 2D00 6B01 0F",
         {R"("error":{"message":"Invalid version","element":{"id":48,"extension":null,"offset":11}})",
          R"("security":"UNDEFINED","rsn":null)",
          R"("id":48,"extension":null,"name":"RSN","offset":11,"length":2,"error":"Invalid version"})",
          R"("id":107,"extension":null,"name":"Interworking","offset":17,"length":1,"fields":{"body_hex":"0f"}})"}},
        {body + "FF0C6C 000000000000000000 0000",
         {R"("message":"EHT CAPABILITIES IE without preceding HE CAPABILITIES IE","element":{"id":255,"extension":108,"offset":11})"}},
        {body + "3609 1234 02", {R"("message":"trailing element truncated","element":{"id":54)"}},
        {body + "FF", {R"("message":"Error reading extended element ID!")", R"("length":null)"}},
        {"3104 0A00 0021 61",
         {R"("message":"Invalid SSID length 33","element":{"id":0)",
          R"("length":33,"error":"Invalid SSID length 33"})"}},
        {"3104",
         {R"("capability_information":null,"listen_interval":null,"ssid":"")",
          R"("message":"Deserialization of type std::uint16_t failed.","element":null)"}},
        {"3104 0A00 0002 C328", {R"("ssid":null,"ssid_hex":"c328")"}},
    };
    for (const auto& row : rows) {
        capture("c.pcap", 105, {from_hex(mac + row.hex)});
        const Outcome decoded = nuvctl("decode c.pcap");
        EXPECT_EQ(decoded.status, 0);
        EXPECT_EQ(decoded.err, "");
        for (const std::string& part : row.parts) {
            EXPECT_TRUE(has(decoded.out, part)) << part << "\n" << decoded.out;
        }
    }
}

TEST_F(NuvctlTest, MarksWhatWasNotCaptured) {
    capture("c.pcap", 105, {from_hex(mac + body)}, 3);
    EXPECT_TRUE(has(nuvctl("decode c.pcap").out, R"("truncated":true)"));
}

TEST_F(NuvctlTest, NamesTheFileAndTheReasonAndReadsTheOthers) {
    capture("good.pcap", 105, {from_hex(mac + body)});
    capture("ethernet.pcap", 1, {from_hex("00")});
    capture("beacon.pcap", 105, {from_hex("80" + mac.substr(2) + body)});
    write("text", from_hex("68656C6C6F20776F726C642E2E2E2E2E2E2E2E2E2E2E2E2E"));
    write("empty", {});
    Octets cut = from_hex("00");
    {
        std::ifstream in(folder_ + "/good.pcap", std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(in), {}};
        cut.assign(bytes.begin(), bytes.end());
    }
    cut.push_back(0x70);
    write("cut.pcap", cut);
    const Outcome decoded = nuvctl("decode missing . empty text ethernet.pcap cut.pcap good.pcap");
    EXPECT_EQ(decoded.status, 1);
    EXPECT_EQ(std::count(decoded.out.begin(), decoded.out.end(), '\n'), 2);
    EXPECT_EQ(std::count(decoded.err.begin(), decoded.err.end(), '\n'), 6) << decoded.err;
    for (const char* line :
         {"nuvctl: missing: No such file or directory\n", "nuvctl: .: Is a directory\n",
          "nuvctl: empty: the file is empty\n", "nuvctl: text: not a capture file: ",
          "nuvctl: ethernet.pcap: link type 1 is none of", "nuvctl: cut.pcap: record 2: "}) {
        EXPECT_TRUE(has(decoded.err, line)) << line << decoded.err;
    }
    const Outcome none = nuvctl("decode beacon.pcap");
    EXPECT_EQ(none.status, 0);
    EXPECT_EQ(none.out, "");
    EXPECT_EQ(none.err, "nuvctl: no association request in 1 records\n");
}

TEST_F(NuvctlTest, UsageAndPipes) {
    for (const char* wrong :
         {"", "decode", "decode --pretty --summary x", "nonsense", "decode -x y"}) {
        const Outcome outcome = nuvctl(wrong);
        EXPECT_EQ(outcome.status, 2) << wrong;
        EXPECT_EQ(outcome.out, "") << wrong;
        EXPECT_NE(outcome.err, "") << wrong;
    }
    const Outcome help = nuvctl("decode --help");
    EXPECT_EQ(help.status, 0);
    EXPECT_TRUE(has(help.out, "Example: nuvctl decode"));
    capture("c.pcap", 105, std::vector<Octets>(5000, from_hex(mac + body)));
    EXPECT_EQ(nuvctl("decode c.pcap | head -n 1 > first").err, "");
    EXPECT_TRUE(has(content("first"), "\"frame\":1,"));
    const Outcome full = nuvctl("decode c.pcap > /dev/full");
    EXPECT_EQ(full.status, 1);
    EXPECT_TRUE(has(full.err, "cannot write to standard output"));
    capture("terminal.pcap", 105, {from_hex(mac + "3104 0A00 0003 1B5B6D")});
    EXPECT_TRUE(has(nuvctl("decode --summary terminal.pcap").out, "\\x1b[m"));
}

}  // namespace
}  // namespace nuv::test
