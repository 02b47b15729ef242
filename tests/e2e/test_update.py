"""Firmware update end to end through lighttpd: SimpleUpdate pulls, HTTP push, tasks."""

import os
import time

import pytest

from schema_validation import validate
from update_servers import FtpImageServer, HttpImageServer, PausingServer, SilentServer

UPDATE_SERVICE = "/redfish/v1/UpdateService"
SIMPLE_UPDATE = UPDATE_SERVICE + "/Actions/UpdateService.SimpleUpdate"
PUSH_URI = UPDATE_SERVICE + "/upload"
TASKS = "/redfish/v1/TaskService/Tasks"
BMC_TARGET = "/redfish/v1/Managers/1"
BIOS_TARGET = "/redfish/v1/Systems/1"


@pytest.fixture(scope="module")
def images(bmc):
    directory = os.path.join(bmc.root, "images")
    os.makedirs(directory)
    server = HttpImageServer(directory)
    yield directory, server.host
    server.stop()


def make_image(bmc, directory, name, component, version, size=4096):
    path = os.path.join(directory, name)
    bmc.bmcsim("firmware", "image", component, version, path, str(size))
    return path


def wait_for_end(bmc, session, monitor):
    """Polls the task monitor until it stops answering 202."""
    for _ in range(100):
        answer = session.get(bmc.url(monitor), timeout=10)
        if answer.status_code != 202:
            return answer
        time.sleep(0.2)
    raise AssertionError("task behind %s did not end" % monitor)


def task_count(session, bmc):
    return session.get(bmc.url(TASKS)).json()["Members@odata.count"]


def firmware(bmc):
    return dict(line.split("=", 1) for line in bmc.bmcsim("firmware", "show").splitlines())


def update_events(bmc):
    """The texts of the event log's firmware-update records."""
    return [event["text"] for event in bmc.events() if event["code"] == 152]


def simple_update(bmc, session, **body):
    return session.post(bmc.url(SIMPLE_UPDATE), json=body, timeout=10)


def finished_task(bmc, session, accepted):
    assert accepted.status_code == 202, accepted.text
    wait_for_end(bmc, session, accepted.headers["Location"])
    task_uri = accepted.json()["Accepted"]["@Message.ExtendedInfo"][0]["MessageArgs"][0]
    return session.get(bmc.url(task_uri)).json()


def test_simple_update_over_http_runs_the_new_version(bmc, images):
    directory, host = images
    make_image(bmc, directory, "bmc-2.img", "BMC", "2.01.00")
    admin = bmc.admin()
    logged = len(update_events(bmc))
    accepted = simple_update(bmc, admin, ImageURI=host + "/bmc-2.img", TransferProtocol="HTTP",
                             Targets=[BMC_TARGET])
    assert accepted.status_code == 202
    assert accepted.headers["Retry-After"] == "5"
    assert accepted.headers["Location"].startswith("/redfish/v1/TaskMonitor/")
    info = accepted.json()["Accepted"]["@Message.ExtendedInfo"][0]
    assert info["MessageId"] == "TWR.1.0.OemSimpleupdateAcceptedMessage"
    # Clients that read the body as the task know it by its type; one that
    # found the task's URI there would poll the task instead of the monitor.
    assert accepted.json()["@odata.type"].startswith("#Task.v1_")
    assert "@odata.id" not in accepted.json()

    done = wait_for_end(bmc, admin, accepted.headers["Location"])
    assert done.status_code == 200 and done.json()["TaskState"] == "Completed"
    task = admin.get(bmc.url(info["MessageArgs"][0])).json()
    validate(task)
    assert task["Name"] == "Simple Update" and task["PercentComplete"] == 100
    assert "EndTime" in task and task["Messages"][-1]["Message"].endswith("successfully")

    inventory = admin.get(bmc.url(UPDATE_SERVICE + "/FirmwareInventory/BMC")).json()
    validate(inventory)
    assert inventory["Version"] == "2.01.00"
    assert firmware(bmc)["updating"] == "0"
    assert update_events(bmc)[logged:] == [
        "BMC, %s, started" % SIMPLE_UPDATE,
        "BMC, %s, the new firmware is running, successfully" % SIMPLE_UPDATE]
    # The lock is free as soon as the task shows its end.
    again = simple_update(bmc, admin, ImageURI=host + "/bmc-2.img", TransferProtocol="HTTP")
    assert again.status_code == 202, again.text
    assert wait_for_end(bmc, admin, again.headers["Location"]).status_code == 200


