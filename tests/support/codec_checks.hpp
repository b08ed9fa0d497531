// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <ios>
#include <memory>
#include <span>
#include <string>

#include "nuv/ieee802_11.hpp"
#include "tests/support/hex.hpp"

/// What holds for everything that is read from octets and written as octets, for tests and for
/// fuzzing: each check returns what is wrong, nothing if all is well. An exception of another kind
/// than SerializationException passes through. T is an Element, a Frame or a BeaconReport.
namespace nuv::test {

using Element = ieee802_11::IEEE802_11_Element_Base;
using ElementID = ieee802_11::IEEE802_11_Element_ID;
using ExtensionID = ieee802_11::IEEE802_11_Element_ID_Extension;
using Frame = ieee802_11::AssocRequestFrame;

template <class T>
using Maker = std::function<std::unique_ptr<T>()>;

/// A new element of the class for this ID; `maps` as Sample::maps.
std::unique_ptr<Element> make_element(ElementID id, ExtensionID extension, std::uint8_t maps);

/// The fields of an element as text, name=value with a blank between.
std::string field_text(const Element& element);

/// An object that was read, and what a caller can observe besides.
template <class T>
struct Reading {
    std::unique_ptr<T> object;
    std::string error;  // the exception's text, empty without one
    std::ios_base::iostate state = std::ios_base::goodbit;
    std::streamoff position = 0;

    bool ok() const { return error.empty(); }
};

template <class T>
Reading<T> read_from_memory(std::unique_ptr<T> object, std::span<const std::uint8_t> octets);

/// Reads `octets` in every way there is, and checks that no difference can be seen: text of the
/// exception, fields, state and position.
template <class T>
std::string check_ways_of_reading_agree(const Maker<T>& make, const Octets& octets);

struct Written {
    Octets octets;
    std::string error;  // the exception's text, empty without one
};
Written write(const serialization::BinarySerializable& object);

/// Checks that an element which was read is equal to the one made of its fields, is written, in as
/// many octets as it says, and that these are read as an equal element and written the same again.
std::string check_round_trip(const Maker<Element>& make, const Element& element);
std::string check_round_trip(const Frame& frame);

}  // namespace nuv::test
