"""The computer system, its boot override and its reset, over HTTP through lighttpd."""

import json
import os
import time

import pytest

from redfish_answers import assert_success, error_entries, message_of, shown
from schema_validation import validate

SYSTEMS = "/redfish/v1/Systems"
SYSTEM = SYSTEMS + "/1"
RESET = SYSTEM + "/Actions/ComputerSystem.Reset"
RESET_INFO = SYSTEM + "/ResetActionInfo"
DEFAULT_ORDER = SYSTEM + "/Actions/ComputerSystem.SetDefaultBootOrder"

GET_ORDER = [
    "@odata.id", "@odata.type", "Id", "Name", "Description", "Status", "SerialNumber", "PartNumber", "AssetTag",
    "SystemType", "BiosVersion", "Manufacturer", "Model", "SKU", "UUID", "ProcessorSummary",
    "MemorySummary", "IndicatorLED", "PowerState", "Boot", "SerialConsole", "Processors", "Memory", "EthernetInterfaces",
    "NetworkInterfaces", "SimpleStorage", "Storage", "LogServices", "SecureBoot", "Bios", "Links",
    "Actions", "Oem"]
BOOT_SOURCES = ["None", "Pxe", "Hdd", "Diags", "Cd", "BiosSetup", "Usb", "RemoteDrive"]
BIOS_FILES = ["tmp/attributes.json", "tmp/user_saving_result.json", "tmp/user_save_to_bios.json",
              "tmp/boot_save_to_bios.json", "nv/bios/bios_setting", "nv/bios/bios_feature_flag",
              "tmp/HII/bios_restore_setting", "tmp/boot_restore_setting", "tmp/bios_restore_setting"]


def power(bmc):
    return shown(bmc, "power", "show")


def global_state(bmc):
    """The shared BMC state record, without the channel record of the last request."""
    return {key: value for key, value in shown(bmc, "state", "show").items() if not key.startswith("interface.")}


def boot_state(bmc):
    state = shown(bmc, "state", "show")
    return int(state["boot_flags.0"]), int(state["boot_flags.1"])


def write_file(bmc, path, text):
    full = os.path.join(bmc.root, path)
    os.makedirs(os.path.dirname(full), exist_ok=True)
    with open(full, "w") as out:
        out.write(text)


def read_json(bmc, path):
    with open(os.path.join(bmc.root, path)) as source:
        return json.load(source)


def wait_for(condition):
    """Polls until condition holds; deferred power steps take seconds."""
    for _ in range(100):
        if condition():
            return True
        time.sleep(0.1)
    return False


def wait_for_power(bmc, wanted):
    return wait_for(lambda: power(bmc)["power"] == wanted)


@pytest.fixture
def system(bmc, admin):
    def read():
        answer = admin.get(bmc.url(SYSTEM), timeout=10)
        assert answer.status_code == 200
        body = answer.json()
        validate(body)
        return body
    return read


@pytest.fixture(autouse=True)
def fresh_host(bmc):
    """Every test starts from a powered host without boot override, light or BIOS files."""
    for command in (["power", "on"], ["bios", "update-mode", "off"], ["bios", "hii", "on"],
                    ["board", "identify", "off"], ["board", "node-type", "0"], ["lockdown", "off"],
                    ["sensors", "reset"], ["fru", "regenerate"], ["smbios", "regenerate"],
                    ["state", "set", "boot_flags.0", "0"], ["state", "set", "boot_flags.1", "0"],
                    ["state", "set", "identify_state", "0"], ["state", "set", "node_manager_present", "0"]):
        bmc.bmcsim(*command)
    for path in BIOS_FILES:
        try:
            os.remove(os.path.join(bmc.root, path))
        except FileNotFoundError:
            pass


# ---------------------------------------------------------------- reading

