// A firmware image being written: a file created anew with mode 0600,
// written in blocks and synced before anyone flashes it.
#pragma once

#include <cstddef>
#include <string>

namespace odata::redfish {

class image_file {
public:
    // Replaces whatever was at path; valid() tells whether that worked.
    explicit image_file(const std::string& path);
    image_file(const image_file&) = delete;
    image_file& operator=(const image_file&) = delete;
    ~image_file();

    bool valid() const { return fd_ >= 0; }
    long long size() const { return size_; }
    // Writes all bytes, retrying short writes.
    bool write(const char* data, size_t length);
    // Syncs and closes; false when the data may not be on storage.
    bool finish();

private:
    int fd_;
    long long size_ = 0;
};

}  // namespace odata::redfish
