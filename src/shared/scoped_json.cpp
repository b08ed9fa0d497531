// SPDX-License-Identifier: Apache-2.0
#include "nuv/scoped_json.hpp"

#include <exception>
#include <utility>

#include "nuv/serialization_exception.hpp"
#include "nuv/yajl_stream.hpp"

namespace nuv::impl {

using serialization::SerializationException;

namespace {

struct Steps {
    const char* name;
    bool (YAJLStream::*open)() noexcept;
    bool (YAJLStream::*close)() noexcept;
};

template <JSONContainer container>
constexpr Steps STEPS = container == JSONContainer::OBJECT
                            ? Steps{"object", &YAJLStream::open_object, &YAJLStream::close_object}
                            : Steps{"array", &YAJLStream::open_array, &YAJLStream::close_array};

}  // namespace

template <JSONContainer container>
ScopedJSON<container>::ScopedJSON(YAJLStream& stream, std::string prefix)
    : stream_(stream), prefix_(std::move(prefix)) {
    if (!(stream_.*STEPS<container>.open)()) {
        throw SerializationException(prefix_ + "Could not open " + STEPS<container>.name);
    }
}

template <JSONContainer container>
ScopedJSON<container>::~ScopedJSON() noexcept(false) {
    if (!(stream_.*STEPS<container>.close)() && std::uncaught_exceptions() == 0) {
        throw SerializationException(prefix_ + "Could not close " + STEPS<container>.name);
    }
}

template class ScopedJSON<JSONContainer::OBJECT>;
template class ScopedJSON<JSONContainer::ARRAY>;

}  // namespace nuv::impl
