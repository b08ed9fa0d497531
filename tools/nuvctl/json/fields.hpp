// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "nuv/ieee802_11/ieee802_11_field_source.hpp"
#include "nuv/yajl_node.hpp"

namespace nuvctl {

/// What is wrong with a JSON object, in words for people, behind the path of the place:
/// "elements[3].fields.mdid: missing".
class FieldError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The fields in a JSON object. Every function throws FieldError.
class JsonFields final : public nuv::ieee802_11::IEEE802_11_FieldSource {
public:
    explicit JsonFields(nuv::serialization::YAJLNode document);

    /// A member that is null counts as absent.
    bool has(std::string_view name) override;
    std::uint64_t number(std::string_view name, unsigned bits) override;
    std::string text(std::string_view name) override;
    std::vector<std::uint8_t> octets(std::string_view name) override;
    std::size_t open_list(std::string_view name) override;
    void close_list() override { levels_.pop_back(); }
    void open_object(std::string_view name) override;
    /// A member that nobody asked for is an error; so misspelt names are found.
    void close_object() override;
    /// Number of members of the object that is open.
    std::size_t size() override;
    [[noreturn]] void fail(std::string_view message) override;
    void note(std::string_view message) override { notes_.push_back(at_last(message)); }

    /// Takes a member for known that is not read.
    void ignore(std::string_view name);
    /// Closes an object of which other members are not looked at.
    void leave_object() { levels_.pop_back(); }
    /// What was noted, behind the path of the place as in a FieldError.
    const std::vector<std::string>& notes() const { return notes_; }
    /// To be called at the end: closes the document's object.
    void finish() { close_object(); }

private:
    /// A list or an object that is open.
    struct Level {
        nuv::serialization::YAJLNode node;
        std::string path;
        bool is_list;
        std::string asked_last;  // path
        std::set<std::string> asked;
        std::uint32_t next = 0;
    };

    /// Calls `get` with a node and the name under which the value is there, empty for the node itself.
    /// `kind` is the complaint when it returns false.
    template <class Get>
    void read(std::string_view name, const char* kind, Get get);
    void open(nuv::serialization::YAJLNode node, bool is_list);
    std::string path_of(std::string_view member) const;
    std::string at_last(std::string_view message) const;

    std::vector<Level> levels_;
    std::vector<std::string> notes_;
};

}  // namespace nuvctl
