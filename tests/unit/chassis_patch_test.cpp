// A PATCH of the chassis: what the one validation pass accepts and reports,
// and what applying the changes does to the simulated BMC.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "hardware_root_fixture.h"
#include "platform/libfru.h"
#include "platform/libipmi_sensors.h"
#include "platform/sim/event_log.h"
#include "resources/chassis/chassis_patch.h"
#include "resources/chassis/indicator_led.h"

using namespace odata::redfish;

namespace {

struct reported {
    std::string message_id;
    std::string related;
};

std::vector<reported> messages_of(const result_record& result) {
    std::vector<reported> messages;
    for (const auto& entry : result.entries) {
        const auto& object = entry.as_object();
        const auto* related = object.if_contains("RelatedProperties");
        messages.push_back({std::string(object.at("MessageId").as_string()),
                            related ? std::string(related->as_array().at(0).as_string()) : ""});
    }
    return messages;
}

chassis_changes read(const char* body, result_record& result, bool lockdown = false) {
    return read_chassis_changes(boost::json::parse(body).as_object(), lockdown, result);
}

chassis_changes read_asset_tag(const std::string& tag, result_record& result) {
    return read(boost::json::serialize(boost::json::object{{"AssetTag", tag}}).c_str(), result);
}

std::string repeated(const std::string& text, int times) {
    std::string result;
    for (int i = 0; i < times; ++i) result += text;
    return result;
}

}  // namespace

TEST(ChassisPatchReading, AcceptsEverySettableProperty) {
    result_record result = general_error();
    const chassis_changes changes = read(
        R"({"AssetTag":"Rack 4","IndicatorLED":"Blinking",
            "PhysicalSecurity":{"IntrusionSensor":"Normal","IntrusionSensorReArm":"Manual"}})",
        result);
    EXPECT_TRUE(result.entries.empty());
    EXPECT_EQ(changes.asset_tag, "Rack 4");
    EXPECT_EQ(changes.indicator_led, "Blinking");
    EXPECT_TRUE(changes.rearm_intrusion);
}

TEST(ChassisPatchReading, CollectsOneMessagePerBadProperty) {
    result_record result = general_error();
    read(R"({"AssetTag":5,"IndicatorLED":"lit","Name":"x",
             "PhysicalSecurity":{"IntrusionSensor":"HardwareIntrusion","IntrusionSensorReArm":"Automatic","Extra":1}})",
         result);
    const std::vector<reported> messages = messages_of(result);
    ASSERT_EQ(messages.size(), 6u);
    EXPECT_EQ(messages[0].message_id, "Base.1.10.PropertyValueTypeError");
    EXPECT_EQ(messages[0].related, "/AssetTag");
    EXPECT_EQ(messages[1].message_id, "Base.1.10.PropertyValueNotInList");
    EXPECT_EQ(messages[1].related, "/IndicatorLED");
    EXPECT_EQ(messages[2].message_id, "Base.1.10.PropertyUnknown");
    EXPECT_EQ(messages[2].related, "/Name");
    EXPECT_EQ(messages[3].message_id, "Base.1.10.PropertyValueNotInList");
    EXPECT_EQ(messages[3].related, "/PhysicalSecurity/IntrusionSensor");
    EXPECT_EQ(messages[4].message_id, "Base.1.10.PropertyValueNotInList");
    EXPECT_EQ(messages[4].related, "/PhysicalSecurity/IntrusionSensorReArm");
    EXPECT_EQ(messages[5].message_id, "Base.1.10.PropertyUnknown");
    EXPECT_EQ(messages[5].related, "/PhysicalSecurity/Extra");
}

TEST(ChassisPatchReading, WrongJsonTypesAreTypeErrors) {
    result_record result = general_error();
    read(R"({"IndicatorLED":1,"PhysicalSecurity":"Normal"})", result);
    const std::vector<reported> messages = messages_of(result);
    ASSERT_EQ(messages.size(), 2u);
    EXPECT_EQ(messages[0].message_id, "Base.1.10.PropertyValueTypeError");
    EXPECT_EQ(messages[1].message_id, "Base.1.10.PropertyValueTypeError");
    EXPECT_EQ(messages[1].related, "/PhysicalSecurity");
}