def test_system_reads_the_simulated_host_in_order(bmc, system):
    body = system()
    assert list(body) == GET_ORDER
    assert body["@odata.type"] == "#ComputerSystem.v1_13_0.ComputerSystem"
    assert (body["Id"], body["Description"]) == ("1", "Description of server")
    assert body["Status"] == {"State": "Enabled", "Health": "OK", "HealthRollup": "OK"}

    fru = shown(bmc, "fru", "show")
    assert (body["SerialNumber"], body["PartNumber"]) == (fru["product_serial_number"],
                                                          fru["product_part_number"])
    smbios = bmc.bmcsim("smbios", "show").splitlines()
    manufacturer, model, _, sku, uuid = smbios[0][len("system: "):].split(" | ")
    assert (body["Manufacturer"], body["Model"], body["SKU"], body["UUID"]) == (manufacturer, model, sku, uuid)
    assert body["SystemType"] == "Physical"
    assert body["BiosVersion"] == shown(bmc, "bios", "show")["version"]

    processors = [line for line in smbios if line.startswith("processor: ")]
    assert body["ProcessorSummary"] == {
        "Count": len(processors), "Model": processors[0].split(" | ")[1],
        "Status": {"State": "Enabled", "Health": "OK", "HealthRollup": "OK"},
        "Metrics": {"@odata.id": SYSTEM + "/ProcessorSummary/ProcessorMetrics"}}
    mebibytes = sum(int(line.split(" | ")[1].split()[0]) for line in smbios if line.startswith("memory: "))
    assert body["MemorySummary"]["TotalSystemMemoryGiB"] == mebibytes >> 10
    assert body["MemorySummary"]["MemoryMirroring"] == "System"
    assert body["MemorySummary"]["Metrics"] == {"@odata.id": SYSTEM + "/MemorySummary/MemoryMetrics"}

    assert (body["IndicatorLED"], body["PowerState"]) == ("Off", "On")
    assert body["Boot"] == {
        "BootSourceOverrideEnabled": "Disabled", "BootSourceOverrideMode": "Legacy",
        "BootSourceOverrideTarget": "None", "UefiTargetBootSourceOverride": None,
        "BootSourceOverrideTarget@Redfish.AllowableValues": BOOT_SOURCES + ["UefiHttp"]}
    assert body["SerialConsole"]["IPMI"]["ServiceEnabled"] and body["SerialConsole"]["SSH"]["ServiceEnabled"]
    assert body["Bios"] == {"@odata.id": SYSTEM + "/Bios"}
    assert body["Links"] == {"Chassis": [{"@odata.id": "/redfish/v1/Chassis/1"}],
                             "ManagedBy": [{"@odata.id": "/redfish/v1/Managers/1"}]}
    assert body["Actions"] == {"#ComputerSystem.Reset": {"target": RESET, "@Redfish.ActionInfo": RESET_INFO},
                               "#ComputerSystem.SetDefaultBootOrder": {"target": DEFAULT_ORDER}}
    assert body["Oem"] == {"Tarnwright": {"@odata.type": "#TwrSystemExtensions.v1_0_0.System",
                                          "OOB": {"@odata.id": SYSTEM + "/Oem/Tarnwright/OOB"},
                                          "BmcInfo": {"@odata.id": SYSTEM + "/Oem/Tarnwright/BmcInfo"}}}


def test_power_state_and_health_follow_the_host(bmc, system):
    bmc.bmcsim("power", "off")
    assert system()["PowerState"] == "Off"
    bmc.bmcsim("power", "on")
    assert system()["PowerState"] == "On"

    bmc.bmcsim("sensors", "set", "CPU1 Temp", "87")
    body = system()
    assert body["Status"]["Health"] == "Warning"
    assert body["ProcessorSummary"]["Status"]["Health"] == "Warning"
    assert body["MemorySummary"]["Status"]["Health"] == "OK"
    bmc.bmcsim("sensors", "set", "CPU1 Temp", "93")
    body = system()
    assert body["Status"] == {"State": "Enabled", "Health": "Critical", "HealthRollup": "Critical"}
    assert body["ProcessorSummary"]["Status"]["Health"] == "Critical"

    bmc.bmcsim("sensors", "reset")
    bmc.bmcsim("sensors", "set", "CPU2_DIMM_B1 Temp", "82")
    body = system()
    assert body["MemorySummary"]["Status"]["Health"] == "Warning"
    assert body["Status"]["Health"] == "Warning"


