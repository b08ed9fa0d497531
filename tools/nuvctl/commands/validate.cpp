// SPDX-License-Identifier: Apache-2.0
#include <cstdint>
#include <iostream>
#include <limits>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "commands/commands.hpp"
#include "commands/report.hpp"
#include "json/fields.hpp"
#include "json/reader.hpp"
#include "json/writer.hpp"
#include "nuv/channel_entry.hpp"
#include "nuv/channel_info.hpp"
#include "nuv/frequency_conversion.hpp"
#include "nuv/logging/clogger_proxy.hpp"
#include "nuv/logging/string_to_logmask.hpp"
#include "nuv/serialization_exception.hpp"
#include "nuv/type_validator.hpp"
#include "text/text.hpp"

namespace nuvctl {

namespace {

using nuv::serialization::YAJLNode;

/// A member that is a number, and what fits the field that the library cuts it to.
struct Number {
    const char* name;
    std::int64_t least, greatest;
    bool is_frequency;  // in kHz
};
template <class Field>
constexpr Number number(const char* name, bool is_frequency = false) {
    return {name, std::numeric_limits<Field>::min(), std::numeric_limits<Field>::max(),
            is_frequency};
}
constexpr Number frequency(const char* name) { return number<std::int32_t>(name, true); }

constexpr Number numbers_of_entry[] = {number<std::uint8_t>("channel"), frequency("frequency"),
                                       number<std::int32_t>("max_regulatory_power")};
constexpr Number numbers_of_info[] = {
    frequency("primary_freq"), frequency("primary_center"), frequency("secondary_center"),
    number<std::uint16_t>("puncturing_map"), number<std::int32_t>("max_regulatory_power")};

/// The member that the text of an exception names in quotes, or nothing.
std::string member_in(const std::string& text) {
    const std::size_t begin = text.find('"');
    return begin == std::string::npos
               ? ""
               : text.substr(begin + 1, text.find('"', begin + 1) - begin - 1);
}

std::string path_of(const std::string& object, const std::string& member) {
    return object + (object.empty() || member.empty() ? "" : ".") + member;
}

std::string text_of(const nuv::ChannelEntry& entry) {
    return "channel " + std::to_string(entry.get_channel()) + " at " +
           std::to_string(entry.get_frequency().count()) + " kHz";
}

class Validator {
public:
    Validator() {
        // The library says in its log what is wrong.
        log_.config_disable_stderr();
        log_.config_add_function(&remember, this, false, nuv::logging::string_to_logmask("WARN"),
                                 CLOGGER_FIELD_NONE);
    }
    ~Validator() { log_.config_rm_function(&remember, this); }
    Validator(const Validator&) = delete;
    Validator& operator=(const Validator&) = delete;

    /// The exit status.
    int run(const std::vector<std::string>& files) {
        bool all_read = true;
        for (const std::string& name : files) {
            try {
                validate(name);
            } catch (const FileError& error) {
                report(name + ": " + error.what());
                all_read = false;
            }
        }
        if (all_read && documents_ == 0) {
            report("no JSON to validate");
            return 1;
        }
        if (all_read && findings_ == 0) {
            write_object(std::cout, false, [](Json& json) { json.boolean("valid", true); });
        }
        return all_read && findings_ == 0 ? 0 : 1;
    }

private:
    void validate(const std::string& name) {
        JsonReader reader(name);
        for (std::string text = reader.next(); !text.empty(); text = reader.next()) {
            ++documents_;
            where_ = {name, reader.line()};
            try {
                YAJLNode document = parse_json(text);
                check_document(document);
            } catch (const FieldError& error) {
                throw FileError("line " + std::to_string(reader.line()) + ": " + error.what());
            }
        }
    }

    /// A list, an entry or an info, according to its members.
    void check_document(YAJLNode& document) {
        bool is_list = false;
        for (const char* key : {"channels", "channles"}) {
            if (document.probe_name(key)) {
                is_list = true;
                check_list(document, key);
            }
        }
        if (is_list) {
            return;
        }
        if (document.probe_name("channel")) {
            check_entry(document, {});
        } else if (document.probe_name("primary_freq") || document.probe_name("primary_center")) {
            const std::string about = "channel info";
            const auto info = read<nuv::ChannelInfo>(document, {}, about, numbers_of_info);
            if (info && fits(document, {}, about, numbers_of_info)) {
                check(*info, {}, about);
            }
        } else {
            add_finding({}, "JSON value", "no channel list, channel entry or channel info");
        }
    }