TEST(ChassisPatchReading, AssetTagTakesWhatTheFruCanStore) {
    const std::string latin1_e = "\xC3\xA9";
    for (const std::string& tag : {std::string(), std::string(63, 'x'), repeated(latin1_e, 63)}) {
        result_record result = general_error();
        const chassis_changes changes = read_asset_tag(tag, result);
        EXPECT_TRUE(result.entries.empty()) << tag;
        EXPECT_EQ(changes.asset_tag, tag);
    }
    const std::string c1_control = "\xC2\x85";
    const std::string beyond_latin1 = "\xE2\x82\xAC";
    for (const std::string& tag :
         {std::string(64, 'x'), repeated(latin1_e, 64), std::string("tab\there"), "a" + c1_control,
          "price " + beyond_latin1}) {
        result_record result = general_error();
        const chassis_changes changes = read_asset_tag(tag, result);
        ASSERT_EQ(messages_of(result).size(), 1u) << tag;
        EXPECT_EQ(messages_of(result)[0].message_id, "Base.1.10.PropertyValueFormatError");
        EXPECT_FALSE(changes.asset_tag);
    }
}

TEST(ChassisPatchReading, LockdownLeavesOnlyTheIdentifyLight) {
    result_record result = general_error();
    const chassis_changes changes = read(
        R"({"AssetTag":"x","IndicatorLED":"Lit","PhysicalSecurity":{"IntrusionSensor":"Normal"}})",
        result, true);
    const std::vector<reported> messages = messages_of(result);
    ASSERT_EQ(messages.size(), 2u);
    EXPECT_EQ(messages[0].message_id, "TWR.1.0.OemSystemLockdownEnabledPatchValid");
    EXPECT_EQ(messages[0].related, "/AssetTag");
    EXPECT_EQ(messages[1].related, "/PhysicalSecurity");
    EXPECT_EQ(changes.indicator_led, "Lit");
    EXPECT_FALSE(changes.asset_tag);
    EXPECT_FALSE(changes.rearm_intrusion);
}

using ChassisPatchApplying = sim_testing::hardware_root;

TEST_F(ChassisPatchApplying, WritesTheFruLightAndSensorAndLogsEachChange) {
    ASSERT_EQ(run({"sensors", "set-raw", "Hardware Intrusion", "1"}), 0);
    chassis_changes changes;
    changes.asset_tag = "Rack 4";
    changes.indicator_led = "Blinking";
    changes.rearm_intrusion = true;
    EXPECT_EQ(apply_chassis_changes(changes), "");

    St_FRUInfo info{};
    ASSERT_EQ(ReadFRUInfo(FRU_BOARD_DEVICE, &info), PLT_OK);
    EXPECT_STREQ(info.product_asset_tag, "Rack 4");
    EXPECT_STREQ(indicator_led_state(), "Blinking");
    uint8_t intrusion = 0xFF;
    ASSERT_EQ(UtilGetSensorReading(0xAA, &intrusion), PLT_OK);
    EXPECT_EQ(intrusion & INTRUSION_STATE_GENERAL, 0);
    EXPECT_EQ(platform::read_event_log().size(), 3u);
}

TEST_F(ChassisPatchApplying, StopsAtTheFirstRefusal) {
    ASSERT_EQ(run({"fru", "corrupt"}), 0);
    chassis_changes changes;
    changes.asset_tag = "Rack 4";
    changes.indicator_led = "Lit";
    EXPECT_EQ(apply_chassis_changes(changes), "AssetTag");
    EXPECT_STREQ(indicator_led_state(), "Off");
    EXPECT_TRUE(platform::read_event_log().empty());
}

using IndicatorLed = sim_testing::hardware_root;

TEST_F(IndicatorLed, EachValueReadsBackAsSet) {
    for (const std::string value : {"Lit", "Blinking", "Off", "Blinking", "Lit"}) {
        ASSERT_EQ(set_indicator_led(value), PLT_OK) << value;
        EXPECT_EQ(indicator_led_state(), value);
    }
    EXPECT_EQ(indicator_led_values(), (std::vector<std::string>{"Lit", "Blinking", "Off"}));
}

TEST_F(IndicatorLed, BlinkingForAnotherCauseWinsOverLit) {
    ASSERT_EQ(set_indicator_led("Lit"), PLT_OK);
    at_p_St_GlobalVar->identify_blink = 1;
    EXPECT_STREQ(indicator_led_state(), "Blinking");
}

TEST_F(IndicatorLed, UnknownValuesChangeNothing) {
    ASSERT_EQ(set_indicator_led("Blinking"), PLT_OK);
    for (const std::string value : {"lit", "On", ""}) {
        EXPECT_FALSE(is_indicator_led_value(value));
        EXPECT_EQ(set_indicator_led(value), PLT_ERR_ARGUMENT);
    }
    EXPECT_STREQ(indicator_led_state(), "Blinking");
    EXPECT_EQ(at_p_St_GlobalVar->identify_state, 1);
}
