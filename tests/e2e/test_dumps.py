"""The dump service against a running BMC: dumps generated as tasks from the
simulated BMC's state, downloaded and decompressed, removed one by one and
all at once, the store's bound, a second generation of a kind refused, and a
worker killed half-way."""

import gzip
import os
import signal

import pytest

from test_tasks import task_worker
from test_update import wait_for_end
from test_update_faults import until

SERVICE = "/redfish/v1/Oem/Tarnwright/DumpService"
DUMPS = SERVICE + "/Dumps"
BMC_EVIDENCE = DUMPS + "/BMCEvidenceDump"
SMART = DUMPS + "/DriveSmartDump"
GENERATE_BMC = BMC_EVIDENCE + "/Actions/TwrBMCEvidenceDump.Generate"
DOWNLOAD_BMC = BMC_EVIDENCE + "/Actions/TwrBMCEvidenceDump.Download"
GENERATE_SMART = SMART + "/Actions/TwrDriveSmartDump.Generate"
CREATE = SERVICE + "/Actions/TwrDumpService.CreateDump"
DELETE_ALL = SERVICE + "/Actions/TwrDumpService.DeleteAll"
PASSWORD = "Passw0rd-1"


def generate(bmc, admin, action, **kwargs):
    accepted = admin.post(bmc.url(action), timeout=10, **kwargs)
    assert accepted.status_code == 202, accepted.text
    return accepted


def generated(bmc, admin, action, **kwargs):
    """Generates a dump and follows its task to the end."""
    monitor = wait_for_end(bmc, admin, generate(bmc, admin, action, **kwargs).headers["Location"])
    assert monitor.status_code == 200, monitor.text
    return monitor


def download(bmc, admin, action):
    answer = admin.post(bmc.url(action), json={}, timeout=10)
    assert answer.status_code == 200, answer.text
    assert answer.headers["Content-Type"] == "application/octet-stream"
    assert int(answer.headers["Content-Length"]) == len(answer.content)
    assert answer.headers["Content-Disposition"].startswith("attachment; filename=")
    return gzip.decompress(answer.content).decode()


def part_files(bmc):
    return [name for name in os.listdir(os.path.join(bmc.root, "tmp", "dumps"))
            if name.endswith(".part")]


@pytest.fixture(autouse=True)
def empty_store(bmc):
    bmc.bmcsim("dumps", "hold", "off")
    bmc.bmcsim("dumps", "limit", str(16 << 20))
    bmc.bmcsim("dumps", "delete", "all")


def test_evidence_follows_its_task_and_holds_the_event_log(bmc, admin):
    bmc.bmcsim("eventlog", "add", "146", "evidence marker 4711")
    accepted = generate(bmc, admin, GENERATE_BMC)
    task = accepted.json()
    assert task["Name"] == "BMC Dump Generate"
    monitor = wait_for_end(bmc, admin, accepted.headers["Location"])
    assert monitor.status_code == 200
    task = admin.get(bmc.url(monitor.json()["@odata.id"])).json()
    assert task["TaskState"] == "Completed" and task["PercentComplete"] == 100
    assert "twrbmc_evidence.bin.gz is ready" in task["Messages"][-1]["Message"]

    dump = admin.get(bmc.url(BMC_EVIDENCE)).json()
    assert dump["FileName"] == "twrbmc_evidence.bin.gz" and dump["Generating"] is False
    content = download(bmc, admin, DOWNLOAD_BMC)
    assert "146 0 evidence marker 4711" in content
    assert "== Sensors ==" in content
    assert dump["SizeBytes"] == os.path.getsize(
        os.path.join(bmc.root, "tmp", "dumps", "twrbmc_evidence.bin.gz"))
    assert "bmc-evidence twrbmc_evidence.bin.gz" in bmc.bmcsim("dumps", "show")


def test_create_dump_checks_its_type_and_makes_the_host_crash_dump(bmc, admin):
    for body in ({}, {"DumpType": "Everything"}, {"DumpType": 3}, {"DumpType": "HostCrashDump",
                                                                  "Extra": 1}):
        refused = admin.post(bmc.url(CREATE), json=body, timeout=10)
        assert refused.status_code == 400, body
    assert admin.get(bmc.url(DUMPS + "/HostCrashDump")).json()["FileName"] is None
    generated(bmc, admin, CREATE, json={"DumpType": "HostCrashDump"})
    content = download(bmc, admin, DUMPS + "/HostCrashDump/Actions/TwrDump.Download")
    assert "== Machine check banks ==" in content
    info = admin.get(bmc.url(SERVICE + "/CreateDumpActionInfo")).json()
    assert "HostCrashDump" in info["Parameters"][0]["AllowableValues"]


