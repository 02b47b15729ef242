"""The manager's own settings under Oem/Tarnwright (NTP, remote syslog, IP
access control, the KCS privilege, system lockdown) and the configuration
reset, over HTTP through lighttpd, against the state that bmcsim shows."""

import glob
import http.client
import json
import os
import socket

import pytest
import requests

import csdl_validation
from redfish_answers import assert_success, error_entries, message_of, shown

OEM = "/redfish/v1/Managers/1/Oem/Tarnwright"
NTP = OEM + "/NTP"
SYSLOG = OEM + "/Syslog"
KCS = OEM + "/KCSInterface"
LOCKDOWN = OEM + "/SysLockdown"
ACCESS = OEM + "/IPAccessControl"
RULES = ACCESS + "/FilterRules"
RESET = "/redfish/v1/Managers/1/Actions/Oem/TwrManagerConfig.Reset"
ACCOUNTS = "/redfish/v1/AccountService/Accounts"
PASSWORD = "Passw0rd-1"


def settings_files(bmc):
    """The manager's settings files and the event log, as they stand."""
    state = {}
    for path in sorted(glob.glob(os.path.join(bmc.root, "nv", "bmc", "*.ini"))):
        with open(path) as settings:
            state[os.path.basename(path)] = settings.read()
    state["lockdown"] = bmc.bmcsim("lockdown", "show")
    state["events"] = len(bmc.events())
    return state


def send(bmc, method, path, source, body=None):
    """One administrator's request from the loopback address source."""
    request = bmc.admin().prepare_request(requests.Request(method, bmc.url(path), json=body))
    connection = http.client.HTTPConnection("127.0.0.1", bmc.port, timeout=10,
                                            source_address=(source, 0))
    try:
        connection.request(method, path, body=request.body, headers=dict(request.headers))
        answer = connection.getresponse()
        data = answer.read()
        return answer.status, json.loads(data) if data else None
    finally:
        connection.close()


@pytest.fixture(scope="module")
def sessions(bmc):
    admin = bmc.admin()
    for name, role in (("ops1", "Operator"), ("viewer1", "ReadOnly")):
        answer = admin.post(bmc.url(ACCOUNTS), timeout=10,
                            json={"UserName": name, "Password": PASSWORD, "RoleId": role})
        assert answer.status_code == 201, answer.text
    return {"Administrator": admin, "Operator": bmc.basic_session("ops1", PASSWORD),
            "ReadOnly": bmc.basic_session("viewer1", PASSWORD)}


@pytest.fixture(autouse=True)
def defaults(bmc):
    yield
    bmc.bmcsim("lockdown", "off")
    assert_success(bmc.admin().post(bmc.url(RESET), json={}, timeout=10))


def test_each_setting_shows_what_the_bmc_keeps_and_takes_changes(bmc, admin):
    bmc.bmcsim("ntp", "servers", "ntp1.example.com", "10.0.0.5")
    bmc.bmcsim("kcs", "set", "Operator")
    bmc.bmcsim("lockdown", "on")
    manager = admin.get(bmc.url("/redfish/v1/Managers/1"), timeout=10).json()
    assert manager["Oem"]["Tarnwright"]["NTP"] == {"@odata.id": NTP}
    assert manager["Actions"]["Oem"]["#TwrManagerConfig.Reset"]["target"] == RESET
    bodies = {uri: admin.get(bmc.url(uri), timeout=10).json()
              for uri in (NTP, SYSLOG, KCS, LOCKDOWN, ACCESS, RULES)}
    for body in bodies.values():
        csdl_validation.validate(body)
    assert (bodies[NTP]["ClockSource"], bodies[NTP]["NTPServers"]) == \
        ("Manual", ["ntp1.example.com", "10.0.0.5"])
    assert (bodies[KCS]["Id"], bodies[KCS]["Privilege"]) == ("KCS Interface", "Operator")
    assert bodies[LOCKDOWN]["SysLockdownEnabled"] is True
    assert bodies[SYSLOG]["SyslogEnabled"] is False and bodies[ACCESS]["MaxFilterRules"] == 16
    assert bodies[RULES]["Members"] == []

    assert admin.patch(bmc.url(LOCKDOWN), json={"SysLockdownEnabled": False},
                       timeout=10).status_code == 204
    changes = [(NTP, {"ClockSource": "NTP", "NTPServers": ["pool.example.org"]}),
               (SYSLOG, {"SyslogEnabled": True, "Address": "127.0.0.1", "Port": 5514,
                         "Protocol": "UDP"}),
               (KCS, {"Privilege": "Callback"})]
    for uri, body in changes:
        answer = admin.patch(bmc.url(uri), json=body, timeout=10)
        assert answer.status_code == 204, answer.text
    assert shown(bmc, "ntp", "show") == {"source": "ntp", "server1": "pool.example.org",
                                         "server2": "", "server3": ""}
    protocols = admin.get(bmc.url("/redfish/v1/Managers/1/NetworkProtocol"), timeout=10).json()
    assert protocols["NTP"]["NTPServers"] == ["pool.example.org"]
    assert shown(bmc, "syslog", "show") == {"enabled": "on", "destination": "127.0.0.1:5514/udp"}
    assert shown(bmc, "kcs", "show") == {"privilege": "Callback"}
    assert bmc.bmcsim("lockdown", "show").strip() == "off"
    texts = [event["text"] for event in bmc.events()[-4:]]
    assert texts == ["admin, system lockdown off", "admin, NTP clock source set",
                     "admin, remote syslog to 127.0.0.1:5514", "admin, KCS privilege set to Callback"]


