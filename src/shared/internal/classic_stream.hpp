// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <locale>
#include <sstream>

namespace nuv::impl {

/// Puts a text together whose numbers look the same whatever the program's locale is and whatever
/// the stream's flags are that it goes to.
class ClassicStream : public std::ostringstream {
public:
    ClassicStream() { imbue(std::locale::classic()); }
};

}  // namespace nuv::impl
