// Reads a multipart/form-data body part by part from a stream, handing
// each part's content on in blocks: memory stays bounded whatever the size
// of a part.
#pragma once

#include <cstddef>
#include <functional>
#include <istream>
#include <string>

namespace odata::redfish {

// The boundary of a Content-Type "multipart/form-data; boundary=..."; ""
// when the type is another or names no boundary.
std::string multipart_boundary(const std::string& content_type);

class multipart_reader {
public:
    // Reads at most max_bytes from input.
    multipart_reader(std::istream& input, std::string boundary, long long max_bytes);

    // Moves to the next part and reads its headers: false at the end of the
    // body or when it is malformed (then failed() is true).
    bool next_part();
    // The part's form field name (Content-Disposition name="...").
    const std::string& name() const { return name_; }
    // Hands the part's content to sink in blocks; false when the body is
    // malformed or truncated, or sink refuses a block.
    bool read_content(const std::function<bool(const char*, size_t)>& sink);
    bool failed() const { return failed_; }

private:
    bool fill();
    bool read_line(std::string& line);
    bool read_headers();

    std::istream& input_;
    std::string delimiter_;  // "\r\n--" boundary
    long long remaining_;
    std::string buffer_;
    size_t start_ = 0;  // unread data begins here in buffer_
    std::string name_;
    bool started_ = false;
    bool in_part_ = false;
    bool finished_ = false;
    bool failed_ = false;
};

}  // namespace odata::redfish