@pytest.mark.parametrize("uri, body, expected", [
    (NTP, {"ClockSource": "GPS", "NTPServers": ["ok.example.com"], "Bogus": 1},
     ["Base.1.10.PropertyValueNotInList", "Base.1.10.PropertyUnknown"]),
    (NTP, {"NTPServers": ["a", "b", "c", "d"]}, ["Base.1.10.PropertyValueFormatError"]),
    (NTP, {"NTPServers": ["good.example.com", "bad host;rm", 7]},
     ["Base.1.10.PropertyValueFormatError", "Base.1.10.PropertyValueTypeError"]),
    (NTP, {"ClockSource": "NTP", "NTPServers": []}, ["Base.1.10.PropertyValueConflict"]),
    (SYSLOG, {"SyslogEnabled": True, "Address": "syslog.example.com", "Port": 0},
     ["Base.1.10.PropertyValueFormatError", "Base.1.10.PropertyValueFormatError"]),
    (SYSLOG, {"SyslogEnabled": True}, ["Base.1.10.PropertyValueConflict"]),
    (SYSLOG, {"Protocol": "TCP"}, ["Base.1.10.PropertyValueNotInList"]),
    (KCS, {"Privilege": "NoAccess"}, ["Base.1.10.PropertyValueNotInList"]),
    (LOCKDOWN, {"SysLockdownEnabled": "yes"}, ["Base.1.10.PropertyValueTypeError"]),
    (ACCESS, {"IPAccessControlEnabled": 1, "MaxFilterRules": 3},
     ["Base.1.10.PropertyValueTypeError", "Base.1.10.PropertyUnknown"]),
])
def test_a_refused_change_names_each_fault_and_changes_nothing(bmc, admin, uri, body, expected):
    bmc.bmcsim("ntp", "servers", "kept.example.com")
    before = settings_files(bmc)
    answer = admin.patch(bmc.url(uri), json=body, timeout=10)
    assert answer.status_code == 400
    assert [entry["MessageId"] for entry in error_entries(answer)] == expected
    assert settings_files(bmc) == before


def test_only_administrators_change_the_settings(bmc, sessions):
    before = settings_files(bmc)
    writes = [("PATCH", NTP, {"ClockSource": "Manual"}), ("PATCH", SYSLOG, {"Port": 514}),
              ("PATCH", KCS, {"Privilege": "User"}), ("PATCH", LOCKDOWN, {"SysLockdownEnabled": True}),
              ("PATCH", ACCESS, {"IPAccessControlEnabled": True}),
              ("POST", RULES, {"StartAddress": "10.0.0.1", "Action": "Deny"}), ("POST", RESET, {})]
    for role in ("Operator", "ReadOnly"):
        for method, uri, body in writes:
            answer = sessions[role].request(method, bmc.url(uri), json=body, timeout=10)
            assert answer.status_code == 403, (role, uri)
            assert message_of(answer)[0] == "Base.1.10.InsufficientPrivilege"
        assert sessions[role].get(bmc.url(ACCESS), timeout=10).status_code == 200
    assert settings_files(bmc) == before


