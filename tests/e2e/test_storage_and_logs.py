"""The host's storage with its drives, the system's SEL log service, and the
chassis's subsystems, over HTTP through lighttpd, against what bmcsim shows
and changes."""

import pytest

from csdl_validation import validate as validate_csdl
from redfish_answers import assert_success, error_entries
from schema_validation import validate_messages

SYSTEM = "/redfish/v1/Systems/1"
STORAGE = SYSTEM + "/Storage"
SATA = STORAGE + "/SATAEmbedded"
BACKPLANE = "/redfish/v1/Chassis/StorageBackplane"
DRIVES = BACKPLANE + "/Drives/"
SEL = SYSTEM + "/LogServices/Log1"
ENTRIES = SEL + "/Entries"
CLEAR_LOG = SEL + "/Actions/LogService.ClearLog"
MANAGER_ENTRIES = "/redfish/v1/Managers/1/LogServices/Log1/Entries"


@pytest.fixture
def read(bmc, admin):
    """GET of a resource that answers 200 and satisfies its DMTF schema."""
    def get(path):
        answer = admin.get(bmc.url(path), timeout=10)
        assert answer.status_code == 200, (path, answer.text)
        body = answer.json()
        validate_csdl(body)
        return body
    return get


@pytest.fixture
def all_bays(bmc):
    yield
    for bay in ("0", "1"):
        bmc.bmcsim("storage", "drive", bay, "insert")


def links(body, name):
    return [member["@odata.id"] for member in body[name]]


def test_storage_lists_the_drives_in_the_bays(bmc, read, all_bays):
    assert links(read(STORAGE), "Members") == [SATA]
    storage = read(SATA)
    assert links(storage, "Drives") == [DRIVES + "Disk.Bay.0", DRIVES + "Disk.Bay.1"]
    assert storage["Drives@odata.count"] == 2
    assert storage["StorageControllers"][0]["SupportedDeviceProtocols"] == ["SATA"]
    sata = bmc.bmcsim("storage", "show")
    drive = read(DRIVES + "Disk.Bay.1")
    assert drive["Model"] in sata and (drive["MediaType"], drive["CapacityBytes"]) == ("HDD", 4000787030016)
    assert read(DRIVES + "Disk.Bay.0")["MediaType"] == "SSD"
    backplane = read(BACKPLANE)
    assert links(backplane["Links"], "Drives") == links(storage, "Drives")
    assert links(backplane["Links"], "Storage") == [SATA]

    bmc.bmcsim("storage", "drive", "0", "remove")
    assert links(read(SATA), "Drives") == [DRIVES + "Disk.Bay.1"]
    assert links(read(BACKPLANE)["Links"], "Drives") == [DRIVES + "Disk.Bay.1"]
    assert admin_get(bmc, DRIVES + "Disk.Bay.0").status_code == 404


def admin_get(bmc, path):
    return bmc.admin().get(bmc.url(path), timeout=10)


@pytest.mark.parametrize("path", [
    STORAGE + "/HBA", STORAGE + "/NVMeSSD", DRIVES + "Disk.Bay.2", DRIVES + "Disk.Bay.9",
    DRIVES + "Disk.Bay.01", DRIVES + "Disk.Bay.99999999999",
    "/redfish/v1/Chassis/HA-RAID.0.StorageEnclosure.0/Drives/Disk.Bay.0",
    "/redfish/v1/Chassis/NVMeSSD.0.Group.0.StorageBackplane", SEL + "/Entries/0",
    SEL + "/Entries/01", SEL + "/Entries/4294967297"])
def test_unknown_members_are_not_found(bmc, path):
    answer = admin_get(bmc, path)
    assert answer.status_code == 404, answer.text
    validate_messages(answer.json())


