// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <ios>
#include <memory>
#include <span>
#include <utility>

#include "nuv/binary_serializable.hpp"
#include "nuv/byte_order.hpp"
#include "nuv/export.hpp"
#include "nuv/ieee802_11/ieee802_11_element_base.hpp"
#include "nuv/ssid.hpp"

namespace nuv::ieee802_11 {

/// The body of an Association Request frame (IEEE Std 802.11-2020, 9.3.3.5) as a station sent it:
/// what follows the MAC header. On the wire: capability information (2 octets), listen interval
/// (2), the SSID element, the other elements.
///
/// The frame check sequence (FCS), the last four octets of a frame, does not belong to the body: cut it
/// off before reading, or it is read as one more element.
///
/// A Reassociation Request carries the current AP's address (6 octets) behind the listen interval,
/// which has no place here: cut it out before reading, or the SSID's length is found invalid.
///
/// Every failure to read octets is a SerializationException; the frame may then be partly replaced. After
/// a success a stream stands at its end with eofbit set. An element whose Length runs past the end
/// of a memory stream although its fields were there leaves failbit instead, and counts as read.
class NUV_EXPORT AssocRequestFrame : public serialization::BinarySerializable {
public:
    /// Octets of the capability information.
    static constexpr std::size_t CAPABILITY_INFORMATION_LEN = 2;
    using CapabilityInformation = std::bitset<8 * CAPABILITY_INFORMATION_LEN>;

    /// The elements behind the SSID: one slot for each kind that the frame has once, and two lists.
    class NUV_EXPORT ElementContainer : public serialization::BinarySerializable {
    public:
        static constexpr std::size_t MAX_VENDOR_ELEMENTS = 10;
        static constexpr std::size_t MAX_TTLM_ELEMENTS = 2;
        /// How many slots there are, and what an element without a slot maps to.
        static constexpr std::size_t NUMBER_OF_SLOTS = 26;

        using ElementPtr = std::unique_ptr<IEEE802_11_Element_Base>;
        /// An element held: it is replaced, not changed.
        using HeldPtr = std::unique_ptr<const IEEE802_11_Element_Base>;
        using ElementList = std::span<const HeldPtr>;

        ElementContainer() = default;

        /// Writes the occupied slots in slot order, the vendor-specific elements, the TID-to-link
        /// mappings. Not the order in which elements were read or added.
        void serialize_impl(std::ostream& os,
                            serialization::SerializationContext& ctx) const override;
        /// Reads elements up to the end of the stream, replacing what was held.
        void deserialize_impl(std::istream& is, serialization::SerializationContext& ctx) override;

        /// Vendor-specific elements and TID-to-link mappings are appended to their list, beyond its
        /// limit they are logged and dropped. Every other element replaces the one in its slot;
        /// without a slot it is dropped. `element` is not null.
        void add_element(ElementPtr element);

        /// The element in the slot of this ID, null without one. Valid until the next change.
        const IEEE802_11_Element_Base* get_optional_element_by_id(IEEE802_11_Element_ID id) const;
        const IEEE802_11_Element_Base* get_optional_element_by_extended_id(
            IEEE802_11_Element_ID_Extension extension) const;
        /// The element of this class, null if there is none or its slot holds another class.
        template <class E>
        const E* get_optional_element() const {
            return dynamic_cast<const E*>(E::ELEMENT_ID ==
                                                  IEEE802_11_Element_ID::ELEMENT_ID_EXTENSION
                                              ? get_optional_element_by_extended_id(E::EXTENSION_ID)
                                              : get_optional_element_by_id(E::ELEMENT_ID));
        }
        ElementList get_vendor_specific_vector() const { return vendor_specific_.elements(); }
        ElementList get_ttlm_vector() const { return ttlm_.elements(); }

        /// Octets of all elements.
        std::uint32_t get_length() const;
        bool operator==(const ElementContainer& other) const;

        /// A new, empty element of the class for this ID, a raw one where there is none. Throws
        /// SerializationException for ELEMENT_ID_EXTENSION.
        static ElementPtr create_element(IEEE802_11_Element_ID id);
        /// Likewise for an element with ID 255. EHT Capabilities take their shape from the HE
        /// Capabilities held here; without them this logs an error and throws
        /// SerializationException.
        ElementPtr create_extended_element(IEEE802_11_Element_ID_Extension extension) const;

        /// NUMBER_OF_SLOTS for an ID without a slot.
        static std::size_t map_element_id_to_member(IEEE802_11_Element_ID id);
        static std::size_t map_extended_element_id_to_member(
            IEEE802_11_Element_ID_Extension extension);

