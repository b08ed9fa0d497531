// SPDX-License-Identifier: Apache-2.0
// The input is a document that may describe a frame: what `nuvctl encode` reads.
#include "fuzz/invariant.hpp"
#include "nuv/serialization_exception.hpp"
#include "tools/nuvctl/frames/action_frame.hpp"
#include "tools/nuvctl/frames/association_request.hpp"
#include "tools/nuvctl/json/encode_json.hpp"
#include "tools/nuvctl/json/fields.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using nuv::fuzz::require;
    std::istringstream is(std::string(data, data + size));
    try {
        const auto frame = nuvctl::read_json(nuv::serialization::YAJLNode(is));
        require(frame.body <= frame.octets.size(), "a body behind the frame");
        const auto management = nuvctl::management_frame({frame.octets, false, false});
        require(management.has_value(), "no management frame");
        require(nuvctl::association_request(*management) || nuvctl::action_frame(*management),
                "a frame of another type than described");
    } catch (const nuvctl::FieldError&) {
    } catch (const nuv::serialization::SerializationException&) {
        // no JSON
    }
    return 0;
}
