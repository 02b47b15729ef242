"""The chassis with its power, thermal and sensor resources, over HTTP
through lighttpd, checked against the simulated BMC's state."""

import time

import pytest

from schema_validation import validate, validate_messages

CHASSIS = "/redfish/v1/Chassis/1"
COLLECTION = "/redfish/v1/Chassis"
POWER = CHASSIS + "/Power"
THERMAL = CHASSIS + "/Thermal"
SENSORS = CHASSIS + "/Sensors"


def settings(text):
    """key=value lines of a bmcsim show command as a dict."""
    return dict(line.split("=", 1) for line in text.splitlines() if "=" in line)


def sensor_list(bmc):
    """(number, name) of every sensor, in repository order."""
    rows = [line.split("|") for line in bmc.bmcsim("sensors", "list").splitlines()]
    return [(int(row[0], 16), row[1].strip()) for row in rows]


def message_ids(answer):
    return [entry["MessageId"] for entry in answer.json()["error"]["@Message.ExtendedInfo"]]


def get_valid(session, bmc, path):
    answer = session.get(bmc.url(path), timeout=10)
    assert answer.status_code == 200, answer.text
    body = answer.json()
    validate(body)
    return body


def by_name(members):
    return {member["Name"]: member for member in members}


@pytest.fixture
def admin(bmc):
    session = bmc.admin()
    yield session
    # The module shares one BMC: put back what a test changed.
    for command in (("sensors", "reset"), ("sensors", "freeze"), ("power", "on"), ("power", "psu", "2", "ok"), ("power", "limit", "0"),
                    ("storage", "loading", "off"), ("storage", "set", "broadcom", "0"),
                    ("storage", "set", "marvell", "0"), ("storage", "set", "nvme", "0"),
                    ("lockdown", "off"), ("board", "node-type", "0"), ("fru", "regenerate")):
        bmc.bmcsim(*command)
    session.patch(bmc.url(CHASSIS), json={"IndicatorLED": "Off"}, timeout=10)


@pytest.fixture
def patch(bmc, admin):
    return lambda body: admin.patch(bmc.url(CHASSIS), json=body, timeout=10)


def unchanged_state(bmc):
    """What a refused PATCH must leave as it was."""
    return (settings(bmc.bmcsim("fru", "show")), bmc.bmcsim("board", "show"),
            bmc.bmcsim("sensors", "get", "Hardware Intrusion"), len(bmc.events()))


# ---------------------------------------------------------------- chassis GET

def test_chassis_reports_the_fru_power_and_light(bmc, admin):
    fru = settings(bmc.bmcsim("fru", "show"))
    chassis = get_valid(admin, bmc, CHASSIS)
    assert chassis["Id"] == "1" and chassis["Name"] == "Computer System Chassis"
    assert chassis["ChassisType"] == "RackMount"
    assert chassis["Manufacturer"] == fru["product_manufacturer"]
    assert chassis["Model"] == fru["product_name"]
    assert chassis["SKU"] == fru["product_sku"]
    assert chassis["SerialNumber"] == fru["chassis_serial_number"]
    assert chassis["PartNumber"] == fru["chassis_part_number"]
    assert chassis["AssetTag"] == fru["product_asset_tag"]
    assert chassis["Status"]["State"] == "Enabled" and chassis["Status"]["Health"] == "OK"
    assert chassis["PowerState"] == "On"
    assert chassis["IndicatorLED"] == "Off"
    assert chassis["PhysicalSecurity"] == {"IntrusionSensorNumber": 0xAA, "IntrusionSensor": "Normal",
                                           "IntrusionSensorReArm": "Manual"}
    for name in ("Power", "Thermal", "Sensors"):
        assert chassis[name]["@odata.id"] == CHASSIS + "/" + name
    assert chassis["Links"]["ComputerSystems"] == [{"@odata.id": "/redfish/v1/Systems/1"}]
    oem = chassis["Oem"]["Tarnwright"]
    assert oem["BoardSerialNumber"] == fru["board_serial_number"]
    assert oem["BoardID"] == fru["board_id"]
    assert len(oem["GUID"]) == 36


