"""The manager's Oem settings under /redfish/v1/Managers/1/Oem/Tarnwright,
over HTTP through lighttpd: each read, changed and refused as an operator's
console would, with the effect read back from the simulated BMC."""

import os
import stat

import pytest

from redfish_answers import error_entries, shown
from csdl_validation import validate

OEM = "/redfish/v1/Managers/1/Oem/Tarnwright"
ACCOUNTS = "/redfish/v1/AccountService/Accounts"
PASSWORD = "Passw0rd-1"
SECRET = "Rad1us-shared-S3cret"


@pytest.fixture(scope="module")
def others(bmc):
    """Sessions of an operator and a reader, who may read but not change."""
    admin = bmc.admin()
    for name, role in (("oemoperator", "Operator"), ("oemreader", "ReadOnly")):
        answer = admin.post(bmc.url(ACCOUNTS), timeout=10,
                            json={"UserName": name, "Password": PASSWORD, "RoleId": role})
        assert answer.status_code == 201, answer.text
    return [bmc.basic_session(name, PASSWORD) for name in ("oemoperator", "oemreader")]


def ids_of(answer):
    assert answer.status_code == 400, answer.text
    return sorted(entry["MessageId"].rsplit(".", 1)[1] for entry in error_entries(answer))


# (resource, a valid change, the bmcsim command that shows it and the lines
# it shows afterwards, a body with every kind of refusal and their messages)
SETTINGS = [
    ("SmartPower", {"PowerRestorePolicy": "AlwaysOn", "PowerLimitWatts": 900,
                    "PowerLimitException": "HardPowerOff"},
     ("power", "show"), {"restore_policy": "always-on", "limit_watts": "900",
                         "limit_action": "hard-power-off"},
     {"PowerRestorePolicy": "Sometimes", "PowerLimitWatts": 100000, "PowerCapacityWatts": 1,
      "Bogus": 1},
     ["PropertyNotWritable", "PropertyUnknown", "PropertyValueFormatError",
      "PropertyValueNotInList"]),
    ("MouseMode", {"Mode": "Relative"}, ("console", "show"), {"mouse": "relative"},
     {"Mode": 1, "Id": "x"}, ["PropertyNotWritable", "PropertyValueTypeError"]),
    ("IKVM", {"LocalMonitorOff": True, "KeyboardLayout": "German", "SessionTimeoutMinutes": 90},
     ("console", "show"), {"local_monitor_off": "yes", "keyboard": "german",
                           "timeout_minutes": "90"},
     {"LocalMonitorOff": "yes", "KeyboardLayout": "de-DE", "SessionTimeoutMinutes": 0},
     ["PropertyValueFormatError", "PropertyValueNotInList", "PropertyValueTypeError"]),
    ("TWRRAKP", {"Enabled": False}, ("lan", "show"), {"rakp": "optional"},
     {"Enabled": None, "Name": "x"}, ["PropertyNotWritable", "PropertyValueTypeError"]),
    ("FanMode", {"Mode": "FullSpeed"}, ("fans", "show"), {"mode": "full-speed", "duty": "100"},
     {"Mode": "Turbo", "TargetDutyPercent": 100}, ["PropertyNotWritable",
                                                    "PropertyValueNotInList"]),
]


@pytest.mark.parametrize("resource, change, command, effect, refused, messages", SETTINGS,
                         ids=[row[0] for row in SETTINGS])
def test_a_setting_changes_the_bmc_and_a_refused_change_changes_nothing(
        bmc, admin, others, resource, change, command, effect, messages, refused):
    manager = admin.get(bmc.url("/redfish/v1/Managers/1"), timeout=10).json()
    assert manager["Oem"]["Tarnwright"][resource] == {"@odata.id": OEM + "/" + resource}
    uri = bmc.url(OEM + "/" + resource)
    before = admin.get(uri, timeout=10)
    assert before.status_code == 200, before.text
    validate(before.json())

    for session in others:
        assert session.get(uri, timeout=10).status_code == 200
        answer = session.patch(uri, json=change, timeout=10)
        assert answer.status_code == 403, answer.text
    assert ids_of(admin.patch(uri, json=dict(change, **refused), timeout=10)) == messages
    assert admin.get(uri, timeout=10).json() == before.json()
    state = shown(bmc, *command)

    answer = admin.patch(uri, json=change, timeout=10)
    assert answer.status_code == 204, answer.text
    after = admin.get(uri, timeout=10).json()
    validate(after)
    assert {name: after[name] for name in change} == change
    assert {name: shown(bmc, *command)[name] for name in effect} == effect
    assert state != shown(bmc, *command)