def test_every_enclosure_the_chassis_lists_is_served(bmc, read):
    bmc.bmcsim("storage", "set", "broadcom", "1")
    bmc.bmcsim("storage", "set", "nvme", "4")
    try:
        enclosures = links(read("/redfish/v1/Chassis"), "Members")[1:]
        assert enclosures[0] == BACKPLANE and len(enclosures) == 3
        for uri in enclosures[1:]:
            enclosure = read(uri)
            assert (enclosure["ChassisType"], enclosure["Links"]["ContainedBy"]) == (
                "StorageEnclosure", {"@odata.id": "/redfish/v1/Chassis/1"})
    finally:
        bmc.bmcsim("storage", "set", "broadcom", "0")
        bmc.bmcsim("storage", "set", "nvme", "0")
    assert admin_get(bmc, enclosures[1]).status_code == 404


def test_storage_is_read_only(bmc, admin):
    for path in (STORAGE, SATA, BACKPLANE, DRIVES + "Disk.Bay.0"):
        for method in ("PATCH", "POST", "DELETE"):
            answer = admin.request(method, bmc.url(path), json={}, timeout=10)
            assert answer.status_code == 405, (method, path)


def entry_messages(read, entries):
    return [read(uri)["Message"] for uri in links(read(entries), "Members")]


def test_the_system_log_is_the_sel_and_clears_with_it(bmc, admin, read):
    service = read(SEL)
    assert (service["LogEntryType"], service["Entries"]["@odata.id"]) == ("SEL", ENTRIES)
    assert service["Actions"]["#LogService.ClearLog"]["target"] == CLEAR_LOG
    assert_success(admin.post(bmc.url(CLEAR_LOG), json={}, timeout=10))
    # The clear is itself logged, as on the BMC.
    cleared = entry_messages(read, ENTRIES)
    bmc.bmcsim("eventlog", "add", "200", "Fan 3 failed")
    assert entry_messages(read, ENTRIES) == cleared + ["Fan 3 failed"]
    assert entry_messages(read, MANAGER_ENTRIES) == cleared + ["Fan 3 failed"]
    entry = read(links(read(ENTRIES), "Members")[-1])
    assert entry["Links"]["OriginOfCondition"] == {"@odata.id": SYSTEM}
    assert_success(admin.post(bmc.url(CLEAR_LOG), timeout=10))
    assert "Fan 3 failed" not in entry_messages(read, ENTRIES)
    assert admin.get(bmc.url(SYSTEM + "/LogServices/Log2"), timeout=10).status_code == 404


def test_a_clear_with_parameters_clears_nothing(bmc, admin, read):
    bmc.bmcsim("eventlog", "add", "200", "keep me")
    answer = admin.post(bmc.url(CLEAR_LOG), json={"Force": True}, timeout=10)
    assert answer.status_code == 400
    assert [entry["MessageId"] for entry in error_entries(answer)] == ["Base.1.10.ActionParameterUnknown"]
    assert "keep me" in entry_messages(read, ENTRIES)
    bmc.bmcsim("users", "add", "7", "reader", "Read-only-7", "2")
    reader = bmc.basic_session("reader", "Read-only-7")
    assert reader.post(bmc.url(CLEAR_LOG), json={}, timeout=10).status_code == 403
    assert "keep me" in entry_messages(read, ENTRIES)


def test_chassis_subsystems_follow_the_simulator(bmc, read):
    chassis = read("/redfish/v1/Chassis/1")
    for name in ("PowerSubsystem", "ThermalSubsystem", "EnvironmentMetrics"):
        assert read(chassis[name]["@odata.id"])["Id"] == name
    power = bmc.admin().get(bmc.url("/redfish/v1/Chassis/1/Power"), timeout=10).json()["PowerControl"][0]
    assert read(chassis["PowerSubsystem"]["@odata.id"])["CapacityWatts"] == power["PowerCapacityWatts"]
    assert read(chassis["EnvironmentMetrics"]["@odata.id"])["PowerWatts"]["Reading"] == power["PowerConsumedWatts"]
    assert chassis["LocationIndicatorActive"] is False
    bmc.bmcsim("board", "identify", "blink")
    try:
        assert read("/redfish/v1/Chassis/1")["LocationIndicatorActive"] is True
    finally:
        bmc.bmcsim("board", "identify", "off")