def test_chassis_follows_host_power_and_twin_node_numbers(bmc, admin):
    bmc.bmcsim("power", "off")
    bmc.bmcsim("board", "node-type", "1")
    chassis = get_valid(admin, bmc, CHASSIS)
    assert chassis["PowerState"] == "Off"
    assert chassis["SerialNumber"] == bmc.bmcsim("state", "get", "node_serial_number").strip()
    assert chassis["PartNumber"] == bmc.bmcsim("state", "get", "node_part_number").strip()


def test_unreadable_fru_leaves_its_properties_out(bmc, admin):
    bmc.bmcsim("fru", "corrupt")
    chassis = get_valid(admin, bmc, CHASSIS)
    assert chassis["ChassisType"] == "RackMount"
    assert "SerialNumber" not in chassis and "AssetTag" not in chassis
    assert chassis["IndicatorLED"] == "Off"


def test_methods_other_than_get_and_patch_are_not_allowed(bmc, admin):
    for method in ("DELETE", "POST", "PUT"):
        answer = admin.request(method, bmc.url(CHASSIS), json={}, timeout=10)
        assert answer.status_code == 405
        assert answer.content == b""


# ---------------------------------------------------------------- chassis PATCH

def test_asset_tag_is_written_to_the_fru_and_logged(bmc, admin, patch):
    events_before = len(bmc.events())
    answer = patch({"AssetTag": "Rack 12 U3"})
    assert answer.status_code == 204, answer.text
    assert settings(bmc.bmcsim("fru", "show"))["product_asset_tag"] == "Rack 12 U3"
    assert get_valid(admin, bmc, CHASSIS)["AssetTag"] == "Rack 12 U3"
    assert [event["code"] for event in bmc.events()[events_before:]] == [149]


@pytest.mark.parametrize("value, identify", [("Blinking", "blink"), ("Lit", "on"), ("Off", "off")])
def test_indicator_led_drives_the_identify_light(bmc, admin, patch, value, identify):
    assert patch({"IndicatorLED": value}).status_code == 204
    assert settings(bmc.bmcsim("board", "show"))["identify"] == identify
    assert get_valid(admin, bmc, CHASSIS)["IndicatorLED"] == value


def test_intrusion_is_reported_and_rearmed(bmc, admin, patch):
    bmc.bmcsim("sensors", "set-raw", "Hardware Intrusion", "1")
    assert get_valid(admin, bmc, CHASSIS)["PhysicalSecurity"]["IntrusionSensor"] == "HardwareIntrusion"
    answer = patch({"PhysicalSecurity": {"IntrusionSensor": "Normal", "IntrusionSensorReArm": "Manual"}})
    assert answer.status_code == 204, answer.text
    assert bmc.bmcsim("sensors", "get", "Hardware Intrusion").strip() == "0x00"
    assert get_valid(admin, bmc, CHASSIS)["PhysicalSecurity"]["IntrusionSensor"] == "Normal"


@pytest.mark.parametrize("body, expected", [
    ({"AssetTag": "kept?", "IndicatorLED": "lit"}, ["Base.1.10.PropertyValueNotInList"]),
    ({"AssetTag": "kept?", "PhysicalSecurity": {"IntrusionSensor": "TamperingDetected"}},
     ["Base.1.10.PropertyValueNotInList"]),
    ({"AssetTag": "kept?", "IndicatorLED": 1}, ["Base.1.10.PropertyValueTypeError"]),
    ({"AssetTag": "x" * 64, "IndicatorLED": "Lit"}, ["Base.1.10.PropertyValueFormatError"]),
    ({"AssetTag": "kept?", "ChassisType": "Blade", "Bogus": 1},
     ["Base.1.10.PropertyUnknown", "Base.1.10.PropertyUnknown"]),
])
def test_a_bad_property_refuses_the_whole_patch(bmc, patch, body, expected):
    before = unchanged_state(bmc)
    answer = patch(body)
    assert answer.status_code == 400
    validate_messages(answer.json())
    assert message_ids(answer) == expected
    assert unchanged_state(bmc) == before


def test_malformed_and_empty_bodies_are_refused(bmc, admin):
    before = unchanged_state(bmc)
    for data, expected in (('{"AssetTag": ', "Base.1.10.MalformedJSON"), ("{}", "Base.1.10.EmptyJSON"),
                           ('["AssetTag"]', "Base.1.10.UnrecognizedRequestBody")):
        answer = admin.patch(bmc.url(CHASSIS), data=data, timeout=10,
                             headers={"Content-Type": "application/json"})
        assert answer.status_code == 400
        assert message_ids(answer) == [expected]
    assert unchanged_state(bmc) == before


