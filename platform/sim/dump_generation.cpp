// Generating a dump: its sections compressed with zlib into a part file,
// put in place once whole.
#include <fcntl.h>
#include <unistd.h>
#include <zlib.h>

#include <string>

#include "base/kill_point.h"
#include "platform/libdump.h"
#include "platform/libtask.h"
#include "platform/plt_result.h"
#include "platform/sim/dump_content.h"
#include "platform/sim/dump_store.h"
#include "platform/sim/firmware_state.h"

namespace platform::sim {
namespace {

// A held generation waits at most this long: a hold never keeps a task
// running for ever.
constexpr int hold_poll_ms = 100;
constexpr int hold_polls_max = 6000;
// The rest is for putting the dump in place.
constexpr int collected_percent = 90;

bool write_section(gzFile out, const dump_section& section) {
    const std::string text = "== " + std::string(section.title) + " ==\n" + section.collect();
    return gzwrite(out, text.data(), static_cast<unsigned>(text.size())) ==
           static_cast<int>(text.size());
}

void wait_while_held() {
    for (int poll = 0; poll < hold_polls_max && dump_generation_held(); ++poll)
        ::usleep(hold_poll_ms * 1000);
}

bool write_sections(gzFile out, int kind, int task_id) {
    const std::vector<dump_section> sections = dump_sections(kind);
    for (size_t at = 0; at < sections.size(); ++at) {
        if (!write_section(out, sections[at])) return false;
        TaskServiceUpdateTaskPercentage(
            task_id, static_cast<int>((at + 1) * collected_percent / sections.size()));
        if (at > 0) continue;
        // Half-way: the first section is on disk, the dump is not whole.
        gzflush(out, Z_SYNC_FLUSH);
        wait_while_held();
        platform::kill_point("dump-generation");
    }
    return true;
}

bool write_dump(int kind, int task_id, const std::string& part, std::string& reason) {
    const int fd = ::open(part.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    gzFile out = fd >= 0 ? gzdopen(fd, "wb") : nullptr;
    if (!out) {
        if (fd >= 0) ::close(fd);
        reason = "the dump file cannot be created";
        return false;
    }
    const bool written = write_sections(out, kind, task_id);
    if (gzclose(out) == Z_OK && written) return true;
    ::unlink(part.c_str());
    reason = "the dump file cannot be written";
    return false;
}

}  // namespace
}  // namespace platform::sim

using namespace platform::sim;

extern "C" int DumpGenerate(int kind, int task_id, char* reason, int size) {
    std::string why = "unknown dump";
    const std::string part = dump_file_name(kind) ? dump_part_file(kind) : std::string();
    const bool made =
        !part.empty() && write_dump(kind, task_id, part, why) && put_dump_in_place(kind, part, why);
    if (dump_file_name(kind)) release_dump_claim(kind);
    if (!made && reason && size > 0) copy_out(why, reason, size);
    return made ? PLT_OK : PLT_ERR_IO;
}
