// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cerrno>
#include <iostream>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#include "commands/commands.hpp"
#include "commands/report.hpp"
#include "json/writer.hpp"
#include "nuv/ipv4_address.hpp"
#include "nuv/ipv6_address.hpp"
#include "nuv/mac_address.hpp"
#include "nuv/prefixed_ip_address.hpp"
#include "text/text.hpp"

namespace nuvctl {

namespace {

using nuv::IPAddress;
using nuv::IPv4Address;
using nuv::IPv6Address;
using nuv::MACAddress;
using nuv::PrefixedIPAddress;

/// What an address may be, under the name it has in the output.
template <class Address>
struct Classification {
    const char* name;
    bool (Address::*holds)() const noexcept;
};

constexpr Classification<IPAddress> of_both[] = {
    {"loopback", &IPAddress::is_loopback},           {"link_local", &IPAddress::is_link_local},
    {"multicast", &IPAddress::is_multicast},         {"unicast", &IPAddress::is_unicast},
    {"unspecified", &IPAddress::is_unspecified},     {"benchmarking", &IPAddress::is_benchmarking},
    {"documentation", &IPAddress::is_documentation},
};
constexpr Classification<IPv4Address> of_v4[] = {
    {"private", &IPv4Address::is_private},
    {"broadcast", &IPv4Address::is_broadcast},
};
constexpr Classification<IPv6Address> of_v6[] = {
    {"unique_local", &IPv6Address::is_unique_local},
    {"mapped_v4", &IPv6Address::is_mapped_v4},
    {"compatible_v4", &IPv6Address::is_compatible_v4},
};

template <class Address, std::size_t N>
void write_classes(Json& json, const IPAddress& address,
                   const Classification<Address> (&classes)[N]) {
    for (const auto& [name, holds] : classes) {
        json.boolean(name, (dynamic_cast<const Address&>(address).*holds)());
    }
}

void write(Json& json, const MACAddress& address) {
    json.text("type", "mac");
    json.text("text", address.to_string());
    json.boolean("group", address.is_group());
    json.boolean("locally_administered", address.is_locally_administered());
    json.boolean("valid", is_valid_mac_address(address));
    json.boolean("valid_individual", is_valid_individual_mac_address(address));
}

void write(Json& json, const IPAddress& address) {
    json.text("type", "ip");
    json.text("text", address.to_string());
    json.text("version", enum_to_string(address.get_version()));
    write_classes(json, address, of_both);
    address.is_v4() ? write_classes(json, address, of_v4) : write_classes(json, address, of_v6);
}

void write(Json& json, const PrefixedIPAddress& prefixed, const IPAddress* contained) {
    json.text("type", "prefix");
    json.text("text", prefixed.to_string());
    json.text("version", enum_to_string(prefixed.get_address().get_version()));
    json.text("address", prefixed.get_address().to_string());
    json.number("prefix_length", prefixed.get_prefix_length());
    json.text("netmask", prefixed.get_netmask()->to_string());
    json.text("host_identifier_mask", prefixed.get_host_identifier_mask()->to_string());
    json.text("network", prefixed.get_network_address().to_string());
    json.boolean("is_network_address", prefixed.is_network_address());
    if (contained != nullptr) {
        json.boolean("contains", prefixed.contains(*contained));
    }
}

/// Six groups of two characters: whoever wrote that meant a MAC address.
bool has_form_of_mac(std::string_view text) {
    bool has = text.size() == MACAddress::MAC_ADDR_STRING_LEN && std::ranges::count(text, ':') == 5;
    for (std::size_t i = 2; has && i < text.size(); i += 3) {
        has = text[i] == ':';
    }
    return has;
}

class AddressPrinter {
public:
    explicit AddressPrinter(const AddressOptions& options)
        : pretty_(options.pretty),
          contained_(options.contains.empty()
                         ? nullptr
                         : IPAddress::guess_version_and_parse(options.contains)) {}

    void print(const std::string& text) {
        write_object(std::cout, pretty_, [&](Json& json) {
            json.text("input", to_utf8(text));
            try {
                if (has_form_of_mac(text)) {
                    write(json, MACAddress(text));
                } else if (text.find('/') != std::string::npos) {
                    write(json, PrefixedIPAddress::guess_version_and_parse(text), contained_.get());
                } else {
                    write(json, *IPAddress::guess_version_and_parse(text));
                }
            } catch (const std::invalid_argument& error) {
                json.text("error", to_utf8(error.what()));
                status_ = 1;
            }
        });
    }

    void print_lines_of_standard_input() {
        for (std::string line; std::getline(std::cin, line);) {
            if (!line.empty() && line.back() == '\r') {
                line.pop_back();
            }
            if (!line.empty()) {
                print(line);
            }
        }
        if (std::cin.bad()) {
            report("standard input: " + std::generic_category().message(errno));
            status_ = 1;
        }
    }

    int status() const { return status_; }

private:
    bool pretty_;
    std::unique_ptr<IPAddress> contained_;
    int status_ = 0;
};

}  // namespace

int run_address(const AddressOptions& options) {
    AddressPrinter printer(options);
    for (const std::string& text : options.texts) {
        printer.print(text);
    }
    if (options.texts.empty()) {
        printer.print_lines_of_standard_input();
    }
    return printer.status();
}

}  // namespace nuvctl
