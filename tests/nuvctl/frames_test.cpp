// SPDX-License-Identifier: Apache-2.0
// Records, frames, their JSON and the table of stations.
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "tests/support/test.hpp"
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
    const auto blank = record.find(' ');
    const auto octets = test::from_hex(record.substr(blank, record.find('.') - blank));
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
        if (has(json, R"("error":null)") || has(json, R"("element":{)")) {
            EXPECT_EQ(encoded(json), to_hex(octets));
        }
    }
    const auto octets = frame("to_ap 0A06 02 10");
    EXPECT_TRUE(has(decoded({octets, true, true}), R"("fcs":"bad","truncated":true,"error")"));
    EXPECT_TRUE(has(decoded({octets, false, false}, {253'402'300'800, 5}),
                    R"("frame":1,"time":null,"time_raw":"253402300800.000005","type")"));
    // Offsets are those in the frame, also behind the header of a fragment.
    const std::string behind_fragment = decoded(frame(
        "association 3104 0A00 0002 6869 FFFF 6B 0000 07 024E555670BE 00C8 1000 01 1111 DDC1" +
        zeros(193) + "0031 1100 01 1111 DD22" + zeros(34) + "F208 3006 0200 00000000"));
    EXPECT_TRUE(has(
        behind_fragment,
        R"("link":{"link_id":1,"offset":222,"element":{"id":48,"extension":null,"offset":267}})"))
        << behind_fragment;
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
        {edited(unknown, R"("error":"Invalid version","fields":{"body_hex":"0200"})",
                R"("fields":{"body_hex":"0200AB"})"),
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
        {decoded(frame("to_ap 0A08 03 00 01 0A0B0C")), "target_bssid: missing"},
        {edited(decoded(frame("to_ap 0501 07 2703 01 02 05")), R"("measurement_report_mode":"02")",
                R"("measurement_report_mode":"00")"),
         "elements[0].fields.measurement_report_field: missing"},
        {edited(unknown, R"("elements":[)", R"("elements":[)" + repeated(300, raw)),
         "elements[254]: the frame has more than 65535 octets"},
    };
    for (const auto& [text, error] : others) {
        EXPECT_EQ(encoded(text), error);
    }
}

TEST(FrameJson, MakesEverySampleAsItWas) {
    auto samples = test::elements();
    std::ranges::move(test::vectors("fragmented_"), std::back_inserter(samples));
    for (const auto& sample : samples) {
        for (const std::string begin : {"association 3104 0A00 0002 6869 ", "to_ap 0501 07 "}) {
            const auto octets = frame(begin + to_hex(sample.octets));
            EXPECT_EQ(encoded(decoded(octets)), to_hex(octets)) << sample.name;
        }
    }
    for (const auto& station : test::stations()) {
        const auto body = 2 * test::mac_header_length;
        EXPECT_EQ(encoded(decoded(station.octets)).substr(body),
                  to_hex(station.octets).substr(body));
    }
}

TEST(FrameJson, IsWrittenFromItsFieldsWhereTheyAreEdited) {
    const std::string json = decoded(
        frame("association 3104 0A00 0002 6869 3B04 515354 82 FF06 38 01 2D 01 23 AA "
              "FF1C 6B 0000 07 024E555670BE 0010 1000 01 1111 FF04 38 01 2D 00 3603 1234 00"));
    const std::string note =
        ".fields: body_hex does not agree with the other fields and is not written";
    const struct {
        const char* from;
        const char* to;
        const char* octets;
        std::vector<std::string> notes;
    } cases[] = {
        {"[83,84]", "[83]", "3b025153ff0638012d0123aaff1c6b", {"elements[1]" + note}},
        // The Length of this one is real although its class would write another one, also in a link.
        {"[35]", "[]", "3b0451535482ff0438012d00ff1c6b", {"elements[2]" + note}},
        {R"("extended_ids":[]})",
         R"("extended_ids":[35]})",
         "00111000011111ff0538012d01233603123400",
         {}},
    };
    for (const auto& [from, to, octets, notes] : cases) {
        const EncodedFrame made = read_json(parse_json(edited(json, from, to)));
        EXPECT_TRUE(has(to_hex(made.octets), octets)) << to_hex(made.octets);
        EXPECT_EQ(made.notes, notes);
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