def test_ftp_download_with_credentials(bmc, images):
    directory, _ = images
    make_image(bmc, directory, "bmc-ftp.img", "BMC", "2.02.00")
    server = FtpImageServer(directory, "fwuser", "s3cret;'pass")
    try:
        admin = bmc.admin()
        task = finished_task(bmc, admin, simple_update(
            bmc, admin, ImageURI=server.host + "/bmc-ftp.img", TransferProtocol="FTP",
            Username="fwuser", Password="s3cret;'pass"))
    finally:
        server.stop()
    assert task["TaskState"] == "Completed", task
    assert firmware(bmc)["BMC"] == "2.02.00"

    server = FtpImageServer(directory, "fwuser", "in-uri-pass")
    try:
        task = finished_task(bmc, admin, simple_update(
            bmc, admin, ImageURI="ftp://fwuser:in-uri-pass@%s/bmc-ftp.img" % server.host))
    finally:
        server.stop()
    assert task["TaskState"] == "Completed", task
    assert "s3cret" not in bmc.error_log() and "in-uri-pass" not in bmc.error_log()


def test_server_that_sends_nothing_ends_the_task(bmc):
    silent = SilentServer()
    try:
        admin = bmc.admin()
        started = time.monotonic()
        task = finished_task(bmc, admin, simple_update(
            bmc, admin, ImageURI=silent.host + "/bmc.img", TransferProtocol="HTTP"))
        assert time.monotonic() - started < 15
    finally:
        silent.stop()
    assert task["TaskState"] == "Exception"
    assert "unsuccessfully" in task["Messages"][-1]["Message"]
    assert firmware(bmc)["updating"] == "0"


def test_a_pause_after_the_first_data_does_not_end_the_download(bmc, images):
    directory, _ = images
    path = make_image(bmc, directory, "bmc-slow.img", "BMC", "2.05.00", size=65536)
    server = PausingServer(path, pause=3)
    try:
        admin = bmc.admin()
        task = finished_task(bmc, admin, simple_update(
            bmc, admin, ImageURI=server.host + "/bmc-slow.img", TransferProtocol="HTTP"))
    finally:
        server.stop()
    assert task["TaskState"] == "Completed", task
    assert firmware(bmc)["BMC"] == "2.05.00"


def test_bad_image_ends_in_exception(bmc, images):
    directory, host = images
    path = make_image(bmc, directory, "bad.img", "BMC", "9.99.99")
    with open(path, "r+b") as image:
        image.seek(-1, os.SEEK_END)
        image.write(b"\x00" if image.read(1) != b"\x00" else b"\x01")
    before = firmware(bmc)["BMC"]
    admin = bmc.admin()
    accepted = simple_update(bmc, admin, ImageURI=host + "/bad.img", TransferProtocol="HTTP")
    monitor = wait_for_end(bmc, admin, accepted.headers["Location"])
    assert monitor.status_code == 400
    assert "digest" in monitor.json()["error"]["Message"]
    assert firmware(bmc)["BMC"] == before
    assert update_events(bmc)[-1].startswith("BMC, %s, " % SIMPLE_UPDATE)
    assert update_events(bmc)[-1].endswith("digest does not match, unsuccessfully")


