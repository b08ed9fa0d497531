// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "nuv/export.hpp"

namespace nuv::serialization {

class YAJLStream;

}  // namespace nuv::serialization

namespace nuv::impl {

using serialization::YAJLStream;

enum class JSONContainer : std::uint8_t { OBJECT, ARRAY };

/// What ScopedJSONObject and ScopedJSONArray are: opens a JSON object (array), closes it at the end
/// of the scope. Throws SerializationException `prefix` + "Could not open object" (array), and the
/// same with "close" from the destructor, which stays silent while another exception is on its way.
template <JSONContainer container>
class NUV_EXPORT ScopedJSON {
public:
    ScopedJSON(YAJLStream& stream, std::string prefix);
    ~ScopedJSON() noexcept(false);
    ScopedJSON(const ScopedJSON&) = delete;
    ScopedJSON& operator=(const ScopedJSON&) = delete;

private:
    YAJLStream& stream_;
    std::string prefix_;
};

extern template class ScopedJSON<JSONContainer::OBJECT>;
extern template class ScopedJSON<JSONContainer::ARRAY>;

}  // namespace nuv::impl

namespace nuv::serialization {

/// A JSON object, and a JSON array, that is open as long as the scope.
using ScopedJSONObject = impl::ScopedJSON<impl::JSONContainer::OBJECT>;
using ScopedJSONArray = impl::ScopedJSON<impl::JSONContainer::ARRAY>;

}  // namespace nuv::serialization