def test_node_manager_and_a_broken_smbios_table(bmc, system):
    bmc.bmcsim("state", "set", "node_manager_present", "1")
    assert system()["Oem"]["Tarnwright"]["NodeManager"] == {"@odata.id": SYSTEM + "/Oem/Tarnwright/NodeManager"}
    bmc.bmcsim("smbios", "corrupt")
    body = system()
    for left_out in ("SystemType", "BiosVersion", "Manufacturer", "Model", "SKU", "UUID", "ProcessorSummary",
                     "MemorySummary"):
        assert left_out not in body
    assert body["SerialNumber"] == shown(bmc, "fru", "show")["product_serial_number"]
    assert body["PowerState"] == "On" and "Boot" in body


def test_http_boot_uri_comes_from_pending_or_current_bios_attributes(bmc, system):
    bmc.bmcsim("state", "set", "boot_flags.0", "0xA0")
    bmc.bmcsim("state", "set", "boot_flags.1", "0x04")
    write_file(bmc, "tmp/attributes.json", '{"Attributes": {"BootURI": "http://10.0.0.5/boot.efi"}}')
    boot = system()["Boot"]
    assert boot["HttpBootUri"] == "http://10.0.0.5/boot.efi"
    assert boot["BootSourceOverrideTarget"] == "UefiHttp"

    write_file(bmc, "tmp/user_saving_result.json", '{"Pendding": {"BootURI": ""}}')
    boot = system()["Boot"]
    assert boot["HttpBootUri"] == "" and boot["BootSourceOverrideTarget"] == "Pxe"

    write_file(bmc, "tmp/user_saving_result.json", '{"Pendding": {"BootURI": "NotSupport"}}')
    assert "HttpBootUri" not in system()["Boot"]
    write_file(bmc, "tmp/user_saving_result.json", "")
    assert "HttpBootUri" not in system()["Boot"]

    os.remove(os.path.join(bmc.root, "tmp/user_saving_result.json"))
    bmc.bmcsim("state", "set", "boot_flags.0", "0x80")
    boot = system()["Boot"]
    assert boot["HttpBootUri"] == "http://10.0.0.5/boot.efi" and boot["BootSourceOverrideTarget"] == "Pxe"


def test_bios_boot_options_and_pending_boot_next(bmc, system):
    write_file(bmc, "nv/bios/bios_setting", "BootOrder=Boot0001,Boot0002\nBootNext=Boot0002\n")
    boot = system()["Boot"]
    assert boot["BootOptions"] == {"@odata.id": SYSTEM + "/BootOptions"}
    assert (boot["BootNext"], boot["BootOrder"]) == ("Boot0002", ["Boot0001", "Boot0002"])
    assert "UefiBootNext" not in boot["BootSourceOverrideTarget@Redfish.AllowableValues"]

    write_file(bmc, "nv/bios/bios_feature_flag", "UefiBootNext=1\n")
    write_file(bmc, "tmp/HII/bios_restore_setting", "BootNext=Boot0002\n")
    boot = system()["Boot"]
    assert boot["BootSourceOverrideTarget@Redfish.AllowableValues"] == BOOT_SOURCES + ["UefiBootNext", "UefiHttp"]
    assert boot["BootSourceOverrideTarget"] == "UefiBootNext"

    bmc.bmcsim("bios", "hii", "off")
    boot = system()["Boot"]
    assert "UefiBootNext" not in boot["BootSourceOverrideTarget@Redfish.AllowableValues"]
    assert boot["BootSourceOverrideTarget"] == "None"
    write_file(bmc, "tmp/bios_restore_setting", "BootNext=Boot0001\n")
    assert system()["Boot"]["BootSourceOverrideTarget"] == "UefiBootNext"


