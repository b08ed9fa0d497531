// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_assoc_request_frame.hpp"

#include <algorithm>
#include <istream>
#include <ostream>
#include <string>

#include "byte_cursor.hpp"
#include "log_module.hpp"
#include "nuv/ieee802_11/ieee802_11_dummy_element.hpp"
#include "nuv/ieee802_11/ieee802_11_eht_capabilities.hpp"
#include "nuv/ieee802_11/ieee802_11_extended_supported_rates_bss_membership_selector.hpp"
#include "nuv/ieee802_11/ieee802_11_extendend_capabilities.hpp"
#include "nuv/ieee802_11/ieee802_11_he_capabilities.hpp"
#include "nuv/ieee802_11/ieee802_11_ht_capabilities.hpp"
#include "nuv/ieee802_11/ieee802_11_mobility_domain.hpp"
#include "nuv/ieee802_11/ieee802_11_multi_link.hpp"
#include "nuv/ieee802_11/ieee802_11_multiple_mac_sublayers.hpp"
#include "nuv/ieee802_11/ieee802_11_non_inheritance.hpp"
#include "nuv/ieee802_11/ieee802_11_operating_mode_notification.hpp"
#include "nuv/ieee802_11/ieee802_11_power_capability.hpp"
#include "nuv/ieee802_11/ieee802_11_qos_capability.hpp"
#include "nuv/ieee802_11/ieee802_11_qos_traffic_capabilities.hpp"
#include "nuv/ieee802_11/ieee802_11_rm_enabled_capabilities.hpp"
#include "nuv/ieee802_11/ieee802_11_rsn_element.hpp"
#include "nuv/ieee802_11/ieee802_11_supported_channels.hpp"
#include "nuv/ieee802_11/ieee802_11_supported_operating_classes.hpp"
#include "nuv/ieee802_11/ieee802_11_supported_rates_bss_membership_selector.hpp"
#include "nuv/ieee802_11/ieee802_11_tid_to_link_mapping.hpp"
#include "nuv/ieee802_11/ieee802_11_tim_broadcast_request.hpp"
#include "nuv/ieee802_11/ieee802_11_vht_capabilities.hpp"

