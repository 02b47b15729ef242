#include "framework/response_cache.h"

namespace odata::redfish {
namespace {

// A process keeps little: a small BMC runs several service processes.
constexpr std::size_t max_bytes = 256 * 1024;

std::size_t size_of(const std::string& key, const cached_response& response) {
    return key.size() + response.body.size() + response.etag.size() +
           response.inputs.files.size() * sizeof(platform::file_input);
}

}  // namespace

const cached_response* response_cache::find(const std::string& key) {
    auto found = responses_.find(key);
    if (found == responses_.end()) return nullptr;
    if (found->second.inputs.unchanged()) return &found->second;
    bytes_ -= size_of(found->first, found->second);
    responses_.erase(found);
    return nullptr;
}

void response_cache::store(const std::string& key, cached_response response) {
    const std::size_t size = size_of(key, response);
    if (size > max_bytes || !response.inputs.start_watching()) return;
    auto found = responses_.find(key);
    if (found != responses_.end()) {
        bytes_ -= size_of(found->first, found->second);
        responses_.erase(found);
    }
    // Full: start again rather than keep the bookkeeping of an eviction order.
    if (bytes_ + size > max_bytes) {
        responses_.clear();
        bytes_ = 0;
    }
    bytes_ += size;
    responses_.emplace(key, std::move(response));
}

}  // namespace odata::redfish
