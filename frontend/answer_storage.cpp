#include "frontend/answer_storage.h"

#include <boost/json/monotonic_resource.hpp>
#include <optional>

namespace odata::redfish {
namespace {

// Most answers fit in it; a larger one takes further blocks from the heap,
// each twice the last, all returned as the request ends.
constexpr std::size_t arena_bytes = 16 * 1024;

alignas(std::max_align_t) unsigned char arena_buffer[arena_bytes];

// Made anew for each request: emptying it keeps the size its next block
// would have had, so that the blocks of later requests would keep growing.
std::optional<boost::json::monotonic_resource> arena;

// Only the service loop's thread builds in the arena.
thread_local bool request_open = false;

}  // namespace

boost::json::storage_ptr answer_storage() {
    if (!request_open) return {};
    return boost::json::storage_ptr(&*arena);
}

void open_answer_storage() {
    arena.emplace(arena_buffer, sizeof arena_buffer);
    request_open = true;
}

void close_answer_storage() {
    request_open = false;
    arena.reset();
}

}  // namespace odata::redfish
