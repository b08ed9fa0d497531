// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "nuv/export.hpp"
#include "nuv/json_integer.hpp"

struct yajl_val_s;

namespace nuv::serialization {

/// A value in a parsed JSON document, from which members are read by name.
///
/// A node made by parsing owns the document's tree. Nodes filled by get_object(), get_array() and
/// get_array_element() borrow from it and must not outlive it. A default-constructed node is empty.
///
/// Getters return false, and leave their output untouched, when the node is empty or holds no such
/// value. Where a member has several of the same name the first one counts. One thread at a time.
class NUV_EXPORT YAJLNode {
public:
    YAJLNode() noexcept = default;
    /// How deep lists and objects may lie in each other. Deliberate: as deep as YAJLStream can
    /// write them and a tree of them can be freed on a small stack.
    static constexpr unsigned MAX_DEPTH = 127;

    /// Reads `is` to its end and parses what came as one JSON document. A NUL byte ends the
    /// document. Throws SerializationException with the parser's text when it is malformed, for more
    /// than MAX_DEPTH levels, and when reading sets the bad bit; nothing else, whatever the
    /// exceptions that `is` is set to throw.
    explicit YAJLNode(std::istream& is);

    /// True when this is an object with a member `key`, whatever its type.
    bool probe_name(const std::string& key) const;

    /// Lists the names of the members, in their order; false when this is no object.
    bool get_names(std::vector<std::string>& names) const;

    /// Finds the object that is the member `key`. `out` may be this node, unless it owns the tree.
    bool get_object(const std::string& key, YAJLNode& out) const;
    /// Finds the array that is the member `key`, or this node when `key` is empty.
    bool get_array(const std::string& key, YAJLNode& out) const;
    /// Number of elements; false when this is no array.
    bool get_array_size(std::uint32_t& size) const;
    /// Finds element `index`, counted from 0; false when this is no array or has no such element.
    bool get_array_element(std::uint32_t index, YAJLNode& out) const;

    /// The getters below read the member `key`, or this node itself when `key` is empty.
    bool get_bool(const std::string& key, bool& out) const;
    bool get_null(const std::string& key) const;
    /// Reads a number that is an integer of signed 64 bits, cut to the low bits that fit into T;
    /// false for a fraction, an exponent and anything beyond 64 bits.
    template <JSONInteger T>
    bool get_integer(const std::string& key, T& out) const {
        std::int64_t value = 0;
        if (!get_int64(key, value)) {
            return false;
        }
        out = static_cast<T>(value);
        return true;
    }
    bool get_string(const std::string& key, std::string& out) const;

private:
    /// Only what was parsed is freed; what is borrowed is let go.
    struct FreeOwned {
        bool owns_tree;
        void operator()(yajl_val_s* tree) const noexcept;
    };

    bool borrow(yajl_val_s* value, YAJLNode& out) const;
    bool get_int64(const std::string& key, std::int64_t& out) const;

    std::unique_ptr<yajl_val_s, FreeOwned> value_;
};

}  // namespace nuv::serialization
