// SPDX-License-Identifier: Apache-2.0
#include "internal/log_module.hpp"

#include "internal/logging/log_pieces.hpp"
#include "nuv/logging/chunk_io_manipulator.hpp"

namespace nuv::impl {

LogLine::LogLine(const LogModule& module, LogModule::Level level, const char* file,
                 const char* function, int line) noexcept
    : module_(module),
      level_(level),
      file_(module.file() != nullptr ? module.file() : file),
      function_(function),
      line_(line) {
    try {
        text_.reserve(120);
    } catch (const std::bad_alloc&) {
        lost_ = true;
    }
}

LogLine::~LogLine() {
    constexpr std::array FUNCTIONS = {clogmod__err, clogmod__warn, clogmod__info, clogmod__debug,
                                      clogmod__trace};
    try {
        if (stream_) {
            text_ += stream_->view();
            lost_ = lost_ || stream_->bad();
        }
        if (!text_.empty() && !lost_) {
            clogmod* const module = module_.get();
            log_pieces(text_, logging::get_clogger_chunking(module), [&](const char* piece) {
                FUNCTIONS[level_](module, file_, function_, line_, "%s", piece);
            });
        }
    } catch (...) {  // out of memory: the record is lost
    }
}

LogLine& LogLine::operator<<(std::ios_base& (*manipulator)(std::ios_base&)) noexcept {
    stream() << manipulator;
    return *this;
}

void LogLine::append(std::string_view text) noexcept {
    try {
        text_ += text;
    } catch (const std::bad_alloc&) {
        lost_ = true;
    }
}

std::ostream& LogLine::stream() { return stream_ ? *stream_ : stream_.emplace(); }

}  // namespace nuv::impl
