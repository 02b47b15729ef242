#include "frontend/fcgx_streambuf.h"

#include <algorithm>
#include <climits>
#include <cstring>

namespace odata::redfish {
namespace {

// The FastCGI calls take int counts.
int piece(std::streamsize count) {
    return static_cast<int>(std::min<std::streamsize>(count, INT_MAX));
}

}  // namespace

// Output is not buffered here: the FastCGI stream has its own buffer.
fcgx_streambuf::int_type fcgx_streambuf::overflow(int_type c) {
    if (traits_type::eq_int_type(c, traits_type::eof())) return traits_type::not_eof(c);
    return FCGX_PutChar(traits_type::to_char_type(c), stream_) == -1 ? traits_type::eof() : c;
}

std::streamsize fcgx_streambuf::xsputn(const char* text, std::streamsize count) {
    std::streamsize sent = 0;
    while (sent < count) {
        const int written = FCGX_PutStr(text + sent, piece(count - sent), stream_);
        if (written <= 0) break;
        sent += written;
    }
    return sent;
}

fcgx_streambuf::int_type fcgx_streambuf::underflow() {
    if (gptr() < egptr()) return traits_type::to_int_type(*gptr());
    const int read = FCGX_GetStr(input_, static_cast<int>(sizeof input_), stream_);
    if (read <= 0) return traits_type::eof();
    setg(input_, input_, input_ + read);
    return traits_type::to_int_type(*gptr());
}

// Large reads (uploads) skip the buffer once what it holds is taken.
std::streamsize fcgx_streambuf::xsgetn(char* text, std::streamsize count) {
    std::streamsize taken = std::min<std::streamsize>(count, egptr() - gptr());
    if (taken > 0) {
        std::memcpy(text, gptr(), static_cast<std::size_t>(taken));
        gbump(static_cast<int>(taken));
    }
    while (taken < count) {
        const int read = FCGX_GetStr(text + taken, piece(count - taken), stream_);
        if (read <= 0) break;
        taken += read;
    }
    return taken;
}

}  // namespace odata::redfish
