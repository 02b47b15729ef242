#include "tasks/dump_file.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <iostream>
#include <string>

#include "frontend/exception_http.h"
#include "frontend/response_headers.h"
#include "platform/libdump.h"
#include "platform/libweb.h"

namespace odata::redfish {
namespace {

class open_dump {
public:
    explicit open_dump(int kind) : fd_(DumpOpen(kind, &info_)) {}
    open_dump(const open_dump&) = delete;
    open_dump& operator=(const open_dump&) = delete;
    ~open_dump() {
        if (fd_ >= 0) ::close(fd_);
    }
    int fd() const { return fd_; }
    const DumpInfo& info() const { return info_; }

private:
    DumpInfo info_{};
    int fd_;
};

// The open file keeps its content: a new dump or a removal replaces the
// name, not the file.
void copy_body(int fd, off_t length) {
    char block[64 * 1024];
    while (length > 0) {
        const ssize_t got =
            ::read(fd, block, static_cast<size_t>(std::min<off_t>(length, sizeof block)));
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) {
            console_log("[ERROR] Dump: the file cannot be read\n");
            return;
        }
        std::cout.write(block, got);
        length -= got;
    }
}

}  // namespace

void answer_dump_file(int kind, const char* resource_type, const char* id) {
    const open_dump dump(kind);
    struct stat status {};
    if (dump.fd() < 0 || ::fstat(dump.fd(), &status) != 0)
        throw_http_error(404, "Base.1.10.ResourceNotFound", {resource_type, id});
    write_status_line(200);
    set_response_header(response_header::content_disposition,
                        std::string("attachment; filename=\"") + dump.info().file_name + "\"");
    write_header_block(static_cast<size_t>(status.st_size), body_kind::attachment);
    copy_body(dump.fd(), status.st_size);
}

}  // namespace odata::redfish
