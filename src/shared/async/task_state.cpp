// SPDX-License-Identifier: Apache-2.0
#include "nuv/async/task_state.hpp"

#include "internal/enum_table.hpp"

namespace nuv {
namespace impl {

template <>
struct EnumTexts<async::TaskState> {
    using enum async::TaskState;
    static constexpr EnumRow<async::TaskState> rows[] = {
        {NEVER_STARTED, "NEVER_STARTED"},
        {RUNNING, "RUNNING"},
        {CANCELLED, "CANCELLED"},
        {COMPLETE_WITH_VALUE, "COMPLETE_WITH_VALUE"},
        {COMPLETE_WITH_EXCEPTION, "COMPLETE_WITH_EXCEPTION"},
        {TIMEOUT, "TIMEOUT"},
        {DELETED, "DELETED"},
        {OTHERWISE, "INVALID"},
    };
};

}  // namespace impl

namespace async {

std::string task_state_to_string(TaskState state) { return impl::enum_text(state); }
NUV_DEFINE_ENUM_OUTPUT(TaskState)

}  // namespace async
}  // namespace nuv