    private:
        friend AssocRequestFrame;

        /// A list whose storage is part of the container.
        template <std::size_t N>
        class BoundedList {
        public:
            BoundedList() = default;
            BoundedList(BoundedList&& other) noexcept
                : storage_(std::move(other.storage_)), size_(std::exchange(other.size_, 0)) {}
            BoundedList& operator=(BoundedList&& other) noexcept {
                storage_ = std::move(other.storage_);
                size_ = std::exchange(other.size_, 0);
                return *this;
            }

            bool full() const { return size_ == N; }
            void push_back(HeldPtr element) { storage_[size_++] = std::move(element); }
            void clear() {
                std::for_each_n(storage_.begin(), std::exchange(size_, 0),
                                [](HeldPtr& element) { element.reset(); });
            }
            ElementList elements() const { return {storage_.data(), size_}; }

        private:
            std::array<HeldPtr, N> storage_;
            std::size_t size_ = 0;
        };

        void clear();
        void place(IEEE802_11_Element_ID id, IEEE802_11_Element_ID_Extension extension,
                   ElementPtr element);
        template <class Source>
        void read_from(Source& source, serialization::SerializationContext& ctx);
        template <std::size_t N>
        static void append(BoundedList<N>& list, ElementPtr element, const char* kind);

        std::array<HeldPtr, NUMBER_OF_SLOTS> slots_;
        BoundedList<MAX_VENDOR_ELEMENTS> vendor_specific_;
        BoundedList<MAX_TTLM_ELEMENTS> ttlm_;
    };

    AssocRequestFrame() = default;

    void serialize_impl(std::ostream& os, serialization::SerializationContext& ctx) const override;
    void deserialize_impl(std::istream& is, serialization::SerializationContext& ctx) override;
    /// Reads the frame from its octets: as deserialize_impl from a stream over them, many times
    /// faster. Returns the state in which such a stream would be left: eofbit, or failbit if the
    /// last element's Length runs past the end.
    std::ios_base::iostate deserialize(std::span<const std::uint8_t> bytes,
                                       serialization::SerializationContext& ctx);

    /// Bit numbers are those of the standard's field.
    const CapabilityInformation& get_capability_information() const {
        return capability_information_;
    }
    void set_capability_information(const CapabilityInformation& bits) {
        capability_information_ = bits;
    }

    /// Deliberate: its first octet on the wire is the most significant one here, both directions
    /// agree on it.
    std::uint16_t get_listen_interval() const { return listen_interval_; }
    void set_listen_interval(std::uint16_t interval) { listen_interval_ = interval; }
    /// The same as the standard means it, first octet least significant: the number of beacon
    /// intervals that the station sleeps at most.
    std::uint16_t get_listen_interval_standard() const { return swap_octets(listen_interval_); }
    void set_listen_interval_standard(std::uint16_t interval) {
        listen_interval_ = swap_octets(interval);
    }

    const SSID& get_ssid() const { return ssid_; }
    void set_ssid(const SSID& ssid) { ssid_ = ssid; }

    const ElementContainer& get_optional_elements() const { return optional_elements_; }

    // As the container's.
    void add_element(ElementContainer::ElementPtr element) {
        optional_elements_.add_element(std::move(element));
    }
    const IEEE802_11_Element_Base* get_optional_element_by_id(IEEE802_11_Element_ID id) const {
        return optional_elements_.get_optional_element_by_id(id);
    }
    const IEEE802_11_Element_Base* get_optional_element_by_extended_id(
        IEEE802_11_Element_ID_Extension extension) const {
        return optional_elements_.get_optional_element_by_extended_id(extension);
    }
    template <class E>
    const E* get_optional_element() const {
        return optional_elements_.get_optional_element<E>();
    }
    ElementContainer::ElementList get_vendor_specific_vector() const {
        return optional_elements_.get_vendor_specific_vector();
    }
    ElementContainer::ElementList get_ttlm_vector() const {
        return optional_elements_.get_ttlm_vector();
    }

    /// Octets of the whole body.
    std::uint32_t get_length() const;
    bool operator==(const AssocRequestFrame& other) const;

private:
    template <class Source>
    void read_from(Source& source, serialization::SerializationContext& ctx);

    CapabilityInformation capability_information_;
    std::uint16_t listen_interval_ = 0;
    SSID ssid_;
    ElementContainer optional_elements_;
};

}  // namespace nuv::ieee802_11
