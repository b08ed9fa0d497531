// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_rsn_element.hpp"

#include "internal/ieee802_11/element_layout.hpp"

namespace nuv::ieee802_11 {

using serialization::BinarySerializableType;
using serialization::SerializationContext;
using serialization::SerializationException;

namespace {

constexpr unsigned rsn_version = 1;
constexpr std::uint32_t version_size = 2;
constexpr std::uint32_t suite_size = 4;
constexpr std::uint32_t count_size = 2;
constexpr std::uint32_t capabilities_size = 2;
constexpr std::uint32_t pmkid_size = 16;

/// Two octets, least significant first: what a bit set of 16 is on the wire.
using LittleEndian16 = std::bitset<16>;

unsigned read_little_endian_16(impl::ByteCursor& body) {
    LittleEndian16 bits;
    body.read(bits);
    return static_cast<unsigned>(bits.to_ullong());
}

void write_little_endian_16(std::ostream& os, SerializationContext& ctx, std::size_t value) {
    BinarySerializableType<LittleEndian16>::serialize(os, ctx, LittleEndian16(value));
}

template <class List>
void read_counted(impl::ByteCursor& body, std::size_t entry_size, const char* size_error,
                  List& list) {
    const unsigned count = read_little_endian_16(body);
    if (count > IEEE802_11_RSNElement::MAX_LIST_SIZE || body.remaining() < entry_size * count) {
        throw SerializationException(size_error);
    }
    layout::read_list(body, count, list);
}

template <class List>
void write_counted(std::ostream& os, SerializationContext& ctx, const List& list) {
    write_little_endian_16(os, ctx, list.size());
    BinarySerializableType<List>::serialize(os, ctx, list);
}

}  // namespace

// | size             | field                   | clause     |
// |------------------|-------------------------|------------|
// | 2                | version                 | 9.4.2.24.1 |
// | 4                | group data cipher suite | 9.4.2.24.2 |
// | 2 + 4 per suite  | pairwise cipher suites  | 9.4.2.24.2 |
// | 2 + 4 per suite  | AKM suites              | 9.4.2.24.3 |
// | 2                | RSN capabilities        | 9.4.2.24.4 |
// | 2 + 16 per PMKID | PMKIDs                  | 9.4.2.24.5 |
// | 4                | group management cipher | 9.4.2.24.2 |
enum class IEEE802_11_RSNElement::Part {
    VERSION,
    GROUP_DATA,
    PAIRWISE,
    AKM,
    CAPABILITIES,
    PMKID,
    GROUP_MANAGEMENT,
};

IEEE802_11_RSNElement::Part IEEE802_11_RSNElement::last_part() const {
    return has_group_management_cipher() ? Part::GROUP_MANAGEMENT
           : has_pmkid_list()            ? Part::PMKID
           : has_rsn_capabilities()      ? Part::CAPABILITIES
           : has_akm_suite_list()        ? Part::AKM
           : has_pairwise_cipher_list()  ? Part::PAIRWISE
           : has_group_data()            ? Part::GROUP_DATA
                                         : Part::VERSION;
}

std::uint32_t IEEE802_11_RSNElement::get_length() const {
    const auto list = [](std::uint32_t entry_size, std::size_t count) {
        return count_size + entry_size * static_cast<std::uint32_t>(count);
    };
    const Part last = last_part();
    std::uint32_t length = HEADER_LENGTH + version_size;
    length += last >= Part::GROUP_DATA ? suite_size : 0;
    length += last >= Part::PAIRWISE ? list(suite_size, pairwise_cipher_list_.size()) : 0;
    length += last >= Part::AKM ? list(suite_size, akm_suite_list_.size()) : 0;
    length += last >= Part::CAPABILITIES ? capabilities_size : 0;
    length += last >= Part::PMKID ? list(pmkid_size, pmkid_list_.size()) : 0;
    length += last >= Part::GROUP_MANAGEMENT ? suite_size : 0;
    return length;
}

void IEEE802_11_RSNElement::check_fields() const {
    if (pairwise_cipher_list_.size() > MAX_LIST_SIZE || akm_suite_list_.size() > MAX_LIST_SIZE ||
        pmkid_list_.size() > MAX_LIST_SIZE) {
        throw SerializationException("Invalid size");
    }
    // Deliberate: the header counts, although an element of 256 and 257 octets could be written.
    if (get_length() > 255) {
        throw SerializationException("Invalid length");
    }
}

void IEEE802_11_RSNElement::write_body(std::ostream& os, SerializationContext& ctx) const {
    using Suite = BinarySerializableType<IEEE802_11_CipherSuite>;
    const Part last = last_part();
    write_little_endian_16(os, ctx, rsn_version);
    if (last >= Part::GROUP_DATA) {
        Suite::serialize(os, ctx, group_data_);
    }
    if (last >= Part::PAIRWISE) {
        write_counted(os, ctx, pairwise_cipher_list_);
    }
    if (last >= Part::AKM) {
        write_counted(os, ctx, akm_suite_list_);
    }
    if (last >= Part::CAPABILITIES) {
        BinarySerializableType<Capabilities>::serialize(os, ctx, rsn_capabilities_);
    }
    if (last >= Part::PMKID) {
        write_counted(os, ctx, pmkid_list_);
    }
    if (last >= Part::GROUP_MANAGEMENT) {
        Suite::serialize(os, ctx, group_management_cipher_);
    }
}

void IEEE802_11_RSNElement::read_body(impl::ByteCursor& body, SerializationContext& /*ctx*/) {
    group_data_ = {};
    group_management_cipher_ = {};
    has_group_data_ = false;
    has_group_management_cipher_ = false;
    rsn_capabilities_.reset();
    pairwise_cipher_list_.clear();
    akm_suite_list_.clear();
    pmkid_list_.clear();

    // Version
    if (read_little_endian_16(body) != rsn_version) {
        throw SerializationException("Invalid version");
    }
    // Each part is looked for on its own: a rest too short for one part may be the next part.
    // Group data cipher suite
    if (body.remaining() > 3) {
        body.read(group_data_);
        has_group_data_ = true;
    }
    // Pairwise cipher suites
    if (body.remaining() > 1) {
        read_counted(body, suite_size, "Invalid size", pairwise_cipher_list_);
    }
    // AKM suites
    if (body.remaining() > 1) {
        read_counted(body, suite_size, "Invalid size", akm_suite_list_);
    }
    // RSN capabilities
    if (body.remaining() > 1) {
        body.read(rsn_capabilities_);
    }
    // PMKIDs
    if (body.remaining() > 1) {
        read_counted(body, pmkid_size, "Invalid counter", pmkid_list_);
    }
    // Group management cipher suite
    if (body.remaining() > 3) {
        body.read(group_management_cipher_);
        has_group_management_cipher_ = true;
    }
    if (body.remaining() != 0) {
        throw SerializationException("Sanity Check: Unconsumed length");
    }
}

bool IEEE802_11_RSNElement::equal_fields(const IEEE802_11_Element_Base& other) const {
    const auto& o = static_cast<const IEEE802_11_RSNElement&>(other);
    return has_group_data_ == o.has_group_data_ && group_data_ == o.group_data_ &&
           pairwise_cipher_list_ == o.pairwise_cipher_list_ &&
           akm_suite_list_ == o.akm_suite_list_ && rsn_capabilities_ == o.rsn_capabilities_ &&
           pmkid_list_ == o.pmkid_list_ &&
           has_group_management_cipher_ == o.has_group_management_cipher_ &&
           group_management_cipher_ == o.group_management_cipher_;
}

void IEEE802_11_RSNElement::visit_fields(IEEE802_11_FieldVisitor& visitor) const {
    visitor.number("version", rsn_version);
    if (has_group_data_) {
        layout::visit_value(visitor, "group_data", group_data_);
    }
    layout::visit_list(visitor, "pairwise", pairwise_cipher_list_);
    layout::visit_list(visitor, "akm", akm_suite_list_);
    layout::visit_value(visitor, "capabilities", rsn_capabilities_);
    layout::visit_list(visitor, "pmkids", pmkid_list_);
    if (has_group_management_cipher_) {
        layout::visit_value(visitor, "group_management", group_management_cipher_);
    }
}

void IEEE802_11_RSNElement::assign_fields(IEEE802_11_FieldSource& source) {
    const auto assign_suite = [&source](std::string_view name, bool& has,
                                        IEEE802_11_CipherSuite& suite) {
        suite = {};
        has = source.has(name);
        if (has) {
            layout::assign_value(source, name, suite);
        }
    };
    if (source.number("version", 16) != rsn_version) {
        source.fail("not version 1");
    }
    assign_suite("group_data", has_group_data_, group_data_);
    layout::assign_list(source, "pairwise", pairwise_cipher_list_);
    layout::assign_list(source, "akm", akm_suite_list_);
    layout::assign_value(source, "capabilities", rsn_capabilities_);
    layout::assign_list(source, "pmkids", pmkid_list_);
    assign_suite("group_management", has_group_management_cipher_, group_management_cipher_);
}

}  // namespace nuv::ieee802_11
