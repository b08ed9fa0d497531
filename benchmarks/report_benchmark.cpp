// SPDX-License-Identifier: Apache-2.0
// Decoding of what stations and access points report: the sample measurement and neighbor reports,
// mean time of one. No peer at hand reads them; the floor checks every bound of the element and its
// subelements and extracts nothing.
#include <benchmark/benchmark.h>

#include "nuv/ieee802_11/ieee802_11_measurement_report.hpp"
#include "nuv/ieee802_11/ieee802_11_neighbor_report.hpp"
#include "tests/support/vectors.hpp"

namespace {

using nuv::ieee802_11::IEEE802_11_MeasurementReport;
using nuv::ieee802_11::IEEE802_11_NeighborReport;
using Reports = std::vector<nuv::test::Sample>;

constexpr std::size_t header = 2;

template <class Decode>
void each(benchmark::State& state, const Reports& reports, Decode decode) {
    std::size_t next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(decode(reports[next].octets));
        next = next + 1 < reports.size() ? next + 1 : 0;
    }
}

template <class Report>
void nuv_memory(benchmark::State& state, const char* samples) {
    nuv::serialization::SerializationContext ctx;
    each(state, nuv::test::vectors(samples), [&](const nuv::test::Octets& octets) {
        Report report;
        return report.deserialize(octets, ctx);
    });
}

void tlv_walk(benchmark::State& state, const char* samples, std::size_t fixed_fields) {
    each(state, nuv::test::vectors(samples), [&](std::span<const std::uint8_t> rest) {
        std::size_t seen = rest.size() - header == rest[1] ? 1 : 0;
        rest = rest.subspan(std::min(header + fixed_fields, rest.size()));
        while (rest.size() >= header && rest.size() - header >= rest[1]) {
            seen += rest[0];
            rest = rest.subspan(header + rest[1]);
        }
        return seen;
    });
}

constexpr const char* neighbors = "element_neighbor_report";
constexpr const char* measurements = "element_measurement_report";

void neighbor_report(benchmark::State& state) {
    nuv_memory<IEEE802_11_NeighborReport>(state, neighbors);
}
void neighbor_report_walk(benchmark::State& state) { tlv_walk(state, neighbors, 13); }
void measurement_report(benchmark::State& state) {
    nuv_memory<IEEE802_11_MeasurementReport>(state, measurements);
}
void measurement_report_walk(benchmark::State& state) { tlv_walk(state, measurements, 29); }

BENCHMARK(neighbor_report)->Name("neighbor_report_decode/nuv");
BENCHMARK(neighbor_report_walk)->Name("neighbor_report_decode/tlv_walk");
BENCHMARK(measurement_report)->Name("measurement_report_decode/nuv");
BENCHMARK(measurement_report_walk)->Name("measurement_report_decode/tlv_walk");

}  // namespace
