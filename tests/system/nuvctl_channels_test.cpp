// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <utility>

#include "tests/system/nuvctl_fixture.hpp"

namespace nuv::test {
namespace {

using NuvctlChannels = NuvctlTest;

TEST_F(NuvctlChannels, PrintsOperatingClasses) {
    const std::string row =
        R"({"opclass":130,"starting_frequency_khz":5000000,"spacing_mhz":80,"channels":[36,40,44,48,)"
        "52,56,60,64,100,104,108,112,116,120,124,128,132,136,140,144,149,153,157,161,165,169,173,"
        "177],"
        R"("center_channels":[42,58,106,122,138,155,171],"behaviors":[0]})"
        "\n";
    EXPECT_EQ(nuvctl("opclass 130").out, row);
    const Outcome europe = nuvctl("opclass --region europe 115 130");
    EXPECT_EQ(europe.status, 1);
    EXPECT_EQ(europe.out, row);
    EXPECT_EQ(europe.err, "nuvctl: 115: the europe table has no such operating class\n");
    const std::string all = nuvctl("opclass; '" NUVCTL "' opclass --region europe").out;
    EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), 27 + 21);
    EXPECT_TRUE(has(nuvctl("opclass --table --region europe 13 17").out,
                    "\n13     5002.5     5            -              171-184  "));
    EXPECT_EQ(nuvctl("opclass > /dev/full").status, 1);
}

TEST_F(NuvctlChannels, TellsWhereAChannelLies) {
    const std::string two_segments =
        R"({"number":33,"frequency_khz":6115000,"band":"6 GHz","width_mhz":320,)"
        R"("opclasses_global":[137],"opclasses_europe":[],"segments":[)"
        R"({"center":31,"center_frequency_khz":6105000,)"
        R"("channels":[1,5,9,13,17,21,25,29,33,37,41,45,49,53,57,61]},)"
        R"({"center":63,"center_frequency_khz":6265000,)"
        R"("channels":[33,37,41,45,49,53,57,61,65,69,73,77,81,85,89,93]}]})"
        "\n";
    EXPECT_EQ(nuvctl("channel --frequency 6115000 --width 320").out, two_segments);
    EXPECT_EQ(nuvctl("channel --band 6 --number 33 --width 320").out, two_segments);
    EXPECT_TRUE(has(nuvctl("channel --band 5 --number 36 --width 80").out,
                    R"("opclasses_global":[128],"opclasses_europe":[128],)"));
    EXPECT_TRUE(has(nuvctl("channel --band 2.4 --number 14").out, R"("frequency_khz":2484000,)"));
    EXPECT_TRUE(has(nuvctl("channel --band 6 --number 2").out, R"("opclasses_global":[136],)"));
    EXPECT_TRUE(has(nuvctl("channel --band 2.4 --number 6 --width 40").out,
                    R"("opclasses_global":[83,84],"opclasses_europe":[11,12],)"));
    const Outcome none = nuvctl("channel --band 5 --number 165 --width 320");
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.err, "nuvctl: 5825000 kHz: no operating class has a channel of 320 MHz there\n");
}

TEST_F(NuvctlChannels, ValidatesChannelsWithTheLibrarysWords) {
    write("good.json", R"({"channels":[{"channel":36},{"channel":1,"frequency":5955000}]})"
                       R"({"channles":[{"channel":6}]}{"channel":14,"frequency":2484000})"
                       R"({"primary_freq":5180000})");
    write("bad.json",
          R"({"channels":[{"channel":36,"frequency":5200000},{"channel":0}]})"
          "\n"
          R"({"primary_freq":5210000,"primary_center":5210000,"channel_width":"80 MHz"})");
    const Outcome good = nuvctl("validate good.json");
    EXPECT_EQ(good.status, 0);
    EXPECT_EQ(good.out, "{\"valid\":true}\n");
    const Outcome bad = nuvctl("validate good.json - < bad.json");
    EXPECT_EQ(bad.status, 1);
    EXPECT_EQ(bad.err, "");
    EXPECT_EQ(
        bad.out,
        R"({"valid":false,"file":"-","line":1,"about":"channel 36 at 5200000 kHz",)"
        R"("text":"Frequency value and channel index does not seem to match: 5200 MHz and  36"})"
        "\n"
        R"({"valid":false,"file":"-","line":1,"about":"channel 0 at 2407000 kHz","text":null})"
        "\n"
        R"({"valid":false,"file":"-","line":2,"about":"channel info",)"
        R"("text":"5210000 kHz is no valid primary frequency in opclass 128"})"
        "\n");
    // What was found before something unreadable is told; both keys count; nothing is cut in silence.
    write("mixed.json",
          R"({"channels":[{"channel":300}],"channles":[{"channel":0},{"channel":"x"}]})");
    const Outcome mixed = nuvctl("validate mixed.json");
    EXPECT_EQ(mixed.status, 1);
    EXPECT_TRUE(has(mixed.out, R"("text":"the channel in JSON is 300")"));
    EXPECT_EQ(std::count(mixed.out.begin(), mixed.out.end(), '\n'), 2);
    EXPECT_TRUE(has(mixed.err, "mixed.json: line 1: Deserialization of std::uint8_t"));
    const std::pair<std::string, std::string> unreadable[] = {
        {"", "nuvctl: no JSON to validate\n"},
        {"{}", "nuvctl: -: line 1: no channel list, channel entry or channel info\n"},
        {"\n{\"channels\":{}}", "nuvctl: -: line 2: channels: not a list\n"},
        {"{\"channel\":", "nuvctl: -: line 1: parse error: premature EOF\n"},
    };
    for (const auto& [json, text] : unreadable) {
        write("c.json", json);
        const Outcome outcome = nuvctl("validate < c.json");
        EXPECT_EQ(outcome.status, 1) << json;
        EXPECT_EQ(outcome.out, "") << json;
        EXPECT_EQ(outcome.err, text);
    }
}

}  // namespace
}  // namespace nuv::test
