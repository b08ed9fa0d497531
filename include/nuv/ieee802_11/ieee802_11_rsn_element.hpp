// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <bitset>
#include <cstddef>

#include "nuv/ieee802_11/ieee802_11_cipher_suite.hpp"
#include "nuv/ieee802_11/ieee802_11_element.hpp"
#include "nuv/small_vector.hpp"

namespace nuv::ieee802_11 {

/// RSN (ID 48; IEEE Std 802.11-2020, 9.4.2.24): which ciphers and key management a station uses.
/// After the version every part is optional, from some part on: an element ends behind its last
/// present part, and what is absent before that part is written as zero counts, zero capabilities,
/// the stored suite.
///
/// The version and the counts are little-endian on the wire, as the standard has them.
///
/// Reading throws "Invalid version" for another version than 1, "Invalid size" for a list of more
/// than 10 suites or of more than the element holds, "Invalid counter" likewise for PMKIDs, and
/// "Sanity Check: Unconsumed length" if octets are left over. Writing throws "Invalid length" if
/// the whole element is longer than 255 octets.
class NUV_EXPORT IEEE802_11_RSNElement : public IEEE802_11_Element<IEEE802_11_Element_ID::RSN> {
public:
    static constexpr std::size_t MAX_LIST_SIZE = 10;
    using Suites = SmallVector<IEEE802_11_CipherSuite, MAX_LIST_SIZE>;
    using PMKID = std::array<std::uint8_t, 16>;
    using PMKIDs = SmallVector<PMKID, MAX_LIST_SIZE>;
    using Capabilities = std::bitset<16>;

    const IEEE802_11_CipherSuite& get_group_data() const { return group_data_; }
    void set_group_data(const IEEE802_11_CipherSuite& suite) {
        group_data_ = suite;
        has_group_data_ = true;
    }
    bool has_group_data() const { return has_group_data_; }

    // The setters of the lists ignore a list of more than 10 entries and leave the old one in
    // place.
    const Suites& get_pairwise_cipher_list() const { return pairwise_cipher_list_; }
    void set_pairwise_cipher_list(const Suites& suites) {
        assign_if_fits(pairwise_cipher_list_, suites);
    }
    bool has_pairwise_cipher_list() const { return !pairwise_cipher_list_.empty(); }

    const Suites& get_akm_suite_list() const { return akm_suite_list_; }
    void set_akm_suite_list(const Suites& suites) { assign_if_fits(akm_suite_list_, suites); }
    bool has_akm_suite_list() const { return !akm_suite_list_.empty(); }

    /// Bit numbers are those of the standard's field. All zero counts as absent (deliberate: an
    /// element read with zero capabilities at its end is written without them, two octets shorter).
    const Capabilities& get_rsn_capabilities() const { return rsn_capabilities_; }
    void set_rsn_capabilities(const Capabilities& bits) { rsn_capabilities_ = bits; }
    bool has_rsn_capabilities() const { return rsn_capabilities_.any(); }

    const PMKIDs& get_pmkid_list() const { return pmkid_list_; }
    void set_pmkid_list(const PMKIDs& pmkids) { assign_if_fits(pmkid_list_, pmkids); }
    bool has_pmkid_list() const { return !pmkid_list_.empty(); }

    const IEEE802_11_CipherSuite& get_group_management_cipher() const {
        return group_management_cipher_;
    }
    void set_group_management_cipher(const IEEE802_11_CipherSuite& suite) {
        group_management_cipher_ = suite;
        has_group_management_cipher_ = true;
    }
    bool has_group_management_cipher() const { return has_group_management_cipher_; }

    std::uint32_t get_length() const override;
    void visit_fields(IEEE802_11_FieldVisitor& visitor) const override;
    void assign_fields(IEEE802_11_FieldSource& source) override;
    void check_fields() const override;

protected:
    void write_body(std::ostream& os, serialization::SerializationContext& ctx) const override;
    void read_body(impl::ByteCursor& body, serialization::SerializationContext& ctx) override;
    bool equal_fields(const IEEE802_11_Element_Base& other) const override;

private:
    enum class Part;

    template <class List>
    static void assign_if_fits(List& list, const List& value) {
        if (value.size() <= MAX_LIST_SIZE) {
            list = value;
        }
    }
    Part last_part() const;

    IEEE802_11_CipherSuite group_data_;
    IEEE802_11_CipherSuite group_management_cipher_;
    bool has_group_data_ = false;
    bool has_group_management_cipher_ = false;
    Capabilities rsn_capabilities_;
    Suites pairwise_cipher_list_;
    Suites akm_suite_list_;
    PMKIDs pmkid_list_;
};

}  // namespace nuv::ieee802_11