def test_lockdown_keeps_only_the_identify_light_patchable(bmc, patch):
    bmc.bmcsim("lockdown", "on")
    before = unchanged_state(bmc)
    answer = patch({"AssetTag": "locked", "IndicatorLED": "Lit"})
    assert answer.status_code == 400
    assert message_ids(answer) == ["TWR.1.0.OemSystemLockdownEnabledPatchValid"]
    assert unchanged_state(bmc) == before
    assert patch({"IndicatorLED": "Lit"}).status_code == 204
    assert settings(bmc.bmcsim("board", "show"))["identify"] == "on"


def test_a_refused_fru_write_answers_400_and_lights_nothing(bmc, patch):
    bmc.bmcsim("fru", "corrupt")
    answer = patch({"AssetTag": "x", "IndicatorLED": "Blinking"})
    assert answer.status_code == 400
    assert answer.json()["error"]["code"] == "Base.v1_10_3.GeneralError"
    assert settings(bmc.bmcsim("board", "show"))["identify"] == "off"


# ---------------------------------------------------------------- collection

def test_collection_lists_the_chassis_and_storage_enclosures(bmc, admin):
    backplane = COLLECTION + "/StorageBackplane"
    assert get_valid(admin, bmc, COLLECTION)["Members"] == [{"@odata.id": CHASSIS}, {"@odata.id": backplane}]
    bmc.bmcsim("storage", "set", "broadcom", "2")
    bmc.bmcsim("storage", "set", "marvell", "1")
    bmc.bmcsim("storage", "set", "nvme", "8")
    collection = get_valid(admin, bmc, COLLECTION)
    assert [member["@odata.id"] for member in collection["Members"]] == [
        CHASSIS,
        backplane,
        COLLECTION + "/HA-RAID.0.StorageEnclosure.0",
        COLLECTION + "/HA-RAID.1.StorageEnclosure.0",
        COLLECTION + "/MRVL.HA-RAID.0.StorageModule",
        COLLECTION + "/NVMeSSD.0.Group.0.StorageBackplane",
    ]
    assert collection["Members@odata.count"] == 6


def test_collection_is_unavailable_while_storage_inventory_loads(bmc, admin):
    bmc.bmcsim("storage", "loading", "on")
    answer = admin.get(bmc.url(COLLECTION), timeout=10)
    assert answer.status_code == 503
    assert answer.headers["Retry-After"] == "10"
    validate_messages(answer.json())
    assert message_ids(answer) == ["Base.1.10.ServiceTemporarilyUnavailable"]
    bmc.bmcsim("storage", "loading", "off")
    assert admin.get(bmc.url(COLLECTION), timeout=10).status_code == 200


# ---------------------------------------------------------------- power

def assert_fragment_members(resource_uri, array_name, members):
    for index, member in enumerate(members):
        assert member["@odata.id"] == "%s#/%s/%d" % (resource_uri, array_name, index)
        assert member["MemberId"] == str(index)


def test_power_lists_control_voltages_supplies_and_battery(bmc, admin):
    power = get_valid(admin, bmc, POWER)
    control = power["PowerControl"][0]
    assert control["PowerConsumedWatts"] == int(settings(bmc.bmcsim("power", "show"))["consumed_watts"])
    assert control["PowerLimit"] == {"LimitInWatts": None, "LimitException": "NoAction"}
    assert [item["@odata.id"] for item in control["RelatedItem"]] == [
        "/redfish/v1/Systems/1/Processors/1", "/redfish/v1/Systems/1/Processors/2"]
    voltages = by_name(power["Voltages"])
    assert set(voltages) == {"12V", "5VCC", "3.3VCC", "VBAT", "Vcpu1", "Vcpu2", "VDimmP1ABC", "VDimmP2ABC"}
    assert voltages["12V"]["ReadingVolts"] == 12
    assert voltages["12V"]["UpperThresholdCritical"] == pytest.approx(13.2, abs=0.06)
    assert voltages["12V"]["LowerThresholdFatal"] == pytest.approx(10.2, abs=0.06)
    assert (voltages["Vcpu1"]["PhysicalContext"], voltages["VDimmP1ABC"]["PhysicalContext"]) == ("CPU", "Memory")
    assert voltages["Vcpu1"]["RelatedItem"] == [{"@odata.id": "/redfish/v1/Systems/1"}]
    assert voltages["12V"]["RelatedItem"] == [{"@odata.id": CHASSIS}]
    supplies = power["PowerSupplies"]
    assert [supply["Name"] for supply in supplies] == ["Power Supply Bay 1", "Power Supply Bay 2"]
    assert power["Redundancy"][0]["Mode"] == "Failover"
    assert power["Redundancy"][0]["RedundancySet"] == [{"@odata.id": supply["@odata.id"]} for supply in supplies]
    assert power["Oem"]["Tarnwright"]["Battery"]["Name"] == "VBAT"
    for name in ("PowerControl", "Voltages", "PowerSupplies", "Redundancy"):
        assert_fragment_members(POWER, name, power[name])


