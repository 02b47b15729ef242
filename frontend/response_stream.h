// The response stream of the current request: gathers what is written in a
// buffer of its own, forwards it to the FastCGI output in large pieces, and
// watches it, so that the pipeline knows whether a response was started or
// already complete, and with which status.
#pragma once

#include <cstddef>
#include <streambuf>

namespace odata::redfish {

class counting_streambuf : public std::streambuf {
public:
    explicit counting_streambuf(std::streambuf* target);
    ~counting_streambuf() override;
    counting_streambuf(const counting_streambuf&) = delete;
    counting_streambuf& operator=(const counting_streambuf&) = delete;

    // Bytes written, buffered ones included.
    std::streamsize written();
    // The code of the first "Status: " line; 200 when none was written.
    int status();
    // True once the empty line that ends the header block has passed.
    bool headers_ended();

protected:
    int_type overflow(int_type c) override;
    std::streamsize xsputn(const char* text, std::streamsize count) override;
    int sync() override;

private:
    void observe_buffered();
    void observe(const char* text, std::size_t count);
    void end_line();
    bool forward_buffered();

    std::streambuf* target_;
    std::streamsize written_ = 0;
    int status_ = 200;
    bool headers_ended_ = false;
    char line_[16] = {};  // the start of the header line being written
    std::size_t line_length_ = 0;
    char* observed_end_;  // the end of the buffered bytes already observed
    char buffer_[4096];
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
