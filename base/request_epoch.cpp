#include "base/request_epoch.h"

#include <pthread.h>

namespace platform {
namespace {

std::uint64_t epoch = 0;
bool serving = false;

}  // namespace

void start_request_epoch() {
    if (!serving) {
        // A forked child is no longer the service loop.
        static const bool registered =
            ::pthread_atfork(nullptr, nullptr, [] { serving = false; }) == 0;
        static_cast<void>(registered);
        serving = true;
    }
    ++epoch;
}

void renew_request_epoch() { ++epoch; }

std::uint64_t request_epoch() { return serving ? epoch : 0; }

}  // namespace platform
