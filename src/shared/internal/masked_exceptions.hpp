// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <ios>
#include <istream>
#include <ostream>

namespace nuv::impl {

/// Keeps a stream from throwing while the library works on it: a failure is found by the stream's
/// state alone, and a stream that is set to throw gives the same results as another one. Its
/// exception mask comes back at the end. Stands around each access to a caller's stream, and never
/// around a LimitedIStream: what that one's last seek throws is logged.
class MaskedExceptions {
public:
    explicit MaskedExceptions(std::ios& stream) : stream_(stream), mask_(stream.exceptions()) {
        if (mask_ != std::ios_base::goodbit) {
            stream.exceptions(std::ios_base::goodbit);
        }
    }
    ~MaskedExceptions() {
        if (mask_ != std::ios_base::goodbit) {
            restore();
        }
    }
    MaskedExceptions(const MaskedExceptions&) = delete;
    MaskedExceptions& operator=(const MaskedExceptions&) = delete;

private:
    void restore() {
        try {
            stream_.exceptions(mask_);
        } catch (const std::ios_base::failure&) {  // the mask is set all the same
        }
    }

    std::ios& stream_;
    std::ios_base::iostate mask_;
};

/// Writes as os.write() does, in one operation of the stream's buffer, but throws nothing, and an
/// end-of-file bit alone does not keep it from writing. Returns how many characters the buffer took.
inline std::streamsize write_masked(std::ostream& os, const char* text, std::streamsize size) {
    const MaskedExceptions masked(os);
    const bool at_end = os.rdstate() == std::ios_base::eofbit;
    if (at_end) {
        os.clear();
    }
    std::streamsize taken = 0;
    try {
        const std::ostream::sentry ready(os);
        if (ready) {
            taken = os.rdbuf()->sputn(text, size);
            if (taken != size) {
                os.setstate(std::ios_base::badbit);
            }
        }
    } catch (...) {  // a buffer that throws is one that failed
        os.setstate(std::ios_base::badbit);
    }
    if (at_end) {
        os.setstate(std::ios_base::eofbit);
    }
    return taken;
}

}  // namespace nuv::impl
