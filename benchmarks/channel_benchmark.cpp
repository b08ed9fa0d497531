// SPDX-License-Identifier: Apache-2.0
// The channel list of a radio: updates from reports beside a std::map of the same entries, and JSON
// to and from std::string beside YAJL called by hand, which is the floor.
#include <benchmark/benchmark.h>
#include <yajl/yajl_gen.h>
#include <yajl/yajl_tree.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "nuv/channel_list.hpp"
#include "nuv/json_serializable_type.hpp"

namespace {

using nuv::ChannelConfigBit;
using nuv::ChannelEntry;
using nuv::ChannelList;
using nuv::KiloHertz;
using nuv::serialization::JSONSerializableType;
using nuv::serialization::SerializationContext;
using nuv::serialization::YAJLNode;
using nuv::serialization::YAJLStream;

/// `count` channels, without those whose number gives `without` modulo `modulus`.
std::vector<ChannelEntry> channels(int count, int modulus = 1, int without = 1) {
    std::vector<ChannelEntry> entries;
    for (int i = 0; i < count; ++i) {
        if (i % modulus != without) {
            const auto number = static_cast<std::uint8_t>(1 + i);
            // Every fourth one with a mark, every second one with a power.
            entries.emplace_back(
                number, KiloHertz{5950000 + 5000 * number}, 0b101111, ChannelEntry::StateFlags(),
                i % 4 == 0 ? ChannelEntry::ConfigFlags(0b01, 1) : ChannelEntry::ConfigFlags(),
                i % 2 == 0 ? ChannelEntry::Power(23, 1) : ChannelEntry::Power(),
                ChannelEntry::Measurement(30, 1), ChannelEntry::Measurement(17, 1));
        }
    }
    return entries;
}

struct Map {
    explicit Map(const std::vector<ChannelEntry>& list) {
        for (const ChannelEntry& entry : list) {
            entries.emplace(entry.get_frequency(), entry);
        }
    }
    void update(const ChannelList& other) {
        if (other.get_update_type() == ChannelList::UpdateType::COMPLETE) {
            std::erase_if(entries, [&](const auto& entry) {
                return other.get_channel_entry(entry.first) == nullptr;
            });
        }
        for (const ChannelEntry& theirs : other.get_channels()) {
            const auto [at, fresh] = entries.try_emplace(theirs.get_frequency(), theirs);
            if (!fresh) {
                at->second.update(theirs);
            }
        }
    }

    std::map<KiloHertz, ChannelEntry> entries;
};

/// Complete reports by turns lack one channel of ten, each another; partial ones hold every second.
template <class List, ChannelList::UpdateType type>
void channel_list_update(benchmark::State& state) {
    const auto count = static_cast<int>(state.range(0));
    const bool complete = type == ChannelList::UpdateType::COMPLETE;
    const std::array reports{
        ChannelList(channels(count, complete ? 10 : 2, 1), type),
        ChannelList(channels(count, complete ? 10 : 2, complete ? 6 : 0), type)};
    List list(channels(count));
    std::size_t turn = 0;
    for ([[maybe_unused]] auto _ : state) {
        list.update(reports[++turn % 2]);
        benchmark::DoNotOptimize(list);
    }
}

// --- JSON

std::string write(const ChannelList& list) {
    std::ostringstream os;
    YAJLStream stream(os, YAJLStream::YAJLIndentation::COMPACT);
    SerializationContext ctx;
    JSONSerializableType<ChannelList>::serialize(stream, ctx, list);
    return std::move(os).str();
}

ChannelList read(const std::string& text) {
    std::istringstream is(text);
    YAJLNode node(is);
    SerializationContext ctx;
    ChannelList list;
    JSONSerializableType<ChannelList>::deserialize(node, ctx, "", list);
    return list;
}

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

void yajl_write_string(yajl_gen generator, std::string_view text) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
    require(yajl_gen_string(generator, bytes, text.size()) == yajl_gen_status_ok);
}

