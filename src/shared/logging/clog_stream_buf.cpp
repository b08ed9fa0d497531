// SPDX-License-Identifier: Apache-2.0
#include "nuv/logging/clog_stream_buf.hpp"

#include <locale>
#include <new>
#include <string>
#include <utility>

#include "internal/logging/log_pieces.hpp"
#include "nuv/logging/chunk_io_manipulator.hpp"

namespace nuv::logging {

ClogStreamBuf::ClogStreamBuf() : ClogStreamBuf(nullptr) {}

ClogStreamBuf::ClogStreamBuf(std::unique_ptr<ClogAdapterBase> adapter)
    : std::ostream(nullptr), std::stringbuf(std::ios_base::out), adapter_(std::move(adapter)) {
    rdbuf(this);
    imbue(std::locale::classic());  // records look the same in every program
}

ClogStreamBuf::~ClogStreamBuf() { log_pending(); }

ClogStreamBuf::ClogStreamBuf(ClogStreamBuf&& other) noexcept
    : std::ostream(static_cast<std::ostream&&>(other)),
      std::stringbuf(static_cast<std::stringbuf&&>(other)),
      adapter_(std::move(other.adapter_)) {
    set_rdbuf(this);  // a moved stream has no buffer
}

ClogStreamBuf& ClogStreamBuf::operator=(ClogStreamBuf&& other) noexcept {
    if (this != &other) {
        log_pending();
        std::ostream::operator=(static_cast<std::ostream&&>(other));
        std::stringbuf::operator=(static_cast<std::stringbuf&&>(other));
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
    if (adapter_ != nullptr) {
        const auto own = static_cast<std::uint32_t>(iword(ChunkIOManipulator::xalloc_value()));
        impl::log_pieces(text, own != 0 ? own : adapter_->get_chunking(),
                         [this](const char* piece) { adapter_->log(piece); });
    }
    return 0;
}

std::stringbuf::int_type ClogStreamBuf::overflow(std::stringbuf::int_type c) {
    try {
        return std::stringbuf::overflow(c);
    } catch (const std::bad_alloc&) {
        adapter_.reset();  // a record that lacks its end would mislead
        return std::stringbuf::traits_type::eof();
    }
}

}  // namespace nuv::logging