def test_the_syslog_receiver_gets_each_new_event_line(bmc, admin):
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as receiver:
        receiver.bind(("127.0.0.1", 0))
        receiver.settimeout(10)
        port = receiver.getsockname()[1]
        assert admin.patch(bmc.url(SYSLOG), timeout=10, json={
            "SyslogEnabled": True, "Address": "127.0.0.1", "Port": port}).status_code == 204
        assert receiver.recv(4096).decode().endswith(
            f"admin, remote syslog to 127.0.0.1:{port}")
        assert bmc.login("nobody", "wrong").status_code == 401
        line = receiver.recv(4096).decode()
        assert line.startswith("<134>1 ") and " bmc bmc-events - 137 - " in line
        # One event is one line, whatever its text holds.
        bmc.bmcsim("eventlog", "add", "12", "from the simulator\n<134>1 forged")
        assert receiver.recv(4096).decode().endswith(" - 12 - from the simulator <134>1 forged")


def test_filter_rules_refuse_the_addresses_they_name(bmc, admin):
    created = admin.post(bmc.url(RULES), json={"StartAddress": "127.0.0.3", "Action": "Deny"},
                         timeout=10)
    assert created.status_code == 201, created.text
    rule = created.headers["Location"]
    assert created.json() == admin.get(bmc.url(rule), timeout=10).json()
    csdl_validation.validate(created.json())
    assert (created.json()["EndAddress"], rule) == ("127.0.0.3", RULES + "/1")
    assert admin.patch(bmc.url(ACCESS), json={"IPAccessControlEnabled": True},
                       timeout=10).status_code == 204
    status, body = send(bmc, "GET", ACCESS, "127.0.0.3")
    assert status == 403
    assert body["error"]["@Message.ExtendedInfo"][0]["MessageId"] == "Base.1.10.AccessDenied"
    assert send(bmc, "GET", ACCESS, "127.0.0.2")[0] == 200
    # An allow rule makes the rules an allow list; the BMC's own 127.0.0.1
    # always passes.
    assert send(bmc, "POST", RULES, "127.0.0.2",
                {"StartAddress": "127.0.0.2", "EndAddress": "127.0.0.2", "Action": "Allow"})[0] == 201
    assert send(bmc, "GET", ACCESS, "127.0.0.4")[0] == 403
    assert send(bmc, "GET", ACCESS, "127.0.0.1")[0] == 200
    assert shown(bmc, "ipfilter", "show")["enabled"] == "on"
    assert bmc.bmcsim("ipfilter", "show").splitlines()[1:] == [
        "1 deny 127.0.0.3-127.0.0.3", "2 allow 127.0.0.2-127.0.0.2"]
    assert admin.patch(bmc.url(rule), json={"Action": "Allow"}, timeout=10).status_code == 204
    assert send(bmc, "GET", ACCESS, "127.0.0.3")[0] == 200
    assert admin.delete(bmc.url(RULES + "/2"), timeout=10).status_code == 200
    assert admin.get(bmc.url(RULES + "/2"), timeout=10).status_code == 404
    members = admin.get(bmc.url(RULES), timeout=10).json()["Members"]
    assert members == [{"@odata.id": rule}]


def test_a_change_that_would_shut_out_its_own_caller_is_refused(bmc, admin):
    bmc.bmcsim("ipfilter", "add", "allow", "127.0.0.5", "127.0.0.9")
    before = settings_files(bmc)
    status, body = send(bmc, "PATCH", ACCESS, "127.0.0.2", {"IPAccessControlEnabled": True})
    assert status == 400
    assert body["error"]["@Message.ExtendedInfo"][0]["MessageId"] == \
        "Base.1.10.PropertyValueIncorrect"
    assert settings_files(bmc) == before
    bmc.bmcsim("ipfilter", "on")
    status, _ = send(bmc, "PATCH", RULES + "/1", "127.0.0.6", {"EndAddress": "127.0.0.5"})
    assert status == 400
    status, _ = send(bmc, "DELETE", RULES + "/1", "127.0.0.6")
    assert status == 200  # an empty list refuses nobody