namespace nuv::ieee802_11 {

using serialization::BinarySerializableType;
using serialization::SerializationContext;
using serialization::SerializationException;

namespace {

constinit logging::LogModule log_module{"assoc_request_frame"};

using Container = AssocRequestFrame::ElementContainer;
using Ptr = Container::ElementPtr;
using ID = IEEE802_11_Element_ID;
using Ext = IEEE802_11_Element_ID_Extension;

template <class E>
Ptr make(const Container* /*container*/) {
    return std::make_unique<E>();
}

Ptr make_eht_capabilities(const Container* container) {
    const auto* he = container->get_optional_element<IEEE802_11_HECapabilities>();
    if (he == nullptr) {
        constexpr const char* text = "EHT CAPABILITIES IE without preceding HE CAPABILITIES IE";
        NUV_LOG(log_module, error) << text;
        throw SerializationException(text);
    }
    // The HE Channel Width Set decides which EHT-MCS maps follow (IEEE Std 802.11be-2024,
    // 9.4.2.323.4): bit 1 is 40 MHz in 2.4 GHz, 2 is 40 and 80 MHz, 3 is 160 MHz, 4 is 80+80 MHz.
    const auto& phy = he->get_phy_info_bits();
    const bool only_20_mhz = !phy[1] && !phy[2] && !phy[3] && !phy[4];
    return std::make_unique<IEEE802_11_EHTCapabilities>(only_20_mhz, phy[1] || phy[2], phy[3]);
}

/// The ID and, for ID 255, the extension in one number.
constexpr std::uint16_t key(ID id) { return static_cast<std::uint16_t>(id); }
constexpr std::uint16_t key(Ext extension) {
    return static_cast<std::uint16_t>(0x100U + static_cast<unsigned>(extension));
}
constexpr std::size_t number_of_keys = 0x200;

/// What a frame accepts: an element's place and the class that reads it, null for a raw one.
struct Row {
    std::uint16_t key;
    std::uint8_t slot;
    Ptr (*make)(const Container* container);  // null for what needs no elements read before
};

constexpr std::uint8_t no_slot = Container::NUMBER_OF_SLOTS;

constexpr std::array<Row, 27> rows{{
    {key(ID::SUPPORTED_RATES), 0, make<IEEE802_11_SupportedRatesBSSMembershipSelector>},
    {key(ID::POWER_CAPABILITY), 2, make<IEEE802_11_PowerCapability>},
    {key(ID::SUPPORTED_CHANNELS), 3, make<IEEE802_11_SupportedChannels>},
    {key(ID::HT_CAPABILITIES), 9, make<IEEE802_11_HTCapabilities>},
    {key(ID::QOS_CAPABILITY), 5, make<IEEE802_11_QOSCapability>},
    {key(ID::RSN), 4, make<IEEE802_11_RSNElement>},
    {key(ID::EXTENDED_SUPPORTED_RATES), 1,
     make<IEEE802_11_ExtendedSupportedRatesBSSMembershipSelector>},
    {key(ID::MOBILITY_DOMAIN), 7, make<IEEE802_11_MobilityDomain>},
    {key(ID::SUPPORTED_OPERATING_CLASSES), 8, make<IEEE802_11_SupportedOperatingClasses>},
    {key(ID::RM_ENABLED_CAPABILITIES), 6, make<IEEE802_11_RMEnabledCapabilities>},
    {key(ID::BSS_COEXISTENCE_20_40), 10, nullptr},
    {key(ID::QOS_TRAFFIC_CAPABILITY), 12, make<IEEE802_11_QoSTrafficCapabilities>},
    {key(ID::TIM_BROADCAST_REQUEST), 13, make<IEEE802_11_TIMBroadcastRequest>},
    {key(ID::INTERWORKING), 14, nullptr},
    {key(ID::EXTENDED_CAPABILITIES), 11, make<IEEE802_11_ExtendendCapabilities>},
    {key(ID::DMG_CAPABILITIES), 16, nullptr},
    {key(ID::MULTI_BAND), 15, nullptr},
    {key(ID::MULTIPLE_MAC_SUBLAYERS), 17, make<IEEE802_11_MultipleMACSublayers>},
    {key(ID::VHT_CAPABILITIES), 18, make<IEEE802_11_VHTCapabilities>},
    {key(ID::OPERATING_MODE_NOTIFICATION), 19, make<IEEE802_11_OperatingModeNotification>},
    {key(ID::RSN_EXTENSION), 21, nullptr},
    {key(Ext::HE_CAPABILITIES), 20, make<IEEE802_11_HECapabilities>},
    {key(Ext::NON_INHERITANCE), 22, make<IEEE802_11_Non_Inheritance>},
    {key(Ext::HE_6_GHZ_BAND_CAPABILITIES), 23, nullptr},
    {key(Ext::MULTI_LINK), 24, make<IEEE802_11_MultiLink>},
    {key(Ext::EHT_CAPABILITIES), 25, make_eht_capabilities},
    {key(Ext::TID_TO_LINK_MAPPING), no_slot, make<IEEE802_11_TID_to_Link_Mapping>},
}};
static_assert(std::ranges::is_sorted(rows, std::ranges::less{}, &Row::key));

/// The row of each key, or one past the last: where a received octet leads in one step.
constexpr auto row_of_key = [] {
    std::array<std::uint8_t, number_of_keys> index{};
    index.fill(rows.size());
    for (std::size_t k = 0; k < rows.size(); ++k) {
        index[rows[k].key] = static_cast<std::uint8_t>(k);
    }
    return index;
}();

const Row* find_row(std::uint16_t wanted) {
    const std::size_t row = row_of_key[wanted];
    return row < rows.size() ? &rows[row] : nullptr;
}

std::size_t slot_of(std::uint16_t wanted) {
    const Row* row = find_row(wanted);
    return row != nullptr ? row->slot : no_slot;
}

using Held = Container::HeldPtr;

bool equal(const Held& a, const Held& b) {
    return a == nullptr || b == nullptr ? a == b : *a == *b;
}

bool equal(Container::ElementList a, Container::ElementList b) {
    return std::ranges::equal(a, b, [](const Held& x, const Held& y) { return equal(x, y); });
}

/// Calls `function` with each element held, in the order in which they are written.
template <class Slots, class Function>
void for_each_element(const Slots& slots, const Container& container, Function function) {
    for (const Held& element : slots) {
        if (element != nullptr) {
            function(*element);
        }
    }
    for (const auto list : {container.get_vendor_specific_vector(), container.get_ttlm_vector()}) {
        for (const Held& element : list) {
            function(*element);
        }
    }
}

void read_element(IEEE802_11_Element_Base& element, std::istream& source,
                  SerializationContext& ctx) {
    element.deserialize_impl(source, ctx);
}
void read_element(IEEE802_11_Element_Base& element, impl::ByteCursor& source,
                  SerializationContext& ctx) {
    element.deserialize_from(source, ctx);
}

}  // namespace

std::size_t Container::map_element_id_to_member(ID id) { return slot_of(key(id)); }

std::size_t Container::map_extended_element_id_to_member(Ext extension) {
    return slot_of(key(extension));
}

Ptr Container::create_element(ID id) {
    if (id == ID::ELEMENT_ID_EXTENSION) {
        throw SerializationException("create_element() cannot handle ELEMENT_ID_EXTENSION!");
    }
    const Row* row = find_row(key(id));
    if (row == nullptr || row->make == nullptr) {
        return std::make_unique<IEEE802_11_DummyElement>(id);
    }
    return row->make(nullptr);
}

Ptr Container::create_extended_element(Ext extension) const {
    const Row* row = find_row(key(extension));
    if (row == nullptr || row->make == nullptr) {
        return std::make_unique<IEEE802_11_DummyElement>(ID::ELEMENT_ID_EXTENSION);
    }
    return row->make(this);
}

template <std::size_t N>
void Container::append(BoundedList<N>& list, Ptr element, const char* kind) {
    if (list.full()) {
        NUV_LOG(log_module, warn) << "Number of " << kind
                                  << " elements in AssocRequest exceeds limit of " << N
                                  << ". Element not added!";
        return;
    }
    list.push_back(std::move(element));
}

void Container::add_element(ElementPtr element) {
    const ID id = element->get_type();
    const Ext extension = element->get_extension_type();
    const bool extended = id == ID::ELEMENT_ID_EXTENSION;
    if (id == ID::VENDOR_SPECIFIC) {
        append(vendor_specific_, std::move(element), "vendor");
    } else if (extended && extension == Ext::TID_TO_LINK_MAPPING) {
        append(ttlm_, std::move(element), "TTLM");
    } else {
        const std::size_t slot =
            extended ? map_extended_element_id_to_member(extension) : map_element_id_to_member(id);
        if (slot < slots_.size()) {
            slots_[slot] = std::move(element);
        }
    }
}

const IEEE802_11_Element_Base* Container::get_optional_element_by_id(ID id) const {
    const std::size_t slot = map_element_id_to_member(id);
    return slot < slots_.size() ? slots_[slot].get() : nullptr;
}

const IEEE802_11_Element_Base* Container::get_optional_element_by_extended_id(Ext extension) const {
    const std::size_t slot = map_extended_element_id_to_member(extension);
    return slot < slots_.size() ? slots_[slot].get() : nullptr;
}

void Container::clear() {
    std::ranges::for_each(slots_, [](HeldPtr& element) { element.reset(); });
    vendor_specific_.clear();
    ttlm_.clear();
}

template <class Source>
void Container::read_from(Source& source, SerializationContext& ctx) {
    clear();
    for (int octet = source.peek(); source.good(); octet = source.peek()) {
        ElementPtr element;
        if (static_cast<ID>(octet) == ID::ELEMENT_ID_EXTENSION) {
            source.seekg(2, std::ios_base::cur);
            const auto extension = static_cast<Ext>(source.peek());
            if (!source.good()) {
                NUV_LOG(log_module, error)
                    << "Error reading extended element ID. f: " << source.fail()
                    << " b: " << source.bad() << " e: " << source.eof();
                throw SerializationException("Error reading extended element ID!");
            }
            source.seekg(-2, std::ios_base::cur);
            element = create_extended_element(extension);
        } else {
            element = create_element(static_cast<ID>(octet));
        }
        read_element(*element, source, ctx);
        add_element(std::move(element));
    }
}

void Container::deserialize_impl(std::istream& is, SerializationContext& ctx) {
    read_from(is, ctx);
}

void Container::serialize_impl(std::ostream& os, SerializationContext& ctx) const {
    for_each_element(slots_, *this, [&](const IEEE802_11_Element_Base& element) {
        element.serialize_impl(os, ctx);
    });
}

std::uint32_t Container::get_length() const {
    std::uint32_t length = 0;
    for_each_element(slots_, *this, [&](const IEEE802_11_Element_Base& element) {
        length += element.get_length();
    });
    return length;
}

bool Container::operator==(const ElementContainer& other) const {
    return equal(slots_, other.slots_) &&
           equal(get_vendor_specific_vector(), other.get_vendor_specific_vector()) &&
           equal(get_ttlm_vector(), other.get_ttlm_vector());
}

template <class Source>
void AssocRequestFrame::read_from(Source& source, SerializationContext& ctx) {
    impl::read_value(source, ctx, capability_information_);
    impl::read_value(source, ctx, listen_interval_);

    ID id{};
    std::uint8_t length = 0;
    impl::read_value(source, ctx, id);
    impl::read_value(source, ctx, length);
    // Whatever is wrong with it, the message names the Length.
    if (id != ID::SSID || length > SSID::capacity()) {
        throw SerializationException("Invalid SSID length " + std::to_string(length));
    }
    ssid_.resize(length);
    impl::read_octets(source, {ssid_.data(), ssid_.size()});

    optional_elements_.read_from(source, ctx);
}

void AssocRequestFrame::deserialize_impl(std::istream& is, SerializationContext& ctx) {
    read_from(is, ctx);
}

std::ios_base::iostate AssocRequestFrame::deserialize(std::span<const std::uint8_t> bytes,
                                                      SerializationContext& ctx) {
    impl::ByteCursor source(bytes);
    read_from(source, ctx);
    return source.rdstate();
}

void AssocRequestFrame::serialize_impl(std::ostream& os, SerializationContext& ctx) const {
    using Octet = BinarySerializableType<std::uint8_t>;
    BinarySerializableType<CapabilityInformation>::serialize(os, ctx, capability_information_);
    BinarySerializableType<std::uint16_t>::serialize(os, ctx, listen_interval_);
    Octet::serialize(os, ctx, static_cast<std::uint8_t>(ID::SSID));
    Octet::serialize(os, ctx, static_cast<std::uint8_t>(ssid_.size()));
    BinarySerializableType<std::span<const std::uint8_t>>::serialize(os, ctx, ssid_.span());
    optional_elements_.serialize_impl(os, ctx);
}

std::uint32_t AssocRequestFrame::get_length() const {
    return static_cast<std::uint32_t>(CAPABILITY_INFORMATION_LEN + sizeof listen_interval_ + 2) +
           ssid_.size() + optional_elements_.get_length();
}

bool AssocRequestFrame::operator==(const AssocRequestFrame& other) const {
    return capability_information_ == other.capability_information_ &&
           listen_interval_ == other.listen_interval_ && ssid_ == other.ssid_ &&
           optional_elements_ == other.optional_elements_;
}

}  // namespace nuv::ieee802_11
