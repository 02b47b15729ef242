"""Firmware updates under faults: processes killed at chosen steps (the
BMC_KILL_AT hook), a full state file system, a server that drips."""

import os
import tempfile
import time

import pytest
import requests

from bmc_instance import BmcInstance, NoTmpfs, process_commands
from test_http_push import image_dir, push, push_errors, push_truncated
from test_start_update import START_UPDATE, error_texts, push_waiting
from test_update import BIOS_TARGET, BMC_TARGET, TASKS, firmware, make_image, simple_update, \
    wait_for_end
from update_servers import DripServer, HttpImageServer

WORKER_ENDED = "The process working on the task ended unexpectedly."
BMC_IMAGE = ("tmp", "fwimgbuff")
BIOS_STAGING = (("nv", "OnReset_Update"), ("nv", "pending_task.ini"), ("tmp", "bios_rom"))


def flash_processes(bmc):
    """The fw_update processes that flash an image of this instance."""
    return [pid for pid, _, command in process_commands()
            if b"fw_update" in command and bmc.root.encode() in command]


def until(condition):
    for _ in range(100):
        if condition():
            return True
        time.sleep(0.05)
    return False


def last_task(bmc, admin):
    count = admin.get(bmc.url(TASKS)).json()["Members@odata.count"]
    return admin.get(bmc.url("%s/%d" % (TASKS, count))).json()


def exists(bmc, parts):
    return os.path.exists(os.path.join(bmc.root, *parts))


def post_to_killed_service(bmc, send):
    """Sends a request whose service process kills itself on the way, and
    waits until lighttpd has started another."""
    try:
        answer = send()
        assert answer.status_code >= 500, answer.text
    except requests.ConnectionError:
        pass
    assert until(lambda: bmc.admin().get(bmc.url(TASKS)).status_code == 200)


@pytest.fixture
def killing_bmc(request):
    instance = BmcInstance(kill_at=request.param)
    yield instance
    instance.stop()


@pytest.mark.parametrize("killing_bmc", ["flash"], indirect=True)
def test_a_killed_worker_takes_its_flash_with_it(killing_bmc):
    bmc = killing_bmc
    admin = bmc.admin()
    before = firmware(bmc)["BMC"]
    path = make_image(bmc, image_dir(bmc), "bmc.img", "BMC", "8.00.00")
    # The lock is free again as soon as the task shows the end.
    for _ in range(2):
        accepted = push(bmc, path, {"Targets": [BMC_TARGET]})
        assert accepted.status_code == 202, accepted.text
        ended = wait_for_end(bmc, admin, accepted.headers["Location"])
        assert ended.status_code == 400
        assert ended.json()["error"]["Message"] == WORKER_ENDED
        assert firmware(bmc)["updating"] == "0"
        assert until(lambda: not flash_processes(bmc))
        assert firmware(bmc)["BMC"] == before


@pytest.mark.parametrize("killing_bmc", ["flash"], indirect=True)
def test_a_killed_start_update_leaves_no_update_mode_behind(killing_bmc):
    bmc = killing_bmc
    admin = bmc.admin()
    task = push_waiting(bmc, "BMC", "8.01.00", BMC_TARGET)
    assert admin.post(bmc.url(START_UPDATE), timeout=10).status_code == 202
    ended = wait_for_end(bmc, admin, task["TaskMonitor"])
    assert ended.json()["error"]["Message"] == WORKER_ENDED
    # The marker stays where the worker died, naming a task that has ended.
    assert exists(bmc, ("tmp", "fw_updating"))
    assert firmware(bmc)["update-mode"] == ""
    push_waiting(bmc, "BMC", "8.01.00", BMC_TARGET)
    assert admin.post(bmc.url(START_UPDATE), timeout=10).status_code == 202


def test_a_refused_push_leaves_the_waiting_push_and_no_file(bmc):
    admin = bmc.admin()
    task = push_waiting(bmc, "BMC", "8.01.00", BMC_TARGET)
    staged = os.path.join(bmc.root, *BMC_IMAGE)
    assert os.stat(staged).st_mode & 0o077 == 0
    with open(staged, "rb") as image:
        waiting_image = image.read()
    files = sorted(os.listdir(os.path.join(bmc.root, "tmp")))

    assert push_errors(push_truncated(bmc)) == ["Upload file error."]
    assert admin.get(bmc.url(task["@odata.id"])).json()["TaskState"] == "Pending"
    with open(staged, "rb") as image:
        assert image.read() == waiting_image
    assert sorted(os.listdir(os.path.join(bmc.root, "tmp"))) == files

    assert admin.post(bmc.url(START_UPDATE)).status_code == 202
    assert wait_for_end(bmc, admin, task["TaskMonitor"]).status_code == 200
    assert firmware(bmc)["BMC"] == "8.01.00"
    assert not os.path.exists(staged)

    damaged = make_image(bmc, image_dir(bmc), "damaged.img", "BMC", "8.01.01")
    with open(damaged, "r+b") as image:
        image.seek(-1, os.SEEK_END)
        image.write(b"\x00" if image.read(1) != b"\x00" else b"\x01")
    refused = push(bmc, damaged, {"Targets": [BMC_TARGET]})
    assert wait_for_end(bmc, admin, refused.headers["Location"]).status_code == 400
    assert not os.path.exists(staged)


