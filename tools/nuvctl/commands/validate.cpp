// SPDX-License-Identifier: Apache-2.0
#include <iostream>
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
            const auto fail = [&](const char* reason) {
                throw FileError("line " + std::to_string(reader.line()) + ": " + reason);
            };
            ++documents_;
            try {
                YAJLNode document = parse_json(text);
                where_ = {name, reader.line()};
                check_document(document);
            } catch (const FieldError& error) {
                fail(error.what());
            } catch (const nuv::serialization::SerializationException& error) {
                fail(error.what());
            }
        }
    }

    /// A list, an entry or an info, whichever its members tell it is.
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
            check_entry(document);
        } else if (document.probe_name("primary_freq") || document.probe_name("primary_center")) {
            nuv::ChannelInfo info;
            check(read(document, info), "channel info");
        } else {
            throw FieldError("no channel list, channel entry or channel info");
        }
    }

    void check_list(YAJLNode& document, const std::string& key) {
        YAJLNode list;
        std::uint32_t size = 0;
        if (!document.get_array(key, list) || !list.get_array_size(size)) {
            throw FieldError(key + ": not a list");
        }
        for (std::uint32_t i = 0; i < size; ++i) {
            YAJLNode element;
            list.get_array_element(i, element);
            check_entry(element);
        }
    }

    void check_entry(YAJLNode& node) {
        nuv::ChannelEntry entry;
        read(node, entry);
        const std::string about = "channel " + std::to_string(entry.get_channel()) + " at " +
                                  std::to_string(entry.get_frequency().count()) + " kHz";
        // The library cuts what it reads to the width of the field.
        std::int64_t number = 0;
        if (node.get_integer("channel", number) && number != entry.get_channel()) {
            add_finding(about, "the channel in JSON is " + std::to_string(number));
            return;
        }
        if (node.get_integer("frequency", number) && number != 0 &&
            number != entry.get_frequency().count()) {
            add_finding(about, "the frequency in JSON is " + std::to_string(number));
            return;
        }
        // JSON does not tell the capabilities, so their absence is no finding.
        entry.set_capability_flags(channel_width_capability_bits(nuv::ChannelWidth::HT20));
        check(entry, about);
    }

    template <class T>
    static const T& read(YAJLNode& node, T& value) {
        nuv::serialization::SerializationContext ctx;
        value.deserialize_impl(node, ctx);
        return value;
    }

    template <class T>
    void check(const T& value, const std::string& about) {
        warning_.clear();
        if (!is_valid(value)) {
            add_finding(about, warning_);
        }
    }

    static void remember(void* self, const char* text) noexcept {
        static_cast<Validator*>(self)->warning_ = text;
    }

    void add_finding(const std::string& about, const std::string& text) {
        ++findings_;
        write_object(std::cout, false, [&](Json& json) {
            json.boolean("valid", false);
            json.text("file", to_utf8(where_.file));
            json.number("line", where_.line);
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
