#include "platform/sim/random_bytes.h"

#include <sys/random.h>

#include <cerrno>

namespace platform::sim {

bool random_bytes(void* out, std::size_t size) {
    auto* at = static_cast<unsigned char*>(out);
    // A signal may cut a large draw short; a bounded number of tries.
    for (int attempt = 0; size > 0 && attempt < 8; ++attempt) {
        const ssize_t got = getrandom(at, size, 0);
        if (got < 0 && errno != EINTR) return false;
        if (got <= 0) continue;
        at += got;
        size -= static_cast<std::size_t>(got);
    }
    return size == 0;
}

}  // namespace platform::sim
