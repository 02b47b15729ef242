#include "frontend/response_stream.h"

#include <iostream>

namespace odata::redfish {

counting_streambuf::int_type counting_streambuf::overflow(int_type c) {
    if (traits_type::eq_int_type(c, traits_type::eof())) return traits_type::not_eof(c);
    ++written_;
    return target_->sputc(traits_type::to_char_type(c));
}

std::streamsize counting_streambuf::xsputn(const char* text, std::streamsize count) {
    written_ += count;
    return target_->sputn(text, count);
}

int counting_streambuf::sync() { return target_->pubsync(); }

std::streamsize response_bytes_written() {
    auto* counting = dynamic_cast<counting_streambuf*>(std::cout.rdbuf());
    return counting ? counting->written() : -1;
}

}  // namespace odata::redfish