def test_a_failed_supply_and_lost_redundancy_show_in_their_status(bmc, admin):
    bmc.bmcsim("power", "psu", "2", "failed")
    bmc.bmcsim("power", "limit", "500", "hard-power-off")
    power = get_valid(admin, bmc, POWER)
    assert power["PowerSupplies"][0]["Status"]["Health"] == "OK"
    assert power["PowerSupplies"][1]["Status"]["Health"] == "Critical"
    assert power["Redundancy"][0]["Status"]["Health"] == "Warning"
    assert power["PowerControl"][0]["PowerLimit"] == {"LimitInWatts": 500, "LimitException": "HardPowerOff"}


# ---------------------------------------------------------------- thermal

def test_thermal_lists_temperatures_and_fans(bmc, admin):
    thermal = get_valid(admin, bmc, THERMAL)
    assert_fragment_members(THERMAL, "Temperatures", thermal["Temperatures"])
    assert_fragment_members(THERMAL, "Fans", thermal["Fans"])
    temperatures = by_name(thermal["Temperatures"])
    assert temperatures["CPU2 Temp"]["PhysicalContext"] == "CPU"
    assert temperatures["CPU2 Temp"]["RelatedItem"] == [{"@odata.id": "/redfish/v1/Systems/1/Processors/2"}]
    assert temperatures["CPU1_DIMM_A1 Temp"]["PhysicalContext"] == "Memory"
    assert temperatures["OCP_NIC Temp"]["RelatedItem"] == [{"@odata.id": CHASSIS + "/NetworkAdapters/1"}]
    assert temperatures["HDD Temp"]["PhysicalContext"] == "StorageDevice"
    assert temperatures["Inlet Temp"]["PhysicalContext"] == "Intake"
    assert temperatures["CPU1 Temp"]["ReadingCelsius"] == 45
    assert (temperatures["CPU1 Temp"]["UpperThresholdCritical"], temperatures["CPU1 Temp"]["UpperThresholdFatal"]) \
        == (90, 95)
    assert "LowerThresholdCritical" not in temperatures["CPU1 Temp"]
    fans = by_name(thermal["Fans"])
    assert set(fans) == {"FAN1", "FAN2", "FAN3", "FAN4"}
    assert fans["FAN1"]["ReadingUnits"] == "RPM" and fans["FAN1"]["Reading"] == 5600
    assert (fans["FAN1"]["LowerThresholdCritical"], fans["FAN1"]["LowerThresholdFatal"]) == (500, 300)


@pytest.mark.parametrize("sensor, value, health", [
    ("CPU1 Temp", "87", "Warning"), ("CPU1 Temp", "92", "Critical"), ("FAN3", "400", "Critical")])
def test_a_crossed_threshold_shows_in_thermal_and_sensor(bmc, admin, sensor, value, health):
    bmc.bmcsim("sensors", "set", sensor, value)
    thermal = get_valid(admin, bmc, THERMAL)
    member = by_name(thermal["Temperatures"] + thermal["Fans"])[sensor]
    assert member["Status"]["Health"] == health
    index = [name for _, name in sensor_list(bmc)].index(sensor) + 1
    assert get_valid(admin, bmc, "%s/%d" % (SENSORS, index))["Status"]["Health"] == health


