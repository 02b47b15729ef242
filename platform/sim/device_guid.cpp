// The simulated BMC draws its GUID once and keeps it in
// <root>/var/bmc/device_guid.
#include "platform/device_guid.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <string>

#include "base/bmc_root.h"
#include "base/file_cache.h"
#include "platform/sim/random_bytes.h"
#include "platform/sim/sim_file.h"

namespace {

using guid_bytes = std::array<unsigned char, 16>;

const std::string& guid_file() {
    static platform::fixed_bmc_path path("/var/bmc/device_guid");
    return path.get();
}

bool read_guid(const std::string& path, unsigned char* guid) {
    platform::sim::unique_fd fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    std::string bytes;
    if (!fd.valid() || !platform::sim::read_all(fd.get(), bytes)) return false;
    if (bytes.size() != guid_bytes().size()) return false;
    std::memcpy(guid, bytes.data(), bytes.size());
    return true;
}

// A random GUID of version 4, variant 1; false when no random bytes.
bool random_guid(guid_bytes& guid) {
    if (!platform::sim::random_bytes(guid.data(), guid.size())) return false;
    guid[6] = static_cast<unsigned char>((guid[6] & 0x0f) | 0x40);
    guid[8] = static_cast<unsigned char>((guid[8] & 0x3f) | 0x80);
    return true;
}

// Written under a temporary name and linked into place, which never
// replaces a GUID that another process has linked first.
bool create_guid(const std::string& path) {
    if (!platform::sim::make_parent_dirs(path)) return false;
    std::string temporary = path + ".XXXXXX";
    platform::sim::unique_fd fd(::mkstemp(temporary.data()));
    if (!fd.valid()) return false;
    guid_bytes guid;
    bool written = random_guid(guid) && ::fchmod(fd.get(), 0644) == 0 &&
                   platform::sim::write_all(fd.get(), guid.data(), guid.size()) &&
                   ::fsync(fd.get()) == 0;
    bool linked = written && (::link(temporary.c_str(), path.c_str()) == 0 || errno == EEXIST);
    ::unlink(temporary.c_str());
    return linked;
}

}  // namespace

extern "C" int GetDeviceGUID(unsigned char guid[16]) {
    static platform::file_cache<guid_bytes> cache;
    const std::string& path = guid_file();
    auto load = [&path](guid_bytes& bytes) {
        return read_guid(path, bytes.data()) ? PLT_OK : PLT_ERR_IO;
    };
    std::shared_ptr<const guid_bytes> stored;
    if (cache.get(path, load, stored) != PLT_OK &&
        (!create_guid(path) || cache.get(path, load, stored) != PLT_OK))
        return -1;
    std::memcpy(guid, stored->data(), stored->size());
    return 0;
}
