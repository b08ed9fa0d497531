// SPDX-License-Identifier: Apache-2.0
// Records, frames, their JSON and the table of stations.
#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include "tests/support/vectors.hpp"
#include "tools/nuvctl/commands/decode_summary.hpp"
#include "tools/nuvctl/json/decode_json.hpp"
#include "tools/nuvctl/json/encode_json.hpp"
#include "tools/nuvctl/json/fields.hpp"
#include "tools/nuvctl/json/reader.hpp"
#include "tools/nuvctl/text/text.hpp"

namespace nuvctl {
namespace {

namespace test = nuv::test;

bool has(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

std::string repeated(std::size_t times, std::string_view text) {
    std::string result;
    for (; times > 0; --times) {
        result += text;
    }
    return result;
}
std::string zeros(std::size_t octets) { return repeated(octets, "00"); }

std::string found_in(const std::string& record) {
    const auto octets = test::from_hex(record.substr(record.find(' ')));
    if (record.starts_with("body")) {
        const auto frame = management_frame({octets, false, false});
        return frame ? to_hex(frame->body) : "none";
    }
    const auto not_captured = static_cast<std::size_t>(std::ranges::count(record, '.')) / 2;
    try {
        const auto frame =
            mac_frame(std::stoi(record), {1, {}, octets, octets.size() + not_captured});
        return !frame ? "none"
                      : to_hex(frame->octets) + (frame->bad_fcs ? " bad" : "") +
                            (frame->truncated ? " truncated" : "");
    } catch (const FileError& error) {
        return error.what();
    }
}

TEST(Records, HoldFramesAsListed) {
    for (const auto& [record, frame] : test::listed_cases("nuvctl_records.tsv")) {
        EXPECT_EQ(found_in(record), frame) << record;
    }
}

TEST(Records, HaveTheirTimes) {
    const std::string name =
        testing::TempDir() + "nuvctl_times_" + std::to_string(::getpid()) + ".pcap";
    const auto time_in = [&](const std::string& file) {
        std::ofstream(name, std::ios::binary) << file;
        return raw_text(CaptureFile(name).next().value().time);
    };
    for (const std::int64_t seconds :
         std::array<std::int64_t, 4>{0, 2'147'483'647, 2'147'483'648, 4'294'967'295}) {
        const Timestamp time{seconds, 999'999};
        EXPECT_EQ(time_in(capture_header(105) + capture_record(time, {})), raw_text(time));
    }
    // pcapng that counts seconds of 64 bits
    EXPECT_EQ(time_in(std::string(as_text(test::from_hex(
                  "0A0D0D0A 1C000000 4D3C2B1A 01000000 FFFFFFFFFFFFFFFF 1C000000"
                  "01000000 20000000 69000000 FFFF0000 0900 0100 00000000 00000000 20000000"
                  "06000000 20000000 00000000 FFFFFF7F FEFFFFFF 00000000 00000000 20000000")))),
              "9223372036854775806.000000");
    std::filesystem::remove(name);
}

/// The frame of "HEADER BODY", the header by its name.
test::Octets frame(const std::string& text) {
    const std::string to_ap = "00 0000 020000000003 020000000002 020000000003 0000";
    const std::map<std::string, std::string> headers{
        {"association", "00" + to_ap},
        {"reassociation", "20" + to_ap},
        {"next_version", "01" + to_ap},
        {"to_ap", "D0" + to_ap},
        {"to_station", "D000 0000 020000000002 020000000003 020000000003 0000"},
    };
    const auto blank = text.find(' ');
    return test::from_hex(headers.at(text.substr(0, blank)) + text.substr(blank));
}

std::string decoded(const MacFrame& mac, const Timestamp& time = {1446554096, 123456}) {
    const Record record{1, time, mac.octets, mac.octets.size()};
    std::ostringstream os;
    const auto write = [&](const auto& frame) {
        if (frame) {
            write_json(os, {"home.pcap", record, mac}, *frame, false);
        }
    };
    if (const auto management = management_frame(mac)) {
        write(association_request(*management));
        write(action_frame(*management));
    }
    return os.str();
}
std::string decoded(const test::Octets& frame) { return decoded({frame, false, false}); }

/// The frame in hexadecimal, or why it cannot be made.
std::string encoded(const std::string& json) {
    try {
        const EncodedFrame frame = read_json(parse_json(json));
        EXPECT_EQ(to_string(frame.time), "2015-11-03T12:34:56.123456Z");
        return to_hex(frame.octets);
    } catch (const FieldError& error) {
        return error.what();
    }
}

std::string edited(std::string text, const std::string& from, const std::string& to) {
    const auto at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

TEST(FrameJson, IsPrintedAsListedAndMadeIntoTheFrameAgain) {
    for (const auto& [call, expected] : test::listed_cases("nuvctl_frames.tsv")) {
        const auto octets = frame(call);
        const std::string json = decoded(octets);
        EXPECT_EQ(json.empty(), expected.empty()) << json;
        std::istringstream parts(expected);
        for (std::string part; std::getline(parts, part, '\t');) {
            EXPECT_TRUE(has(json, part)) << part << '\n' << json;
        }
        if (has(json, R"("error":null)")) {
            EXPECT_EQ(encoded(json), to_hex(octets));
        }
    }
    const auto octets = frame("to_ap 0A06 02 10");
    EXPECT_TRUE(has(decoded({octets, true, true}), R"(16,"fcs":"bad","truncated":true,"error")"));
    EXPECT_TRUE(has(decoded({octets, false, false}, {253'402'300'800, 5}),
                    R"("frame":1,"time":null,"time_raw":"253402300800.000005","type")"));
}

TEST(FrameJson, IsRefusedWithThePathOfThePlace) {
    const std::string json =
        decoded(frame("reassociation 3104 0A00 0A0B0C0D0E0F 0002 6869 3603 1234 01 2402 0104 3014 "
                      "0100 000FAC04 0100 000FAC04 0100 000FAC02 8000 DD03 00 01 02"));
    for (const auto& [edit, error] : test::listed_cases("nuvctl_refusals.tsv")) {
        const auto arrow = edit.find(" => ");
        EXPECT_EQ(encoded(edited(json, edit.substr(0, arrow), edit.substr(arrow + 4))), error);
    }
    const std::string report =
        decoded(frame("to_station 0505 01 340D 001122334455 00000000 51 06 07"));
    const std::string subelement = R"({"id":221,"fields":{"payload_hex":")" + zeros(150) + "\"}},";
    const std::string response = decoded(frame("to_ap 0A08 03 01 00"));
    const std::string raw = R"({"id":221,"fields":{"body_hex":")" + zeros(255) + "\"}},";
    const std::string unknown = decoded(frame("association 3104 0A00 0002 6869 3002 0200"));
    const std::pair<std::string, std::string> others[] = {
        // whatever its class says of them
        {edited(unknown, R"("error":"Invalid version"})", R"("fields":{"body_hex":"0200AB"}})"),
         to_hex(frame("association 3104 0A00 0002 6869 3003 0200AB"))},
        {"[1]", "not a JSON object"},
        {std::string(200, '['), "more than 127 levels"},
        {edited(json, "000102", zeros(256)),
         "elements[4].fields.body_hex: more than an element holds"},
        // A Length octet that wraps is no way to say more.
        {edited(report, R"("subelements":[)",
                R"("subelements":[)" + subelement + edited(subelement, "},", "}")),
         "elements[0].fields: more than an element holds"},
        {edited(response, R"("target_bssid":null)", R"("target_bssid":7)"),
         "target_bssid: not known here, or there twice"},
        {edited(unknown, R"("elements":[)", R"("elements":[)" + repeated(300, raw)),
         "elements[254]: the frame has more than 65535 octets"},
    };
    for (const auto& [text, error] : others) {
        EXPECT_EQ(encoded(text), error);
    }
}

/// What the classes write in another way: the Length of a Non-Inheritance element, zero capabilities.
std::string rewritten(std::string hex) {
    for (const auto& [from, to] : {std::pair{"ff0538022dbf00", "ff0638022dbf00"},
                                   {"ff043801bf00", "ff053801bf00"},
                                   {"30140100000fac040100000fac040100000fac020000",
                                    "30120100000fac040100000fac040100000fac02"}}) {
        hex = has(hex, from) ? edited(hex, from, to) : hex;
    }
    return hex;
}

TEST(FrameJson, MakesEverySampleAsTheLibraryWritesIt) {
    auto samples = test::elements();
    std::ranges::move(test::vectors("fragmented_"), std::back_inserter(samples));
    for (const auto& sample : samples) {
        // EHT Capabilities stand in the stations, behind HE Capabilities.
        if (!sample.error.empty() || sample.name.starts_with("element_eht_capabilities")) {
            continue;
        }
        // Elements without a class in a request are given by their octets.
        const bool is_raw = sample.name.starts_with("element_raw") || has(sample.name, "_report-");
        const std::string fixed = "association 3104 0A00 0002 6869 ";
        const auto octets = frame(fixed + to_hex(sample.octets));
        std::string expected = to_hex(is_raw ? octets : frame(fixed + to_hex(sample.written)));
        if (sample.name == "element_multi_link-one_profile") {
            expected = rewritten(expected);
        } else if (sample.name == "element_multi_link-elements_keep_their_octets") {
            // neither surplus octets nor empty parts
            expected =
                to_hex(frame(fixed + "FF366B 0000 07 024E555670BE 002A 1000 01 1111 01028284 "
                                     "DD050A4E560102 FF0538012D00 3006010000000000 "
                                     "FF0A6B000007024E555670BE"));
        } else if (!sample.refused.empty()) {
            expected = "elements[1].fields: " + sample.refused;
        }
        EXPECT_EQ(encoded(decoded(octets)), expected) << sample.name;
    }
    for (const auto& station : test::stations()) {
        const auto body = 2 * test::mac_header_length;
        EXPECT_EQ(encoded(decoded(station.octets)).substr(body),
                  rewritten(to_hex(station.octets)).substr(body));
    }
}

std::string summary_of(std::initializer_list<const char*> texts) {
    Summary summary;
    for (const char* text : texts) {
        const auto octets = frame(text);
        const auto management = *management_frame({octets, false, false});
        if (const auto request = association_request(management)) {
            summary.add(*request);
        } else {
            summary.add(*action_frame(management));
        }
    }
    std::ostringstream os;
    summary.print(os);
    return os.str();
}

TEST(Summary, EscapesTextsFromOutsideAndCountsActionFrames) {
    const std::string text = summary_of({"association 3104 0A00 0003 1B5B6D", "to_ap 0A06 02 10",
                                         "to_ap 0A06 02", "to_ap 0A08 03 00 00"});
    EXPECT_TRUE(has(text, "02:00:00:00:00:02  \\x1b[m  UNDEFINED (WEP?)")) << text;
    EXPECT_TRUE(has(text, "\nsecurity: UNDEFINED (WEP?) 1\n")) << text;
    EXPECT_TRUE(text.ends_with(
        "action frames: btm_query 2, btm_response 1, 1 with errors (see the JSON)\n"));
}

TEST(Summary, CountsWhatAStationCanDoOnAnyLink) {
    const std::string text =
        summary_of({"association 3104 0A00 0000 FF47 6B 0000 07 024E555670BE 003B 3100 07 "
                    "024E555670BF 3104 0101 82 4605 0100000000 7F03 000008 3603 123400 "
                    "2D1A020000FFFF000000000000000000000000000000000000000000"});
    EXPECT_TRUE(has(text, "  2        20/40   k v r        2.4    2      02:4E:55:56:70:BE\n"))
        << text;
}

}  // namespace
}  // namespace nuvctl
