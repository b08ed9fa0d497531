// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <locale>
#include <optional>
#include <sstream>
#include <string>
#include <type_traits>

#include "nuv_platform/fake/fake_service.hpp"

/// Calls as they would be written in C, for the journals.
namespace nuv::platform {

/// An argument that has its text already.
struct Shown {
    std::string text;
};

inline void show(std::ostream& os, const Shown& argument) { os << argument.text; }
inline void show(std::ostream& os, const char* text) {
    text != nullptr ? os << '"' << text << '"' : os << "NULL";
}
inline void show(std::ostream& os, const void* pointer) {
    os << (pointer != nullptr ? "*" : "NULL");
}
template <typename T>
requires std::is_integral_v<T>
void show(std::ostream& os, T number) { os << +number; }
template <typename Result, typename... Parameters>
void show(std::ostream& os, Result (*function)(Parameters...)) {
    os << (function != nullptr ? "*" : "NULL");
}

template <typename... Args>
std::string call_text(const char* function, const Args&... args) {
    std::ostringstream call;
    call.imbue(std::locale::classic());
    [[maybe_unused]] const char* separator = "";
    call << function << '(';
    ((call << separator, show(call, args), separator = ", "), ...);
    call << ')';
    return call.str();
}

/// Notes a call that can be refused. Returns the result that the test wants for it, if any.
template <typename... Args>
std::optional<int> noted(FakeService& service, const char* function, const Args&... args) {
    service.note(call_text(function, args...));
    return service.take_failure(function);
}

}  // namespace nuv::platform
