// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "nuv/ip_address.hpp"

/// Texts of IP addresses against inet_pton() and inet_ntop() of the C library. Each check returns
/// what is wrong, nothing if all is well.
namespace nuv::test {

/// Checks that `text` is read as an address of either version where inet_pton() reads it, as the
/// same one, but for the deliberate differences; that a refused text changes nothing; and that the
/// address is printed as check_printed() wants it.
std::string check_ip_text(const std::string& text);

/// Checks that the address is printed as inet_ntop() prints it, an IPv4-compatible one in
/// hexadecimal, and read back.
std::string check_printed(const IPAddress& address);

}  // namespace nuv::test
