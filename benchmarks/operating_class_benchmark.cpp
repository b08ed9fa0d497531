// SPDX-License-Identifier: Apache-2.0
// Deduction of the operating class of a channel, by its width. The floor is a walk by hand over a
// plain array of runs of frequencies, one or a few for each class, which knows no behaviors and not
// every class. The counter tells the allocations of one deduction.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdlib>
#include <new>

#include "nuv/channel_info.hpp"
#include "nuv/operating_class_deduction.hpp"

namespace {
std::size_t allocations = 0;
}

// Out of line, or g++ takes the pair for a mismatch.
[[gnu::noinline]] void* operator new(std::size_t size) {
    ++allocations;
    void* memory = std::malloc(size);  // NOLINT(cppcoreguidelines-no-malloc)
    return memory != nullptr ? memory : throw std::bad_alloc();
}
// NOLINTNEXTLINE(cppcoreguidelines-no-malloc)
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
// NOLINTNEXTLINE(cppcoreguidelines-no-malloc)
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace {

using nuv::ChannelInfo;
using nuv::ChannelWidth;
using nuv::KiloHertz;
using nuv::OperatingClassDeduction::Region;

ChannelInfo info(std::int64_t width) {
    struct Channel {
        int primary, center, secondary;
    };
    static constexpr Channel channels[] = {{5955000, 5955000, 0},       {5220000, 5230000, 0},
                                           {5955000, 5985000, 0},       {5955000, 6025000, 0},
                                           {5955000, 5985000, 6385000}, {5955000, 6105000, 0}};
    const auto& [primary, center, secondary] = channels[width];
    return {{KiloHertz{primary}, 1},
            {{KiloHertz{center}, static_cast<ChannelWidth>(width), 0}, 1},
            KiloHertz{secondary},
            {}};
}

void deduce(benchmark::State& state) {
    using nuv::OperatingClassDeduction::get_opclasses_from_channel_info;
    const ChannelInfo channel = info(state.range(0));
    benchmark::DoNotOptimize(get_opclasses_from_channel_info(channel, Region::GLOBAL));
    allocations = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(get_opclasses_from_channel_info(channel, Region::GLOBAL));
    }
    state.counters["allocations"] =
        benchmark::Counter(static_cast<double>(allocations), benchmark::Counter::kAvgIterations);
}

struct Run {
    std::uint8_t opclass;
    ChannelWidth width;
    std::int32_t first, last, step;  // kHz
};
constexpr Run runs[] = {
    {81, ChannelWidth::HT20, 2412000, 2472000, 5000},
    {82, ChannelWidth::HT20, 2484000, 2484000, 5000},
    {115, ChannelWidth::HT20, 5180000, 5240000, 20000},
    {118, ChannelWidth::HT20, 5260000, 5320000, 20000},
    {121, ChannelWidth::HT20, 5500000, 5720000, 20000},
    {125, ChannelWidth::HT20, 5745000, 5885000, 20000},
    {131, ChannelWidth::HT20, 5955000, 7115000, 20000},
    {136, ChannelWidth::HT20, 5935000, 5935000, 20000},
    {116, ChannelWidth::HT40, 5180000, 5220000, 40000},
    {117, ChannelWidth::HT40, 5200000, 5240000, 40000},
    {132, ChannelWidth::HT40, 5955000, 7095000, 20000},
    {128, ChannelWidth::HT80, 5180000, 5320000, 20000},
    {128, ChannelWidth::HT80, 5500000, 5720000, 20000},
    {133, ChannelWidth::HT80, 5955000, 7055000, 20000},
    {129, ChannelWidth::HT160, 5180000, 5320000, 20000},
    {134, ChannelWidth::HT160, 5955000, 7055000, 20000},
    {130, ChannelWidth::HT8080, 5210000, 5855000, 5000},
    {135, ChannelWidth::HT8080, 5985000, 7025000, 80000},
    {137, ChannelWidth::HT320, 5955000, 7055000, 20000},
};

std::uint8_t scan(ChannelWidth width, std::int32_t frequency) {
    for (const Run& run : runs) {
        if (run.width == width && run.first <= frequency && frequency <= run.last &&
            (frequency - run.first) % run.step == 0) {
            return run.opclass;
        }
    }
    return 0;
}

void deduce_by_scan(benchmark::State& state) {
    const ChannelInfo channel = info(state.range(0));
    for (auto _ : state) {
        ChannelInfo const* its = &channel;
        benchmark::DoNotOptimize(its);
        const ChannelWidth width = its->get_primary_segment().get().width;
        const bool pair = width == ChannelWidth::HT8080;
        benchmark::DoNotOptimize(
            scan(pair ? ChannelWidth::HT80 : width, its->get_primary_frequency().get().count()));
        if (pair) {
            benchmark::DoNotOptimize(scan(width, its->get_secondary_center_frequency().count()));
        }
    }
}

// By number: 20, 40, 80, 160, 80+80 and 320 MHz.
BENCHMARK(deduce)->Name("opclass_deduction/nuv")->DenseRange(0, 5);
BENCHMARK(deduce_by_scan)->Name("opclass_deduction/scan")->DenseRange(0, 5);

}  // namespace
