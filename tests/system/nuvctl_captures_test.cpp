// SPDX-License-Identifier: Apache-2.0
// Runs the built nuvctl on captures made here of the project's own frames.
#include <algorithm>
#include <cstring>
#include <map>
#include <set>

#include "tests/support/vectors.hpp"
#include "tests/system/nuvctl_fixture.hpp"

namespace nuv::test {
namespace {

class NuvctlCaptures : public NuvctlTest {
protected:
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
        write(name, to_string(file));
    }
};

const std::string mac = "0000 0000 020000000001 020000000002 020000000003 0000 ";
const std::string body = "3104 0A00 0002 6869 0101 82 ";

Octets operator+(Octets a, const Octets& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

TEST_F(NuvctlCaptures, PrintsTheStationsOfTheSampleCapture) {
    const Outcome lines = nuvctl("decode " NUV_SOURCE_DIR "/examples/stations.pcap");
    EXPECT_EQ(lines.status, 0);
    EXPECT_EQ(std::count(lines.out.begin(), lines.out.end(), '\n'), 8);
    EXPECT_FALSE(has(lines.out, R"("error":{)"));
    const Outcome table = nuvctl("decode --summary - < " NUV_SOURCE_DIR "/examples/stations.pcap");
    EXPECT_TRUE(has(table.out, "b/g n ax"));
    EXPECT_TRUE(has(table.out, "8 requests of 8 stations"));
}

TEST_F(NuvctlCaptures, PrintsAFrameAsDocumented) {
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

TEST_F(NuvctlCaptures, KnowsThreeLinkTypesAndWhatTheySayOfTheFCS) {
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

TEST_F(NuvctlCaptures, TakesTheCurrentApOutOfAReassociation) {
    Octets frame = from_hex(mac + "3104 0A00 0A0B0C0D0E0F 0002 6869 0101 82");
    frame[0] = 0x20;
    capture("c.pcap", 105, {frame});
    const std::string out = nuvctl("decode c.pcap").out;
    EXPECT_TRUE(has(out, R"("type":"reassociation_request")"));
    EXPECT_TRUE(has(out, R"("current_ap":"0A:0B:0C:0D:0E:0F")"));
    EXPECT_TRUE(
        has(out, R"("error":null,"elements":[{"id":0,"extension":null,"name":"SSID","offset":10)"));
}

TEST_F(NuvctlCaptures, ReadsPcapngFromStandardInput) {
    const Octets octets = from_hex(
        "0A0D0D0A 1C000000 4D3C2B1A 01000000 FFFFFFFFFFFFFFFF 1C000000"
        "01000000 14000000 69000000 FFFF0000 14000000"
        "06000000 44000000 00000000 A2230500403E0C1F 23000000 23000000" +
        mac + body + "00 44000000");
    write("c.pcapng", to_string(octets));
    EXPECT_TRUE(has(nuvctl("decode - < c.pcapng").out,
                    R"({"file":"-","frame":1,"time":"2015-11-03T12:34:56.123456Z")"));
}

TEST_F(NuvctlCaptures, FindsTheBodyByTheHeader) {
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

TEST_F(NuvctlCaptures, GoesOnBehindWhatCannotBeRead) {
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

TEST_F(NuvctlCaptures, MarksWhatWasNotCaptured) {
    capture("c.pcap", 105, {from_hex(mac + body)}, 3);
    EXPECT_TRUE(has(nuvctl("decode c.pcap").out, R"("truncated":true)"));
}

TEST_F(NuvctlCaptures, NamesTheFileAndTheReasonAndReadsTheOthers) {
    capture("good.pcap", 105, {from_hex(mac + body)});
    capture("ethernet.pcap", 1, {from_hex("00")});
    capture("beacon.pcap", 105, {from_hex("80" + mac.substr(2) + body)});
    write("text", "hello world.............");
    write("empty", "");
    write("cut.pcap", content("good.pcap") + "p");
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
    EXPECT_EQ(none.err, "nuvctl: none of the frames looked for in 1 records\n");
}

/// Lower-case digits, no blanks.
std::string line_of(const Octets& octets) {
    std::string text = to_hex(octets);
    std::erase(text, ' ');
    return text + "\n";
}

const std::string inherited = "the Length of the Non-Inheritance inside counts one octet more";

/// The Non-Inheritance elements in the profiles of the samples as the library writes them.
std::string with_long_non_inheritance(std::string hex) {
    for (const auto& [from, to] :
         {std::pair{"ff0538022dbf00", "ff0638022dbf00"}, {"ff043801bf00", "ff053801bf00"}}) {
        const auto at = hex.find(from);
        if (at != std::string::npos) {
            hex.replace(at, std::strlen(from), to);
        }
    }
    return hex;
}

const std::string decode_encode = "decode c.pcap | '" NUVCTL "' encode";

TEST_F(NuvctlCaptures, EncodesWhatItDecodedWhereNoOddityStandsInTheWay) {
    // What the library writes in another way than it was sent, and why.
    const std::map<std::string, std::string> oddities{
        {"element_extended_capabilities-all_zero", "trailing zeros are not sent"},
        {"element_extended_capabilities-trailing_zeros", "trailing zeros are not sent"},
        {"element_extended_supported_rates-none", "an empty list is not written"},
        {"element_ht_capabilities-four_octets_more", "surplus octets are not kept"},
        {"element_mobility_domain-two_octets_more", "surplus octets are not kept"},
        {"element_multi_link-elements_keep_their_octets",
         "its elements keep neither surplus octets nor empty parts"},
        {"element_multi_link-one_profile", inherited},
        {"element_non_inheritance-most_ids", "the Length would count 256 octets"},
        {"element_non_inheritance-nothing", "the Length counts one octet more"},
        {"element_non_inheritance-one_octet_more", "surplus octets are not kept"},
        {"element_non_inheritance-two_ids_one_extension", "the Length counts one octet more"},
        {"element_rsn-group_data_left_out", "a missing part before others is written"},
        {"element_rsn-longest", "more than 255 octets with its header are not written"},
        {"element_rsn-printed_1_802_1x_ccmp", "zero capabilities count as absent"},
        {"element_supported_operating_classes-empty_extension", "a lone delimiter is lost"},
        {"element_supported_operating_classes-empty_extension_before_duples",
         "a lone delimiter is lost"},
        {"element_supported_rates-none", "an empty list is not written"},
        {"fragmented_multi_link-an_empty_fragment_ends_it", "an empty fragment is not written"},
    };
    const Octets fixed = from_hex("3104 0A00 0002 6869");
    std::vector<Sample> samples = elements();
    std::ranges::move(vectors("fragmented_"), std::back_inserter(samples));
    std::set<std::string> seen;
    std::vector<Octets> frames;
    std::string expected;
    for (const Sample& sample : samples) {
        // EHT Capabilities stand in the stations, behind HE Capabilities.
        if (!sample.error.empty() || sample.name.starts_with("element_eht_capabilities")) {
            continue;
        }
        const auto oddity = oddities.find(sample.name);
        const bool odd = oddity != oddities.end();
        const Octets frame = from_hex(mac) + fixed + sample.octets;
        if (odd) {
            seen.insert(sample.name);
        }
        if (odd && !sample.refused.empty()) {
            capture("c.pcap", 105, {frame});
            const Outcome outcome = nuvctl(decode_encode);
            EXPECT_TRUE(has(outcome.err, "elements[1].fields: " + sample.refused)) << sample.name;
            EXPECT_EQ(outcome.out, "") << sample.name;
            continue;
        }
        frames.push_back(frame);
        std::string line = line_of(fixed + (odd ? sample.written : sample.octets));
        if (odd && oddity->second == inherited) {
            line = with_long_non_inheritance(line);
        } else if (sample.name == "element_multi_link-elements_keep_their_octets") {
            line = line_of(fixed + from_hex("FF366B 0000 07 024E555670BE 002A 1000 01 1111"
                                            "01028284 DD050A4E560102 FF0538012D00"
                                            "3006010000000000 FF0A6B000007024E555670BE"));
        }
        expected += line;
    }
    capture("c.pcap", 105, frames);
    const Outcome outcome = nuvctl(decode_encode);
    EXPECT_EQ(outcome.out, expected);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(seen.size(), oddities.size());
}

TEST_F(NuvctlCaptures, EncodesTheSampleCaptureIntoLinesOfHexAndIntoACapture) {
    const std::string encode = "| '" NUVCTL "' encode ";
    const std::string decode = "decode - < " NUV_SOURCE_DIR "/examples/stations.pcap ";
    std::string bodies;
    for (const Sample& station : stations()) {
        bodies += line_of({station.octets.begin() + mac_header_length, station.octets.end()});
    }
    bodies = with_long_non_inheritance(bodies);
    // One station's RSN element ends with zero capabilities, which are not written.
    const auto zero = bodies.find("30140100000fac040100000fac040100000fac020000");
    ASSERT_NE(zero, std::string::npos);
    bodies.replace(zero, 4, "3012").erase(zero + 40, 4);
    EXPECT_EQ(nuvctl(decode + encode).out, bodies);
    EXPECT_EQ(nuvctl(decode + "--pretty " + encode + "--output lines -").out, "");
    EXPECT_EQ(content("lines"), bodies);

    const Outcome again =
        nuvctl(decode + "| head -n 2" + encode + "--format pcap | '" NUVCTL "' decode -");
    EXPECT_EQ(again.out, nuvctl(decode + "| head -n 2").out);
    EXPECT_EQ(again.err, "");
}

TEST_F(NuvctlCaptures, RefusesWhatItCannotEncodeWithItsPath) {
    Octets frame = from_hex(mac + "3104 0A00 0A0B0C0D0E0F 0002 6869 3603 1234 01 2402 0104" +
                            "3014 0100 000FAC04 0100 000FAC04 0100 000FAC02 8000 DD03 00 01 02");
    frame[0] = 0x20;
    capture("c.pcap", 105, {frame});
    const std::string json = nuvctl("decode c.pcap").out;
    const std::string rsn = "elements[3].fields.";
    const struct {
        std::string from, to, error;
    } rows[] = {
        {R"("mdid":13330)", R"("mdid":70000)",
         "elements[1].fields.mdid: 70000 does not fit 16 bits"},
        {R"("mdid":13330)", R"("mdid":-1)", "elements[1].fields.mdid: -1 does not fit 16 bits"},
        {R"("mdid":13330)", R"("mdid":1.5)", "elements[1].fields.mdid: not a whole number"},
        {R"("mdid":13330,)", "", "elements[1].fields.mdid: missing"},
        {R"("mdid":)", R"("mdid":1,"mdid":)",
         "elements[1].fields.mdid: not known here, or there twice"},
        {R"("mdid":)", R"("midd":1,"mdid":)",
         "elements[1].fields.midd: not known here, or there twice"},
        {R"("capabilities":"01")", R"("capabilities":"1")",
         "elements[1].fields.capabilities: not two hexadecimal digits an octet"},
        {R"("capabilities":"01")", R"("capabilities":"0102")",
         "elements[1].fields.capabilities: not 1 octets"},
        {R"([[1,4]])", R"([[1,256]])",
         "elements[2].fields.channels[0][1]: 256 does not fit 8 bits"},
        {R"([[1,4]])", R"([[1,4],[1]])", "elements[2].fields.channels[1]: not a list of 2"},
        {R"([[1,4]])", R"({})", "elements[2].fields.channels: not a list"},
        {R"("fields":{"version":1)", R"("fields":{"version":2)", rsn + "version: not version 1"},
        {R"("akm":["00-0F-AC:2"],"capabilities":128,"pmkids")",
         R"("akm":["PSK"],"capabilities":128,"pmkids")",
         rsn + "akm[0]: not of the form 00-0F-AC:0"},
        {R"("pmkids":[])", R"("pmkids":["00"])", rsn + "pmkids[0]: not 16 octets"},
        {R"({"body_hex":"000102"})", R"({"body_hex":")" + std::string(512, '0') + "\"}",
         "elements[4].fields.body_hex: more than an element holds"},
        {R"("fields":{"body_hex":"000102"})", R"("error":"Invalid size")",
         "elements[4].error: could not be read; "
         R"("fields":{"body_hex":"..."} can be written instead)"},
        {R"("fields":{"body_hex":"000102"})", R"("fields":7)", "elements[4].fields: not an object"},
        {R"({"id":221,"extension":null)", R"({"id":221,"extension":3)",
         "elements[4].extension: only elements with ID 255 have one"},
        {R"({"id":221,"extension":null)", R"({"id":255)", "elements[4].extension: missing"},
        {R"("id":54,"extension":null,)", R"("id":255,"extension":108,)",
         "elements[1].fields: EHT CAPABILITIES IE without preceding HE CAPABILITIES IE"},
        {R"("type":"re)", R"("type":")", "current_ap: only a reassociation_request has one"},
        {R"("type":"re)", R"("type":"dis)", "type: not one that decode knows"},
        {R"("current_ap":"0A:0B)", R"("current_ap":"0A-0B)",
         "current_ap: not of the form 02:00:00:00:00:01"},
        {"12:34:56.123456Z", "12:34:60.123456Z",
         "time: not of the form 2015-11-03T12:34:56.123456Z"},
        {R"("file")", R"("flie")", "flie: not known here, or there twice"},
        {R"({"file")", R"([{"file")", "parse error: after array element, I expect ',' or ']'"},
        {json, "[1]", "not a JSON object"},
        {json, std::string(200, '['), "more than 127 levels"},
    };
    for (const auto& row : rows) {
        std::string edited = json;
        ASSERT_TRUE(has(json, row.from)) << row.from;
        edited.replace(edited.find(row.from), row.from.size(), row.to);
        edited.insert(0, json + "\n");
        write("c.json", edited += json);
        const Outcome outcome = nuvctl("encode c.json");
        EXPECT_EQ(outcome.err, "nuvctl: c.json: line 3: " + row.error + "\n");
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(std::count(outcome.out.begin(), outcome.out.end(), '\n'), 1) << row.error;
    }
}

const std::string to_ap = "D000 0000 020000000003 020000000002 020000000003 0000 ";
const std::string to_station = "D000 0000 020000000002 020000000003 020000000003 0000 ";
const std::string neighbor = "3410 001122334455 8F040000 51 06 07 0301FF ";

TEST_F(NuvctlCaptures, DecodesActionFramesAndEncodesThemAgain) {
    const struct {
        std::string header, body;
        std::vector<std::string> parts;
    } rows[] = {
        {to_ap,
         "0501 07 271D 01 00 05 51 06 40420F0000000000 6400 07 8C 30 001122334455 00 78563412",
         {R"("type":"measurement_report")", R"("dialog_token":7,"error":null)",
          R"("actual_measurement_start_time":1000000)", R"("measurement_duration":100)"}},
        {to_station,
         "0505 01 " + neighbor + "DD03 001122",
         {R"("type":"neighbor_report")", R"("dialog_token":1,"error":null)",
          R"("id":52,"extension":null,"name":"Neighbor Report","offset":3,"length":16)",
          R"("subelements":[{"id":3,"fields":{"preference":255}}])"}},
        {to_ap, "0A06 02 10", {R"("type":"btm_query")", R"("query_reason":16,"error":null)"}},
        {to_station,
         "0A07 03 1F 0A01 05 040A 4030201000000000 1E00 03 782E79 " + neighbor,
         {R"("type":"btm_request")",
          R"("request_mode":"1f","disassociation_timer":266,"validity_interval":5,)"
          R"("bss_termination_tsf":270544960,"bss_termination_duration":30,)"
          R"("session_information_url":"x.y","error":null)"}},
        {to_station,
         "0A07 03 04 0000 05",
         {R"("bss_termination_tsf":null,"bss_termination_duration":null,)"
          R"("session_information_url":null,"error":null,"elements":[])"}},
        {to_ap,
         "0A08 03 00 01 0A0B0C0D0E0F " + neighbor,
         {R"("type":"btm_response")", R"("status_code":0,"bss_termination_delay":1,)"
                                      R"("target_bssid":"0A:0B:0C:0D:0E:0F","error":null)"}},
        {to_ap, "0A08 03 00 00", {R"("target_bssid":null,"error":null)"}},
        {to_ap, "0A08 03 01 00 " + neighbor, {R"("target_bssid":null,"error":null)"}},
    };
    for (const auto& row : rows) {
        capture("c.pcap", 105, {from_hex(row.header + row.body)});
        const std::string json = nuvctl("decode c.pcap").out;
        EXPECT_TRUE(has(json, R"("station":"02:00:00:00:00:02","bssid":"02:00:00:00:00:03")"));
        for (const std::string& part : row.parts) {
            EXPECT_TRUE(has(json, part)) << part << "\n" << json;
        }
        EXPECT_EQ(nuvctl(decode_encode).out, line_of(from_hex(row.body)));
        nuvctl(decode_encode + " --format pcap --output d.pcap");
        // Behind the file's header, which says how long a record may be.
        EXPECT_EQ(content("d.pcap").substr(24), content("c.pcap").substr(24)) << row.body;
    }
    EXPECT_EQ(nuvctl("decode c.pcap | sed 's/target_bssid\":null/target_bssid\":7/' | '" NUVCTL
                     "' encode")
                  .err,
              "nuvctl: -: line 1: target_bssid: not known here, or there twice\n");
    // A Length octet that wraps is no way to say more.
    capture("c.pcap", 105, {from_hex(to_station + "0505 01 " + neighbor)});
    const std::string long_one =
        R"({\"id\":221,\"fields\":{\"payload_hex\":\")" + std::string(300, '0') + R"(\"}},)";
    EXPECT_EQ(nuvctl("decode c.pcap | sed 's/\"subelements\":\\[/&" + long_one + long_one +
                     "/' | '" + NUVCTL "' encode")
                  .err,
              "nuvctl: -: line 1: elements[0].fields: more than an element holds\n");
}

TEST_F(NuvctlCaptures, SaysWhereAnActionFrameCannotBeRead) {
    const struct {
        const char* body;
        const char* error;
    } rows[] = {
        {"0A07", R"("dialog_token":null,"request_mode":null)"},
        {"0A07", R"("error":{"message":"the frame ends before its dialog token","element":null})"},
        {"0A07 03 00 0A",
         R"("message":"the frame ends before the end of disassociation_timer","element":null)"},
        {"0A07 03 00 0A", R"("request_mode":"00","disassociation_timer":null)"},
        {"0A07 03 10 0A00 05 04 78",
         R"("message":"the frame ends before the end of session_information_url")"},
        {"0A07 03 10 0A00 05",
         R"("message":"the frame ends before the end of session_information_url")"},
        {"0A07 03 08 0A00 05 050A 40302010000000001E00",
         R"("message":"not the ID and Length of bss_termination")"},
        {"0505 01 3404 00112233", R"("element":{"id":52,"extension":null,"offset":3})"},
        {"0505 01 DD09 00112233", R"("message":"Seek failed","element":{"id":221)"},
        {"0505 01 3609 1234 02", R"("message":"trailing element truncated","element":{"id":54)"},
    };
    for (const auto& row : rows) {
        capture("c.pcap", 105, {from_hex(to_station + row.body)});
        const std::string json = nuvctl("decode c.pcap").out;
        EXPECT_TRUE(has(json, row.error)) << row.error << "\n" << json;
    }
    for (const char* other : {"05", "0500 01", "0504 01", "0A09 01", "0401"}) {
        capture("c.pcap", 105, {from_hex(to_station + other)});
        EXPECT_EQ(nuvctl("decode c.pcap").out, "") << other;
    }
}

TEST_F(NuvctlCaptures, FiltersByTypeAndCountsActionFrames) {
    capture("c.pcap", 105,
            {from_hex(mac + body), from_hex(to_ap + "0A06 02 10"), from_hex(to_ap + "0A06 02"),
             from_hex(to_ap + "0A08 03 00 00")});
    const auto lines = [&](const std::string& options) {
        const std::string out = nuvctl("decode " + options + " c.pcap").out;
        return std::count(out.begin(), out.end(), '\n');
    };
    EXPECT_EQ(lines(""), 4);
    EXPECT_EQ(lines("--type btm_query"), 2);
    EXPECT_EQ(lines("--type btm_query,btm_response"), 3);
    EXPECT_EQ(lines("--type btm_response --type association_request"), 2);
    EXPECT_TRUE(nuvctl("decode --summary c.pcap")
                    .out.ends_with("action frames: btm_query 2, btm_response 1, "
                                   "1 with errors (see the JSON)\n"));
    EXPECT_EQ(nuvctl("decode --summary --type btm_response c.pcap").out,
              "action frames: btm_response 1\n");
}

TEST_F(NuvctlCaptures, EncodesOctetsAsGivenForAnElementOfAnyKind) {
    capture("c.pcap", 105, {from_hex(mac + body + "3002 0200")});
    const std::string json = nuvctl("decode c.pcap").out;
    const std::string error = R"("error":"Invalid version"})";
    ASSERT_TRUE(has(json, error));
    std::string edited = json;
    edited.replace(edited.find(error), error.size(), R"("fields":{"body_hex":"0200AB"}})");
    write("c.json", edited);
    EXPECT_EQ(nuvctl("encode < c.json").out, line_of(from_hex(body + "3003 0200AB")));
}

TEST_F(NuvctlCaptures, UsageAndPipes) {
    for (const char* wrong :
         {"", "decode", "decode --pretty --summary x", "nonsense", "decode -x y",
          "decode --type probe_request x", "encode --format xml", "opclass x", "channel",
          "channel --band 5", "channel --frequency 5180000 --width 25"}) {
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
    for (const std::string format : {"hex", "pcap"}) {
        const Outcome written =
            nuvctl("decode c.pcap | '" NUVCTL "' encode --output /dev/full --format " + format);
        EXPECT_EQ(written.status, 1);
        EXPECT_TRUE(has(written.err, "cannot write to /dev/full")) << written.err;
    }
    EXPECT_EQ(nuvctl("encode < /dev/null").err, "nuvctl: no JSON to encode\n");
    EXPECT_EQ(nuvctl("encode . ").err, "nuvctl: .: Is a directory\n");
    capture("terminal.pcap", 105, {from_hex(mac + "3104 0A00 0003 1B5B6D")});
    EXPECT_TRUE(has(nuvctl("decode --summary terminal.pcap").out, "\\x1b[m"));
}

}  // namespace
}  // namespace nuv::test
