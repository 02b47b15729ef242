#include "platform/sim/published_events.h"

#include <boost/json.hpp>

#include "base/bmc_root.h"
#include "platform/libweb.h"
#include "platform/sim/sim_file.h"

namespace platform::sim {
namespace {

std::string text_of(const boost::json::object& object, std::string_view key) {
    const boost::json::value* value = object.if_contains(key);
    return value && value->is_string() ? std::string(value->as_string()) : std::string();
}

}  // namespace

std::string published_event_registry_file() {
    return bmc_path("/tmp/www/registries/Event.1.0.0.json");
}

std::optional<published_message> published_event_message(std::string_view key) {
    std::string text;
    boost::system::error_code error;
    const boost::json::value registry = read_file(published_event_registry_file(), text)
                                            ? boost::json::parse(text, error)
                                            : boost::json::value();
    const boost::json::object* document = registry.if_object();
    const boost::json::value* messages = document ? document->if_contains("Messages") : nullptr;
    const boost::json::value* entry =
        messages && messages->is_object() ? messages->as_object().if_contains(key) : nullptr;
    if (!entry || !entry->is_object()) {
        console_log("[ERROR] event message %.*s: not in the published registry\n",
                    static_cast<int>(key.size()), key.data());
        return std::nullopt;
    }
    // Message ids carry the registry's major and minor version: "Event.1.0.".
    const std::string registry_id = text_of(*document, "Id");
    const std::string prefix = registry_id.substr(0, registry_id.rfind('.') + 1);
    return published_message{prefix + std::string(key), text_of(entry->as_object(), "Severity"),
                             text_of(entry->as_object(), "Message")};
}

}  // namespace platform::sim