def test_rules_are_bounded_and_checked(bmc, admin):
    for number in range(16):
        bmc.bmcsim("ipfilter", "add", "deny", f"10.1.0.{number}")
    before = settings_files(bmc)
    full = admin.post(bmc.url(RULES), json={"StartAddress": "10.2.0.1", "Action": "Deny"},
                      timeout=10)
    assert full.status_code == 400
    assert message_of(full)[0] == "Base.1.10.CreateLimitReachedForResource"
    bmc.bmcsim("ipfilter", "delete", "16")
    for body, expected in [
            ({"StartAddress": "10.0.0.9", "EndAddress": "10.0.0.1", "Action": "Deny"},
             ["Base.1.10.PropertyValueConflict"]),
            ({"EndAddress": "10.0.0.300"},
             ["Base.1.10.PropertyValueFormatError", "Base.1.10.PropertyMissing",
              "Base.1.10.PropertyMissing"])]:
        answer = admin.post(bmc.url(RULES), json=body, timeout=10)
        assert [entry["MessageId"] for entry in error_entries(answer)] == expected
    assert admin.patch(bmc.url(RULES + "/16"), json={"Action": "Allow"}, timeout=10).status_code == 404
    assert admin.get(bmc.url(RULES + "/17"), timeout=10).status_code == 404
    before.pop("ipfilter.ini")
    after = settings_files(bmc)
    after.pop("ipfilter.ini")
    assert after == before
    assert "16 deny" not in bmc.bmcsim("ipfilter", "show")


def test_lockdown_freezes_the_settings_but_not_itself(bmc, admin):
    bmc.bmcsim("lockdown", "on")
    before = settings_files(bmc)
    for method, uri, body in [("PATCH", NTP, {"ClockSource": "Manual"}),
                              ("PATCH", KCS, {"Privilege": "User"}),
                              ("POST", RULES, {"StartAddress": "10.0.0.1", "Action": "Deny"}),
                              ("DELETE", RULES + "/1", None), ("POST", RESET, {})]:
        answer = admin.request(method, bmc.url(uri), json=body, timeout=10)
        assert answer.status_code == 405, uri
        assert message_of(answer)[0] == "TWR.1.0.OemSystemLockdownEnabled"
    assert settings_files(bmc) == before
    assert admin.patch(bmc.url(LOCKDOWN), json={"SysLockdownEnabled": False},
                       timeout=10).status_code == 204
    assert admin.patch(bmc.url(KCS), json={"Privilege": "User"}, timeout=10).status_code == 204


def test_the_configuration_reset_restores_every_default_at_once(bmc, admin):
    bmc.bmcsim("ntp", "servers", "10.0.0.7")
    bmc.bmcsim("ntp", "source", "ntp")
    bmc.bmcsim("syslog", "destination", "127.0.0.1", "600")
    bmc.bmcsim("syslog", "on")
    bmc.bmcsim("kcs", "set", "User")
    bmc.bmcsim("ipfilter", "add", "deny", "10.9.9.9")
    bmc.bmcsim("serial", "bitrate", "9600")
    answer = admin.post(bmc.url(RESET), json={"Bogus": 1}, timeout=10)
    assert message_of(answer)[0] == "Base.1.10.ActionParameterUnknown"
    assert shown(bmc, "kcs", "show") == {"privilege": "User"}
    assert_success(admin.post(bmc.url(RESET), json={}, timeout=10))
    assert shown(bmc, "ntp", "show")["source"] == "manual"
    assert shown(bmc, "syslog", "show") == {"enabled": "off", "destination": ":514/udp"}
    assert shown(bmc, "kcs", "show") == {"privilege": "Administrator"}
    assert bmc.bmcsim("ipfilter", "show") == "enabled=off\n"
    assert shown(bmc, "serial", "show")["bitrate"] == "115200"
    assert bmc.events()[-1]["text"] == "admin, manager settings reset to defaults"
