// SPDX-License-Identifier: Apache-2.0
// A log record, masked and enabled, beside spdlog doing the same work: the same text made of the
// same values, the same place in the source, the same output, which drops it.
#include <benchmark/benchmark.h>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/sinks/null_sink.h>
#include <spdlog/spdlog.h>

#include "internal/log_module.hpp"
#include "nuv/logging/clogger_proxy.hpp"
#include "nuv/logging/clogmod_proxy.hpp"

namespace {

using nuv::logging::CloggerProxy;
using nuv::logging::ClogmodProxy;

constinit nuv::logging::LogModule log_module{"benchmark"};

const CloggerProxy& logger() {
    static const CloggerProxy proxy("", false, false);
    return proxy;
}

void drop(void* /*ctx*/, const char* line) { benchmark::DoNotOptimize(line); }

/// The one output of the default logger, as long as it lives: a callback that drops.
struct NullOutput {
    NullOutput() {
        logger().config_disable_stderr();
        logger().config_add_function(drop, nullptr, false, 31, CLOGGER_FIELD_NONE);
    }
    ~NullOutput() { logger().config_rm_function(drop, nullptr); }
};

/// The same for a file that is flushed after each record, with the usual fields.
struct FileOutput {
    FileOutput() {
        logger().config_disable_stderr();
        logger().config_add_file("/dev/null", 0, nullptr, 31,
                                 CLOGGER_FIELD_TIME | CLOGGER_FIELD_LEVEL | CLOGGER_FIELD_MODULE);
    }
    ~FileOutput() { logger().config_rm_file("/dev/null"); }
};

/// spdlog's counterparts.
struct PeerNullOutput {
    spdlog::logger logger{"benchmark", std::make_shared<spdlog::sinks::null_sink_mt>()};
};

struct PeerFileOutput {
    spdlog::logger logger{"benchmark", make_sink()};

    PeerFileOutput() { logger.flush_on(spdlog::level::trace); }

    static spdlog::sink_ptr make_sink() {
        auto sink = std::make_shared<spdlog::sinks::basic_file_sink_mt>("/dev/null");
        sink->set_pattern("%Y-%m-%dT%H:%M:%S.%eZ %l %n: %v");
        return sink;
    }
};

void masked(benchmark::State& state) {
    int value = 0;
    for (auto _ : state) {
        NUV_LOG(log_module, debug) << "station joined, channel " << ++value;
        benchmark::DoNotOptimize(value);
    }
}

void peer_masked(benchmark::State& state) {
    PeerNullOutput output;
    int value = 0;
    for (auto _ : state) {
        SPDLOG_LOGGER_CALL(&output.logger, spdlog::level::debug, "station joined, channel {}",
                           ++value);
        benchmark::DoNotOptimize(value);
    }
}

template <typename Output>
void enabled(benchmark::State& state) {
    const Output output;
    int value = 0;
    for (auto _ : state) {
        NUV_LOG(log_module, info) << "station joined, channel " << ++value;
    }
}

template <typename Output>
void peer_enabled(benchmark::State& state) {
    Output output;
    int value = 0;
    for (auto _ : state) {
        SPDLOG_LOGGER_CALL(&output.logger, spdlog::level::info, "station joined, channel {}",
                           ++value);
    }
}

/// The stream that users get: an ostream of its own for each record.
void proxy_stream(benchmark::State& state) {
    const NullOutput output;
    const ClogmodProxy proxy("benchmark");
    int value = 0;
    for (auto _ : state) {
        proxy.get_ostream(CLOGGER_INFO, "benchmarks/log_benchmark", __func__, __LINE__)
            << "station joined, channel " << ++value;
    }
}

BENCHMARK(masked)->Name("log_masked/nuv");
BENCHMARK(peer_masked)->Name("log_masked/spdlog");
BENCHMARK(enabled<NullOutput>)->Name("log_enabled/nuv");
BENCHMARK(peer_enabled<PeerNullOutput>)->Name("log_enabled/spdlog");
BENCHMARK(enabled<FileOutput>)->Name("log_to_file/nuv");
BENCHMARK(peer_enabled<PeerFileOutput>)->Name("log_to_file/spdlog");
BENCHMARK(proxy_stream)->Name("log_proxy_stream/nuv");
BENCHMARK(peer_enabled<PeerNullOutput>)->Name("log_proxy_stream/spdlog");

}  // namespace
