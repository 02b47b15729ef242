// The last GET answers of resources whose body follows only the BMC's
// stored state and the caller, kept by each service process and used again
// while what they were built from is unchanged.
#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>

#include "base/input_recording.h"

namespace odata::redfish {

struct cached_response {
    std::string body;
    std::string etag;
    platform::recorded_inputs inputs;
};

class response_cache {
public:
    // The answer stored under key while its inputs are unchanged, else null
    // (and a stale answer is dropped).
    const cached_response* find(const std::string& key);
    void store(const std::string& key, cached_response response);

private:
    std::unordered_map<std::string, cached_response> responses_;
    std::size_t bytes_ = 0;
};

}  // namespace odata::redfish
