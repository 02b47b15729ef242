"""The RAID controllers' storage, volumes and drives, through lighttpd,
against what bmcsim shows of the simulated controllers."""

import os

import pytest

from redfish_answers import assert_success, error_entries, message_of
from test_tasks import kill_task_worker
from test_update import TASKS, task_count, wait_for_end

STORAGE = "/redfish/v1/Systems/1/Storage"
HA_RAID = STORAGE + "/HA-RAID"
MRVL = STORAGE + "/MRVL.HA-RAID"
CREATE = HA_RAID + "/Actions/Oem/TwrStorage.CreateVolume"
HA_ENCLOSURE = "/redfish/v1/Chassis/HA-RAID.0.StorageEnclosure.0"
MRVL_ENCLOSURE = "/redfish/v1/Chassis/MRVL.HA-RAID.0.StorageModule"
PASSWORD = "Read-only-1"


def drive_uri(bay, enclosure=HA_ENCLOSURE):
    return "%s/Drives/Disk.Bay.%d" % (enclosure, bay)


def drives(*bays, enclosure=HA_ENCLOSURE):
    return [{"@odata.id": drive_uri(bay, enclosure)} for bay in bays]


def volume_uri(volume, storage=HA_RAID):
    return "%s/Volumes/Controller.0.Volume.%d" % (storage, volume)


def raid(bmc):
    return bmc.bmcsim("storage", "raid", "show")


def raid_line(bmc, start):
    """The first line of bmcsim's show that starts with start, or None."""
    return next((line for line in raid(bmc).splitlines() if line.startswith(start)), None)


@pytest.fixture(autouse=True)
def controllers(bmc):
    """One controller of each family, their drives unused."""
    path = os.path.join(bmc.root, "var", "bmc", "raid.ini")
    if os.path.exists(path):
        os.remove(path)
    for family in ("broadcom", "marvell"):
        bmc.bmcsim("storage", "set", family, "1")
    bmc.bmcsim("storage", "raid", "seconds", "init", "1")
    bmc.bmcsim("storage", "raid", "seconds", "erase", "1")


@pytest.fixture(scope="module")
def reader(bmc):
    bmc.bmcsim("users", "add", "6", "raidreader", PASSWORD, "2")
    return bmc.basic_session("raidreader", PASSWORD)


def finished(bmc, admin, accepted):
    """The task behind an accepted answer, once its monitor stops answering 202."""
    assert accepted.status_code == 202, accepted.text
    monitor = wait_for_end(bmc, admin, accepted.headers["Location"])
    task = accepted.json()["Accepted"]["@Message.ExtendedInfo"][0]["MessageArgs"][0]
    return monitor, admin.get(bmc.url(task), timeout=10).json()


def test_inventory_matches_the_controllers(bmc, admin):
    bmc.bmcsim("storage", "raid", "foreign", "HA-RAID.0", "RAID5", "1,2,3")
    members = admin.get(bmc.url(STORAGE), timeout=10).json()["Members"]
    assert {"@odata.id": HA_RAID} in members and {"@odata.id": MRVL} in members
    storage = admin.get(bmc.url(HA_RAID), timeout=10).json()
    assert storage["Drives"] == drives(*range(6))
    assert admin.get(bmc.url(HA_ENCLOSURE), timeout=10).json()["Links"]["Drives"] == drives(*range(6))
    assert storage["StorageControllers"][0]["Oem"]["Tarnwright"]["ConfigurationSaved"] is False
    collection = admin.get(bmc.url(HA_RAID + "/Volumes"), timeout=10).json()
    assert collection["Members"] == [{"@odata.id": volume_uri(0)}]
    volume = admin.get(bmc.url(volume_uri(0)), timeout=10).json()
    assert raid_line(bmc, "HA-RAID.0 volume0") == \
        "HA-RAID.0 volume0 RAID5 drives=1,2,3 state=Foreign init=100 locate=off"
    assert (volume["RAIDType"], volume["Links"]["Drives"]) == ("RAID5", drives(1, 2, 3))
    assert volume["Oem"]["Tarnwright"]["Foreign"] is True
    assert volume["CapacityBytes"] == 2 * admin.get(bmc.url(drive_uri(1)), timeout=10).json()["CapacityBytes"]
    assert admin.get(bmc.url(drive_uri(2)), timeout=10).json()["Links"]["Volumes"] == \
        [{"@odata.id": volume_uri(0)}]
    for missing in (drive_uri(6), drive_uri(1, HA_ENCLOSURE.replace(".0.", ".1.")), volume_uri(1),
                    volume_uri(0).replace("Volume.0", "Volume.00"), STORAGE + "/HBA/Volumes"):
        assert admin.get(bmc.url(missing), timeout=10).status_code == 404, missing
    assert admin.get(bmc.url(STORAGE + "/SATAEmbedded/Volumes"), timeout=10).json()["Members"] == []
    bmc.bmcsim("storage", "set", "marvell", "0")
    assert admin.get(bmc.url(MRVL), timeout=10).status_code == 404


