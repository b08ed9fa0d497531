// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/ieee802_11/ieee802_11_element.hpp"
#include "nuv/small_vector.hpp"

namespace nuv::ieee802_11 {

/// Non-Inheritance (ID 255, extension 56; IEEE Std 802.11-2020, 9.4.2.240): the elements that are
/// not inherited from the containing frame.
///
/// Deliberate: its length counts one octet more than are written, and so does the Length octet;
/// peers of this library expect that. A frame that carries an element written here reads back one
/// octet off behind it, or, if nothing follows, with the fail bit set on a memory stream. Elements
/// of other senders read as they should. In a per-STA profile it is written with its real Length.
class NUV_EXPORT IEEE802_11_Non_Inheritance
    : public IEEE802_11_LayoutElement<IEEE802_11_Non_Inheritance,
                                      IEEE802_11_Element_ID::ELEMENT_ID_EXTENSION,
                                      IEEE802_11_Element_ID_Extension::NON_INHERITANCE> {
public:
    using Ids = SmallVector<IEEE802_11_Element_ID, 16>;
    using ExtendedIds = SmallVector<IEEE802_11_Element_ID_Extension, 16>;

    const Ids& get_ids() const { return ids_; }
    void set_ids(const Ids& ids) { ids_ = ids; }
    const ExtendedIds& get_extended_ids() const { return extended_ids_; }
    void set_extended_ids(const ExtendedIds& ids) { extended_ids_ = ids; }

    /// One more than are written, see above. Deliberate: so 252 IDs in both lists together can be
    /// read, but are refused on writing with "Invalid length".
    std::uint32_t get_length() const override;

private:
    friend IEEE802_11_LayoutElement;
    struct Layout;

    Ids ids_;
    ExtendedIds extended_ids_;
};

}  // namespace nuv::ieee802_11
