#include "frontend/response_stream.h"

#include <cstring>
#include <iostream>

namespace odata::redfish {
namespace {

constexpr char status_prefix[] = "Status: ";
constexpr unsigned status_prefix_length = sizeof status_prefix - 1;

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
    return dynamic_cast<counting_streambuf*>(std::cout.rdbuf());
}

}  // namespace

// Follows the header block line by line: an empty line ends it, and the
// first "Status: NNN" line gives the status.
void counting_streambuf::watch(char c) {
    ++written_;
    if (headers_ended_) return;
    if (c == '\r') return;
    if (c != '\n') {
        if (line_length_ < sizeof line_) line_[line_length_] = c;
        ++line_length_;
        return;
    }
    if (line_length_ == 0) {
        headers_ended_ = true;
    } else if (status_ == 200 && line_length_ >= status_prefix_length + 3) {
        status_ = status_code(line_);
    }
    line_length_ = 0;
}

counting_streambuf::int_type counting_streambuf::overflow(int_type c) {
    if (traits_type::eq_int_type(c, traits_type::eof())) return traits_type::not_eof(c);
    watch(traits_type::to_char_type(c));
    return target_->sputc(traits_type::to_char_type(c));
}

std::streamsize counting_streambuf::xsputn(const char* text, std::streamsize count) {
    if (headers_ended_) {
        written_ += count;
    } else {
        for (std::streamsize i = 0; i < count; ++i) watch(text[i]);
    }
    return target_->sputn(text, count);
}

int counting_streambuf::sync() { return target_->pubsync(); }

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
