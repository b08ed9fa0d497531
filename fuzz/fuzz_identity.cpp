// SPDX-License-Identifier: Apache-2.0
// The input is a text that may be a version, a message bus address or a device identifier, or the
// octets of a device identifier.
#include <regex.h>

#include <sstream>
#include <stdexcept>
#include <string>

#include "fuzz/invariant.hpp"
#include "nuv/basic_version.hpp"
#include "nuv/device_id.hpp"
#include "nuv/tarvu_address.hpp"

namespace {

using nuv::fuzz::require;

/// Whether `text` is one of a T; what is read prints as something that is read as the same.
template <class T>
bool check_text(const std::string& text, const T& sample) {
    try {
        const T value(text);
        require(T(value.to_string()) == value, "not read back");
        require(T(value.to_string()).to_string() == value.to_string(), "two texts of one value");
        T assigned(value);
        require(assigned.parse_string(text) && assigned == value, "constructor and parse_string");
        return true;
    } catch (const std::invalid_argument&) {
        T value = sample;
        require(!value.parse_string(text) && value == sample, "changed by a refused text");
        return false;
    }
}

/// A POSIX regular expression that the whole of a text must match.
class Rule {
public:
    explicit Rule(const std::string& pattern) {
        require(regcomp(&rule_, ("^(" + pattern + ")$").c_str(), REG_EXTENDED | REG_NOSUB) == 0,
                "rule");
    }
    bool holds(const std::string& text) const {
        return text.find('\0') == std::string::npos &&
               regexec(&rule_, text.c_str(), 0, nullptr, 0) == 0;
    }

private:
    regex_t rule_{};  // as long as the program
};

const Rule version_rule("0*[0-9]{1,5}(\\.0*[0-9]{1,5}){0,3}");
const Rule address_rule("[A-Za-z0-9_.-]{1,64}(@([0-9A-Fa-f]{2}:){5}[0-9A-Fa-f]{2})?");

void check_device_id(const std::string& text) {
    const nuv::DeviceID before("local=a local=b");
    check_text(text, before);
    nuv::DeviceID read = before;
    nuv::serialization::SerializationContext ctx;
    std::istringstream is(text);
    try {
        read.deserialize_impl(is, ctx);
    } catch (const nuv::serialization::SerializationException&) {
        require(read == before, "half read");
        return;
    }
    std::ostringstream os;
    read.serialize_impl(os, ctx);
    require(text.starts_with(os.str()), "written in other octets than read");
    require(is.tellg() == os.tellp(), "read further");
    require(nuv::DeviceID(read.to_string()) == read, "text not read back");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    const bool version = check_text(text, nuv::BasicVersion{1, 2});
    require(!version || version_rule.holds(text), "version against the rule");
    const bool address = check_text(text, nuv::TarvuAddress("a"));
    require(address == address_rule.holds(text), "message bus address against the rule");
    check_device_id(text);
    return 0;
}
