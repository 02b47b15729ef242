// Captures what the code under test writes to standard output.
#pragma once

#include <iostream>
#include <sstream>

class stdout_capture {
public:
    stdout_capture() : saved_(std::cout.rdbuf(buffer_.rdbuf())) {}
    ~stdout_capture() { std::cout.rdbuf(saved_); }
    std::string text() const { return buffer_.str(); }

private:
    std::stringstream buffer_;
    std::streambuf* saved_;
};
