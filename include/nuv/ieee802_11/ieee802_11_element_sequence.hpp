// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include "nuv/export.hpp"
#include "nuv/ieee802_11/ieee802_11_element_base.hpp"
#include "nuv/small_vector.hpp"

namespace nuv::ieee802_11 {

/// Elements one behind the other, each with its octets on the air: what was read is written back
/// octet by octet, also what its class does not keep. A few short ones lie inside the object.
class NUV_EXPORT IEEE802_11_ElementSequence {
public:
    using ElementPtr = std::unique_ptr<const IEEE802_11_Element_Base>;
    using Octets = SmallVector<std::uint8_t, 160>;

    std::size_t size() const { return items_.size(); }
    bool empty() const { return items_.empty(); }
    /// `index` is less than size(). Valid until the next change.
    const IEEE802_11_Element_Base& operator[](std::size_t index) const {
        return *items_[index].element;
    }
    /// The octets of one element, header included.
    std::span<const std::uint8_t> octets_of(std::size_t index) const;
    /// The octets of all.
    const Octets& octets() const { return octets_; }

    /// The first element of this class from `index` on, null without one.
    template <class E>
    const E* find(std::size_t index = 0) const {
        for (; index < size(); ++index) {
            const IEEE802_11_Element_Base& element = *items_[index].element;
            if (element.get_type() == E::ELEMENT_ID &&
                element.get_extension_type() == E::EXTENSION_ID) {
                if (const auto* found = dynamic_cast<const E*>(&element)) {
                    return found;
                }
            }
        }
        return nullptr;
    }

    /// Appends the element with the octets as which it writes itself and a Length octet that counts
    /// them, also for Non-Inheritance. Throws its SerializationException, changing nothing, if it
    /// refuses, and std::invalid_argument for null.
    void add_element(ElementPtr element);
    /// Appends the element that was read from these octets, which are none of this object's own.
    void add_element(ElementPtr element, std::span<const std::uint8_t> octets);
    void clear();

    /// The same octets.
    bool operator==(const IEEE802_11_ElementSequence& other) const {
        return octets_ == other.octets_;
    }

private:
    struct Item {
        ElementPtr element;
        std::uint32_t end;  // of its octets
    };

    SmallVector<Item, 8> items_;
    Octets octets_;
};

}  // namespace nuv::ieee802_11