def test_a_volume_is_made_followed_and_deleted(bmc, admin):
    before = task_count(admin, bmc)
    accepted = admin.post(bmc.url(CREATE), json={"RAIDType": "RAID1", "Drives": drives(4, 5),
                                                 "Name": "boot"}, timeout=10)
    monitor, task = finished(bmc, admin, accepted)
    assert monitor.status_code == 200
    assert (task["Name"], task["TaskState"], task["PercentComplete"]) == ("Volume Create", "Completed", 100)
    assert task_count(admin, bmc) == before + 1
    assert raid_line(bmc, "HA-RAID.0 volume0") == \
        "HA-RAID.0 volume0 RAID1 drives=4,5 state=Optimal init=100 locate=off"
    volume = admin.get(bmc.url(volume_uri(0)), timeout=10).json()
    assert (volume["Name"], volume["Status"]["State"]) == ("boot", "Enabled")
    assert_success(admin.post(bmc.url(volume_uri(0) + "/Actions/Oem/TwrVolume.Delete"), timeout=10))
    assert raid_line(bmc, "HA-RAID.0 volume") is None
    # The other family names its actions CreateVD and DeleteVD.
    accepted = admin.post(bmc.url(MRVL + "/Actions/Oem/TwrStorage.CreateVD"), timeout=10,
                          json={"RAIDType": "RAID0", "Drives": drives(0, enclosure=MRVL_ENCLOSURE)})
    assert finished(bmc, admin, accepted)[0].status_code == 200
    assert "MRVL.HA-RAID.0 volume0 RAID0 drives=0" in raid(bmc)
    assert_success(admin.post(bmc.url(volume_uri(0, MRVL) + "/Actions/Oem/TwrVolume.DeleteVD"),
                              json={}, timeout=10))
    assert "volume0" not in raid(bmc)


@pytest.mark.parametrize("body, expected", [
    ({"RAIDType": "RAID6", "Drives": drives(0, 1)}, ["Base.1.10.ActionParameterValueNotInList"]),
    ({"RAIDType": "RAID1", "Drives": drives(0, 1, 4)}, ["Base.1.10.PropertyValueConflict"]),
    ({"RAIDType": "RAID10", "Drives": drives(0, 1, 4)}, ["Base.1.10.PropertyValueConflict"]),
    ({"RAIDType": "RAID0", "Drives": drives(0) + drives(1, enclosure=MRVL_ENCLOSURE)},
     ["Base.1.10.ActionParameterValueNotInList"]),
    ({"RAIDType": "RAID0", "Drives": [{"@odata.id": "/redfish/v1/Chassis/StorageBackplane/Drives/Disk.Bay.0"}]},
     ["Base.1.10.ActionParameterValueNotInList"]),
    ({"RAIDType": "RAID1", "Drives": drives(0, 2)}, ["Base.1.10.ResourceInUse"]),
    ({"RAIDType": "RAID1", "Drives": drives(0, 0)}, ["Base.1.10.ActionParameterValueFormatError"]),
    ({"RAIDType": 1, "Spare": True},
     ["Base.1.10.ActionParameterValueTypeError", "Base.1.10.ActionParameterUnknown",
      "Base.1.10.ActionParameterMissing"]),
])
def test_a_refused_volume_changes_nothing(bmc, admin, body, expected):
    bmc.bmcsim("storage", "raid", "foreign", "HA-RAID.0", "RAID1", "2,3")
    before, tasks = raid(bmc), task_count(admin, bmc)
    answer = admin.post(bmc.url(CREATE), json=body, timeout=10)
    assert answer.status_code == 400
    assert [entry["MessageId"] for entry in error_entries(answer)] == expected
    assert raid(bmc) == before and task_count(admin, bmc) == tasks


def test_volume_states_follow_the_drives(bmc, admin):
    bmc.bmcsim("storage", "raid", "foreign", "HA-RAID.0", "RAID1", "0,1")
    actions = volume_uri(0) + "/Actions/Oem/TwrVolume."
    assert_success(admin.post(bmc.url(actions + "ImportVD"), timeout=10))
    assert "state=Optimal" in raid_line(bmc, "HA-RAID.0 volume0")
    refused = admin.post(bmc.url(actions + "ImportVD"), timeout=10)
    assert message_of(refused)[:2] == ("Base.1.10.ActionNotSupported", ["TwrVolume.ImportVD"])
    bmc.bmcsim("storage", "raid", "fail", "HA-RAID.0", "1")
    assert admin.get(bmc.url(volume_uri(0)), timeout=10).json()["Status"]["Health"] == "Warning"
    # A failed drive is not rebuilt onto; its replacement is.
    assert admin.post(bmc.url(actions + "RebuildVD"), timeout=10).status_code == 400
    bmc.bmcsim("storage", "raid", "replace", "HA-RAID.0", "1")
    assert "state=Degraded" in raid_line(bmc, "HA-RAID.0 volume0")
    assert_success(admin.post(bmc.url(actions + "RebuildVD"), timeout=10))
    assert "state=Optimal" in raid_line(bmc, "HA-RAID.0 volume0")
    assert_success(admin.post(bmc.url(actions + "Indicate"), json={"LocationIndicatorActive": True}, timeout=10))
    assert "locate=on" in raid_line(bmc, "HA-RAID.0 volume0")
    assert admin.post(bmc.url(actions + "Indicate"), json={"LocationIndicatorActive": "on"},
                      timeout=10).status_code == 400
    assert "locate=on" in raid_line(bmc, "HA-RAID.0 volume0")
    oem = HA_RAID + "/Actions/Oem/"
    assert_success(admin.post(bmc.url(oem + "TwrHARAIDController.Save"), json={"Controller": 0}, timeout=10))
    assert raid_line(bmc, "HA-RAID.0 saved") == "HA-RAID.0 saved=yes"
    assert admin.post(bmc.url(oem + "TwrStorage.ClearVolumes"), json={"Controller": 1},
                      timeout=10).status_code == 400
    assert "volume0" in raid(bmc)
    assert_success(admin.post(bmc.url(oem + "TwrStorage.ClearVolumes"), timeout=10))
    assert "volume0" not in raid(bmc) and "saved=no" in raid(bmc)


