#include "platform/sim/shared_state.h"
#include "platform/sim/sdr_repository.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <string>

#include "base/bmc_root.h"
#include "base/file_watch.h"
#include "platform/libipmi.h"
#include "platform/libweb.h"
#include "platform/sim/sim_file.h"

St_GlobalVar* at_p_St_GlobalVar = nullptr;
St_InterfaceInfo* InterfaceInfo = nullptr;

namespace {

// Changes whenever St_GlobalVar changes meaning without changing size.
constexpr uint32_t global_layout_magic = 0x31564753;  // "SGV1"

struct shared_block {
    St_GlobalVar global;
    St_InterfaceInfo interface;
};

shared_block* attached = nullptr;

void copy_text(char* field, std::size_t size, const char* text) {
    std::strncpy(field, text, size - 1);
    field[size - 1] = '\0';
}

St_GlobalVar default_global() {
    St_GlobalVar global{};
    global.layout_magic = global_layout_magic;
    global.layout_size = sizeof(St_GlobalVar);
    global.power_cycle_byte = 1;
    copy_text(global.node_serial_number, sizeof global.node_serial_number, "NODE0001");
    copy_text(global.node_part_number, sizeof global.node_part_number, "PN-NODE-01");
    return global;
}

bool layout_matches(int fd) {
    struct stat status;
    if (::fstat(fd, &status) != 0 || status.st_size != static_cast<off_t>(sizeof(shared_block)))
        return false;
    uint32_t head[2];
    if (::pread(fd, head, sizeof head, 0) != static_cast<ssize_t>(sizeof head)) return false;
    return head[0] == global_layout_magic && head[1] == sizeof(St_GlobalVar);
}

// The magic goes in last, so a writer that dies half-way leaves a block
// that the next attach initialises again.
bool initialise(int fd) {
    shared_block block{};
    block.global = default_global();
    block.global.layout_magic = 0;
    if (::ftruncate(fd, sizeof block) != 0 ||
        !platform::sim::pwrite_all(fd, &block, sizeof block, 0))
        return false;
    return platform::sim::pwrite_all(fd, &global_layout_magic, sizeof global_layout_magic,
                                     offsetof(St_GlobalVar, layout_magic));
}

int open_initialised(const std::string& path) {
    if (!platform::sim::make_parent_dirs(path)) return -1;
    int fd = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    if (fd < 0) return -1;
    platform::sim::file_lock lock(fd, LOCK_EX);
    if (lock.locked() && (layout_matches(fd) || initialise(fd))) return fd;
    int saved = errno;
    ::close(fd);
    errno = saved;
    return -1;
}

// Checked on every request, before the mapping is read: a file cut short
// would fault. While no event names the file it keeps its size (writes
// through the mapping raise none).
bool file_intact(const std::string& path) {
    static std::string watched_path;
    static platform::watched_files watched;
    if (path == watched_path && watched.unchanged()) return true;
    watched_path = path;
    watched.watch({path});
    struct stat status;
    const bool intact = ::stat(path.c_str(), &status) == 0 &&
                        status.st_size == static_cast<off_t>(sizeof(shared_block));
    if (!intact) watched.forget();
    return intact;
}

}  // namespace

namespace platform {

const std::string& shared_state_file() {
    static fixed_bmc_path path("/var/bmc/global.bin");
    return path.get();
}

bool reset_shared_state() {
    if (!attached) return false;
    sim::unique_fd fd(::open(shared_state_file().c_str(), O_RDWR | O_CLOEXEC));
    if (!fd.valid()) return false;
    sim::file_lock lock(fd.get(), LOCK_EX);
    St_GlobalVar fresh = default_global();
    fresh.fcgi_mode = attached->global.fcgi_mode;
    attached->global = fresh;
    return true;
}

}  // namespace platform

extern "C" int GlobalParaInit(void) {
    if (attached) return 1;
    std::string path = platform::shared_state_file();
    platform::sim::unique_fd fd(open_initialised(path));
    void* mapping = fd.valid() ? ::mmap(nullptr, sizeof(shared_block), PROT_READ | PROT_WRITE,
                                        MAP_SHARED, fd.get(), 0)
                               : MAP_FAILED;
    if (mapping == MAP_FAILED) {
        console_log("[ERROR] GlobalParaInit: %s: %s\n", path.c_str(), std::strerror(errno));
        return 0;
    }
    attached = static_cast<shared_block*>(mapping);
    at_p_St_GlobalVar = &attached->global;
    InterfaceInfo = &attached->interface;
    // The SDR repository is built in; its size is published like on the BMC.
    at_p_St_GlobalVar->sensor_count = static_cast<uint16_t>(platform::sdr_record_count());
    return 1;
}

extern "C" int GlobalParaCheck(void) {
    if (!attached) return 0;
    const std::string& path = platform::shared_state_file();
    if (file_intact(path) && attached->global.layout_magic == global_layout_magic &&
        attached->global.layout_size == sizeof(St_GlobalVar))
        return 0;
    platform::sim::unique_fd fd(::open(path.c_str(), O_RDWR | O_CLOEXEC));
    if (!fd.valid()) return 0;
    platform::sim::file_lock lock(fd.get(), LOCK_EX);
    if (!lock.locked() || layout_matches(fd.get())) return 0;
    console_log("[ERROR] %s was damaged; shared state initialised again\n", path.c_str());
    if (!initialise(fd.get())) return 0;
    at_p_St_GlobalVar->sensor_count = static_cast<uint16_t>(platform::sdr_record_count());
    return 1;
}

extern "C" void GlobalParaFin(void) {
    if (!attached) return;
    ::munmap(attached, sizeof(shared_block));
    attached = nullptr;
    at_p_St_GlobalVar = nullptr;
    InterfaceInfo = nullptr;
}