# ---------------------------------------------------------------- changing

def test_indicator_led_follows_patch_and_the_light(bmc, admin, system):
    for value, light in (("Lit", "on"), ("Blinking", "blink"), ("Off", "off")):
        assert_success(admin.patch(bmc.url(SYSTEM), json={"IndicatorLED": value}, timeout=10))
        assert shown(bmc, "board", "show")["identify"] == light
        assert system()["IndicatorLED"] == value
    bmc.bmcsim("board", "identify", "on")
    assert system()["IndicatorLED"] == "Lit"


def test_boot_override_patch_sets_the_boot_flags(bmc, admin, system):
    answer = admin.patch(bmc.url(SYSTEM), timeout=10, json={"Boot": {
        "BootSourceOverrideTarget": "Pxe", "BootSourceOverrideEnabled": "Continuous",
        "BootSourceOverrideMode": "Legacy"}})
    assert_success(answer)
    assert boot_state(bmc) == (0xC0, 0x04)
    boot = system()["Boot"]
    assert (boot["BootSourceOverrideTarget"], boot["BootSourceOverrideEnabled"],
            boot["BootSourceOverrideMode"]) == ("Pxe", "Continuous", "Legacy")

    assert_success(admin.patch(bmc.url(SYSTEM), json={"Boot": {"BootSourceOverrideTarget": "None"}}, timeout=10))
    assert boot_state(bmc) == (0xC0, 0x00)
    assert_success(admin.patch(bmc.url(SYSTEM), json={"Boot": {"BootSourceOverrideEnabled": "Disabled"}},
                               timeout=10))
    assert boot_state(bmc) == (0x40, 0x00)
    assert shown(bmc, "boot", "show")["override"] == "disabled"


@pytest.mark.parametrize("body, message_id, args", [
    ({"Boot": {"BootSourceOverrideEnabled": "once"}}, "Base.1.10.PropertyValueFormatError",
     ["once", "BootSourceOverrideEnabled"]),
    ({"IndicatorLED": "lit"}, "Base.1.10.PropertyValueFormatError", ["lit", "IndicatorLED"]),
    ({"IndicatorLED": 1}, "Base.1.10.PropertyValueTypeError", ["1", "IndicatorLED"]),
    ({"Boot": {"BootSourceOverrideTarget": ""}}, "Base.1.10.PropertyValueTypeError",
     ["", "BootSourceOverrideTarget"]),
    ({"Boot": {"BootSourceOverrideMode": None}}, "Base.1.10.PropertyValueTypeError",
     ["null", "BootSourceOverrideMode"]),
    ({"Boot": {"BootSourceOverrideTarget": "UefiHttp"}}, "Base.1.10.PropertyValueFormatError",
     ["UefiHttp", "BootSourceOverrideTarget"]),
    ({"Boot": {"HttpBootUri": "ftp://10.0.0.5/boot.efi"}}, "Base.1.10.PropertyValueFormatError",
     ["ftp://10.0.0.5/boot.efi", "HttpBootUri"]),
    ({"Boot": "Pxe"}, "Base.1.10.PropertyValueTypeError", ["Pxe", "Boot"]),
    ({"AssetTag": "x"}, "Base.1.10.PropertyUnknown", ["AssetTag"]),
    ({"Boot": {"BootSourceOverrideTarget": "UefiBootNext"}}, "Base.1.10.PropertyMissing", ["BootNext"]),
])
def test_a_bad_patch_is_refused_and_changes_nothing(bmc, admin, body, message_id, args):
    before = global_state(bmc)
    # A valid change rides along: it must not be applied either.
    answer = admin.patch(bmc.url(SYSTEM), json={"IndicatorLED": "Lit", **body} if "IndicatorLED" not in body
                         else body, timeout=10)
    assert answer.status_code == 400
    assert message_of(answer)[:2] == (message_id, args)
    assert global_state(bmc) == before
    assert shown(bmc, "board", "show")["identify"] == "off"
    assert not os.path.exists(os.path.join(bmc.root, "tmp/user_save_to_bios.json"))


