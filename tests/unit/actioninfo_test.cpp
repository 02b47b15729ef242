#include <gtest/gtest.h>

#include "framework/common_actioninfo.h"
#include "frontend/exception_http.h"
#include "resources/systems/reset_types.h"
#include "resources/systems/resetactioninfo.h"

using namespace odata::redfish;

namespace {

class sample_actioninfo : public common_actioninfo {
public:
    sample_actioninfo(request_context& context, const actioninfo_parameters* table)
        : common_actioninfo(context, "Sample Action Info", "/redfish/v1/Sample/SampleActionInfo"),
          table_(table) {}

protected:
    const actioninfo_parameters* parameters() const override { return table_; }

private:
    const actioninfo_parameters* table_;
};

// The resource's value after GET, and what GET logged.
std::pair<boost::json::object, std::string> got(common_actioninfo& resource,
                                                request_context& context) {
    testing::internal::CaptureStderr();
    resource.get(context);
    return {resource.value(), testing::internal::GetCapturedStderr()};
}

}  // namespace

TEST(CommonActionInfo, ParametersCarryWhatTheTableGives) {
    const actioninfo_parameters table = {
        {"Mode", true, "String", {"Fast", "Slow"}, {}, {}, {}},
        {"Count", false, "Number", {}, 1, 16, {}},
        {"Target", false, "Object", {}, {}, {}, "#Sample.v1_0_0.Target"},
    };
    request_context context;
    sample_actioninfo resource(context, &table);
    auto [value, logged] = got(resource, context);
    EXPECT_EQ(
        boost::json::serialize(value),
        R"({"@odata.id":"/redfish/v1/Sample/SampleActionInfo","@odata.type":"#ActionInfo.v1_1_2.ActionInfo",)"
        R"("Id":"SampleActionInfo","Name":"Sample Action Info","Parameters":[)"
        R"({"Name":"Mode","Required":true,"DataType":"String","AllowableValues":["Fast","Slow"]},)"
        R"({"Name":"Count","Required":false,"DataType":"Number","MinimumValue":1E0,"MaximumValue":1.6E1},)"
        R"({"Name":"Target","Required":false,"DataType":"Object","ObjectDataType":"#Sample.v1_0_0.Target"}],)"
        R"("Oem":{}})");
    EXPECT_EQ(logged, "");
}

TEST(CommonActionInfo, MissingPiecesAreLoggedAndSkipped) {
    const actioninfo_parameters table = {
        {"", true, "String", {}, {}, {}, {}},
        {"Untyped", true, "", {}, {}, {}, {}},
        {"Mode", true, "String", {"Fast", "", "Slow"}, {}, {}, {}},
    };
    request_context context;
    sample_actioninfo resource(context, &table);
    auto [value, logged] = got(resource, context);
    EXPECT_EQ(
        boost::json::serialize(value.at("Parameters")),
        R"([{"Name":"Mode","Required":true,"DataType":"String","AllowableValues":["Fast","Slow"]}])");
    EXPECT_EQ(logged,
              "[ERROR][nullptr] Property\n[ERROR][nullptr] Property_Item\n[ERROR][nullptr] "
              "Property_AllowValues\n");

    sample_actioninfo without_table(context, nullptr);
    auto [empty, logged_empty] = got(without_table, context);
    EXPECT_TRUE(empty.at("Parameters").as_array().empty());
    EXPECT_EQ(logged_empty, "[ERROR][nullptr] ActionInfos\n");
}

TEST(ResetActionInfo, SystemResetTypesAreTheActionsOwnTable) {
    request_context context;
    context.uri = "/redfish/v1/Systems/1/ResetActionInfo";
    resetactioninfo resource(context);
    auto [value, logged] = got(resource, context);
    EXPECT_EQ(value.at("@odata.id"), "/redfish/v1/Systems/1/ResetActionInfo");
    EXPECT_EQ(value.at("Id"), "ResetActionInfo");
    const boost::json::array& parameters = value.at("Parameters").as_array();
    ASSERT_EQ(parameters.size(), 1u);
    const boost::json::object& reset_type_parameter = parameters[0].as_object();
    EXPECT_EQ(reset_type_parameter.at("Name"), "ResetType");
    EXPECT_EQ(reset_type_parameter.at("Required"), true);
    EXPECT_EQ(reset_type_parameter.at("DataType"), "String");
    boost::json::array expected;
    for (const reset_type& entry : reset_types()) {
        expected.emplace_back(entry.name);
        EXPECT_EQ(find_reset_type(entry.name), &entry);
    }
    EXPECT_EQ(reset_type_parameter.at("AllowableValues"), expected);
    EXPECT_EQ(expected, (boost::json::array{"On", "ForceOff", "GracefulShutdown", "GracefulRestart",
                                            "ForceRestart", "Nmi", "ForceOn"}));
    EXPECT_EQ(find_reset_type("on"), nullptr);
    EXPECT_EQ(find_reset_type("On "), nullptr);
}

TEST(ResetActionInfo, ManagerListsOnlyItsOwnResetTypes) {
    request_context context;
    context.uri = "/redfish/v1/Managers/1/ResetActionInfo";
    resetactioninfo resource(context);
    auto [value, logged] = got(resource, context);
    EXPECT_EQ(value.at("@odata.id"), "/redfish/v1/Managers/1/ResetActionInfo");
    EXPECT_EQ(value.at("Parameters").at(0).at("AllowableValues"),
              (boost::json::array{"GracefulRestart", "ForceRestart"}));
}