def fan_speeds(admin, bmc):
    thermal = admin.get(bmc.url("/redfish/v1/Chassis/1/Thermal"), timeout=10).json()
    return [fan["Reading"] for fan in thermal["Fans"]]


def test_the_fan_mode_sets_the_speed_the_fans_settle_at(bmc, admin):
    uri = bmc.url(OEM + "/FanMode")
    assert admin.patch(uri, json={"Mode": "Standard"}, timeout=10).status_code == 204
    standard = fan_speeds(admin, bmc)
    assert admin.patch(uri, json={"Mode": "Optimal"}, timeout=10).status_code == 204
    optimal = fan_speeds(admin, bmc)
    assert admin.patch(uri, json={"Mode": "FullSpeed"}, timeout=10).status_code == 204
    full = fan_speeds(admin, bmc)
    assert all(low < middle < high for low, middle, high in zip(optimal, standard, full))
    assert admin.get(uri, timeout=10).json()["TargetDutyPercent"] == 100


def radius_file(bmc):
    return os.path.join(bmc.root, "nv", "bmc", "radius.ini")


def test_radius_needs_a_server_and_a_secret_that_never_comes_back(bmc, admin):
    uri = bmc.url(OEM + "/RADIUS")
    assert ids_of(admin.patch(uri, json={"Enabled": True}, timeout=10)) == [
        "PropertyValueConflict", "PropertyValueConflict"]
    refused = admin.patch(uri, json={"Secret": "has blank", "ServerAddress": "bad_name!",
                                     "PortNumber": 0}, timeout=10)
    assert ids_of(refused) == ["PropertyValueFormatError"] * 3
    assert "has blank" not in refused.text
    assert shown(bmc, "directory", "radius", "show")["secret"] == "unset"

    answer = admin.patch(uri, timeout=10, json={
        "Enabled": True, "ServerAddress": "radius.example.com", "PortNumber": 1645,
        "TimeoutSeconds": 10, "Secret": SECRET})
    assert answer.status_code == 204, answer.text
    body = admin.get(uri, timeout=10).json()
    validate(body)
    assert (body["Enabled"], body["ServerAddress"], body["PortNumber"], body["Secret"],
            body["SecretSet"]) == (True, "radius.example.com", 1645, None, True)
    assert SECRET not in admin.get(uri, timeout=10).text
    assert stat.S_IMODE(os.stat(radius_file(bmc)).st_mode) == 0o600
    assert bmc.bmcsim("directory", "radius", "show").splitlines()[:3] == [
        "enabled", "server=radius.example.com", "port=1645"]
    assert SECRET not in bmc.bmcsim("directory", "radius", "show") + bmc.error_log()

    # RADIUS is now a directory: its users log in, and it stays on while they are.
    bmc.bmcsim("directory", "radius", "user", "erin", "Erin-Pass1", "Operator")
    login = bmc.login("erin", "Erin-Pass1")
    assert login.status_code == 201, login.text
    token = {"X-Auth-Token": login.headers["X-Auth-Token"]}
    assert ids_of(admin.patch(uri, json={"Enabled": False}, timeout=10)) == [
        "OemUserNotToDisabledServiceWhenUserLogined"]
    assert bmc.request("DELETE", login.headers["Location"], headers=token).status_code in (200, 204)
    assert admin.patch(uri, json={"Enabled": False, "Secret": None}, timeout=10).status_code == 204
    assert shown(bmc, "directory", "radius", "show")["secret"] == "set"
    assert bmc.bmcsim("directory", "radius", "show").splitlines()[0] == "disabled"
    assert bmc.login("erin", "Erin-Pass1").status_code == 401


def test_snooping_shows_the_last_post_codes_and_takes_no_change(bmc, admin):
    uri = bmc.url(OEM + "/Snooping")
    bmc.bmcsim("postcodes", "clear")
    assert admin.get(uri, timeout=10).json()["CurrentPostCode"] is None
    bmc.bmcsim("postcodes", "add", *["%02X" % code for code in range(70)])
    bmc.bmcsim("postcodes", "add", "A2")
    body = admin.get(uri, timeout=10).json()
    validate(body)
    assert body["CurrentPostCode"] == "0xA2"
    assert body["PostCodes"] == ["0x%02X" % code for code in range(7, 70)] + ["0xA2"]
    answer = admin.patch(uri, json={"PostCodes": []}, timeout=10)
    assert answer.status_code == 405
    assert "PATCH" not in answer.headers["Allow"]
