// The SimpleUpdate checks: each failure one message, in the order the
// action answers them, and nothing accepted that a download could misuse.
#include <gtest/gtest.h>

#include "platform/libfwupdate.h"
#include "update/simpleupdate_request.h"

using namespace odata::redfish;

namespace {

std::vector<std::string> errors_of(const std::string& body_text, simple_update_request& request) {
    result_record result = simple_update_errors();
    read_simple_update(boost::json::parse(body_text).as_object(), request, result);
    std::vector<std::string> texts;
    for (const auto& entry : result.entries) {
        const auto& message = entry.as_object();
        EXPECT_EQ(message.at("MessageId"), "TWR.1.0.OemSimpleupdateErrorMessage");
        texts.emplace_back(message.at("MessageArgs").as_array().at(0).as_string());
    }
    return texts;
}

std::vector<std::string> errors_of(const std::string& body_text) {
    simple_update_request request;
    return errors_of(body_text, request);
}

}  // namespace

TEST(SimpleUpdateRequest, AcceptsAHostAndPathWithCredentials) {
    simple_update_request request;
    EXPECT_TRUE(errors_of(R"({"ImageURI":"10.0.0.1:8080/fw/bmc.img","TransferProtocol":"FTP",
        "Targets":["/redfish/v1/Systems/1"],"Username":"fw_user","Password":"p;a ss@"})",
                          request)
                    .empty());
    EXPECT_EQ(request.url(), "ftp://10.0.0.1:8080/fw/bmc.img");
    EXPECT_EQ(request.device, FW_DEVICE_BIOS);
    EXPECT_EQ(request.password, "p;a ss@");
}

TEST(SimpleUpdateRequest, TakesTheProtocolFromAFullUri) {
    simple_update_request request;
    EXPECT_TRUE(errors_of(R"({"ImageURI":"https://host/bmc.img"})", request).empty());
    EXPECT_EQ(request.protocol, "HTTPS");
    EXPECT_EQ(request.device, FW_DEVICE_BMC);
    EXPECT_EQ(errors_of(R"({"ImageURI":"https://host/a","TransferProtocol":"FTP"})"),
              std::vector<std::string>{"Input TransferProtocol format error."});
    EXPECT_EQ(errors_of(R"({"ImageURI":"file:///etc/passwd"})"),
              (std::vector<std::string>{"Input ImageURI format error.",
                                        "Input TransferProtocol format error."}));
}

TEST(SimpleUpdateRequest, ReportsEveryFailureInOrder) {
    EXPECT_EQ(errors_of(R"({"ImageURI":"h/a;b","Username":"x y","TransferProtocol":"SCP",
        "Targets":["/redfish/v1/Managers/1","/redfish/v1/Systems/1"]})"),
              (std::vector<std::string>{
                  "Input ImageURI format error.", "Not support special character.",
                  "Input TransferProtocol format error.",
                  "Input Targets parameter error, only support one target each time."}));
}

TEST(SimpleUpdateRequest, BoundsTheFileNameAndTheLocation) {
    const std::string name127(127, 'n');
    EXPECT_TRUE(
        errors_of(R"({"ImageURI":"h/)" + name127 + R"(","TransferProtocol":"HTTP"})").empty());
    EXPECT_EQ(errors_of(R"({"ImageURI":"h/)" + name127 + R"(n","TransferProtocol":"HTTP"})"),
              std::vector<std::string>{"Input ImageURI format error."});
    const std::string deep = "h" + std::string(118, '/') + std::string(118, 'f');
    EXPECT_EQ(errors_of(R"({"ImageURI":")" + deep + R"(","TransferProtocol":"HTTP"})"),
              std::vector<std::string>{"Input ImageURI length error."});
}

TEST(SimpleUpdateRequest, RefusesLocationsACommandOrUrlCouldMisread) {
    for (const char* uri : {"", "nohost", "/path/only", "h/a b", "h/a\\u0001", "h/a;rm"})
        EXPECT_EQ(
            errors_of(std::string(R"({"TransferProtocol":"HTTP","ImageURI":")") + uri + "\"}"),
            std::vector<std::string>{"Input ImageURI format error."})
            << uri;
    EXPECT_EQ(errors_of(R"({"TransferProtocol":"HTTP","ImageURI":7})"),
              std::vector<std::string>{"Input ImageURI format error."});
}

// A pull updates the BMC or the BIOS only, not what a push may target.
TEST(SimpleUpdateRequest, TargetsMustBeOneKnownUri) {
    for (const char* targets : {"[]", "\"/redfish/v1/Managers/1\"", "[1]", "[\"/redfish/v1\"]",
                                "[\"/redfish/v1/UpdateService/FirmwareInventory/NIC0\"]"})
        EXPECT_EQ(errors_of(std::string(R"({"ImageURI":"h/a","TransferProtocol":"HTTP",)") +
                            "\"Targets\":" + targets + "}"),
                  std::vector<std::string>{"Input Targets format error."})
            << targets;
}
