// Manager resources built from a fresh simulated BMC.
#include <gtest/gtest.h>

#include "platform/libvmedia.h"
#include "resources/managers/virtualmedia.h"
#include "sim_root_fixture.h"

using namespace odata::redfish;

namespace {

class manager_resources : public sim_testing::sim_root {};

}  // namespace

TEST_F(manager_resources, virtual_media_drive_shows_its_mount) {
    request_context context;
    context.uri = "/redfish/v1/Managers/1/VirtualMedia/CD1";
    context.method = GET;
    context.captures = {"CD", "1"};
    virtualmedia empty(context);
    empty.get(context);
    EXPECT_EQ(empty.value().at("Inserted"), false);
    EXPECT_EQ(empty.value().at("Image"), nullptr);
    ASSERT_EQ(PltVMEDIA_Insert(VMEDIA_CD, 1, "https://h/dir/boot.iso", 1, "", ""), PLT_OK);
    virtualmedia mounted(context);
    mounted.get(context);
    EXPECT_EQ(mounted.value().at("ImageName"), "boot.iso");
    EXPECT_EQ(mounted.value().at("TransferProtocolType"), "HTTPS");
}
