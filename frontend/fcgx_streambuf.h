// A standard stream buffer over one FastCGI stream of the current request:
// the answer goes out through it, the request body comes in through it.
// The service needs nothing else of the C++ FastCGI library, which would
// bring in the shared C++ runtime of its own (see service/CMakeLists.txt).
#pragma once

#include <fcgiapp.h>

#include <streambuf>

namespace odata::redfish {

class fcgx_streambuf : public std::streambuf {
public:
    explicit fcgx_streambuf(FCGX_Stream* stream) : stream_(stream) {}
    fcgx_streambuf(const fcgx_streambuf&) = delete;
    fcgx_streambuf& operator=(const fcgx_streambuf&) = delete;

protected:
    int_type overflow(int_type c) override;
    std::streamsize xsputn(const char* text, std::streamsize count) override;
    int_type underflow() override;
    std::streamsize xsgetn(char* text, std::streamsize count) override;

private:
    FCGX_Stream* stream_;
    char input_[1024];
};

}  // namespace odata::redfish