def test_dumps_are_deleted_one_by_one_and_all_at_once(bmc, admin):
    generated(bmc, admin, GENERATE_BMC)
    generated(bmc, admin, GENERATE_SMART)
    assert "Bay 0:" in download(bmc, admin, SMART + "/Actions/TwrDriveSmartDump.Download")

    assert admin.delete(bmc.url(SMART)).status_code == 200
    assert admin.get(bmc.url(SMART)).json()["FileName"] is None
    assert admin.post(bmc.url(SMART + "/Actions/TwrDriveSmartDump.Download"),
                      json={}).status_code == 404
    assert admin.delete(bmc.url(SMART)).status_code == 404
    assert admin.get(bmc.url(BMC_EVIDENCE)).json()["FileName"] is not None

    assert admin.post(bmc.url(DELETE_ALL), json={}).status_code == 200
    assert admin.get(bmc.url(BMC_EVIDENCE)).json()["FileName"] is None
    assert "none" in bmc.bmcsim("dumps", "show").splitlines()[2]


def test_a_full_store_drops_the_oldest_dump(bmc, admin):
    generated(bmc, admin, GENERATE_SMART)
    generated(bmc, admin, GENERATE_BMC)
    smart = admin.get(bmc.url(SMART)).json()["SizeBytes"]
    evidence = admin.get(bmc.url(BMC_EVIDENCE)).json()["SizeBytes"]
    # Room for the evidence alone: the next one puts the older SMART dump out.
    bmc.bmcsim("dumps", "limit", str(smart + evidence - 1))
    generated(bmc, admin, GENERATE_BMC)
    assert admin.get(bmc.url(SMART)).json()["FileName"] is None
    assert admin.get(bmc.url(BMC_EVIDENCE)).json()["SizeBytes"] == evidence

    bmc.bmcsim("dumps", "limit", "64")
    accepted = generate(bmc, admin, GENERATE_BMC)
    monitor = wait_for_end(bmc, admin, accepted.headers["Location"])
    assert monitor.status_code == 400
    assert "more than the 64 bytes" in monitor.json()["error"]["Message"]
    # The dump it could not replace stays.
    assert admin.get(bmc.url(BMC_EVIDENCE)).json()["SizeBytes"] == evidence
    assert part_files(bmc) == []


def test_a_second_generation_of_a_kind_is_refused_while_one_runs(bmc, admin):
    bmc.bmcsim("dumps", "hold", "on")
    try:
        first = generate(bmc, admin, GENERATE_BMC)
        second = admin.post(bmc.url(GENERATE_BMC), json={}, timeout=10)
        assert second.status_code == 503
        assert second.json()["error"]["@Message.ExtendedInfo"][0]["Message"] == \
            "Task to generate evidence is in progress. Please try again in few minutes"
        assert admin.post(bmc.url(CREATE), json={"DumpType": "BMCEvidenceDump"}).status_code == 503
        # Another kind may run beside it; firmware updates wait for evidence.
        other = generate(bmc, admin, GENERATE_SMART)
        assert admin.get(bmc.url(BMC_EVIDENCE)).json()["Generating"] is True
        assert "evidence=1" in bmc.bmcsim("firmware", "show")
    finally:
        bmc.bmcsim("dumps", "hold", "off")
    for accepted in (first, other):
        assert wait_for_end(bmc, admin, accepted.headers["Location"]).status_code == 200
    generated(bmc, admin, GENERATE_BMC)


def test_a_worker_killed_half_way_ends_as_exception_and_lists_no_dump(bmc, admin):
    generated(bmc, admin, GENERATE_BMC)
    before = download(bmc, admin, DOWNLOAD_BMC)
    bmc.bmcsim("eventlog", "add", "146", "after the first dump")
    bmc.bmcsim("dumps", "hold", "on")
    try:
        accepted = generate(bmc, admin, GENERATE_BMC)
        worker = task_worker(bmc)
        assert until(lambda: part_files(bmc)), "the worker never started its file"
        os.kill(worker, signal.SIGKILL)
        monitor = wait_for_end(bmc, admin, accepted.headers["Location"])
    finally:
        bmc.bmcsim("dumps", "hold", "off")
    assert monitor.status_code == 400
    assert "ended unexpectedly" in monitor.json()["error"]["Message"]
    assert download(bmc, admin, DOWNLOAD_BMC) == before
    assert admin.get(bmc.url(BMC_EVIDENCE)).json()["Generating"] is False
    # The kind is free again and the half-written file is swept.
    generated(bmc, admin, GENERATE_BMC)
    assert "after the first dump" in download(bmc, admin, DOWNLOAD_BMC)
    assert part_files(bmc) == []


def test_a_read_only_user_reads_but_neither_generates_nor_deletes(bmc, admin):
    answer = admin.post(bmc.url("/redfish/v1/AccountService/Accounts"), timeout=10,
                        json={"UserName": "dumpreader", "Password": PASSWORD,
                              "RoleId": "ReadOnly"})
    assert answer.status_code == 201, answer.text
    reader = bmc.basic_session("dumpreader", PASSWORD)
    assert reader.get(bmc.url(BMC_EVIDENCE)).status_code == 200
    tasks = admin.get(bmc.url("/redfish/v1/TaskService/Tasks")).json()["Members@odata.count"]
    for action in (GENERATE_BMC, DELETE_ALL, DOWNLOAD_BMC):
        assert reader.post(bmc.url(action), json={}).status_code == 403, action
    assert reader.delete(bmc.url(BMC_EVIDENCE)).status_code == 403
    assert admin.get(bmc.url("/redfish/v1/TaskService/Tasks")).json()["Members@odata.count"] == tasks