std::string yajl_write(const ChannelList& list) {
    const yajl_gen generator = yajl_gen_alloc(nullptr);
    yajl_gen_config(generator, yajl_gen_validate_utf8, 1);
    const auto ok = [](yajl_gen_status status) { require(status == yajl_gen_status_ok); };
    ok(yajl_gen_map_open(generator));
    yajl_write_string(generator, "channels");
    ok(yajl_gen_array_open(generator));
    for (const ChannelEntry& entry : list.get_channels()) {
        ok(yajl_gen_map_open(generator));
        yajl_write_string(generator, "channel");
        ok(yajl_gen_integer(generator, entry.get_channel()));
        yajl_write_string(generator, "frequency");
        ok(yajl_gen_integer(generator, entry.get_frequency().count()));
        yajl_write_string(generator, "config_flags");
        if (entry.get_config_flags().is_set()) {
            ok(yajl_gen_array_open(generator));
            for (std::size_t bit = 0; bit < 2; ++bit) {
                if (entry.get_config_flags().get()[bit]) {
                    yajl_write_string(generator,
                                      enum_to_string(static_cast<ChannelConfigBit>(bit)));
                }
            }
            ok(yajl_gen_array_close(generator));
        } else {
            ok(yajl_gen_null(generator));
        }
        yajl_write_string(generator, "max_regulatory_power");
        if (entry.get_max_regulatory_power().is_set()) {
            ok(yajl_gen_integer(generator,
                                static_cast<long long>(entry.get_max_regulatory_power().get())));
        } else {
            ok(yajl_gen_null(generator));
        }
        ok(yajl_gen_map_close(generator));
    }
    ok(yajl_gen_array_close(generator));
    ok(yajl_gen_map_close(generator));
    const unsigned char* text = nullptr;
    std::size_t size = 0;
    ok(yajl_gen_get_buf(generator, &text, &size));
    std::string document(reinterpret_cast<const char*>(text), size);
    yajl_gen_free(generator);
    return document;
}

yajl_val yajl_member(yajl_val node, const char* key, yajl_type type) {
    std::array<const char*, 2> path{key, nullptr};
    return yajl_tree_get(node, path.data(), type);
}

ChannelList yajl_read(const std::string& text) {
    std::array<char, 1024> error{};
    const yajl_val root = yajl_tree_parse(text.c_str(), error.data(), error.size());
    const auto* list = YAJL_GET_ARRAY(yajl_member(root, "channles", yajl_t_array));
    std::vector<ChannelEntry> entries;
    entries.reserve(list->len);
    for (std::size_t i = 0; i < list->len; ++i) {
        const yajl_val node = list->values[i];
        const yajl_val channel = yajl_member(node, "channel", yajl_t_number);
        const yajl_val frequency = yajl_member(node, "frequency", yajl_t_number);
        const yajl_val flags = yajl_member(node, "config_flags", yajl_t_any);
        const yajl_val power = yajl_member(node, "max_regulatory_power", yajl_t_any);
        require(channel != nullptr && frequency != nullptr);
        ChannelEntry::ConfigFlags config;
        if (flags != nullptr && !YAJL_IS_NULL(flags)) {
            require(YAJL_IS_ARRAY(flags));
            const auto* names = YAJL_GET_ARRAY(flags);
            require(std::all_of(names->values, names->values + names->len,
                                [](yajl_val name) { return YAJL_IS_STRING(name); }));
            config.set({});
        }
        require(power == nullptr || YAJL_IS_NULL(power) || YAJL_IS_INTEGER(power));
        entries.emplace_back(static_cast<std::uint8_t>(YAJL_GET_INTEGER(channel)),
                             KiloHertz{static_cast<std::int32_t>(YAJL_GET_INTEGER(frequency))}, 0,
                             ChannelEntry::StateFlags(), config, ChannelEntry::Power(),
                             ChannelEntry::Measurement(), ChannelEntry::Measurement());
    }
    yajl_tree_free(root);
    return ChannelList(std::move(entries));
}

template <auto write_list>
void channel_list_write(benchmark::State& state) {
    const ChannelList list(channels(60));
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(write_list(list));
    }
}

template <auto read_list>
void channel_list_read(benchmark::State& state) {
    std::string text = write(ChannelList(channels(60)));
    text.replace(text.find("channels"), 8, "channles");
    require(read_list(text).equivalent_to(read(text)));
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(read_list(text));
    }
}

// NOLINTNEXTLINE(bugprone-macro-parentheses): the argument is a type
#define UPDATE(List, type, name)                                        \
    BENCHMARK(channel_list_update<List, ChannelList::UpdateType::type>) \
        ->Name("channel_list_update_" name)                             \
        ->Arg(1)                                                        \
        ->Arg(20)                                                       \
        ->Arg(60)                                                       \
        ->Arg(200)
UPDATE(ChannelList, COMPLETE, "complete/nuv");
UPDATE(Map, COMPLETE, "complete/map");
UPDATE(ChannelList, PARTIAL, "partial/nuv");
UPDATE(Map, PARTIAL, "partial/map");
BENCHMARK(channel_list_write<write>)->Name("channel_list_write/nuv");
BENCHMARK(channel_list_write<yajl_write>)->Name("channel_list_write/yajl");
BENCHMARK(channel_list_read<read>)->Name("channel_list_read/nuv");
BENCHMARK(channel_list_read<yajl_read>)->Name("channel_list_read/yajl");

}  // namespace
