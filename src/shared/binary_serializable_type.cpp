// SPDX-License-Identifier: Apache-2.0
#include "nuv/binary_serializable_type.hpp"

#include <istream>
#include <ostream>

#include "internal/masked_exceptions.hpp"

namespace nuv::impl {

using serialization::SerializationException;

void write_octets(std::ostream& os, const std::uint8_t* octets, std::size_t size,
                  const char* failure) {
    write_masked(os, reinterpret_cast<const char*>(octets), static_cast<std::streamsize>(size));
    if (os.fail()) {
        throw SerializationException(failure);
    }
}

std::size_t read_available(std::istream& is, std::uint8_t* octets, std::size_t size) {
    const MaskedExceptions masked(is);
    is.read(reinterpret_cast<char*>(octets), static_cast<std::streamsize>(size));
    return static_cast<std::size_t>(is.gcount());
}

void check_read(const std::istream& is, const char* failure) {
    if (is.fail()) {
        throw SerializationException(failure);
    }
}

}  // namespace nuv::impl

namespace nuv::serialization {

void BinarySerializableType<std::string>::serialize(std::ostream& os, SerializationContext& /*ctx*/,
                                                    const std::string& value) {
    if (!value.empty()) {
        impl::write_octets(os, reinterpret_cast<const std::uint8_t*>(value.data()), value.size(),
                           impl::octet_texts.serialize);
    }
}

void BinarySerializableType<std::string>::deserialize(std::istream& /*is*/,
                                                      SerializationContext& /*ctx*/,
                                                      std::string& /*value*/) {
    throw SerializationException("Raw deserialization of std::string not supported!");
}

void BinarySerializableType<std::stringstream>::serialize(std::ostream& os,
                                                          SerializationContext& /*ctx*/,
                                                          const std::stringstream& value) {
    std::stringbuf& source = *value.rdbuf();
    const std::streamoff begin = source.pubseekoff(0, std::ios_base::cur, std::ios_base::in);
    // A stream that is only written to has no place to read from.
    const std::string_view rest =
        begin < 0 ? std::string_view() : source.view().substr(static_cast<std::size_t>(begin));
    const std::streamsize taken =
        impl::write_masked(os, rest.data(), static_cast<std::streamsize>(rest.size()));
    source.pubseekoff(taken, std::ios_base::cur, std::ios_base::in);
    if (os.fail()) {
        throw SerializationException("Serialization of type std::stringstream failed.");
    }
}

void BinarySerializableType<std::stringstream>::deserialize(std::istream& /*is*/,
                                                            SerializationContext& /*ctx*/,
                                                            std::stringstream& /*value*/) {
    throw SerializationException("Deserialization of type std::stringstream not supported!");
}

}  // namespace nuv::serialization