@pytest.mark.parametrize("body, text", [
    ({"ImageURI": "127.0.0.1/a;reboot", "TransferProtocol": "HTTP"},
     "Input ImageURI format error."),
    ({"ImageURI": "127.0.0.1/" + "f" * 128, "TransferProtocol": "HTTP"},
     "Input ImageURI format error."),
    ({"ImageURI": "127.0.0.1/" + "d/" * 120 + "f", "TransferProtocol": "HTTP"},
     "Input ImageURI length error."),
    ({"ImageURI": "127.0.0.1/bmc.img", "TransferProtocol": "HTTP", "Username": "a b"},
     "Not support special character."),
    ({"ImageURI": "127.0.0.1/bmc.img", "TransferProtocol": "TFTP"},
     "Input TransferProtocol format error."),
    ({"ImageURI": "127.0.0.1/bmc.img", "TransferProtocol": "HTTP", "Targets": ["/redfish/v1/x"]},
     "Input Targets format error."),
    ({"ImageURI": "127.0.0.1/bmc.img", "TransferProtocol": "HTTP",
      "Targets": [BMC_TARGET, BIOS_TARGET]},
     "Input Targets parameter error, only support one target each time."),
])
def test_simple_update_refuses_bad_parameters(bmc, body, text):
    admin = bmc.admin()
    count = task_count(admin, bmc)
    answer = simple_update(bmc, admin, **body)
    assert answer.status_code == 400
    messages = answer.json()["SimpleUpdateErrors"]["@Message.ExtendedInfo"]
    assert messages[0]["MessageId"] == "TWR.1.0.OemSimpleupdateErrorMessage"
    assert messages[0]["MessageArgs"] == [text]
    assert task_count(admin, bmc) == count


def test_127_character_file_name_is_accepted(bmc, images):
    directory, host = images
    name = "b" * 127
    make_image(bmc, directory, name, "BMC", "2.03.00")
    admin = bmc.admin()
    task = finished_task(bmc, admin, simple_update(bmc, admin, ImageURI=host + "/" + name,
                                                    TransferProtocol="HTTP"))
    assert task["TaskState"] == "Completed"


def test_bios_update_needs_the_host_off(bmc, images):
    directory, host = images
    make_image(bmc, directory, "bios.img", "BIOS", "2.0.0")
    admin = bmc.admin()
    bmc.bmcsim("power", "on")
    count = task_count(admin, bmc)
    refused = simple_update(bmc, admin, ImageURI=host + "/bios.img", TransferProtocol="HTTP",
                            Targets=[BIOS_TARGET])
    assert refused.status_code == 400
    assert "requries system power off" in refused.text
    assert task_count(admin, bmc) == count

    bmc.bmcsim("power", "off")
    task = finished_task(bmc, admin, simple_update(
        bmc, admin, ImageURI=host + "/bios.img", TransferProtocol="HTTP", Targets=[BIOS_TARGET]))
    assert task["TaskState"] == "Completed"
    assert firmware(bmc)["BIOS"] == "2.0.0"
    # The system shows the version that the BIOS reports when it next starts.
    assert admin.get(bmc.url(BIOS_TARGET)).json()["BiosVersion"] == "2.1.0"
    bmc.bmcsim("bios", "post")
    assert admin.get(bmc.url(BIOS_TARGET)).json()["BiosVersion"] == "2.0.0"


def test_one_update_at_a_time(bmc):
    silent = SilentServer()
    try:
        admin = bmc.admin()
        first = simple_update(bmc, admin, ImageURI=silent.host + "/a.img", TransferProtocol="HTTP")
        second = simple_update(bmc, admin, ImageURI=silent.host + "/b.img", TransferProtocol="HTTP")
        assert first.status_code == 202
        assert second.status_code == 400
        assert second.json()["error"]["@Message.ExtendedInfo"][0]["MessageId"] == \
            "TWR.1.0.OemFirmwareAlreadyInUpdateMode"
        wait_for_end(bmc, admin, first.headers["Location"])
    finally:
        silent.stop()


def test_evidence_dump_holds_updates_back(bmc):
    bmc.bmcsim("firmware", "evidence", "on")
    try:
        answer = simple_update(bmc, bmc.admin(), ImageURI="127.0.0.1/x.img",
                               TransferProtocol="HTTP")
    finally:
        bmc.bmcsim("firmware", "evidence", "off")
    assert answer.status_code == 503
    assert "evidence is in progress" in answer.text
