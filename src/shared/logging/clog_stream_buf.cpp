// SPDX-License-Identifier: Apache-2.0
#include "nuv/logging/clog_stream_buf.hpp"

#include <string>
#include <utility>

#include "nuv/logging/chunk_io_manipulator.hpp"

namespace nuv::logging {

ClogStreamBuf::ClogStreamBuf() : ClogStreamBuf(nullptr) {}

ClogStreamBuf::ClogStreamBuf(std::unique_ptr<ClogAdapterBase> adapter)
    : std::ostream(nullptr), std::stringbuf(std::ios_base::out), adapter_(std::move(adapter)) {
    rdbuf(this);
}

ClogStreamBuf::~ClogStreamBuf() { log_pending(); }

ClogStreamBuf::ClogStreamBuf(ClogStreamBuf&& other) noexcept
    : std::ostream(std::move(other)),
      std::stringbuf(std::move(other)),
      adapter_(std::move(other.adapter_)) {
    set_rdbuf(this);  // a moved stream has no buffer
}

ClogStreamBuf& ClogStreamBuf::operator=(ClogStreamBuf&& other) noexcept {
    if (this != &other) {
        log_pending();
        std::ostream::operator=(std::move(other));
        std::stringbuf::operator=(std::move(other));
        adapter_ = std::move(other.adapter_);
    }
    return *this;
}

void ClogStreamBuf::swap(ClogStreamBuf& other) noexcept {
    std::ostream::swap(other);
    std::stringbuf::swap(other);
    adapter_.swap(other.adapter_);
}

void ClogStreamBuf::log_pending() noexcept {
    // The buffer tells what is pending; tellp() does not after a seekp() or a failed output.
    if (!view().empty()) {
        try {
            ClogStreamBuf::sync();
        } catch (...) {  // out of memory: the record is lost
        }
    }
}

int ClogStreamBuf::sync() {
    std::string text = std::move(static_cast<std::stringbuf&>(*this)).str();  // and empties it
    if (adapter_ == nullptr) {
        return 0;
    }
    std::erase(text, '\0');
    if (text.ends_with('\n')) {
        text.pop_back();
    }
    auto size = static_cast<std::uint32_t>(iword(ChunkIOManipulator::xalloc_value()));
    if (size == 0) {
        size = adapter_->get_chunking();
    }
    if (size <= 1) {
        adapter_->log(text.c_str());
    } else {
        log_chunks(text, size);
    }
    return 0;
}

void ClogStreamBuf::log_chunks(std::string& text, std::size_t size) {
    std::size_t start = 0;
    while (size < text.size() - start) {
        const std::size_t limit = start + size;
        // Each piece but the first starts with the newline that stands for the separator, so a
        // newline at `start` is no place to cut. A blank there is: it can only be the first piece.
        std::size_t cut = text.rfind('\n', limit);
        if (cut == std::string::npos || cut <= start) {
            cut = text.rfind(' ', limit);
        }
        const bool hard = cut == std::string::npos || cut < start;
        const std::size_t stop = hard ? limit : cut;
        const char after = std::exchange(text[stop], '\0');
        adapter_->log(text.c_str() + start);
        text[stop] = after;
        // After a hard cut the newline takes the place of a character that was logged.
        start = hard ? limit - 1 : cut;
        text[start] = '\n';
    }
    adapter_->log(text.c_str() + start);
}

}  // namespace nuv::logging
