// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <locale>
#include <ostream>
#include <sstream>
#include <string_view>

namespace nuv::impl {

/// Puts a text together whose numbers look the same whatever the program's locale is and whatever
/// the stream's flags are that it goes to.
class ClassicStream : public std::ostringstream {
public:
    ClassicStream() { imbue(std::locale::classic()); }
};

/// Writes a text of several parts: the stream's width, fill and flags neither matter nor change.
inline std::ostream& write_text(std::ostream& os, std::string_view text) {
    return os.write(text.data(), static_cast<std::streamsize>(text.size()));
}

}  // namespace nuv::impl