@pytest.mark.parametrize("killing_bmc", ["waiting-push"], indirect=True)
def test_a_push_killed_while_it_is_recorded_does_not_wait(killing_bmc):
    bmc = killing_bmc
    admin = bmc.admin()
    path = make_image(bmc, image_dir(bmc), "bmc.img", "BMC", "8.02.00")
    post_to_killed_service(bmc, lambda: push(bmc, path, {
        "Targets": [BMC_TARGET], "@Redfish.OperationApplyTime": "OnStartUpdateRequest"}))
    task = last_task(bmc, admin)
    assert task["TaskState"] == "Exception"
    assert task["Messages"][-1]["Message"] == WORKER_ENDED
    assert error_texts(admin.post(bmc.url(START_UPDATE)), "HttpPushUriErrors") == \
        ["No pushed image waits for this target"]
    assert firmware(bmc)["updating"] == "0"


@pytest.mark.parametrize("killing_bmc", ["reset-staged"], indirect=True)
def test_a_bios_staging_killed_midway_holds_nothing_back(killing_bmc):
    bmc = killing_bmc
    admin = bmc.admin()
    bios = make_image(bmc, image_dir(bmc), "bios.img", "BIOS", "8.0.0")
    bmc.bmcsim("power", "on")
    post_to_killed_service(bmc, lambda: push(bmc, bios, {
        "Targets": [BIOS_TARGET], "@Redfish.OperationApplyTime": "OnReset"}))
    task = last_task(bmc, admin)
    assert (task["Name"], task["TaskState"]) == ("BIOS Update", "Exception")
    assert firmware(bmc)["updating"] == "0"

    # The staging of the ended task is void: the next update drops it.
    path = make_image(bmc, image_dir(bmc), "bmc.img", "BMC", "8.03.00")
    accepted = push(bmc, path, {"Targets": [BMC_TARGET]})
    assert accepted.status_code == 202, accepted.text
    assert not any(exists(bmc, parts) for parts in BIOS_STAGING)
    assert wait_for_end(bmc, admin, accepted.headers["Location"]).status_code == 200
    assert firmware(bmc)["BMC"] == "8.03.00"


def free_bytes(path):
    stat = os.statvfs(path)
    return stat.f_bavail * stat.f_frsize


def fill(path, leave):
    """Fills the file system of path until about leave bytes are free."""
    with open(os.path.join(path, "filler-%d" % leave), "wb", buffering=0) as filler:
        for _ in range(4096):
            room = free_bytes(path) - leave
            if room <= 0:
                return
            try:
                filler.write(b"\0" * min(room, 1 << 20))
            except OSError:
                return


def remove_fillers(path):
    for name in os.listdir(path):
        if name.startswith("filler-"):
            os.remove(os.path.join(path, name))


def test_a_full_state_file_system_refuses_updates_cleanly():
    try:
        bmc = BmcInstance(state_size="64m")
    except NoTmpfs as error:
        pytest.skip(str(error))
    images = tempfile.TemporaryDirectory()
    try:
        admin = bmc.admin()
        # A download that finds no room leaves nothing behind.
        make_image(bmc, images.name, "large.img", "BMC", "8.04.00", size=4 << 20)
        fill(bmc.root, 1 << 20)
        before = free_bytes(bmc.root)
        server = HttpImageServer(images.name)
        try:
            accepted = simple_update(bmc, admin, ImageURI=server.host + "/large.img",
                                     TransferProtocol="HTTP")
            assert accepted.status_code == 202, accepted.text
            assert wait_for_end(bmc, admin, accepted.headers["Location"]).status_code == 400
        finally:
            server.stop()
        assert free_bytes(bmc.root) > before - (256 << 10)
        assert not os.path.exists(os.path.join(bmc.root, *BMC_IMAGE))
        remove_fillers(bmc.root)

        # No room for the update lock: the answer says so, and the pushed
        # image that waits stays.
        task = push_waiting(bmc, "BMC", "8.05.00", BMC_TARGET)
        fill(bmc.root, 0)
        small = make_image(bmc, images.name, "small.img", "BMC", "8.06.00")
        refused = push(bmc, small, {"Targets": [BMC_TARGET]})
        assert refused.status_code == 500, refused.text
        assert refused.json()["error"]["@Message.ExtendedInfo"][0]["MessageId"] == \
            "Base.1.10.InternalError"
        remove_fillers(bmc.root)
        assert admin.get(bmc.url(task["@odata.id"])).json()["TaskState"] == "Pending"
        assert admin.post(bmc.url(START_UPDATE)).status_code == 202
        assert wait_for_end(bmc, admin, task["TaskMonitor"]).status_code == 200
        assert firmware(bmc)["BMC"] == "8.05.00"
    finally:
        images.cleanup()
        bmc.stop()


def test_a_download_that_outlasts_its_deadline_ends_and_frees_the_lock():
    bmc = BmcInstance()
    bmc.write_setting("redfish.ini", "[Update]\nDownloadDeadlineSeconds=3\n")
    drip = DripServer()
    try:
        admin = bmc.admin()
        accepted = simple_update(bmc, admin, ImageURI=drip.host + "/bmc.img",
                                 TransferProtocol="HTTP")
        assert accepted.status_code == 202, accepted.text
        ended = wait_for_end(bmc, admin, accepted.headers["Location"])
        assert ended.status_code == 400
        assert firmware(bmc)["updating"] == "0"
    finally:
        drip.stop()
        bmc.stop()
