// The response stream of the current request: forwards to the FastCGI
// output and watches what was written, so that the pipeline knows whether
// a response was started or already complete, and with which status.
#pragma once

#include <streambuf>

namespace odata::redfish {

class counting_streambuf : public std::streambuf {
public:
    explicit counting_streambuf(std::streambuf* target) : target_(target) {}
    std::streamsize written() const { return written_; }
    // The code of the first "Status: " line; 200 when none was written.
    int status() const { return status_; }
    // True once the empty line that ends the header block has passed.
    bool headers_ended() const { return headers_ended_; }

protected:
    int_type overflow(int_type c) override;
    std::streamsize xsputn(const char* text, std::streamsize count) override;
    int sync() override;

private:
    void watch(char c);

    std::streambuf* target_;
    std::streamsize written_ = 0;
    int status_ = 200;
    bool headers_ended_ = false;
    char line_[16] = {};  // the start of the header line being written
    unsigned line_length_ = 0;
};

// Bytes written to standard output since the current request began; -1
// when standard output is not a counting stream.
std::streamsize response_bytes_written();

// The status of the response written so far (200 when none was written or
// standard output is not a counting stream).
int response_status();

// True when a complete header block was written for the current request.
bool response_headers_ended();

}  // namespace odata::redfish
