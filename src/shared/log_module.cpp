// SPDX-License-Identifier: Apache-2.0
#include "internal/log_module.hpp"

#include "internal/logging/log_pieces.hpp"
#include "nuv/logging/chunk_io_manipulator.hpp"

namespace nuv::impl {

LogLine::~LogLine() {
    constexpr std::array FUNCTIONS = {clogmod__err, clogmod__warn, clogmod__info, clogmod__debug,
                                      clogmod__trace};
    try {
        if (stream_) {
            text_ += stream_->view();
        }
        if (!text_.empty()) {
            clogmod* const module = module_.get();
            log_pieces(text_, logging::get_clogger_chunking(module), [&](const char* piece) {
                FUNCTIONS[level_](module, file_, function_, line_, "%s", piece);
            });
        }
    } catch (...) {  // out of memory: the record is lost
    }
}

LogLine& LogLine::operator<<(std::ios_base& (*manipulator)(std::ios_base&)) {
    if (!stream_) {
        stream_.emplace();
    }
    *stream_ << manipulator;
    return *this;
}

}  // namespace nuv::impl
