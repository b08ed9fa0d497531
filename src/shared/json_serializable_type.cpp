// SPDX-License-Identifier: Apache-2.0
#include "nuv/json_serializable_type.hpp"

#include <stdexcept>

#include "internal/no_valid_text.hpp"
#include "internal/quote.hpp"
#include "nuv/scoped_json.hpp"

namespace nuv::impl {

using serialization::ScopedJSONObject;

namespace {

[[noreturn]] void throw_json_element_failed(const std::exception& inner) {
    throw SerializationException(
        std::string("Deserialization of object inside array failed, got:\n") + inner.what());
}

}  // namespace

void throw_json_write_failed(std::string_view type) {
    throw SerializationException("Serialization of " + std::string(type) + " failed");
}

void throw_json_read_failed(std::string_view type, const std::string& key,
                            std::string_view reason) {
    throw SerializationException("Deserialization of " + std::string(type) + " " + quote(key) +
                                 " failed" + std::string(reason));
}

void throw_json_text_unknown(std::string_view type, const std::string& key,
                             const std::string& text) {
    throw_json_read_failed(type, key, ", got " + quote(text));
}

void rethrow_json_element_failure() {
    try {
        throw;
    } catch (const InvalidMACText&) {
        throw;  // Deliberate: callers find it bare wherever it stands.
    } catch (const std::invalid_argument& inner) {
        throw_json_element_failed(inner);
    } catch (const SerializationException& inner) {
        throw_json_element_failed(inner);
    }
}

void write_json_object(YAJLStream& stream, SerializationContext& ctx,
                       const JSONSerializable& value) {
    const ScopedJSONObject object(stream, "Serialization of JSONSerializable object failed: ");
    value.serialize_impl(stream, ctx);
}

void read_json_object(YAJLNode& node, SerializationContext& ctx, const std::string& key,
                      JSONSerializable& value) {
    if (key.empty()) {
        value.deserialize_impl(node, ctx);
        return;
    }
    YAJLNode object;
    if (!node.get_object(key, object)) {
        throw_json_read_failed("object", key, ", no object with such name found");
    }
    value.deserialize_impl(object, ctx);
}

}  // namespace nuv::impl