    void check_list(YAJLNode& document, const std::string& key) {
        YAJLNode list;
        std::uint32_t size = 0;
        if (!document.get_array(key, list) || !list.get_array_size(size)) {
            add_finding(key, "channel list", "not a list");
            return;
        }
        std::map<nuv::KiloHertz, std::string> paths;
        for (std::uint32_t i = 0; i < size; ++i) {
            YAJLNode element;
            list.get_array_element(i, element);
            const std::string path = key + '[' + std::to_string(i) + ']';
            const auto entry = check_entry(element, path);
            if (!entry) {
                continue;
            }
            const auto [first, is_new] = paths.try_emplace(entry->get_frequency(), path);
            if (!is_new) {
                add_finding(path, text_of(*entry), "same frequency as " + first->second);
            }
        }
    }

    /// The entry, unless it cannot be read as it is in JSON.
    std::optional<nuv::ChannelEntry> check_entry(YAJLNode& node, const std::string& path) {
        auto entry = read<nuv::ChannelEntry>(node, path, "channel entry", numbers_of_entry);
        if (!entry || !fits(node, path, text_of(*entry), numbers_of_entry)) {
            return std::nullopt;
        }
        // JSON does not tell the capabilities, so their absence is no finding.
        entry->set_capability_flags(channel_width_capability_bits(nuv::ChannelWidth::HT20));
        check(*entry, path, text_of(*entry));
        return entry;
    }

    template <class T>
    std::optional<T> read(YAJLNode& node, const std::string& path, const std::string& about,
                          std::span<const Number> numbers) {
        T value;
        nuv::serialization::SerializationContext ctx;
        try {
            value.deserialize_impl(node, ctx);
        } catch (const nuv::serialization::SerializationException& error) {
            add_finding(path_of(path, member_in(error.what())), about, error.what());
            fits(node, path, about, numbers);
            return std::nullopt;
        }
        return value;
    }

    /// Whether the library keeps these numbers, and no frequency looks like one in MHz.
    bool fits(const YAJLNode& node, const std::string& path, const std::string& about,
              std::span<const Number> numbers) {
        const std::uint64_t findings = findings_;
        for (const auto& [name, least, greatest, is_frequency] : numbers) {
            std::int64_t number = 0;
            node.get_integer(name, number);
            const std::string hint = is_frequency ? megahertz_hint(number) : "";
            if (number < least || number > greatest || !hint.empty()) {
                add_finding(
                    path_of(path, name), about,
                    std::string("the ") + name + " in JSON is " + std::to_string(number) + hint);
            }
        }
        return findings_ == findings;
    }

    template <class T>
    void check(const T& value, const std::string& path, const std::string& about) {
        warning_.clear();
        if (!is_valid(value)) {
            add_finding(path, about, warning_);
        }
    }

    static void remember(void* self, const char* text) noexcept {
        static_cast<Validator*>(self)->warning_ = text;
    }

    void add_finding(const std::string& path, const std::string& about, const std::string& text) {
        ++findings_;
        write_object(std::cout, false, [&](Json& json) {
            json.boolean("valid", false);
            json.text("file", to_utf8(where_.file));
            json.number("line", where_.line);
            json.text("path", path);
            json.text("about", about);
            // Of channel 0 the validator says nothing.
            text.empty() ? json.null("text") : json.text("text", text);
        });
    }

    struct Where {
        std::string file;
        std::uint64_t line = 0;
    };

    const nuv::logging::CloggerProxy log_{{}, false, false};
    std::string warning_;  // the last one
    Where where_;
    std::uint64_t documents_ = 0;
    std::uint64_t findings_ = 0;
};

}  // namespace

int run_validate(const ValidateOptions& options) { return Validator().run(options.files); }

}  // namespace nuvctl
