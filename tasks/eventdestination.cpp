#include "tasks/eventdestination.h"

#include <iostream>

#include "framework/property_checks.h"
#include "framework/schema_files.h"
#include "frontend/answer_storage.h"
#include "frontend/exception_http.h"
#include "frontend/response_headers.h"
#include "frontend/result_writer.h"
#include "security/snmp_protocols.h"
#include "tasks/event_uris.h"
#include "tasks/subscription_request.h"
#include "tasks/subscription_store.h"
#include "tasks/subscription_vocabulary.h"

namespace odata::redfish {
namespace {

boost::json::array event_types_of(int bits) {
    boost::json::array names(answer_storage());
    for (const event_type_name& type : event_types())
        if (bits == 0 || (bits & type.bit)) names.emplace_back(type.name);
    return names;
}

// Keys and the community are never given back.
boost::json::object snmp_json(const St_AlertDest& entry) {
    const bool v3 = entry.type == ALERT_DEST_SNMPV3_TRAP;
    return boost::json::object(
        {{"TrapCommunity", nullptr},
         {"AuthenticationProtocol",
          v3 ? snmp_protocol_name(snmp_protocol_kind::authentication, entry.authentication_protocol)
             : "CommunityString"},
         {"EncryptionProtocol",
          v3 ? snmp_protocol_name(snmp_protocol_kind::encryption, entry.encryption_protocol)
             : "None"}},
        answer_storage());
}

const char* user_name(const St_AlertDest& entry) {
    return entry.type == ALERT_DEST_SNMPV3_TRAP ? entry.snmp_user : entry.smtp_user;
}

}  // namespace

eventdestination::eventdestination(request_context& context)
    : eventdestination(context, context.capture_number(0)) {}

eventdestination::eventdestination(request_context& context, int id)
    : redfish(context, "EventDestination", std::string(schema_file_of("EventDestination").version),
              "EventSubscription " + std::to_string(id), subscription_uri(id)),
      id_(id),
      index_(entry_of_subscription(id).value_or(-1)) {}

St_AlertDest eventdestination::existing_entry() const {
    if (index_ < 0) throw_http(404);
    St_AlertDest entry{};
    if (get_config_alert_dest(index_, &entry) != 0)
        throw_http_error(500, "Base.1.10.InternalError");
    if (!is_subscription(entry)) throw_http(404);
    return entry;
}

int eventdestination::get(request_context&) {
    const St_AlertDest entry = existing_entry();
    const subscription_protocol* protocol = protocol_of_type(entry.type);
    set_common_properties();
    set("Destination", entry.destination);
    set("Protocol", protocol ? protocol->protocol : "Redfish");
    set("SubscriptionType", protocol ? protocol->subscription_type : "RedfishEvent");
    set("EventFormatType", "Event");
    set("EventTypes", event_types_of(entry.event_types));
    set("Context", entry.context);
    set("SNMP", snmp_json(entry));
    set("Oem", {{"Tarnwright",
                 {{"EnableSubscription", entry.enabled != 0},
                  {"SMTPSubject", entry.smtp_subject},
                  {"UserName", user_name(entry)}}}});
    return 0;
}

int eventdestination::patch(request_context& context) {
    existing_entry();
    const boost::json::value body = context.body_json();
    const boost::json::object& request = request_object(body);
    result_record result = general_error();
    // Read onto the entry as it stands under the table's lock, so that a
    // concurrent change or deletion is not overwritten.
    const edited_subscription outcome = edit_subscription(index_, [&](St_AlertDest& entry) {
        read_subscription_request(request, false, entry, result);
        return result.entries.empty();
    });
    if (outcome == edited_subscription::not_found) throw_http(404);
    if (outcome == edited_subscription::refused) throw_http_result(400, result);
    if (outcome == edited_subscription::failed) throw_http_error(500, "Base.1.10.InternalError");
    write_status_line(204);
    return 0;
}

int eventdestination::del(request_context&) {
    existing_entry();
    if (!delete_subscription(index_)) throw_http_error(500, "Base.1.10.InternalError");
    write_status_line(200);
    set_body(render_result({"Success", "Successfully Completed Request.", {}}));
    return 0;
}

}  // namespace odata::redfish
