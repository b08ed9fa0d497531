// SPDX-License-Identifier: Apache-2.0
#include "nuv/logging/clogmod_proxy.hpp"

#include <array>

#include "internal/optional_platform.hpp"
#include "nuv/logging/clog_adapter.hpp"

namespace nuv::logging {

namespace {

template <auto Log>
constexpr auto make_adapter = &ClogAdapter<clogmod, Log>::make;

constexpr std::array ADAPTERS_BY_LEVEL = {
    make_adapter<&clogmod__err>,   make_adapter<&clogmod__warn>,  make_adapter<&clogmod__info>,
    make_adapter<&clogmod__debug>, make_adapter<&clogmod__trace>,
};

}  // namespace

clogmod* ClogmodProxy::get_clogmod() const { return clogmod_get_or_alloc(name_.c_str()); }

void ClogmodProxy::set_loglevel(int level) {
    impl::call_if_present(clogmod_set_loglevel, get_clogmod(), level);
}

int ClogmodProxy::get_loglevel() const { return impl::loglevel(get_clogmod()); }

ClogStreamBuf ClogmodProxy::get_ostream(int level, const char* file, const char* function,
                                        int line) const {
    if (level < 0 || level >= static_cast<int>(ADAPTERS_BY_LEVEL.size())) {
        return ClogStreamBuf();
    }
    return ClogStreamBuf(
        ADAPTERS_BY_LEVEL[static_cast<std::size_t>(level)](name_, file, function, line));
}

}  // namespace nuv::logging
