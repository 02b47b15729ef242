#include "security/manageraccountcollection.h"

#include <iostream>

#include "framework/property_checks.h"
#include "frontend/exception_http.h"
#include "frontend/response_headers.h"
#include "security/account_slots.h"
#include "security/account_writer.h"
#include "security/manageraccount.h"

namespace odata::redfish {
namespace {

[[noreturn]] void refuse_create_limit() {
    throw_http_error(400, "Base.1.10.CreateLimitReachedForResource");
}

}  // namespace

manageraccountcollection::manageraccountcollection(request_context& context)
    : redfish(context, "ManagerAccountCollection", "", "Accounts Collection", accounts_uri) {}

int manageraccountcollection::get(request_context&) {
    set_common_properties();
    std::vector<std::string> members;
    for (int slot : listed_slots()) members.push_back(account_uri(account_of_slot(slot)));
    set_members(members);
    return 0;
}

int manageraccountcollection::post(request_context& context) {
    const boost::json::value body = context.body_json();
    const boost::json::object& request = request_object(body);
    const std::optional<int> slot = first_free_slot();
    if (!slot) refuse_create_limit();
    result_record result = general_error();
    const account_changes account =
        read_account_request(request, {true, *slot, context.uri}, result);
    if (!result.entries.empty()) throw_http_result(400, result);

    const created_account created = create_account(account);
    if (created.limit_reached) refuse_create_limit();
    check_account_written(created.written);
    const int account_id = account_of_slot(created.slot);
    manageraccount answer(context, account_id);
    answer.get(context);
    for (const auto& property : answer.value()) set(property.key(), property.value());
    write_status_line(201);
    set_response_header(response_header::location, account_uri(account_id));
    return 0;
}

}  // namespace odata::redfish
