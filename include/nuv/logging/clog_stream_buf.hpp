// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <ostream>
#include <sstream>

#include "nuv/export.hpp"
#include "nuv/logging/clog_adapter_base.hpp"

namespace nuv::logging {

/// The stream of one log record, and its own buffer. Text written to it is handed to the adapter
/// when the stream is flushed, and when it is destroyed with text pending; so a temporary logs at
/// the end of its statement. NUL bytes and one final newline are taken out. A text longer than the
/// chunk size (ChunkIOManipulator, else the adapter's) becomes several records, cut at newlines or
/// blanks where there are any.
///
/// Numbers are written in the classic locale unless another one is imbued.
///
/// Without an adapter text is accepted and discarded; so is a text that finds no memory, and all that
/// follows it. Not to be shared between threads.
class NUV_EXPORT ClogStreamBuf : public std::ostream, public std::stringbuf {
public:
    ClogStreamBuf();
    explicit ClogStreamBuf(std::unique_ptr<ClogAdapterBase> adapter);
    ~ClogStreamBuf() override;

    /// The chunk size set on the stream moves with the text.
    ClogStreamBuf(ClogStreamBuf&& other) noexcept;
    /// What is pending here is logged first.
    ClogStreamBuf& operator=(ClogStreamBuf&& other) noexcept;
    void swap(ClogStreamBuf& other) noexcept;

    // Both bases have these; the stream's reach the buffer too.
    using std::ostream::getloc;
    using std::ostream::imbue;

protected:
    int sync() override;
    std::stringbuf::int_type overflow(std::stringbuf::int_type c) override;

private:
    void log_pending() noexcept;

    std::unique_ptr<ClogAdapterBase> adapter_;
};

NUV_EXPORT inline void swap(ClogStreamBuf& a, ClogStreamBuf& b) noexcept { a.swap(b); }

}  // namespace nuv::logging
