// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "nuv/binary_serializable_type.hpp"
#include "nuv/export.hpp"

namespace nuv::ieee802_11 {

/// The OUI of the suites that the standard itself defines, 00-0F-AC.
inline constexpr std::array<std::uint8_t, 3> IEEE802_11_OUI{0x00, 0x0F, 0xAC};

/// A cipher suite or AKM suite selector (IEEE Std 802.11-2020, 9.4.2.24.2 and 9.4.2.24.3). On the
/// wire: the OUI (3 octets), the type (1 octet).
struct IEEE802_11_CipherSuite {
    // Types under IEEE802_11_OUI, of ciphers and of AKMs.
    static constexpr std::uint8_t USE_GROUP = 0;
    static constexpr std::uint8_t TKIP = 2;
    static constexpr std::uint8_t CCMP_128 = 4;
    static constexpr std::uint8_t AKM_802_1X = 1;
    static constexpr std::uint8_t AKM_PSK = 2;
    static constexpr std::uint8_t AKM_SAE = 8;
    static constexpr std::uint8_t AKM_OWE = 18;

    constexpr IEEE802_11_CipherSuite() = default;
    explicit constexpr IEEE802_11_CipherSuite(std::uint8_t suite_type) : type(suite_type) {}
    constexpr IEEE802_11_CipherSuite(const std::array<std::uint8_t, 3>& suite_oui,
                                     std::uint8_t suite_type)
        : oui(suite_oui), type(suite_type) {}

    bool operator==(const IEEE802_11_CipherSuite&) const = default;

    /// The OUI as the standard writes it and the type in decimal: "00-0F-AC:4".
    NUV_EXPORT std::string to_string() const;
    /// Reads what to_string() writes. Returns false for anything else, and changes nothing then.
    NUV_EXPORT bool parse_string(std::string_view text) noexcept;

    std::array<std::uint8_t, 3> oui = IEEE802_11_OUI;
    std::uint8_t type = USE_GROUP;
};

}  // namespace nuv::ieee802_11

/// A short read leaves the octets read before it applied.
template <>
struct nuv::impl::WireForm<nuv::ieee802_11::IEEE802_11_CipherSuite> {
    using Suite = ieee802_11::IEEE802_11_CipherSuite;
    static constexpr std::size_t size = 4;
    static constexpr CodecTexts texts = octet_texts;

    static void encode(const Suite& suite, std::uint8_t* octets) {
        std::copy(suite.oui.begin(), suite.oui.end(), octets);
        octets[3] = suite.type;
    }
    static void decode(const std::uint8_t* octets, std::size_t count, Suite& suite) {
        std::copy_n(octets, std::min(count, suite.oui.size()), suite.oui.begin());
        if (count == size) {
            suite.type = octets[3];
        }
    }
};
