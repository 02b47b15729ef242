#include "update/small_file.h"

#include <unistd.h>

#include <cstdlib>

#include "update/image_file.h"

namespace odata::redfish {

bool replace_small_file(const std::string& path, const std::string& content) {
    std::string temporary = path + ".XXXXXX";
    const int fd = ::mkstemp(temporary.data());
    if (fd < 0) return false;
    ::close(fd);
    image_file file(temporary);
    const bool written = file.valid() && file.write(content.data(), content.size()) &&
                         file.finish() && ::rename(temporary.c_str(), path.c_str()) == 0;
    if (!written) ::unlink(temporary.c_str());
    return written;
}

}  // namespace odata::redfish
