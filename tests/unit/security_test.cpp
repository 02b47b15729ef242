#include <gtest/gtest.h>

#include "security/basic_credentials.h"
#include "security/privileges.h"
#include "security/roles.h"

using namespace odata::redfish;

TEST(BasicAuthorization, DecodesNameAndPasswordAtTheFirstColon) {
    auto credentials = decode_basic_authorization("Basic YWRtaW46cGE6c3M=");  // admin:pa:ss
    ASSERT_TRUE(credentials);
    EXPECT_EQ(credentials->user_name, "admin");
    EXPECT_EQ(credentials->password, "pa:ss");

    auto empty_password = decode_basic_authorization("Basic dXNlcjo=");  // user:
    ASSERT_TRUE(empty_password);
    EXPECT_EQ(empty_password->password, "");
}

TEST(BasicAuthorization, RefusesWhatIsNotBasicBase64) {
    for (const char* header : {"", "Bearer YWRtaW46cGFzcw==", "Basic ", "Basic YWRtaW46cGFzcw",
                               "Basic YWRt!W46cGFzcw==", "Basic bm9jb2xvbg==",  // nocolon
                               "Basic YQBiOmM=", "Basic ====", "Basic YWRtaW46cGFzcw==="}) {
        EXPECT_FALSE(decode_basic_authorization(header)) << header;
    }
}

TEST(Roles, LevelsNamesAndPrivileges) {
    ASSERT_EQ(predefined_roles().size(), 3u);
    EXPECT_EQ(role_of_level(4)->id, "Administrator");
    EXPECT_EQ(role_of_level(3)->id, "Operator");
    EXPECT_EQ(role_of_level(2)->id, "ReadOnly");
    EXPECT_EQ(role_of_level(1), nullptr);
    EXPECT_EQ(role_named("ReadOnly")->level, 2);
    EXPECT_EQ(role_named("readonly"), nullptr);
    EXPECT_EQ(level_log_text(2), "User");
    EXPECT_EQ(level_log_text(15), "No access");
    EXPECT_EQ(level_log_text(7), "Unknown");
    EXPECT_EQ(privilege_names(role_named("Operator")->privileges),
              (std::vector<std::string_view>{"Login", "ConfigureSelf", "ConfigureComponents"}));
}

// Ownership decides ConfigureSelf by the caller's session and slot.
TEST(PrivilegeTable, ConfigureSelfHoldsOnTheCallersOwnSession) {
    constexpr route_privileges session = reads_and_changes(
        any_of({privilege_configure_manager, privilege_configure_self}),
        any_of({privilege_configure_manager, privilege_configure_self}), own_target::session);
    request_context context;
    context.uri = "/redfish/v1/SessionService/Sessions/4";
    context.method = DELETE;
    context.privilege = 2;
    context.session_id = 4;
    EXPECT_TRUE(caller_is_authorised(context, session));
    context.session_id = 5;
    EXPECT_FALSE(caller_is_authorised(context, session));
    context.privilege = 4;
    EXPECT_TRUE(caller_is_authorised(context, session));
    context.privilege = 1;
    EXPECT_FALSE(caller_is_authorised(context, session));
}
