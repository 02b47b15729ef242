#include "tasks/eventservice.h"

#include <iostream>
#include <string_view>

#include "framework/property_checks.h"
#include "framework/schema_files.h"
#include "frontend/answer_storage.h"
#include "frontend/exception_http.h"
#include "frontend/response_headers.h"
#include "frontend/result_writer.h"
#include "platform/alert_settings.h"
#include "platform/libweb.h"
#include "platform/outbound_destinations.h"
#include "tasks/event_uris.h"
#include "tasks/subscription_vocabulary.h"

namespace odata::redfish {
namespace {

using platform::event_service_settings;

constexpr std::string_view event_service_read_only[] = {
    "@odata.context", "@odata.etag", "@odata.id", "@odata.type",   "Id",
    "Name",           "Status",      "Actions",   "Subscriptions", "EventTypesForSubscription"};
constexpr std::string_view connection_protocols[] = {"None", "AutoDetect", "StartTLS", "TLS_SSL"};
constexpr std::string_view authentication_methods[] = {"None", "AutoDetect", "Plain", "Login",
                                                       "CRAM_MD5"};
constexpr long max_port = 65535;

boost::json::array event_types_for_subscription() {
    boost::json::array names(answer_storage());
    for (std::string_view name : event_type_names()) names.emplace_back(name);
    return names;
}

boost::json::object smtp_json(const platform::smtp_settings& smtp) {
    return boost::json::object({{"ServiceEnabled", smtp.service_enabled},
                                {"Port", smtp.port},
                                {"ServerAddress", smtp.server_address},
                                {"FromAddress", smtp.from_address},
                                {"ConnectionProtocol", smtp.connection_protocol},
                                {"Authentication", smtp.authentication},
                                {"Username", smtp.username},
                                {"Password", nullptr}},
                               answer_storage());
}

// What a PATCH changes, read onto settings.
struct event_service_patch {
    event_service_settings settings;
    bool smtp_changed = false;
    bool password_given = false;
    result_record result = general_error();
};

template <std::size_t N>
void read_choice(const request_member& member, const std::string_view (&choices)[N],
                 std::string& field, result_record& result) {
    const boost::json::string* text = member.value.if_string();
    if (!text || !listed_in(choices, *text)) {
        add_value_message(result, "Base.1.10.PropertyValueNotInList", shown_value(member.value),
                          member.path);
        return;
    }
    field = std::string(*text);
}

void read_text_setting(const request_member& member, std::string& field, result_record& result,
                       bool secret = false) {
    const boost::json::string* text = member.value.if_string();
    if (!text) {
        add_value_message(result, "Base.1.10.PropertyValueTypeError",
                          secret ? hidden_value : shown_value(member.value), member.path);
        return;
    }
    // An empty text clears the setting.
    if (text->empty() || require_storable(*text, member.path, result, secret))
        field = std::string(*text);
}

void read_smtp_member(const request_member& member, event_service_patch& patch) {
    platform::smtp_settings& smtp = patch.settings.smtp;
    result_record& result = patch.result;
    patch.smtp_changed = true;
    if (member.name == "ServiceEnabled") {
        if (std::optional<bool> enabled = require_boolean(member.value, member.path, result))
            smtp.service_enabled = *enabled;
    } else if (member.name == "Port") {
        std::optional<long> port =
            require_integer_up_to(member.value, max_port, member.path, result);
        if (port && *port == 0)
            add_value_message(result, "Base.1.10.PropertyValueFormatError", "0", member.path);
        else if (port)
            smtp.port = static_cast<int>(*port);
    } else if (member.name == "ServerAddress") {
        read_text_setting(member, smtp.server_address, result);
    } else if (member.name == "FromAddress") {
        read_text_setting(member, smtp.from_address, result);
    } else if (member.name == "ConnectionProtocol") {
        read_choice(member, connection_protocols, smtp.connection_protocol, result);
    } else if (member.name == "Authentication") {
        read_choice(member, authentication_methods, smtp.authentication, result);
    } else if (member.name == "Username") {
        read_text_setting(member, smtp.username, result);
    } else if (member.name == "Password") {
        patch.password_given = true;
        read_text_setting(member, smtp.password, result, true);
    } else {
        unknown_property::in_patch().report(result, member.path);
    }
}

void read_retry_interval(const request_member& member, event_service_patch& patch) {
    std::optional<long> seconds = require_integer_up_to(
        member.value, platform::max_delivery_retry_interval, member.path, patch.result);
    if (seconds && *seconds < platform::min_delivery_retry_interval)
        add_value_message(patch.result, "Base.1.10.PropertyValueFormatError",
                          shown_value(member.value), member.path);
    else if (seconds)
        patch.settings.delivery_retry_interval_seconds = static_cast<int>(*seconds);
}

void read_member(const request_member& member, event_service_patch& patch) {
    result_record& result = patch.result;
    if (member.name == "ServiceEnabled") {
        if (std::optional<bool> enabled = require_boolean(member.value, member.path, result))
            patch.settings.service_enabled = *enabled;
    } else if (member.name == "DeliveryRetryAttempts") {
        if (std::optional<long> attempts = require_integer_up_to(
                member.value, platform::max_delivery_retry_attempts, member.path, result))
            patch.settings.delivery_retry_attempts = static_cast<int>(*attempts);
    } else if (member.name == "DeliveryRetryIntervalSeconds") {
        read_retry_interval(member, patch);
    } else if (member.name == "SMTP") {
        for_each_member(member.value, member.path, result,
                        [&](const request_member& setting) { read_smtp_member(setting, patch); });
    } else if (listed_in(event_service_read_only, member.name)) {
        add_property_message(result, "Base.1.10.PropertyNotWritable", member.path);
    } else {
        unknown_property::in_patch().report(result, member.path);
    }
}

// The stored password belongs to the server it was given for: a new server
// gets one only when the same PATCH gives it.
void forget_password_of_old_server(event_service_patch& patch, const platform::smtp_settings& old) {
    platform::smtp_settings& smtp = patch.settings.smtp;
    if (patch.password_given || smtp.server_address == old.server_address) return;
    if (!old.password.empty() && !smtp.server_address.empty())
        add_property_message(patch.result, "Base.1.10.PropertyMissing", "SMTP/Password");
    smtp.password.clear();
}

void check_smtp(event_service_patch& patch) {
    const platform::smtp_settings& smtp = patch.settings.smtp;
    // E-mail needs a server to go to and a sender to come from.
    if (smtp.service_enabled && smtp.server_address.empty())
        add_property_message(patch.result, "Base.1.10.PropertyMissing", "SMTP/ServerAddress");
    if (smtp.service_enabled && smtp.from_address.empty())
        add_property_message(patch.result, "Base.1.10.PropertyMissing", "SMTP/FromAddress");
    if (!smtp.server_address.empty() && platform::refused_host(smtp.server_address))
        add_message(patch.result, "Base.1.10.PropertyValueIncorrect",
                    {"SMTP/ServerAddress", smtp.server_address}, {"/SMTP/ServerAddress"});
    // Credentials never cross the network in clear: sending them needs TLS
    // (AutoDetect then insists on STARTTLS).
    if (smtp.connection_protocol == "None" && smtp.authentication == "AutoDetect")
        add_message(patch.result, "TWR.1.0.OemSmtpSettingNotAllow", {},
                    {"/SMTP/ConnectionProtocol", "/SMTP/Authentication"});
    else if (smtp.connection_protocol == "None" && smtp.authentication != "None")
        add_message(patch.result, "Base.1.10.PropertyValueConflict",
                    {"SMTP/Authentication", "SMTP/ConnectionProtocol"},
                    {"/SMTP/Authentication", "/SMTP/ConnectionProtocol"});
}

event_service_patch read_patch(const boost::json::object& request,
                               const event_service_settings& settings) {
    event_service_patch patch{settings};
    for (const auto& [name, value] : request)
        read_member({std::string(name), value, std::string(name)}, patch);
    if (!patch.smtp_changed) return patch;
    forget_password_of_old_server(patch, settings.smtp);
    check_smtp(patch);
    return patch;
}

}  // namespace

eventservice::eventservice(request_context& context)
    : redfish(context, "EventService", std::string(schema_file_of("EventService").version),
              "Event Service", event_service_uri) {}

int eventservice::get(request_context&) {
    const event_service_settings settings = platform::read_event_service_settings();
    set_common_properties();
    set("Status", {{"State", settings.service_enabled ? "Enabled" : "Disabled"}, {"Health", "OK"}});
    set("ServiceEnabled", settings.service_enabled);
    set("DeliveryRetryAttempts", settings.delivery_retry_attempts);
    set("DeliveryRetryIntervalSeconds", settings.delivery_retry_interval_seconds);
    set("EventTypesForSubscription", event_types_for_subscription());
    set("SMTP", smtp_json(settings.smtp));
    set("Subscriptions", link(subscriptions_uri));
    set("Actions", {{"#EventService.SubmitTestEvent",
                     {{"target", submit_test_event_uri},
                      {"@Redfish.ActionInfo", submit_test_event_actioninfo_uri}}}});
    return 0;
}

int eventservice::patch(request_context& context) {
    const boost::json::value body = context.body_json();
    const boost::json::object& request = request_object(body);
    const event_service_patch patch = read_patch(request, platform::read_event_service_settings());
    console_log("is_eventservice_bad_request return code: [%d]\n",
                patch.result.entries.empty() ? 0 : 1);
    if (!patch.result.entries.empty()) throw_http_result(400, patch.result);
    // Applied again to the settings as they are under the lock, so that a
    // concurrent change of other settings is kept.
    const bool stored =
        platform::update_event_service_settings([&](event_service_settings& settings) {
            settings = read_patch(request, settings).settings;
        });
    if (!stored) throw_http_error(500, "Base.1.10.InternalError");
    write_status_line(204);
    return 0;
}

void eventservice::answer_success() {
    write_status_line(200);
    set_body(render_result({"Success", "Successfully Completed Request.", {}}));
}

}  // namespace odata::redfish
