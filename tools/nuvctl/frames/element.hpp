// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "frames/failed_link.hpp"
#include "frames/octets.hpp"
#include "nuv/ieee802_11/ieee802_11_assoc_request_frame.hpp"

namespace nuvctl {

/// An element of a frame's body, in the order sent.
struct Element {
    std::uint8_t id;
    std::optional<std::uint8_t> extension;  ///< none where the element has no room for one
    std::size_t offset;                     ///< of its ID, from the first octet of the body as sent
    std::optional<std::uint8_t> length;     ///< the Length octet, none where the body ends before
    Octets
        octets;  ///< of the whole element and the fragments that belong to it, as far as they are there
    Octets body;  ///< behind ID, Length and extension, without fragments
    std::unique_ptr<nuv::ieee802_11::IEEE802_11_Element_Base> typed;  ///< null if it cannot be read
    std::string error;               ///< why it cannot be read, or that it is cut short
    std::optional<FailedLink> link;  ///< where it cannot be read, from its first octet

    /// Whether the body ends before the element does.
    bool is_cut_short() const { return body.size() + (extension ? 1U : 0U) < length.value_or(1); }
};

/// Makes elements as an association request's class does: some take their shape from those before
/// them. In frames with reports also these have a class.
class ElementMaker {
public:
    enum class Frame : std::uint8_t { REQUEST, REPORT };
    using ElementPtr = std::unique_ptr<nuv::ieee802_11::IEEE802_11_Element_Base>;

    explicit ElementMaker(Frame frame) : frame_(frame) {}

    /// A new element, a raw one where there is no class. `extension` matters for ID 255. Throws
    /// SerializationException where the element that gives it its shape is missing.
    ElementPtr make(std::uint8_t id, std::uint8_t extension) const;
    /// Reads into `element`, which make() made, from the first of `octets`. To be called for each
    /// element in its turn. Throws SerializationException.
    void read(nuv::ieee802_11::IEEE802_11_Element_Base& element, Octets octets);
    /// To be told of an element that was read elsewhere.
    void remember(const nuv::ieee802_11::IEEE802_11_Element_Base& element);

private:
    Frame frame_;
    nuv::ieee802_11::AssocRequestFrame::ElementContainer known_;
};

/// Reads the elements from `begin` to the end of `body` one by one, as the frame's class does, but goes
/// on behind one that fails. `maker` makes them, and learns of them. They are valid as long as `body`.
std::vector<Element> read_elements(Octets body, std::size_t begin, ElementMaker& maker);

}  // namespace nuvctl
