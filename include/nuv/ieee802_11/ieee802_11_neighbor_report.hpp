// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bitset>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <vector>

#include "nuv/ieee802_11/ieee802_11_element.hpp"
#include "nuv/ieee802_11/ieee802_11_multi_link.hpp"
#include "nuv/ieee802_11/ieee802_11_raw_element.hpp"
#include "nuv/ieee802_11_codes.hpp"
#include "nuv/mac_address.hpp"

namespace nuv::ieee802_11 {

/// IDs of a Neighbor Report's subelements (IEEE Std 802.11-2020, 9.4.2.36, and 802.11be), as far as
/// the library interprets them. Every other value of an octet is as good. Misspelt; callers know it by
/// this name.
enum class NUV_EXPORT IEEE802_11_NeigborReportSubelem_ID : std::uint8_t {
    BSS_TRANSITION_CANDIDATE_PREFERENCE = 3,
    BASIC_MULTI_LINK = 201,
};

/// Neighbor Report (ID 52; IEEE Std 802.11-2020, 9.4.2.36): one neighboring BSS.
///
/// Reading throws "Invalid ID" and what its subelements throw. Less than 3 octets behind the last
/// subelement are not looked at, so a subelement without a body is lost if it is the last.
class NUV_EXPORT IEEE802_11_NeighborReport
    : public IEEE802_11_Element<IEEE802_11_Element_ID::NEIGHBOR_REPORT> {
public:
    /// On the wire: ID (1 octet), Length (1 octet: how many follow), body.
    class NUV_EXPORT SubElementBase : public serialization::BinarySerializable {
    public:
        virtual IEEE802_11_NeigborReportSubelem_ID get_type() const = 0;
        /// Octets of the whole subelement, header included.
        virtual std::uint32_t get_length() const = 0;
        /// Same ID, same class and equal fields.
        virtual bool operator==(const SubElementBase& other) const;

        /// Shows every field to `visitor`.
        virtual void visit_fields(IEEE802_11_FieldVisitor& visitor) const = 0;

        /// Reads from the library's own source of octets.
        virtual void deserialize_from(impl::ByteCursor& source,
                                      serialization::SerializationContext& ctx) = 0;

        /// Takes every field from `source`, as visit_fields() shows them. Throws what the source
        /// throws.
        virtual void assign_fields(IEEE802_11_FieldSource& source) = 0;

        /// Throws the SerializationException with which serialize_impl() refuses the subelement; a
        /// report asks before it writes its first octet. By default that is "Invalid length" for
        /// more than 255 octets behind the Length octet.
        virtual void check_fields() const;

    protected:
        SubElementBase() = default;
        // Subelements are owned one by one.
        SubElementBase(SubElementBase&&) = default;
        SubElementBase& operator=(SubElementBase&&) = default;

        /// `other` is of the same class.
        virtual bool equal_fields(const SubElementBase& other) const = 0;
    };

    /// A subelement whose ID is fixed by its class.
    template <IEEE802_11_NeigborReportSubelem_ID ID>
    class SubElement : public SubElementBase {
    public:
        static constexpr IEEE802_11_NeigborReportSubelem_ID SUBELEMENT_ID = ID;

        IEEE802_11_NeigborReportSubelem_ID get_type() const override { return ID; }
    };

    /// BSS Transition Candidate Preference. Reading throws "Invalid ID", and "Invalid length" for
    /// another Length than 1.
    class NUV_EXPORT BSSTransitionCandidatePreference
        : public SubElement<
              IEEE802_11_NeigborReportSubelem_ID::BSS_TRANSITION_CANDIDATE_PREFERENCE> {
    public:
        BSSTransitionCandidatePreference() = default;
        explicit BSSTransitionCandidatePreference(std::uint8_t preference)
            : preference_(preference) {}

        /// 255 is the most preferred candidate, 0 one that must not be used.
        std::uint8_t get_preference() const { return preference_; }
        void set_preference(std::uint8_t preference) { preference_ = preference; }

        void serialize_impl(std::ostream& os,
                            serialization::SerializationContext& ctx) const override;
        void deserialize_impl(std::istream& is, serialization::SerializationContext& ctx) override;
        std::uint32_t get_length() const override { return 3; }
        void visit_fields(IEEE802_11_FieldVisitor& visitor) const override;
        void deserialize_from(impl::ByteCursor& source,
                              serialization::SerializationContext& ctx) override;
        void assign_fields(IEEE802_11_FieldSource& source) override;

    protected:
        bool equal_fields(const SubElementBase& other) const override;

    private:
        template <class Source>
        void read_from(Source& source, serialization::SerializationContext& ctx);

        std::uint8_t preference_ = 0;
    };

    /// A Basic Multi-Link element, which reads and writes itself with ID 201 and without an extension
    /// octet. Reading throws what the element throws.
    class NUV_EXPORT BasicMultiLinkSubElement
        : public SubElement<IEEE802_11_NeigborReportSubelem_ID::BASIC_MULTI_LINK> {
    public:
        BasicMultiLinkSubElement() : BasicMultiLinkSubElement(MACAddress()) {}
        explicit BasicMultiLinkSubElement(const MACAddress& mld_mac_address);
        /// Puts the element into neighbor-report mode. Throws SerializationException "Multi-Link
        /// Element must be of basic type".
        explicit BasicMultiLinkSubElement(IEEE802_11_MultiLink element);

        const IEEE802_11_MultiLink& get_basic_multi_link_element() const { return element_; }
        /// As the constructor.
        void set_basic_multi_link_element(IEEE802_11_MultiLink element);

        void serialize_impl(std::ostream& os,
                            serialization::SerializationContext& ctx) const override;
        void deserialize_impl(std::istream& is, serialization::SerializationContext& ctx) override;
        std::uint32_t get_length() const override { return element_.get_length(); }
        void visit_fields(IEEE802_11_FieldVisitor& visitor) const override;
        void deserialize_from(impl::ByteCursor& source,
                              serialization::SerializationContext& ctx) override;
        void assign_fields(IEEE802_11_FieldSource& source) override;
        void check_fields() const override { element_.check_fields(); }

    protected:
        bool equal_fields(const SubElementBase& other) const override;

    private:
        IEEE802_11_MultiLink element_;
    };

    /// A subelement without a class of its own, kept octet by octet. Reading takes whatever ID comes.
    class NUV_EXPORT DummySubElement : public SubElementBase {
    public:
        explicit DummySubElement(IEEE802_11_NeigborReportSubelem_ID id) : id_(id) {}
        DummySubElement(IEEE802_11_NeigborReportSubelem_ID id, const IEEE802_11_Body& payload)
            : id_(id), payload_(payload) {}

        const IEEE802_11_Body& get_payload() const { return payload_; }
        /// More than 255 octets are refused on writing with "Invalid length".
        void set_payload(const IEEE802_11_Body& payload) { payload_ = payload; }

        void serialize_impl(std::ostream& os,
                            serialization::SerializationContext& ctx) const override;
        void deserialize_impl(std::istream& is, serialization::SerializationContext& ctx) override;
        IEEE802_11_NeigborReportSubelem_ID get_type() const override { return id_; }
        std::uint32_t get_length() const override {
            return 2 + static_cast<std::uint32_t>(payload_.size());
        }
        void visit_fields(IEEE802_11_FieldVisitor& visitor) const override;
        void deserialize_from(impl::ByteCursor& source,
                              serialization::SerializationContext& ctx) override;
        void assign_fields(IEEE802_11_FieldSource& source) override;

    protected:
        bool equal_fields(const SubElementBase& other) const override;

    private:
        template <class Source>
        void read_from(Source& source, serialization::SerializationContext& ctx);

        IEEE802_11_NeigborReportSubelem_ID id_;
        IEEE802_11_Body payload_;
    };

    using BSSIDInformation = std::bitset<32>;
    using SubElementPtr = std::unique_ptr<SubElementBase>;
    using SubElementList = std::vector<SubElementPtr>;

    IEEE802_11_NeighborReport() = default;
    // Each throws std::invalid_argument for a null subelement.
    IEEE802_11_NeighborReport(const MACAddress& bssid, const BSSIDInformation& bssid_information,
                              std::uint8_t operating_class, std::uint8_t channel_number,
                              PHYType phy_type, SubElementList sub_elements = {});
    IEEE802_11_NeighborReport(const MACAddress& bssid, const BSSIDInformation& bssid_information,
                              std::uint8_t operating_class, std::uint8_t channel_number,
                              PHYType phy_type, SubElementPtr sub_element);
    // It owns its subelements: it is moved, not copied.
    IEEE802_11_NeighborReport(IEEE802_11_NeighborReport&&) = default;
    IEEE802_11_NeighborReport& operator=(IEEE802_11_NeighborReport&&) = default;

    const MACAddress& get_bssid() const { return bssid_; }
    void set_bssid(const MACAddress& bssid) { bssid_ = bssid; }

    /// Bits are those of BSSInformationBit.
    const BSSIDInformation& get_bssid_information() const { return bssid_information_; }
    void set_bssid_information(const BSSIDInformation& bits) { bssid_information_ = bits; }

    std::uint8_t get_operating_class() const { return operating_class_; }
    void set_operating_class(std::uint8_t operating_class) { operating_class_ = operating_class; }

    std::uint8_t get_channel_number() const { return channel_number_; }
    void set_channel_number(std::uint8_t channel) { channel_number_ = channel; }

    /// What was read may be any octet.
    PHYType get_phy_type() const { return phy_type_; }
    void set_phy_type(PHYType type) { phy_type_ = type; }

    /// The first subelement of this ID, null without one. Valid until the next change.
    const SubElementBase* get_first_sub_element_by_id(IEEE802_11_NeigborReportSubelem_ID id) const;
    /// In wire order. Everything that looks at a null subelement throws std::invalid_argument.
    SubElementList& sub_elements() { return sub_elements_; }
    const SubElementList& sub_elements() const { return sub_elements_; }

    /// Deliberate: the sum of the subelements is kept in 8 bits. The Length octet, this minus 2, is
    /// the same as without.
    std::uint32_t get_length() const override;
    void visit_fields(IEEE802_11_FieldVisitor& visitor) const override;
    void assign_fields(IEEE802_11_FieldSource& source) override;
    void check_fields() const override;

protected:
    void check_id(std::uint8_t id) const override;
    void write_body(std::ostream& os, serialization::SerializationContext& ctx) const override;
    void read_body(impl::ByteCursor& body, serialization::SerializationContext& ctx) override;
    bool equal_fields(const IEEE802_11_Element_Base& other) const override;

private:
    struct Layout;

    MACAddress bssid_;
    BSSIDInformation bssid_information_;
    std::uint8_t operating_class_ = 0;
    std::uint8_t channel_number_ = 0;
    PHYType phy_type_ = PHYType{0};
    SubElementList sub_elements_;
};

/// Writes a text form, for people. The stream's width, fill and flags neither matter nor change.
NUV_EXPORT std::ostream& operator<<(std::ostream& os, const IEEE802_11_NeighborReport& report);

}  // namespace nuv::ieee802_11
