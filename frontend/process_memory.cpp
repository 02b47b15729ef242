#include "frontend/process_memory.h"

#include <malloc.h>
#include <unistd.h>

#include <cstdint>

namespace odata::redfish {
namespace {

// Blocks from this size on (bodies of schemas, uploads read in pieces) are
// mapped on their own and unmapped when freed. A fixed threshold also stops
// glibc from raising it, and the trim threshold with it, after each such
// block.
constexpr int mapped_block_bytes = 64 * 1024;
constexpr int kept_top_bytes = 128 * 1024;
// Freed blocks between live ones stay with the process until a trim. A
// trim after every request costs a tenth more CPU (system calls, and pages
// faulted in again), so it follows only the requests likely to have left
// much: a large answer, a heap grown by more than so many bytes, and one in
// so many requests.
constexpr std::streamsize large_answer_bytes = 16 * 1024;
constexpr std::intptr_t heap_growth_bytes = 256 * 1024;
constexpr unsigned requests_per_trim = 32;

std::intptr_t heap_end() { return reinterpret_cast<std::intptr_t>(::sbrk(0)); }

}  // namespace

void limit_heap() {
    // The worker threads of long actions are few and brief.
    mallopt(M_ARENA_MAX, 1);
    mallopt(M_MMAP_THRESHOLD, mapped_block_bytes);
    mallopt(M_TRIM_THRESHOLD, kept_top_bytes);
}

void return_free_memory(std::streamsize answer_bytes) {
    static unsigned served = 0;
    static std::intptr_t trimmed_end = heap_end();
    if (++served % requests_per_trim != 0 && answer_bytes <= large_answer_bytes &&
        heap_end() - trimmed_end <= heap_growth_bytes)
        return;
    malloc_trim(0);
    trimmed_end = heap_end();
}

}  // namespace odata::redfish
