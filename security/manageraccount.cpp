#include "security/manageraccount.h"

#include <iostream>

#include "framework/property_checks.h"
#include "framework/schema_files.h"
#include "frontend/answer_storage.h"
#include "frontend/exception_http.h"
#include "frontend/response_headers.h"
#include "frontend/result_writer.h"
#include "platform/libipmi.h"
#include "platform/libipmi_users.h"
#include "security/account_lockout.h"
#include "security/account_writer.h"
#include "security/role_resources.h"
#include "security/roles.h"
#include "security/session_store.h"
#include "security/snmp_protocols.h"

namespace odata::redfish {
namespace {

constexpr int first_deletable_account = 3;
constexpr int last_account = MAX_USER_SLOTS;

struct snmp_state {
    int authentication_protocol = 0;
    int authentication_key_set = 0;
    int encryption_protocol = 0;
    int encryption_key_set = 0;
};

snmp_state read_snmp(int slot) {
    snmp_state state;
    UtilSNMPGetCfg(slot, &state.authentication_protocol, &state.authentication_key_set,
                   &state.encryption_protocol, &state.encryption_key_set);
    return state;
}

boost::json::object snmp_json(const snmp_state& state) {
    return boost::json::object(
        {{"AuthenticationProtocol",
          snmp_protocol_name(snmp_protocol_kind::authentication, state.authentication_protocol)},
         {"EncryptionProtocol",
          snmp_protocol_name(snmp_protocol_kind::encryption, state.encryption_protocol)},
         {"AuthenticationKey", nullptr},
         {"EncryptionKey", nullptr},
         {"AuthenticationKeySet", state.authentication_key_set != 0},
         {"EncryptionKeySet", state.encryption_key_set != 0}},
        answer_storage());
}

// Every account reaches Redfish; SNMP only with SNMPv3 settings.
boost::json::array account_types(const snmp_state& state) {
    boost::json::array types({"Redfish"}, answer_storage());
    if (state.authentication_protocol != 0) types.emplace_back("SNMP");
    return types;
}

bool caller_configures_users(const request_context& context) {
    return level_has_privileges(context.privilege, privilege_configure_users);
}

// Callers without ConfigureUsers get here only for their own account, and
// may change nothing but its password.
void check_own_change(const request_context& context, const boost::json::object& body) {
    if (caller_configures_users(context)) return;
    for (const auto& property : body)
        if (property.key() != "Password") throw_insufficient_privilege();
}

std::string captured_id(const request_context& context) {
    return context.captures.empty() ? std::string() : context.captures[0];
}

// A new name ends every session of the account; a new password ends all
// but the caller's own. A new role needs nothing: sessions take the
// account's current role at every request.
void end_replaced_sessions(const request_context& context, const account_record& account,
                           const account_changes& changes) {
    if (changes.user_name)
        remove_account_sessions(account.slot, 0);
    else if (changes.password)
        remove_account_sessions(account.slot, context.session_id);
}

result_record account_removed() {
    result_record removed{"OemAccountRemoved", "The account was successfully removed.", {}};
    add_message(removed, "Base.1.10.AccountRemoved");
    return removed;
}

}  // namespace

manageraccount::manageraccount(request_context& context)
    : manageraccount(context, context.capture_number(0)) {}

manageraccount::manageraccount(request_context& context, int account_id)
    : redfish(context, "ManagerAccount", std::string(schema_file_of("ManagerAccount").version),
              "User Account", account_uri(account_id)),
      account_id_(account_id) {}

account_record manageraccount::existing_account() const {
    std::optional<account_record> account = read_account(slot_of_account(account_id_));
    if (!account) throw_http(404);
    return *account;
}

int manageraccount::get(request_context&) {
    const account_record account = existing_account();
    const role_definition* account_role = role_of_level(account.privilege);
    const snmp_state snmp = read_snmp(account.slot);
    set_common_properties();
    set("Description", "User Account");
    set("UserName", account.user_name);
    set("Password", boost::json::value(nullptr));
    set("RoleId", account_role ? account_role->id : "NoAccess");
    set("Enabled", account.enabled);
    // The reserved administrator is locked per address: as the caller sees it.
    set("Locked", account_locked(account.slot, InterfaceInfo->client_ip));
    set("AccountTypes", account_types(snmp));
    boost::json::object links(answer_storage());
    if (account_role) links["Role"] = link(role_uri(account_role->id));
    set("Links", std::move(links));
    set("SNMP", snmp_json(snmp));
    return 0;
}

int manageraccount::patch(request_context& context) {
    const account_record account = existing_account();
    const boost::json::value body = context.body_json();
    const boost::json::object& request = request_object(body);
    check_own_change(context, request);
    result_record result = general_error();
    const account_changes changes =
        read_account_request(request, {false, account.slot, context.uri}, result);
    if (changes.enabled == false && account.slot == reserved_administrator_slot)
        add_property_message(result, "Base.1.10.PropertyNotWritable", "Enabled");
    else if (changes.enabled == false && UtilIsUserActivateSession(account.slot))
        add_message(result, "TWR.1.0.OemUserDisableFail", {account.user_name}, {"/Enabled"});
    if (!result.entries.empty()) throw_http_result(400, result);
    const account_write written = modify_account(account, changes);
    // A write that failed after the table may have changed name or password.
    if (written != account_write::refused) end_replaced_sessions(context, account, changes);
    check_account_written(written);
    write_status_line(204);
    return 0;
}

int manageraccount::del(request_context& context) {
    if (!caller_configures_users(context)) throw_insufficient_privilege();
    if (account_id_ < first_deletable_account || account_id_ > last_account)
        throw_http_error(400, "Base.1.10.InvalidIndex", {captured_id(context)});
    const account_record account = existing_account();
    if (UtilIsUserActivateSession(account.slot))
        throw_http_error(400, "TWR.1.0.OemUserDisableFail", {account.user_name});
    check_account_written(remove_account(account));
    write_status_line(200);
    set_body(render_result(account_removed()));
    return 0;
}

}  // namespace odata::redfish
