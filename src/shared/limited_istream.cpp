// SPDX-License-Identifier: Apache-2.0
#include "nuv/limited_istream.hpp"

#include <stdexcept>

#include "nuv/logging/clogmod_proxy.hpp"

namespace nuv {

namespace {

std::streambuf* buffer_of(const std::istream& is) {
    if (is.rdbuf() == nullptr) {
        throw std::logic_error("Underlying std::istream must have a streambuf");
    }
    return is.rdbuf();
}

}  // namespace

LimitedIStream::LimitedIStream(std::istream& is, std::int64_t limit)
    : std::istream(nullptr), underlying_(is), buffer_(buffer_of(is), limit) {
    rdbuf(&buffer_);
}

LimitedIStream::~LimitedIStream() {
    try {
        underlying_.seekg(buffer_.get_limit_position());
    } catch (const std::ios_base::failure& error) {
        // The record's line is a fixed number: collectors match on it.
        logging::ClogmodProxy("LimitedIStream")
                .get_ostream(0, "src/shared/limited_istream", "~LimitedIStream", 169)
            << "Failed to seek to the limit (" << std::streamoff{buffer_.get_limit_position()}
            << "): " << error.what();
    }
}

}  // namespace nuv