def test_every_bad_property_is_reported_at_once(bmc, admin):
    answer = admin.patch(bmc.url(SYSTEM), timeout=10, json={
        "IndicatorLED": "on", "Boot": {"BootSourceOverrideMode": "uefi", "BootSourceOverrideTarget": "Pxe",
                                       "Unknown": 1}})
    assert answer.status_code == 400
    entries = error_entries(answer)
    assert [(entry["MessageId"], entry.get("RelatedProperties")) for entry in entries] == [
        ("Base.1.10.PropertyValueFormatError", ["/IndicatorLED"]),
        ("Base.1.10.PropertyValueFormatError", ["/Boot/BootSourceOverrideMode"]),
        ("Base.1.10.PropertyUnknown", ["/Boot/Unknown"])]
    assert answer.json()["error"]["code"] == "Base.v1_10_3.GeneralError"
    assert boot_state(bmc) == (0, 0)


@pytest.mark.parametrize("text, message_id", [
    ('{"IndicatorLED": "Lit"', "Base.1.10.MalformedJSON"),
    ("{}", "Base.1.10.EmptyJSON"),
    ('["IndicatorLED"]', "Base.1.10.UnrecognizedRequestBody"),
])
def test_a_body_that_is_no_patch_is_refused(bmc, admin, text, message_id):
    answer = admin.patch(bmc.url(SYSTEM), data=text, headers={"Content-Type": "application/json"}, timeout=10)
    assert answer.status_code == 400
    assert message_of(answer)[0] == message_id
    assert shown(bmc, "board", "show")["identify"] == "off"


@pytest.mark.parametrize("uri, policy, family", [
    ("http://10.0.0.5/boot.efi", "Boot Priority #1 instantly", "IPv4"),
    ("https://[fd00::5]:8080/boot.efi", "Boot Priority #1 instantly", "IPv6"),
    ("", "Apply to each LAN", "IPv4"),
])
def test_http_boot_uri_is_handed_to_the_bios(bmc, admin, uri, policy, family):
    assert_success(admin.patch(bmc.url(SYSTEM), json={"Boot": {"HttpBootUri": uri}}, timeout=10))
    assert read_json(bmc, "tmp/user_save_to_bios.json") == {"Attributes": {
        "HTTPBootPolicy": policy, "SelectIPv4orIPv6": family, "BootDescription": "Redfish", "BootURI": uri}}


def test_boot_next_and_boot_order_reach_the_bios(bmc, admin):
    write_file(bmc, "nv/bios/bios_setting", "BootOrder=Boot0001,Boot0002,Boot0003\n")
    assert_success(admin.patch(bmc.url(SYSTEM), json={"Boot": {"BootNext": "Boot0003"}}, timeout=10))
    assert read_json(bmc, "tmp/boot_save_to_bios.json") == {"BootNext": "Boot0003"}
    assert shown(bmc, "bios", "show")["boot_order"] == "Boot0003,Boot0001,Boot0002"

    assert_success(admin.patch(bmc.url(SYSTEM), json={"Boot": {"BootOrder": ["Boot0002", "Boot0001"]}},
                               timeout=10))
    assert shown(bmc, "bios", "show")["boot_order"] == "Boot0002,Boot0001"

    for bad in ({"BootNext": "Boot0009"}, {"BootOrder": ["Boot0001", "Boot0001"]}, {"BootOrder": []},
                {"BootOrder": ["Boot0001", 2]}, {"BootOrder": "Boot0001"}):
        answer = admin.patch(bmc.url(SYSTEM), json={"Boot": bad}, timeout=10)
        assert answer.status_code == 400, bad
        assert message_of(answer)[0] in ("Base.1.10.PropertyValueFormatError", "Base.1.10.PropertyValueTypeError")
    assert shown(bmc, "bios", "show")["boot_order"] == "Boot0002,Boot0001"

    bmc.bmcsim("bios", "hii", "off")
    answer = admin.patch(bmc.url(SYSTEM), json={"Boot": {"BootOrder": ["Boot0001"]}}, timeout=10)
    assert message_of(answer)[:2] == ("Base.1.10.PropertyNotWritable", ["BootOrder"])


