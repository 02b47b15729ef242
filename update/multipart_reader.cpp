#include "update/multipart_reader.h"

#include <algorithm>
#include <cctype>

#include "update/lower_case.h"

namespace odata::redfish {
namespace {

constexpr size_t block_size = 65536;
constexpr size_t max_header_line = 1024;
constexpr int max_header_lines = 16;

// The value of name="..." in a Content-Disposition line; "" when absent.
std::string disposition_name(const std::string& line) {
    const std::string lowered = lower(line);
    for (size_t at = lowered.find("name=\""); at != std::string::npos;
         at = lowered.find("name=\"", at + 1)) {
        if (at > 0 && std::isalpha(static_cast<unsigned char>(lowered[at - 1]))) continue;
        const size_t begin = at + 6;
        const size_t end = line.find('"', begin);
        return end == std::string::npos ? std::string() : line.substr(begin, end - begin);
    }
    return {};
}

}  // namespace

std::string multipart_boundary(const std::string& content_type) {
    const std::string lowered = lower(content_type);
    if (lowered.rfind("multipart/form-data", 0) != 0) return {};
    const size_t at = lowered.find("boundary=");
    if (at == std::string::npos) return {};
    std::string boundary = content_type.substr(at + 9);
    boundary = boundary.substr(0, boundary.find(';'));
    if (boundary.size() >= 2 && boundary.front() == '"' && boundary.back() == '"')
        boundary = boundary.substr(1, boundary.size() - 2);
    return boundary;
}

multipart_reader::multipart_reader(std::istream& input, std::string boundary, long long max_bytes)
    : input_(input), delimiter_("\r\n--" + boundary), remaining_(max_bytes) {}

// Appends up to one block from the input; false at its end.
bool multipart_reader::fill() {
    if (remaining_ <= 0 || !input_) return false;
    if (start_ > 0) {
        buffer_.erase(0, start_);
        start_ = 0;
    }
    const size_t wanted = static_cast<size_t>(std::min<long long>(remaining_, block_size));
    const size_t kept = buffer_.size();
    buffer_.resize(kept + wanted);
    input_.read(&buffer_[kept], static_cast<std::streamsize>(wanted));
    const size_t got = static_cast<size_t>(input_.gcount());
    buffer_.resize(kept + got);
    remaining_ -= static_cast<long long>(got);
    return got > 0;
}

bool multipart_reader::read_line(std::string& line) {
    for (;;) {
        const size_t end = buffer_.find("\r\n", start_);
        if (end != std::string::npos && end - start_ <= max_header_line) {
            line = buffer_.substr(start_, end - start_);
            start_ = end + 2;
            return true;
        }
        if (buffer_.size() - start_ > max_header_line || !fill()) return false;
    }
}

bool multipart_reader::read_headers() {
    name_.clear();
    std::string line;
    for (int count = 0; count < max_header_lines; ++count) {
        if (!read_line(line)) return false;
        if (line.empty()) return true;
        if (lower(line).rfind("content-disposition:", 0) == 0) name_ = disposition_name(line);
    }
    return false;
}

bool multipart_reader::next_part() {
    if (failed_ || finished_) return false;
    if (in_part_ && !read_content([](const char*, size_t) { return true; })) return false;
    std::string line;
    if (!started_) {
        // The body begins with the first delimiter line, without its CRLF.
        started_ = true;
        if (!read_line(line) || line != delimiter_.substr(2)) return !(failed_ = true);
    } else {
        // After a delimiter: "--" ends the body, CRLF starts the next part.
        while (buffer_.size() - start_ < 2)
            if (!fill()) return !(failed_ = true);
        if (buffer_.compare(start_, 2, "--") == 0) {
            finished_ = true;
            return false;
        }
        if (!read_line(line) || !line.empty()) return !(failed_ = true);
    }
    in_part_ = true;
    return read_headers() || !(failed_ = true);
}

bool multipart_reader::read_content(const std::function<bool(const char*, size_t)>& sink) {
    if (!in_part_ || failed_) return false;
    for (;;) {
        const size_t found = buffer_.find(delimiter_, start_);
        const size_t safe = found != std::string::npos ? found
                            : buffer_.size() - start_ > delimiter_.size()
                                ? buffer_.size() - delimiter_.size()
                                : start_;
        if (safe > start_ && !sink(buffer_.data() + start_, safe - start_))
            return !(failed_ = true);
        start_ = safe;
        if (found != std::string::npos) {
            start_ += delimiter_.size();
            in_part_ = false;
            return true;
        }
        if (!fill()) return !(failed_ = true);
    }
}

}  // namespace odata::redfish
