// The checks of StartUpdate and Install: odd JSON types are refused with a
// message, never taken for a target or an option.
#include <gtest/gtest.h>

#include "platform/libfwupdate.h"
#include "update/push_parameters.h"
#include "update/staged_update_request.h"

using namespace odata::redfish;

namespace {

using reader = void (*)(const boost::json::object&, staged_update_request&, result_record&);

std::vector<std::string> errors_of(reader read, const std::string& body_text,
                                   staged_update_request& request) {
    result_record result = push_errors();
    read(boost::json::parse(body_text).as_object(), request, result);
    std::vector<std::string> texts;
    for (const auto& entry : result.entries)
        texts.emplace_back(entry.at("MessageArgs").as_array().back().as_string());
    return texts;
}

const std::string one_target = "Input Targets parameter error, only support one target each time.";
const std::string bad_option = "Input option parameter error, please check the value.";
const std::string not_install_target =
    "Target value is not supported, please refer to Install_Targets.";
const std::string not_push_target =
    "Target value is not supported, please refer to HttpPushUriTargets.";

}  // namespace

TEST(StagedUpdateRequest, InstallNamesExactlyOneKnownTarget) {
    staged_update_request request;
    EXPECT_TRUE(errors_of(read_install,
                          R"({"Targets":["/redfish/v1/Systems/1"],
                              "InstallOptions":["PreserveConfiguration"]})",
                          request)
                    .empty());
    EXPECT_EQ(request.device, FW_DEVICE_BIOS);
    for (const char* body : {R"({})", R"({"Targets":[]})",
                             R"({"Targets":"/redfish/v1/Managers/1"})", R"({"Targets":null})"}) {
        staged_update_request refused;
        EXPECT_EQ(errors_of(read_install, body, refused), std::vector<std::string>{one_target})
            << body;
        EXPECT_EQ(refused.device, 0);
    }
    for (const char* body : {R"({"Targets":[null]})", R"({"Targets":[{"@odata.id":"x"}]})",
                             R"({"Targets":["/redfish/v1/Managers/1/"]})"})
        EXPECT_EQ(errors_of(read_install, body, request),
                  std::vector<std::string>{not_install_target})
            << body;
    EXPECT_EQ(
        errors_of(read_install, R"({"Targets":[1,2],"InstallOptions":{},"Force":true})", request),
        (std::vector<std::string>{"Force", one_target, bad_option}));
}

TEST(StagedUpdateRequest, StartUpdateTakesTheWaitingImageUnlessTold) {
    staged_update_request request;
    EXPECT_TRUE(errors_of(read_start_update, "{}", request).empty());
    EXPECT_EQ(request.device, 0);
    EXPECT_TRUE(
        errors_of(read_start_update, R"({"Targets":["/redfish/v1/Managers/1"]})", request).empty());
    EXPECT_EQ(request.device, FW_DEVICE_BMC);
    for (const char* body : {R"({"Targets":{}})", R"({"Targets":[]})",
                             R"({"Targets":["/redfish/v1/Managers/1","/redfish/v1/Managers/1"]})"})
        EXPECT_EQ(errors_of(read_start_update, body, request),
                  std::vector<std::string>{not_push_target})
            << body;
    EXPECT_EQ(errors_of(read_start_update, R"({"PreserveOptions":[true,"PreserveConfiguration"]})",
                        request),
              std::vector<std::string>{bad_option});
}
