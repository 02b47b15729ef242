"""Pushed images that wait for UpdateService.StartUpdate or the OEM Install,
and the task messages that the event registry explains."""

import subprocess

import pytest

from test_http_push import image_dir, push
from test_update import BIOS_TARGET, BMC_TARGET, TASKS, UPDATE_SERVICE, firmware, make_image, \
    simple_update, task_count, wait_for_end
from update_servers import SilentServer

START_UPDATE = UPDATE_SERVICE + "/Actions/UpdateService.StartUpdate"
INSTALL = UPDATE_SERVICE + "/Actions/Oem/TwrUpdateService.Install"
WAIT = {"@Redfish.OperationApplyTime": "OnStartUpdateRequest"}


def push_waiting(bmc, component, version, target):
    path = make_image(bmc, image_dir(bmc), "%s-%s.img" % (component, version), component,
                      version)
    accepted = push(bmc, path, dict(WAIT, Targets=[target]))
    assert accepted.status_code == 202, accepted.text
    task = bmc.admin().get(bmc.url(accepted.json()["Accepted"]["@Message.ExtendedInfo"][0]
                                   ["MessageArgs"][0])).json()
    assert task["TaskState"] == "Pending" and "EndTime" not in task
    return task


def error_texts(answer, key):
    assert answer.status_code == 400, answer.text
    return [entry["MessageArgs"][-1] for entry in answer.json()[key]["@Message.ExtendedInfo"]]


def event_registry(bmc):
    return bmc.admin().get(bmc.url("/registries/Event.1.0.0.json")).json()["Messages"]


def test_start_update_flashes_the_waiting_push(bmc):
    admin = bmc.admin()
    task = push_waiting(bmc, "BMC", "6.00.00", BMC_TARGET)
    assert firmware(bmc)["updating"] == "0"
    monitor = admin.get(bmc.url(task["TaskMonitor"]))
    assert monitor.status_code == 202 and monitor.headers["Location"] == task["TaskMonitor"]

    started = admin.post(bmc.url(START_UPDATE), timeout=10)
    assert started.status_code == 202, started.text
    assert started.headers["Location"] == task["TaskMonitor"]
    assert wait_for_end(bmc, admin, task["TaskMonitor"]).status_code == 200
    assert firmware(bmc)["BMC"] == "6.00.00"
    manager = admin.get(bmc.url("/redfish/v1/Managers/1")).json()
    assert manager["FirmwareVersion"] == "6.00.00"
    done = admin.get(bmc.url(task["@odata.id"])).json()
    assert done["Messages"][-1]["Message"].startswith("BMC, " + START_UPDATE)
    assert done["Messages"][-1]["MessageId"].split(".")[-1] in event_registry(bmc)

    again = admin.post(bmc.url(START_UPDATE), json={}, timeout=10)
    assert error_texts(again, "HttpPushUriErrors") == ["No pushed image waits for this target"]


def test_start_update_refuses_bad_requests_and_a_busy_flash(bmc):
    admin = bmc.admin()
    task = push_waiting(bmc, "BMC", "6.01.00", BMC_TARGET)
    unsupported = "Target value is not supported, please refer to HttpPushUriTargets."
    for body, texts in [
            ({"Targets": [BMC_TARGET, BIOS_TARGET]}, [unsupported]),
            ({"Targets": "/redfish/v1/Managers/1"}, [unsupported]),
            ({"PreserveOptions": ["Everything"]},
             ["Input option parameter error, please check the value."]),
            ({"Targets": [BIOS_TARGET]}, ["No pushed image waits for this target"]),
            ({"Reboot": True}, ["Reboot"])]:
        assert error_texts(admin.post(bmc.url(START_UPDATE), json=body), "HttpPushUriErrors") \
            == texts, body
    assert admin.post(bmc.url(START_UPDATE), data="[]").status_code == 400

    silent = SilentServer()
    try:
        busy = simple_update(bmc, admin, ImageURI=silent.host + "/a.img", TransferProtocol="HTTP")
        assert busy.status_code == 202
        refused = admin.post(bmc.url(START_UPDATE), json={"Targets": [BMC_TARGET]})
        assert refused.status_code == 400
        assert refused.json()["error"]["@Message.ExtendedInfo"][0]["MessageId"] == \
            "TWR.1.0.OemFirmwareAlreadyInUpdateMode"
        wait_for_end(bmc, admin, busy.headers["Location"])
    finally:
        silent.stop()
    # The download took the place of the pushed image.
    assert admin.get(bmc.url(task["@odata.id"])).json()["TaskState"] == "Killed"
    task = push_waiting(bmc, "BMC", "6.01.00", BMC_TARGET)
    started = admin.post(bmc.url(START_UPDATE), json={"Targets": [BMC_TARGET],
                                                      "PreserveOptions": ["PreserveConfiguration"]})
    assert started.status_code == 202, started.text
    assert wait_for_end(bmc, admin, task["TaskMonitor"]).status_code == 200