def test_the_default_boot_order_is_the_options_by_number(bmc, admin):
    handed_over = shown(bmc, "bios", "show")["boot_order"]
    write_file(bmc, "nv/bios/bios_setting", "BootOrder=Boot0003,Boot0001,Boot0002\n")
    for body in ({"BootOrder": ["Boot0001"]}, []):
        assert admin.post(bmc.url(DEFAULT_ORDER), json=body, timeout=10).status_code == 400
    assert shown(bmc, "bios", "show")["boot_order"] == handed_over
    assert_success(admin.post(bmc.url(DEFAULT_ORDER), json={}, timeout=10))
    assert shown(bmc, "bios", "show")["boot_order"] == "Boot0001,Boot0002,Boot0003"

    bmc.bmcsim("bios", "hii", "off")
    answer = admin.post(bmc.url(DEFAULT_ORDER), json={}, timeout=10)
    assert message_of(answer)[:2] == ("Base.1.10.PropertyNotWritable", ["BootOrder"])


def test_uefi_boot_next_target_goes_with_a_boot_next(bmc, admin):
    write_file(bmc, "nv/bios/bios_setting", "BootOrder=Boot0001,Boot0002\n")
    assert_success(admin.patch(bmc.url(SYSTEM), timeout=10, json={"Boot": {
        "BootSourceOverrideTarget": "UefiBootNext", "BootNext": "Boot0002", "BootSourceOverrideEnabled": "Once"}}))
    assert read_json(bmc, "tmp/boot_save_to_bios.json") == {"BootNext": "Boot0002"}
    assert boot_state(bmc) == (0x80, 0x00)


def test_lockdown_leaves_only_the_indicator_led_patchable(bmc, admin):
    bmc.bmcsim("lockdown", "on")
    answer = admin.patch(bmc.url(SYSTEM), json={"Boot": {"BootSourceOverrideTarget": "Pxe"}}, timeout=10)
    assert answer.status_code == 400
    assert message_of(answer) == ("TWR.1.0.OemSystemLockdownEnabledPatchValid", ["IndicatorLED"], ["/Boot"])
    assert boot_state(bmc) == (0, 0)
    assert_success(admin.patch(bmc.url(SYSTEM), json={"IndicatorLED": "Blinking"}, timeout=10))
    assert shown(bmc, "board", "show")["identify"] == "blink"


def test_a_read_only_user_may_read_but_not_change(bmc):
    bmc.bmcsim("users", "add", "5", "reader", "Read-only-1", "2")
    reader = bmc.basic_session("reader", "Read-only-1")
    assert reader.get(bmc.url(SYSTEM), timeout=10).status_code == 200
    answer = reader.patch(bmc.url(SYSTEM), json={"IndicatorLED": "Lit"}, timeout=10)
    assert answer.status_code == 403
    assert message_of(answer)[0] == "Base.1.10.InsufficientPrivilege"
    assert reader.post(bmc.url(RESET), json={"ResetType": "ForceOff"}, timeout=10).status_code == 403
    assert shown(bmc, "board", "show")["identify"] == "off"
    assert power(bmc)["power"] == "on"
    bmc.bmcsim("users", "delete", "5")


def test_methods_the_resources_do_not_serve(bmc, admin):
    assert admin.delete(bmc.url(SYSTEM), timeout=10).status_code == 405
    assert admin.get(bmc.url(RESET), timeout=10).status_code == 405
    assert admin.patch(bmc.url(SYSTEMS), json={"Name": "x"}, timeout=10).status_code == 405


