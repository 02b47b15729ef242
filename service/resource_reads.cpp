#include "service/resource_reads.h"

#include <cstdlib>
#include <string_view>

#include "framework/redfish.h"
#include "framework/response_cache.h"
#include "frontend/response_stream.h"
#include "platform/libweb.h"

namespace odata::redfish {
namespace {

// BMC_REUSE_ANSWERS=0 builds every answer afresh, for measurements.
const bool reuse_allowed = [] {
    const char* setting = std::getenv("BMC_REUSE_ANSWERS");
    return !setting || std::string_view(setting) != "0";
}();

// Set by the end-to-end tests: a reused answer is built again as well, and
// a difference is logged. Read before main, while the environment is still
// the process's own and not a request's.
const bool checking_reuse = std::getenv("BMC_CHECK_REUSED_RESPONSES") != nullptr;

std::string cache_key(const request_context& context) {
    return context.uri + '\n' + context.user_name + '\n' + std::to_string(context.privilege) +
           '\n' + std::to_string(context.account_slot);
}

response_cache& responses() {
    static response_cache cache;
    return cache;
}

}  // namespace

void get_resource(webservice& handler, request_context& context, bool reusable) {
    // The cast last: most answers are not reused.
    auto* resource = reusable && reuse_allowed && context.query.empty()
                         ? dynamic_cast<redfish*>(&handler)
                         : nullptr;
    if (!resource) {
        handler.call(GET);
        return;
    }
    const std::string key = cache_key(context);
    const cached_response* cached = responses().find(key);
    if (cached && !checking_reuse) {
        resource->reuse_body(cached->body, cached->etag);
        return;
    }
    const std::streamsize written = response_bytes_written();
    platform::input_recording recording;
    resource->call(GET);
    std::optional<platform::recorded_inputs> inputs = recording.finish();
    if (cached && cached->body != resource->body())
        console_log("[ERROR] the reused answer of %s differs from a fresh one\n",
                    context.uri.c_str());
    // An answer with headers of its own is built afresh each time.
    if (inputs && response_bytes_written() == written)
        responses().store(key, {resource->body(), resource->etag(), std::move(*inputs)});
}

}  // namespace odata::redfish
