// SPDX-License-Identifier: Apache-2.0
#include "nuv/nid.hpp"

#include <cstdio>
#include <ostream>

#include "internal/classic_stream.hpp"
#include "internal/no_valid_text.hpp"
#include "internal/octet_text.hpp"
#include "internal/quote.hpp"
#include "nuv/json_serializable_type.hpp"

namespace nuv::plc {

NID::NID(TextArgument text) {
    if (!parse_string(text)) {
        impl::throw_no_valid_text(text, "NID");
    }
}

bool NID::parse_string(TextArgument text) noexcept {
    Octets octets{};
    const bool valid = impl::parse_octet_text(text, octets);
    octets_ = valid ? octets : octets_;
    return valid;
}

std::string NID::to_string() const { return std::string(impl::OctetText<NID_LEN>(octets_).view()); }

std::ostream& operator<<(std::ostream& os, const NID& nid) {
    return impl::write_text(os, impl::OctetText<NID::NID_LEN>(nid.octets()).view());
}

}  // namespace nuv::plc

namespace nuv::serialization {

using plc::NID;

void JSONSerializableType<NID>::serialize(YAJLStream& stream, SerializationContext&,
                                          const NID& value) {
    impl::write_json_primitive<std::string>(stream,
                                            impl::OctetText<NID::NID_LEN>(value.octets()).view());
}

void JSONSerializableType<NID>::deserialize(YAJLNode& node, SerializationContext&,
                                            const std::string& key, NID& value) {
    std::string text;
    if (!node.get_string(key, text)) {
        // With a colon, unlike the other addresses: log readers match both.
        impl::throw_json_read_failed("NID", key, ", got: " + impl::quote(text));
    }
    // A scan on purpose, as lenient as it is: other writers of these texts rely on it.
    NID::Octets octets{};
    int consumed = 0;
    if (std::sscanf(text.c_str(), "%2hhx:%2hhx:%2hhx:%2hhx:%2hhx:%2hhx:%2hhx%n", &octets[0],
                    &octets[1], &octets[2], &octets[3], &octets[4], &octets[5], &octets[6],
                    &consumed) != 7 ||
        consumed != 3 * NID::NID_LEN - 1) {
        impl::throw_json_read_failed("NID", key, ", got sscanf read error");
    }
    value = NID(octets);
}

}  // namespace nuv::serialization
