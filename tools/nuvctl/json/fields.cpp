// SPDX-License-Identifier: Apache-2.0
#include "json/fields.hpp"

#include <utility>

#include "text/text.hpp"

namespace nuvctl {

using nuv::serialization::YAJLNode;

JsonFields::JsonFields(YAJLNode document) {
    std::vector<std::string> names;
    if (!document.get_names(names)) {
        throw FieldError("not a JSON object");
    }
    levels_.push_back({std::move(document), {}, false, {}, {}});
}

bool JsonFields::has(std::string_view name) {
    const Level& level = levels_.back();
    const std::string key(name);
    if (level.node.get_null(key)) {
        ignore(name);
        return false;
    }
    return level.node.probe_name(key);
}

std::uint64_t JsonFields::number(std::string_view name, unsigned bits) {
    std::int64_t value = 0;
    read(name, "not a whole number", [&value](const YAJLNode& node, const std::string& key) {
        return node.get_integer(key, value);
    });
    // Of 64 bits the greatest one is the sign in JSON.
    const auto number = static_cast<std::uint64_t>(value);
    if (bits < 64 && number >> bits != 0) {
        fail(std::to_string(value) + " does not fit " + std::to_string(bits) + " bits");
    }
    return number;
}

std::string JsonFields::text(std::string_view name) {
    std::string value;
    read(name, "not a text", [&value](const YAJLNode& node, const std::string& key) {
        return node.get_string(key, value);
    });
    return value;
}

std::vector<std::uint8_t> JsonFields::octets(std::string_view name) {
    const auto value = from_hex(text(name));
    if (!value) {
        fail("not two hexadecimal digits an octet");
    }
    return *value;
}

std::size_t JsonFields::open_list(std::string_view name) {
    YAJLNode list;
    std::uint32_t size = 0;
    read(name, "not a list", [&](const YAJLNode& node, const std::string& key) {
        return node.get_array(key, list) && list.get_array_size(size);
    });
    open(std::move(list), true);
    return size;
}

void JsonFields::open_object(std::string_view name) {
    YAJLNode object;
    read(name, "not an object", [&](YAJLNode& node, const std::string& key) {
        std::vector<std::string> names;
        if (!key.empty()) {
            return node.get_object(key, object);
        }
        object = std::move(node);
        return object.get_names(names);
    });
    open(std::move(object), false);
}

void JsonFields::close_object() {
    Level& level = levels_.back();
    std::vector<std::string> names;
    level.node.get_names(names);
    for (const std::string& name : names) {
        if (level.asked.erase(name) == 0) {
            level.asked_last = path_of(name);
            fail("not known here, or there twice");
        }
    }
    levels_.pop_back();
}

void JsonFields::fail(std::string_view message) { throw FieldError(at_last(message)); }

void JsonFields::ignore(std::string_view name) { levels_.back().asked.emplace(name); }

std::size_t JsonFields::size() {
    std::vector<std::string> names;
    levels_.back().node.get_names(names);
    return names.size();
}

template <class Get>
void JsonFields::read(std::string_view name, const char* kind, Get get) {
    Level& level = levels_.back();
    const std::string key(name);
    bool there = false;
    bool fits = false;
    if (level.is_list) {
        YAJLNode entry;
        level.asked_last = level.path + "[" + std::to_string(level.next) + "]";
        there = level.node.get_array_element(level.next++, entry);
        fits = there && get(entry, key);
    } else {
        level.asked_last = path_of(name);
        level.asked.insert(key);
        there = level.node.probe_name(key) && !level.node.get_null(key);
        fits = there && get(level.node, key);
    }
    if (!fits) {
        fail(there ? kind : "missing");
    }
}

void JsonFields::open(YAJLNode node, bool is_list) {
    const std::string path = levels_.back().asked_last;
    levels_.push_back({std::move(node), path, is_list, path, {}});
}

std::string JsonFields::at_last(std::string_view message) const {
    return levels_.back().asked_last + ": " + std::string(message);
}

std::string JsonFields::path_of(std::string_view member) const {
    const std::string& path = levels_.back().path;
    return path + (path.empty() ? "" : ".") + std::string(member);
}

}  // namespace nuvctl
