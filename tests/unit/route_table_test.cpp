// The route table as a whole: which rows are served, and who may do what
// on each.
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "security/privileges.h"
#include "security/roles.h"
#include "service/route_table.h"

namespace rf = odata::redfish;

namespace {

bool under(std::string_view path, std::string_view prefix) {
    return path.substr(0, prefix.size()) == prefix &&
           (path.size() == prefix.size() || path[prefix.size()] == '/');
}

// Who may run a method on a route, as the roles' letters: Administrator,
// Operator, ReadOnly; "*" for anyone without credentials. "own" holds on
// the caller's own account or session.
struct role_access {
    std::string_view any;
    std::string_view own;
};

// The privilege registry's view of the service, written apart from the
// table it checks: reading needs Login except where the resource holds
// other users' data; changing the host's components needs
// ConfigureComponents, users ConfigureUsers, anything else of the BMC
// ConfigureManager; clearing a log and switching power need the Oem
// privileges of the roles.
role_access expected_access(const rf::route& row, int method) {
    const std::string_view path = row.path;
    const std::string_view name = row.handler_class;
    if (name == "sessionscollection" && method == rf::POST) return {"*", "*"};
    if (name == "sessions") return {"A", "AOR"};
    if (name == "manageraccount") return {"A", method == rf::DELETE ? "A" : "AOR"};
    if (name == "eventdestination") return {"A", "A"};
    if (method == rf::GET) return {"AOR", "AOR"};
    if (name == "accountservice" || name == "manageraccountcollection") return {"A", "A"};
    if (name.find("clearlog") != name.npos || name == "systems_logservice_clearack")
        return {"A", "A"};
    if (name == "computersystem_reset") return {"AO", "AO"};
    if (name == "peci_sendraw") return {"A", "A"};
    if (under(path, "/redfish/v1/Systems") || under(path, "/redfish/v1/Chassis") ||
        path.substr(0, 30) == "/restapi/twri/Actions/BiosFile")
        return {"AO", "AO"};
    return {"A", "A"};
}

std::string allowed_roles(const rf::method_requirement& requirement, bool own) {
    if (requirement.sets[0] == rf::privilege_no_auth) return "*";
    std::string letters;
    for (const rf::role_definition& role : rf::predefined_roles())
        if (rf::requirement_met(requirement, role.privileges, own)) letters += role.id[0];
    return letters;
}

}  // namespace

TEST(RouteTable, EveryRowIsServedWithItsMethods) {
    for (const rf::route& row : rf::route_table()) {
        EXPECT_TRUE(row.served()) << row.handler_class << "  " << row.path;
        EXPECT_NE(row.methods, 0u) << row.path;
    }
}

TEST(RouteTable, EveryRouteAndMethodNeedsTheRegistrysPrivileges) {
    for (const rf::route& row : rf::route_table()) {
        for (int method = rf::GET; method <= rf::DELETE; ++method) {
            SCOPED_TRACE(std::string(row.path) + " method " + std::to_string(method));
            const rf::method_requirement& requirement = row.privileges.of(method);
            const role_access expected = expected_access(row, method);
            EXPECT_EQ(allowed_roles(requirement, false), expected.any);
            EXPECT_EQ(allowed_roles(requirement, true), expected.own);
        }
    }
}

// Only the documents a client reads before it logs in are open, and only
// for reading; bodies are left unread only for uploads.
TEST(RouteTable, OpenAndUploadRowsAreFew) {
    std::vector<std::string_view> open, uploads;
    for (const rf::route& row : rf::route_table()) {
        if (row.has(rf::route_open_read)) open.push_back(row.path);
        if (row.has(rf::route_upload)) {
            uploads.push_back(row.path);
            EXPECT_TRUE(!row.served() || (row.methods & (1u << rf::POST))) << row.path;
        }
    }
    EXPECT_EQ(open, (std::vector<std::string_view>{"/redfish", "/redfish/v1", "/redfish/v1/odata",
                                                   "/redfish/v1/$metadata"}));
    for (std::string_view path : uploads) {
        const std::string_view last = path.substr(path.rfind('/') + 1);
        EXPECT_TRUE(last == "upload" || last.find(".Upload") != last.npos) << path;
    }
}
