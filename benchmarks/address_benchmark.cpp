// SPDX-License-Identifier: Apache-2.0
// Texts of IP addresses, beside inet_pton and inet_ntop of the C library, which read strict texts
// only. Both sides print into a std::string.
#include <arpa/inet.h>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <type_traits>

#include "nuv/ipv4_address.hpp"
#include "nuv/ipv6_address.hpp"

namespace {

using nuv::IPv4Address;
using nuv::IPv6Address;

template <class Address>
constexpr int family = std::is_same_v<Address, IPv4Address> ? AF_INET : AF_INET6;

const std::array<std::string, 4>& texts(IPv4Address) {
    static const std::array<std::string, 4> list{"192.168.1.1", "10.0.0.1", "255.255.255.255",
                                                 "8.8.8.8"};
    return list;
}
const std::array<std::string, 4>& texts(IPv6Address) {
    static const std::array<std::string, 4> list{"fe80::1ff:fe23:4567:890a", "2001:db8:0:1:1:1:1:1",
                                                 "2001:db8::1", "::ffff:192.168.1.1"};
    return list;
}

template <class Address>
void nuv_parse(benchmark::State& state) {
    Address address;
    for ([[maybe_unused]] auto _ : state) {
        for (const std::string& text : texts(Address())) {
            address.from_string(text);
            benchmark::DoNotOptimize(address);
        }
    }
}

template <class Address>
void inet_pton_parse(benchmark::State& state) {
    std::array<std::uint8_t, 16> octets{};
    for ([[maybe_unused]] auto _ : state) {
        for (const std::string& text : texts(Address())) {
            if (inet_pton(family<Address>, text.c_str(), octets.data()) != 1) {
                std::abort();
            }
            benchmark::DoNotOptimize(octets);
        }
    }
}

template <class Address>
void nuv_print(benchmark::State& state) {
    std::array<Address, 4> addresses;
    std::transform(texts(Address()).begin(), texts(Address()).end(), addresses.begin(),
                   [](const std::string& text) { return Address(text); });
    for ([[maybe_unused]] auto _ : state) {
        for (const Address& address : addresses) {
            benchmark::DoNotOptimize(address.to_string());
        }
    }
}

template <class Address>
void inet_ntop_print(benchmark::State& state) {
    std::array<Address, 4> addresses;
    std::transform(texts(Address()).begin(), texts(Address()).end(), addresses.begin(),
                   [](const std::string& text) { return Address(text); });
    for ([[maybe_unused]] auto _ : state) {
        for (const Address& address : addresses) {
            std::array<char, INET6_ADDRSTRLEN> text;
            benchmark::DoNotOptimize(std::string(inet_ntop(
                family<Address>, address.as_bytes_span_raw().data(), text.data(), text.size())));
        }
    }
}

BENCHMARK(nuv_parse<IPv4Address>)->Name("ipv4_parse/nuv");
BENCHMARK(inet_pton_parse<IPv4Address>)->Name("ipv4_parse/inet_pton");
BENCHMARK(nuv_parse<IPv6Address>)->Name("ipv6_parse/nuv");
BENCHMARK(inet_pton_parse<IPv6Address>)->Name("ipv6_parse/inet_pton");
BENCHMARK(nuv_print<IPv4Address>)->Name("ipv4_print/nuv");
BENCHMARK(inet_ntop_print<IPv4Address>)->Name("ipv4_print/inet_ntop");
BENCHMARK(nuv_print<IPv6Address>)->Name("ipv6_print/nuv");
BENCHMARK(inet_ntop_print<IPv6Address>)->Name("ipv6_print/inet_ntop");

}  // namespace
