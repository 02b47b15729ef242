// A firmware image being written: an unnamed file (mode 0600) in the
// directory of its place, written in blocks, synced, and only then put in
// place of whatever was there. An image that is not put in place, or whose
// writer is killed, vanishes and leaves the old file as it was.
#pragma once

#include <cstddef>
#include <string>

namespace odata::redfish {

class image_file {
public:
    // valid() tells whether the file could be made.
    explicit image_file(std::string path);
    image_file(const image_file&) = delete;
    image_file& operator=(const image_file&) = delete;
    ~image_file();

    bool valid() const { return fd_ >= 0; }
    long long size() const { return size_; }
    // Writes all bytes, retrying short writes.
    bool write(const char* data, size_t length);
    // Syncs the image and puts it at its path; false (and the image gone)
    // when it may not be whole on storage.
    bool commit();

private:
    std::string path_;
    int fd_;
    long long size_ = 0;
};

}  // namespace odata::redfish