def test_drifting_readings_move_inside_their_normal_range(bmc, admin):
    """As on a real BMC, readings move each second; answers reused within a
    second are checked against fresh ones by the instance."""
    bmc.bmcsim("sensors", "drift", "3")
    bmc.bmcsim("sensors", "set", "FAN1", "400")
    seen = set()
    for _ in range(40):
        thermal = get_valid(admin, bmc, THERMAL)
        for member in thermal["Temperatures"] + thermal["Fans"]:
            assert member["Status"]["Health"] == ("Critical" if member["Name"] == "FAN1" else "OK")
        assert by_name(thermal["Fans"])["FAN1"]["Reading"] == 400
        seen.add(by_name(thermal["Temperatures"])["CPU1 Temp"]["ReadingCelsius"])
        if len(seen) > 2:
            break
        time.sleep(0.25)
    assert len(seen) > 2 and all(abs(reading - 45) <= 2 for reading in seen)


def test_host_powered_sensors_have_no_reading_while_the_host_is_off(bmc, admin):
    bmc.bmcsim("power", "off")
    thermal = get_valid(admin, bmc, THERMAL)
    for fan in thermal["Fans"]:
        assert fan["Reading"] is None
        assert fan["Status"] == {"State": "UnavailableOffline"}
    temperatures = by_name(thermal["Temperatures"])
    assert temperatures["CPU1 Temp"]["ReadingCelsius"] is None
    assert temperatures["CPU1 Temp"]["Status"] == {"State": "UnavailableOffline"}
    assert temperatures["Inlet Temp"]["ReadingCelsius"] == 24
    voltages = by_name(get_valid(admin, bmc, POWER)["Voltages"])
    assert voltages["Vcpu1"]["ReadingVolts"] is None
    assert voltages["VBAT"]["ReadingVolts"] == pytest.approx(3.04, abs=0.02)


# ---------------------------------------------------------------- sensors

def test_sensor_collection_numbers_every_sensor_from_one(bmc, admin):
    sensors = sensor_list(bmc)
    collection = get_valid(admin, bmc, SENSORS)
    assert collection["Name"] == "Sensor Collection"
    assert collection["Members"] == [{"@odata.id": "%s/%d" % (SENSORS, i)} for i in range(1, len(sensors) + 1)]
    for index in (1, len(sensors)):
        sensor = get_valid(admin, bmc, "%s/%d" % (SENSORS, index))
        number, name = sensors[index - 1]
        assert (sensor["Id"], sensor["Name"]) == (str(index), name)
        assert sensor["Oem"]["Tarnwright"]["SensorNumber"] == number
    assert get_valid(admin, bmc, SENSORS + "/01")["@odata.id"] == SENSORS + "/1"


def test_sensor_value_follows_the_reading(bmc, admin):
    bmc.bmcsim("sensors", "set", "CPU2 Temp", "61")
    index = [name for _, name in sensor_list(bmc)].index("CPU2 Temp") + 1
    assert get_valid(admin, bmc, "%s/%d" % (SENSORS, index))["Oem"]["Tarnwright"]["SensorValue"] == 61


def test_sensor_index_outside_the_list_is_an_invalid_index(bmc, admin):
    count = len(sensor_list(bmc))
    for index in ("0", str(count + 1), "99999999999"):
        answer = admin.get(bmc.url(SENSORS + "/" + index), timeout=10)
        assert answer.status_code == 404
        validate_messages(answer.json())
        assert message_ids(answer) == ["Base.1.10.InvalidIndex"]
        assert answer.json()["error"]["@Message.ExtendedInfo"][0]["MessageArgs"] == [index]
    assert admin.get(bmc.url(SENSORS + "/abc"), timeout=10).status_code == 404


def test_the_power_limit_control_and_power_control_agree(bmc):
    admin = bmc.admin()
    chassis = admin.get(bmc.url("/redfish/v1/Chassis/1"), timeout=10).json()
    controls = admin.get(bmc.url(chassis["Controls"]["@odata.id"]), timeout=10).json()
    assert controls["Members@odata.count"] == 1
    control = admin.get(bmc.url(controls["Members"][0]["@odata.id"]), timeout=10).json()
    limit = admin.get(bmc.url("/redfish/v1/Chassis/1/Power"), timeout=10).json()[
        "PowerControl"][0]["PowerLimit"]["LimitInWatts"]
    assert (control["ControlType"], control["SetPointUnits"]) == ("Power", "W")
    assert control["SetPoint"] == limit
    assert control["ControlMode"] == ("Automatic" if limit else "Disabled")
