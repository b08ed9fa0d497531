// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "tests/system/nuvctl_fixture.hpp"

namespace nuv::test {
namespace {

using NuvctlAddress = NuvctlTest;

TEST_F(NuvctlAddress, SaysWhatAnAddressIs) {
    const Outcome outcome = nuvctl(
        "address 01:00:5e:00:00:01 127.0.0.1 ::ffff:0:1 10.0.0.9/8 ::/0 10.0.0.9/33 "
        "00:11:22:33:44:5g "
        "--contains 10.1.2.3");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(
        outcome.out,
        R"({"input":"01:00:5e:00:00:01","type":"mac","text":"01:00:5E:00:00:01","group":true,)"
        R"("locally_administered":false,"valid":true,"valid_individual":false})"
        "\n"
        R"({"input":"127.0.0.1","type":"ip","text":"127.0.0.1","version":"V4","loopback":true,)"
        R"("link_local":false,"multicast":false,"unicast":true,"unspecified":false,)"
        R"("benchmarking":false,"documentation":false,"private":false,"broadcast":false})"
        "\n"
        R"({"input":"::ffff:0:1","type":"ip","text":"::ffff:0.0.0.1","version":"V6",)"
        R"("loopback":false,"link_local":false,"multicast":false,"unicast":true,)"
        R"("unspecified":false,"benchmarking":false,"documentation":false,"unique_local":false,)"
        R"("mapped_v4":true,"compatible_v4":false})"
        "\n"
        R"({"input":"10.0.0.9/8","type":"prefix","text":"10.0.0.9/8","version":"V4",)"
        R"("address":"10.0.0.9","prefix_length":8,"netmask":"255.0.0.0",)"
        R"("host_identifier_mask":"0.255.255.255","network":"10.0.0.0/8",)"
        R"("is_network_address":false,"contains":true})"
        "\n"
        R"({"input":"::/0","type":"prefix","text":"::/0","version":"V6","address":"::",)"
        R"("prefix_length":0,"netmask":"::",)"
        R"("host_identifier_mask":"ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff","network":"::/0",)"
        R"("is_network_address":true,"contains":false})"
        "\n"
        R"-({"input":"10.0.0.9/33","error":"Prefix length 33 is greater than length of the )-"
        R"-(IPV4 address (32)"})-"
        "\n"
        R"({"input":"00:11:22:33:44:5g","error":"'00:11:22:33:44:5g' is no valid )"
        R"(MACAddress string"})"
        "\n");
    // colons where a MAC address has them, and elsewhere
    EXPECT_TRUE(has(nuvctl("address 1::22:33:44:55:66").out, R"("type":"ip")"));
    write("lines", "1.2.3.4\r\n\n::1");
    const Outcome lines = nuvctl("address < lines");
    EXPECT_EQ(lines.status, 0);
    EXPECT_EQ(std::count(lines.out.begin(), lines.out.end(), '\n'), 2);
    EXPECT_TRUE(has(lines.out, R"("text":"1.2.3.4")"));
    EXPECT_EQ(nuvctl("address < .").err, "nuvctl: standard input: Is a directory\n");
    EXPECT_EQ(nuvctl("address ::1 > /dev/full").status, 1);
    const Outcome wrong = nuvctl("address ::/0 --contains here");
    EXPECT_EQ(wrong.status, 2);
    EXPECT_TRUE(has(wrong.err, "Could not guess IP address version for \"here\""));
}

}  // namespace
}  // namespace nuv::test
