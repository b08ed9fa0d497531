// SPDX-License-Identifier: Apache-2.0
// Decoding of association requests: the eight sample stations, mean time of a frame. The peer parses the
// whole frame, too, and is asked for everything that it offers typed; it knows HT and later
// capabilities, operating classes and reports not at all. The floor walks the elements and checks every
// bound.
#include <benchmark/benchmark.h>
#include <tins/tins.h>

#include <istream>

#include "nuv/ieee802_11/ieee802_11_assoc_request_frame.hpp"
#include "nuv/mem_buf.hpp"
#include "tests/support/vectors.hpp"

namespace {

using nuv::ieee802_11::AssocRequestFrame;
using Frame = nuv::test::Octets;

const std::vector<Frame>& frames() {
    static const std::vector<Frame> all = [] {
        std::vector<Frame> octets;
        for (const auto& station : nuv::test::stations()) {
            octets.push_back(station.octets);
        }
        return octets;
    }();
    return all;
}

std::span<const std::uint8_t> body(const Frame& frame) {
    return std::span(frame).subspan(nuv::test::mac_header_length);
}

/// Runs `decode` over the frames in turn; what is reported is the time of one.
template <class Decode>
void decode_frames(benchmark::State& state, Decode decode) {
    std::size_t next = 0;
    // One iteration is one frame; all are used equally often over the many iterations of a run.
    for (auto _ : state) {
        benchmark::DoNotOptimize(decode(frames()[next]));
        next = next + 1 < frames().size() ? next + 1 : 0;
    }
}

void nuv_memory(benchmark::State& state) {
    nuv::serialization::SerializationContext ctx;
    decode_frames(state, [&](const Frame& octets) {
        AssocRequestFrame frame;
        return frame.deserialize(body(octets), ctx);
    });
}

void nuv_stream(benchmark::State& state) {
    nuv::serialization::SerializationContext ctx;
    decode_frames(state, [&](const Frame& octets) {
        nuv::MemBuf buffer(body(octets));
        std::istream is(&buffer);
        AssocRequestFrame frame;
        frame.deserialize_impl(is, ctx);
        return is.rdstate();
    });
}

void libtins(benchmark::State& state) {
    using Tins::Dot11;
    decode_frames(state, [](const Frame& octets) {
        const Tins::Dot11AssocRequest frame(octets.data(),
                                            static_cast<std::uint32_t>(octets.size()));
        const auto has = [&frame](Dot11::OptionTypes type) {
            return frame.search_option(type) != nullptr;
        };
        std::size_t seen = frame.capabilities().ess() + frame.listen_interval();
        seen += has(Dot11::SSID) ? frame.ssid().size() : 0;
        seen += has(Dot11::SUPPORTED_RATES) ? frame.supported_rates().size() : 0;
        seen += has(Dot11::EXT_SUPPORTED_RATES) ? frame.extended_supported_rates().size() : 0;
        seen += has(Dot11::POWER_CAPABILITY) ? frame.power_capability().second : 0;
        seen += has(Dot11::SUPPORTED_CHANNELS) ? frame.supported_channels().size() : 0;
        seen += has(Dot11::QOS_CAPABILITY) ? frame.qos_capability() : 0;
        seen += has(Dot11::RSN) ? frame.rsn_information().pairwise_cyphers().size() : 0;
        seen += has(Dot11::VENDOR_SPECIFIC) ? frame.vendor_specific().data.size() : 0;
        return seen;
    });
}

void tlv_walk(benchmark::State& state) {
    decode_frames(state, [](const Frame& octets) {
        constexpr std::size_t fixed_fields = 4;
        std::size_t seen = 0;
        for (auto rest = body(octets).subspan(fixed_fields); rest.size() >= 2;) {
            const std::size_t length = std::size_t{2} + rest[1];
            if (length > rest.size()) {
                break;
            }
            seen += rest[0];
            rest = rest.subspan(length);
        }
        return seen;
    });
}

BENCHMARK(nuv_memory)->Name("assoc_request_decode/nuv");
BENCHMARK(libtins)->Name("assoc_request_decode/libtins");
BENCHMARK(tlv_walk)->Name("assoc_request_decode/tlv_walk");
BENCHMARK(nuv_stream)->Name("assoc_request_decode/nuv_istream");

}  // namespace
