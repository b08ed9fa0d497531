// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_element_base.hpp"

#include <array>
#include <istream>
#include <limits>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <typeinfo>

#include "byte_cursor.hpp"
#include "nuv/ieee802_11/ieee802_11_field_source.hpp"
#include "nuv/limited_istream.hpp"

namespace nuv::ieee802_11 {

namespace {

using serialization::SerializationContext;

/// The body of an element that lies in a stream, taken from it in one operation. What is observed
/// of the stream is what a LimitedIStream of the body's length leaves behind.
class StreamBody {
public:
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): octets_ are read before they are used
    StreamBody(std::istream& is, std::uint8_t length) : cursor_(take(is, length)) {}

    ~StreamBody() {
        if (bounded_) {
            // Give back what was taken ahead; the bounded stream does the rest.
            const auto surplus = static_cast<std::streamoff>(taken_ - cursor_.consumed());
            bounded_->rdbuf()->pubseekoff(-surplus, std::ios_base::cur, std::ios_base::in);
        }
    }

    StreamBody(const StreamBody&) = delete;
    StreamBody& operator=(const StreamBody&) = delete;

    impl::ByteCursor& cursor() { return cursor_; }

private:
    impl::ByteCursor take(std::istream& is, std::uint8_t length) {
        auto* octets = reinterpret_cast<char*>(octets_.data());
        std::streambuf& buffer = *is.rdbuf();
        const bool whole = buffer.in_avail() >= length;
        const bool seekable =
            std::streamoff{buffer.pubseekoff(0, std::ios_base::cur, std::ios_base::in)} != -1;
        std::istream* source = &is;
        if (!whole || !seekable) {
            source = &bounded_.emplace(is, length);
        }
        source->read(octets, length);
        taken_ = static_cast<std::size_t>(source->gcount());
        return impl::ByteCursor({octets_.data(), taken_}, length - taken_);
    }

    // What an element can hold at most; not initialised, only what was read is looked at.
    std::array<std::uint8_t, std::numeric_limits<std::uint8_t>::max()> octets_;
    std::size_t taken_ = 0;
    std::optional<LimitedIStream> bounded_;
    impl::ByteCursor cursor_;
};

/// The body of an element that lies in memory.
class MemoryBody {
public:
    MemoryBody(impl::ByteCursor& source, std::uint8_t length)
        : source_(source), cursor_(source.enter(length)) {}
    ~MemoryBody() { source_.leave(cursor_); }
    MemoryBody(const MemoryBody&) = delete;
    MemoryBody& operator=(const MemoryBody&) = delete;

    impl::ByteCursor& cursor() { return cursor_; }

private:
    impl::ByteCursor& source_;
    impl::ByteCursor cursor_;
};

StreamBody body_of(std::istream& is, std::uint8_t length) { return {is, length}; }
MemoryBody body_of(impl::ByteCursor& source, std::uint8_t length) { return {source, length}; }

}  // namespace

template <class Source>
void IEEE802_11_Element_Base::read_from(Source& source, SerializationContext& ctx) {
    std::uint8_t id = 0;
    std::uint8_t length = 0;
    impl::read_value(source, ctx, id);
    check_id(id);
    impl::read_value(source, ctx, length);
    check_length(length);
    auto body = body_of(source, length);
    if (get_type() == IEEE802_11_Element_ID::ELEMENT_ID_EXTENSION) {
        std::uint8_t extension = 0;
        body.cursor().read(extension);
        check_extension(extension);
    }
    read_body(body.cursor(), ctx);
}

void IEEE802_11_Element_Base::deserialize_impl(std::istream& is, SerializationContext& ctx) {
    read_from(is, ctx);
}

void IEEE802_11_Element_Base::deserialize_from(impl::ByteCursor& source,
                                               SerializationContext& ctx) {
    read_from(source, ctx);
}

std::ios_base::iostate IEEE802_11_Element_Base::deserialize(std::span<const std::uint8_t> bytes,
                                                            SerializationContext& ctx) {
    impl::ByteCursor source(bytes);
    deserialize_from(source, ctx);
    return source.rdstate();
}

void IEEE802_11_Element_Base::serialize_impl(std::ostream& os, SerializationContext& ctx) const {
    using Octet = serialization::BinarySerializableType<std::uint8_t>;
    check_fields();
    Octet::serialize(os, ctx, static_cast<std::uint8_t>(get_type()));
    Octet::serialize(os, ctx, static_cast<std::uint8_t>(get_length() - 2));
    if (get_type() == IEEE802_11_Element_ID::ELEMENT_ID_EXTENSION) {
        Octet::serialize(os, ctx, static_cast<std::uint8_t>(get_extension_type()));
    }
    write_body(os, ctx);
}

bool IEEE802_11_Element_Base::operator==(const IEEE802_11_Element_Base& other) const {
    return typeid(*this) == typeid(other) && get_type() == other.get_type() &&
           get_extension_type() == other.get_extension_type() && equal_fields(other);
}

void IEEE802_11_Element_Base::check_fields() const {
    // The Length octet counts what follows it.
    if (get_length() - 2 > std::numeric_limits<std::uint8_t>::max()) {
        throw serialization::SerializationException("Invalid length");
    }
}

void IEEE802_11_Element_Base::check_id(std::uint8_t /*id*/) const {}

void IEEE802_11_Element_Base::check_length(std::uint8_t /*length*/) const {}

void IEEE802_11_Element_Base::check_extension(std::uint8_t /*extension*/) const {}

void IEEE802_11_Element_Base::assign_fields(IEEE802_11_FieldSource& source) {
    source.fail("this element cannot be made from its fields");
}

void IEEE802_11_Element_Base::read_body(impl::ByteCursor& /*body*/, SerializationContext& /*ctx*/) {
    throw std::logic_error("This element is read from streams only");
}

}  // namespace nuv::ieee802_11
