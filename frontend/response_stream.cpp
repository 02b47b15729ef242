#include "frontend/response_stream.h"

#include <algorithm>
#include <cstring>
#include <iostream>

namespace odata::redfish {
namespace {

constexpr char status_prefix[] = "Status: ";
constexpr std::size_t status_prefix_length = sizeof status_prefix - 1;

// The stream that standard output was last bound to; looked up without a
// dynamic_cast on every question about the response.
counting_streambuf* bound_stream = nullptr;

// The three digits after "Status: " at the start of a header line; 200 for
// any other line.
int status_code(const char* line) {
    if (std::memcmp(line, status_prefix, status_prefix_length) != 0) return 200;
    int code = 0;
    for (const char* digit = line + status_prefix_length; digit < line + status_prefix_length + 3;
         ++digit) {
        if (*digit < '0' || *digit > '9') return 200;
        code = code * 10 + (*digit - '0');
    }
    return code;
}

counting_streambuf* response_stream() {
    return bound_stream && std::cout.rdbuf() == bound_stream ? bound_stream : nullptr;
}

}  // namespace

counting_streambuf::counting_streambuf(std::streambuf* target)
    : target_(target), observed_end_(buffer_) {
    setp(buffer_, buffer_ + sizeof buffer_);
    bound_stream = this;
}

counting_streambuf::~counting_streambuf() {
    forward_buffered();
    if (bound_stream == this) bound_stream = nullptr;
}

std::streamsize counting_streambuf::written() {
    observe_buffered();
    return written_;
}

int counting_streambuf::status() {
    observe_buffered();
    return status_;
}

bool counting_streambuf::headers_ended() {
    observe_buffered();
    return headers_ended_;
}

void counting_streambuf::observe_buffered() {
    observe(observed_end_, static_cast<std::size_t>(pptr() - observed_end_));
    observed_end_ = pptr();
}

// Follows the header block line by line: an empty line ends it, and the
// first "Status: NNN" line gives the status.
void counting_streambuf::observe(const char* text, std::size_t count) {
    written_ += static_cast<std::streamsize>(count);
    const char* end = text + count;
    while (text < end && !headers_ended_) {
        const char* newline = static_cast<const char*>(std::memchr(text, '\n', end - text));
        const char* line_end = newline ? newline : end;
        const std::size_t kept = std::min(line_length_, sizeof line_);
        const std::size_t piece = static_cast<std::size_t>(line_end - text);
        std::memcpy(line_ + kept, text, std::min(piece, sizeof line_ - kept));
        line_length_ += piece;
        if (!newline) return;
        end_line();
        text = newline + 1;
    }
}

void counting_streambuf::end_line() {
    const bool empty = line_length_ == 0 || (line_length_ == 1 && line_[0] == '\r');
    if (empty) {
        headers_ended_ = true;
    } else if (status_ == 200 && line_length_ >= status_prefix_length + 3) {
        status_ = status_code(line_);
    }
    line_length_ = 0;
}

bool counting_streambuf::forward_buffered() {
    observe_buffered();
    const std::streamsize pending = pptr() - pbase();
    setp(buffer_, buffer_ + sizeof buffer_);
    observed_end_ = buffer_;
    return pending == 0 || target_->sputn(buffer_, pending) == pending;
}

counting_streambuf::int_type counting_streambuf::overflow(int_type c) {
    if (!forward_buffered()) return traits_type::eof();
    if (traits_type::eq_int_type(c, traits_type::eof())) return traits_type::not_eof(c);
    *pptr() = traits_type::to_char_type(c);
    pbump(1);
    return c;
}

// Small pieces go to the buffer; a piece that does not fit goes out at once
// after what is buffered, without a copy.
std::streamsize counting_streambuf::xsputn(const char* text, std::streamsize count) {
    if (count <= epptr() - pptr()) {
        std::memcpy(pptr(), text, static_cast<std::size_t>(count));
        pbump(static_cast<int>(count));
        return count;
    }
    if (!forward_buffered()) return 0;
    observe(text, static_cast<std::size_t>(count));
    return target_->sputn(text, count);
}

// Hands the buffered bytes on without flushing the FastCGI output: it writes
// when its own buffer fills and when the request finishes, where the end of
// the request joins the answer in one write to the web server.
int counting_streambuf::sync() { return forward_buffered() ? 0 : -1; }

std::streamsize response_bytes_written() {
    auto* counting = response_stream();
    return counting ? counting->written() : -1;
}

int response_status() {
    auto* counting = response_stream();
    return counting ? counting->status() : 200;
}

bool response_headers_ended() {
    auto* counting = response_stream();
    return counting && counting->headers_ended();
}

}  // namespace odata::redfish