def test_a_secure_erase_runs_to_its_end_and_another_is_aborted(bmc, admin):
    erase = drive_uri(4) + "/Actions/Drive.SecureErase"
    monitor, task = finished(bmc, admin, admin.post(bmc.url(erase), timeout=10))
    assert monitor.status_code == 200
    assert (task["Name"], task["TaskState"], task["PercentComplete"]) == ("Drive Secure Erase", "Completed", 100)
    assert "erase=100" in raid_line(bmc, "HA-RAID.0 bay4")
    bmc.bmcsim("storage", "raid", "seconds", "erase", "600")
    accepted = admin.post(bmc.url(erase), timeout=10)
    assert accepted.status_code == 202
    assert admin.get(bmc.url(accepted.headers["Location"]), timeout=10).status_code == 202
    assert admin.get(bmc.url(drive_uri(4)), timeout=10).json()["Operations"][0]["OperationName"] == "SecureErase"
    again = admin.post(bmc.url(erase), timeout=10)
    assert message_of(again)[:2] == ("TWR.1.0.OemSecureEraseIsInProgress", [drive_uri(4)])
    abort = drive_uri(4) + "/Actions/Oem/TwrDrive.SecureEraseAbort"
    assert_success(admin.post(bmc.url(abort), timeout=10))
    monitor, task = finished(bmc, admin, accepted)
    assert (monitor.status_code, task["TaskState"]) == (500, "Killed")
    assert "erase=none" in raid_line(bmc, "HA-RAID.0 bay4")
    assert message_of(admin.post(bmc.url(abort), timeout=10))[0] == "TWR.1.0.OemSecureEraseIsNotInProgress"


def test_a_drive_of_a_volume_is_not_erased(bmc, admin):
    bmc.bmcsim("storage", "raid", "foreign", "HA-RAID.0", "RAID1", "0,1")
    before, tasks = raid(bmc), task_count(admin, bmc)
    answer = admin.post(bmc.url(drive_uri(0) + "/Actions/Drive.SecureErase"), timeout=10)
    assert message_of(answer)[0] == "Base.1.10.ResourceInUse"
    assert raid(bmc) == before and task_count(admin, bmc) == tasks
    sata = "/redfish/v1/Chassis/StorageBackplane/Drives/Disk.Bay.0/Actions/Drive.SecureErase"
    assert admin.post(bmc.url(sata), timeout=10).status_code == 404


def test_a_killed_erase_worker_ends_its_task(bmc, admin):
    bmc.bmcsim("storage", "raid", "seconds", "erase", "600")
    accepted = admin.post(bmc.url(drive_uri(5) + "/Actions/Drive.SecureErase"), timeout=10)
    assert accepted.status_code == 202
    kill_task_worker(bmc)
    monitor, task = finished(bmc, admin, accepted)
    assert (monitor.status_code, task["TaskState"]) == (400, "Exception")
    assert "ended unexpectedly" in monitor.json()["error"]["Message"]
    assert_success(admin.post(bmc.url(drive_uri(5) + "/Actions/Oem/TwrDrive.SecureEraseAbort"), timeout=10))


def test_a_read_only_user_reads_but_changes_nothing(bmc, reader):
    bmc.bmcsim("storage", "raid", "foreign", "HA-RAID.0", "RAID1", "0,1")
    before = raid(bmc)
    assert reader.get(bmc.url(volume_uri(0)), timeout=10).status_code == 200
    for target, body in ((CREATE, {"RAIDType": "RAID0", "Drives": drives(4)}),
                         (volume_uri(0) + "/Actions/Oem/TwrVolume.Delete", {}),
                         (drive_uri(4) + "/Actions/Drive.SecureErase", {}),
                         (drive_uri(4) + "/Actions/Oem/TwrDrive.Indicate", {"LocationIndicatorActive": True})):
        answer = reader.post(bmc.url(target), json=body, timeout=10)
        assert answer.status_code == 403, target
        assert message_of(answer)[0] == "Base.1.10.InsufficientPrivilege"
    assert raid(bmc) == before