def already_in_update_mode(answer):
    assert answer.status_code == 400, answer.text
    info = answer.json()["error"]["@Message.ExtendedInfo"][0]
    assert info["MessageId"] == "TWR.1.0.OemFirmwareAlreadyInUpdateMode"
    return info["MessageArgs"]


def test_update_mode_holds_updates_back_while_its_holder_lives(bmc):
    admin = bmc.admin()
    task = push_waiting(bmc, "BMC", "6.05.00", BMC_TARGET)
    holder = subprocess.Popen(["/bin/sleep", "60"])
    try:
        bmc.bmcsim("firmware", "update-mode", str(holder.pid), "BIOS")
        assert already_in_update_mode(admin.post(bmc.url(START_UPDATE), timeout=10)) == ["BIOS"]
        assert already_in_update_mode(simple_update(
            bmc, admin, ImageURI="127.0.0.1/x.img", TransferProtocol="HTTP")) == ["BIOS"]
        assert admin.get(bmc.url(task["@odata.id"])).json()["TaskState"] == "Pending"
        assert firmware(bmc)["updating"] == "0"
    finally:
        holder.kill()
        holder.wait()
    # A holder killed without leaving update mode holds nothing back.
    assert firmware(bmc)["update-mode"] == ""
    started = admin.post(bmc.url(START_UPDATE), timeout=10)
    assert started.status_code == 202, started.text
    # The flash holds update mode from the answer to its end.
    assert firmware(bmc)["update-mode"] == "BMC"
    assert wait_for_end(bmc, admin, task["TaskMonitor"]).status_code == 200
    assert firmware(bmc)["update-mode"] == "" and firmware(bmc)["BMC"] == "6.05.00"


def test_a_later_push_replaces_the_waiting_one(bmc):
    admin = bmc.admin()
    first = push_waiting(bmc, "BMC", "6.02.00", BMC_TARGET)
    second = push_waiting(bmc, "BMC", "6.03.00", BMC_TARGET)
    replaced = admin.get(bmc.url(first["@odata.id"])).json()
    assert replaced["TaskState"] == "Killed" and "EndTime" in replaced
    assert admin.post(bmc.url(START_UPDATE)).headers["Location"] == second["TaskMonitor"]
    assert wait_for_end(bmc, admin, second["TaskMonitor"]).status_code == 200
    assert firmware(bmc)["BMC"] == "6.03.00"


@pytest.mark.parametrize("body, texts", [
    ({"InstallOptions": ["PreserveConfiguration"]},
     ["Input Targets parameter error, only support one target each time."]),
    ({"Targets": [BMC_TARGET, BIOS_TARGET], "InstallOptions": "x"},
     ["Input Targets parameter error, only support one target each time.",
      "Input option parameter error, please check the value."]),
    ({"Targets": ["/redfish/v1/Chassis/1"]},
     ["Target value is not supported, please refer to Install_Targets."]),
    ({"Targets": [BMC_TARGET], "InstallOptions": [1]},
     ["Input option parameter error, please check the value."]),
])
def test_install_checks_in_order(bmc, body, texts):
    admin = bmc.admin()
    count = task_count(admin, bmc)
    answer = admin.post(bmc.url(INSTALL), json=body)
    assert error_texts(answer, "InstallErrors") == texts
    assert answer.json()["InstallErrors"]["@Message.ExtendedInfo"][0]["MessageId"] == \
        "TWR.1.0.OemHttppushuriErrorMessage"
    assert task_count(admin, bmc) == count