# ---------------------------------------------------------------- reset

def reset(bmc, admin, reset_type):
    return admin.post(bmc.url(RESET), json={"ResetType": reset_type}, timeout=10)


def test_resets_drive_the_host_power(bmc, admin, system):
    assert_success(reset(bmc, admin, "ForceOff"))
    assert power(bmc)["power"] == "off" and system()["PowerState"] == "Off"
    assert_success(reset(bmc, admin, "On"))
    assert power(bmc)["power"] == "on" and system()["PowerState"] == "On"

    assert_success(reset(bmc, admin, "GracefulShutdown"))
    assert power(bmc)["soft_off_at"] != "0"
    # Once the state file has settled, an answer may be kept for reuse; it
    # may already show the host off, as the step is due within two seconds.
    time.sleep(1.05)
    system()
    # The host goes off by itself: answers given before must not outlive it.
    assert wait_for(lambda: system()["PowerState"] == "Off")
    assert_success(reset(bmc, admin, "ForceOn"))
    assert power(bmc)["power"] == "on"

    cycles = int(power(bmc)["cycles"])
    assert_success(reset(bmc, admin, "GracefulRestart"))
    assert int(power(bmc)["cycles"]) == cycles + 1
    assert wait_for_power(bmc, "on")

    resets, interrupts = int(power(bmc)["resets"]), int(power(bmc)["nmi_count"])
    assert_success(reset(bmc, admin, "ForceRestart"))
    assert_success(reset(bmc, admin, "Nmi"))
    after = power(bmc)
    assert (int(after["resets"]), int(after["nmi_count"]), after["power"]) == (resets + 1, interrupts + 1, "on")


@pytest.mark.parametrize("body, message_id, args", [
    ({"ResetType": "on"}, "Base.1.10.ActionParameterNotSupported", ["ResetType", "ComputerSystemReset"]),
    ({"ResetType": "PowerCycle"}, "Base.1.10.ActionParameterNotSupported", ["ResetType", "ComputerSystemReset"]),
    ({"ResetType": 1}, "Base.1.10.ActionParameterNotSupported", ["ResetType", "ComputerSystemReset"]),
    ({}, "Base.1.10.ActionParameterUnknown", ["ComputerSystemReset", "ResetType"]),
    ({"Type": "On"}, "Base.1.10.ActionParameterUnknown", ["ComputerSystemReset", "ResetType"]),
])
def test_a_bad_reset_is_refused_and_powers_nothing(bmc, admin, body, message_id, args):
    bmc.bmcsim("power", "off")
    before = power(bmc)
    answer = admin.post(bmc.url(RESET), json=body, timeout=10)
    assert answer.status_code == 400
    assert message_of(answer)[:2] == (message_id, args)
    assert power(bmc) == before


def test_a_malformed_reset_body_is_refused(bmc, admin):
    answer = admin.post(bmc.url(RESET), data='{"ResetType": ', timeout=10,
                        headers={"Content-Type": "application/json"})
    assert answer.status_code == 400 and message_of(answer)[0] == "Base.1.10.MalformedJSON"


def test_no_reset_while_the_bios_is_in_update_mode(bmc, admin):
    bmc.bmcsim("power", "off")
    bmc.bmcsim("bios", "update-mode", "on")
    answer = reset(bmc, admin, "On")
    assert answer.status_code == 400
    entry = error_entries(answer)[0]
    assert entry["MessageId"] == "TWR.1.0.OemFirmwareAlreadyInUpdateMode"
    assert entry["Message"] == "The BIOS firmware update was already in update mode."
    assert entry["RelatedProperties"] == ["EnterUpdateMode_StatusCheck"]
    assert power(bmc)["power"] == "off"
    bmc.bmcsim("bios", "update-mode", "off")
    assert_success(reset(bmc, admin, "On"))
    assert power(bmc)["power"] == "on"
