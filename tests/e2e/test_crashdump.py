"""The system's crash-dump log service against a running BMC: served only
while the host supports crash dumps, entries collected as tasks and
downloaded at their AdditionalDataURI, ClearLog, and raw PECI."""

import gzip

import pytest

from test_dumps import generated

LOG_SERVICES = "/redfish/v1/Systems/1/LogServices"
CRASHDUMP = LOG_SERVICES + "/Crashdump"
ENTRIES = CRASHDUMP + "/Entries"
ON_DEMAND = CRASHDUMP + "/Actions/Oem/Crashdump.OnDemand"
TELEMETRY = CRASHDUMP + "/Actions/Oem/Crashdump.Telemetry"
CLEAR = CRASHDUMP + "/Actions/LogService.ClearLog"
PECI = CRASHDUMP + "/Actions/Oem/Crashdump.SendRawPeci"
PASSWORD = "Passw0rd-1"
GET_DIB = [0x30, 1, 8, 0xf7]


@pytest.fixture(autouse=True)
def supported(bmc):
    bmc.bmcsim("crashdump", "enable")
    bmc.bmcsim("power", "on")
    yield
    bmc.bmcsim("crashdump", "disable")


def members(session, bmc, uri):
    return [member["@odata.id"] for member in session.get(bmc.url(uri)).json()["Members"]]


def test_served_only_while_the_host_supports_crash_dumps(bmc, admin):
    assert CRASHDUMP in members(admin, bmc, LOG_SERVICES)
    service = admin.get(bmc.url(CRASHDUMP)).json()
    assert service["Actions"]["Oem"]["#Crashdump.SendRawPeci"]["target"] == PECI
    bmc.bmcsim("crashdump", "disable")
    assert CRASHDUMP not in members(admin, bmc, LOG_SERVICES)
    assert admin.get(bmc.url(CRASHDUMP)).status_code == 404
    assert admin.post(bmc.url(ON_DEMAND), json={}).status_code == 404


def test_entries_are_collected_downloaded_and_cleared(bmc, admin):
    assert admin.post(bmc.url(CLEAR), json={}).status_code == 200
    assert admin.get(bmc.url(ENTRIES)).json()["Members"] == []
    assert admin.get(bmc.url(ENTRIES + "/OnDemand")).status_code == 404
    bmc.bmcsim("eventlog", "add", "146", "not in a crash dump")
    generated(bmc, admin, ON_DEMAND, json={})
    generated(bmc, admin, TELEMETRY)

    listed = admin.get(bmc.url(ENTRIES)).json()
    assert listed["Members@odata.count"] == 2
    entry = listed["Members"][0]
    assert entry == admin.get(bmc.url(ENTRIES + "/OnDemand")).json()
    assert entry["AdditionalDataURI"] == ENTRIES + "/OnDemand/attachment"
    data = admin.get(bmc.url(entry["AdditionalDataURI"]))
    assert data.headers["Content-Type"] == "application/octet-stream"
    assert len(data.content) == entry["AdditionalDataSizeBytes"]
    content = gzip.decompress(data.content).decode()
    assert "== Machine check banks ==" in content and "host power on" in content

    assert admin.post(bmc.url(CLEAR), json={"Extra": 1}).status_code == 400
    assert admin.get(bmc.url(ENTRIES)).json()["Members@odata.count"] == 2
    assert admin.post(bmc.url(CLEAR), json={}).status_code == 200
    assert admin.get(bmc.url(ENTRIES)).json()["Members"] == []
    assert admin.get(bmc.url(entry["AdditionalDataURI"])).status_code == 404


def test_raw_peci_is_checked_before_anything_is_sent(bmc, admin):
    answer = admin.post(bmc.url(PECI), json={"PECICommands": [GET_DIB, [0x31, 0, 0]]})
    assert answer.status_code == 200, answer.text
    assert answer.json() == {"PECIResponse": [[0x40, 0, 0, 0, 0, 0, 0, 0], []]}
    for commands in ([], [[0x30, 2, 8, 0xf7]], [[0x29, 1, 8, 0xf7]], [[0x30, 1, 8, 256]],
                     [GET_DIB] * 17, [[0x30, 1, 99, 0xf7]], "0x30", [[0x30, 1, 8, "f7"]]):
        refused = admin.post(bmc.url(PECI), json={"PECICommands": commands})
        assert refused.status_code == 400, commands
        assert "ActionParameterValueFormatError" in refused.text
    assert admin.post(bmc.url(PECI), json={}).status_code == 400
    assert admin.post(bmc.url(PECI), json={"PECICommands": [[0x33, 1, 8, 0xf7]]}).status_code == 400
    bmc.bmcsim("power", "off")
    assert admin.post(bmc.url(PECI), json={"PECICommands": [GET_DIB]}).status_code == 409


def test_only_who_may_clear_logs_clears_crash_dumps(bmc, admin):
    generated(bmc, admin, ON_DEMAND)
    for name, role in (("crashop", "Operator"), ("crashreader", "ReadOnly")):
        answer = admin.post(bmc.url("/redfish/v1/AccountService/Accounts"), timeout=10,
                            json={"UserName": name, "Password": PASSWORD, "RoleId": role})
        assert answer.status_code == 201, answer.text
    operator = bmc.basic_session("crashop", PASSWORD)
    reader = bmc.basic_session("crashreader", PASSWORD)
    assert operator.post(bmc.url(CLEAR), json={}).status_code == 403
    assert reader.post(bmc.url(ON_DEMAND), json={}).status_code == 403
    assert reader.post(bmc.url(PECI), json={"PECICommands": [GET_DIB]}).status_code == 403
    assert admin.get(bmc.url(ENTRIES)).json()["Members@odata.count"] == 1
    assert reader.get(bmc.url(ENTRIES + "/OnDemand/attachment")).status_code == 200