def test_install_publishes_what_it_takes(bmc):
    admin = bmc.admin()
    service = admin.get(bmc.url(UPDATE_SERVICE)).json()
    assert service["MultipartHttpPushUri"] == service["HttpPushUri"] == UPDATE_SERVICE + "/upload"
    action = service["Actions"]["Oem"]["#TwrUpdateService.Install"]
    info = admin.get(bmc.url(action["@Redfish.ActionInfo"])).json()
    parameters = {parameter["Name"]: parameter for parameter in info["Parameters"]}
    assert parameters["Targets"]["Required"] is True
    assert set(parameters["Targets"]["AllowableValues"]) == {BMC_TARGET, BIOS_TARGET}
    assert parameters["InstallOptions"]["AllowableValues"] == ["PreserveConfiguration"]


def test_install_of_a_bios_image_needs_the_host_off(bmc):
    admin = bmc.admin()
    bmc.bmcsim("power", "on")
    try:
        task = push_waiting(bmc, "BIOS", "7.0.0", BIOS_TARGET)
        refused = admin.post(bmc.url(INSTALL), json={"Targets": [BIOS_TARGET]})
    finally:
        bmc.bmcsim("power", "off")
    assert error_texts(refused, "InstallErrors") == ["Update BIOS image requries system power off."]
    assert firmware(bmc)["updating"] == "0"
    assert error_texts(admin.post(bmc.url(INSTALL), json={"Targets": [BMC_TARGET]}),
                       "InstallErrors") == ["No pushed image waits for this target"]

    installed = admin.post(bmc.url(INSTALL), json={"Targets": [BIOS_TARGET],
                                                   "InstallOptions": ["PreserveConfiguration"]})
    assert installed.status_code == 200, installed.text
    assert installed.json()["Success"]["Message"] == "Successfully Completed Request."
    assert wait_for_end(bmc, admin, task["TaskMonitor"]).status_code == 200
    assert firmware(bmc)["BIOS"] == "7.0.0"


def test_task_messages_come_from_the_event_registry(bmc):
    admin = bmc.admin()
    task = push_waiting(bmc, "BMC", "6.04.00", BMC_TARGET)
    assert admin.delete(bmc.url(task["@odata.id"])).status_code == 200
    cancelled = admin.get(bmc.url(task["@odata.id"])).json()["Messages"][-1]
    assert cancelled["MessageId"] == "Event.1.0.TaskCancelled"
    registry = event_registry(bmc)
    assert cancelled["Message"] == registry["TaskCancelled"]["Message"].replace("%1", task["Id"])
    assert admin.post(bmc.url(START_UPDATE)).status_code == 400
    assert TASKS in task["@odata.id"]


def test_cancelling_a_waiting_bios_push_leaves_a_running_update_its_lock(bmc):
    admin = bmc.admin()
    task = push_waiting(bmc, "BIOS", "7.1.0", BIOS_TARGET)
    silent = SilentServer()
    try:
        running = simple_update(bmc, admin, ImageURI=silent.host + "/a.img",
                                TransferProtocol="HTTP")
        assert running.status_code == 202
        # The download has dropped the waiting image; cancelling its task
        # must not free the lock that the download holds.
        assert admin.delete(bmc.url(task["@odata.id"])).status_code == 200
        assert firmware(bmc)["updating"] == "1"
        second = simple_update(bmc, admin, ImageURI=silent.host + "/b.img",
                               TransferProtocol="HTTP")
        assert second.status_code == 400
        wait_for_end(bmc, admin, running.headers["Location"])
    finally:
        silent.stop()
