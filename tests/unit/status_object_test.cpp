#include <gtest/gtest.h>

#include "framework/status_object.h"
#include "platform/libipmi_sensors.h"

using namespace odata::redfish;

TEST(StatusObject, HealthCodesMapToRedfishHealth) {
    EXPECT_EQ(boost::json::serialize(status_object(SENSOR_HEALTH_OK)),
              R"({"State":"Enabled","Health":"OK","HealthRollup":"OK"})");
    EXPECT_STREQ(health_text(SENSOR_HEALTH_WARNING), "Warning");
    EXPECT_STREQ(health_text(SENSOR_HEALTH_CRITICAL), "Critical");
    EXPECT_EQ(boost::json::serialize(status_object(SENSOR_HEALTH_UNAVAILABLE)),
              R"({"State":"UnavailableOffline"})");
    EXPECT_EQ(health_text(-3), nullptr);
}
