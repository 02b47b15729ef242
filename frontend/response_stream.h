// The response stream of the current request: forwards to the FastCGI
// output and counts what was written, so that the pipeline knows whether a
// response was started.
#pragma once

#include <streambuf>

namespace odata::redfish {

class counting_streambuf : public std::streambuf {
public:
    explicit counting_streambuf(std::streambuf* target) : target_(target) {}
    std::streamsize written() const { return written_; }

protected:
    int_type overflow(int_type c) override;
    std::streamsize xsputn(const char* text, std::streamsize count) override;
    int sync() override;

private:
    std::streambuf* target_;
    std::streamsize written_ = 0;
};

// Bytes written to standard output since the current request began; -1
// when standard output is not a counting stream.
std::streamsize response_bytes_written();

}  // namespace odata::redfish
