"""HTTP push of firmware images to the upload URI, through lighttpd."""

import json
import os
import time

from test_update import BIOS_TARGET, BMC_TARGET, PUSH_URI, TASKS, firmware, make_image, \
    wait_for_end


# A push whose image part ends before its closing boundary.
TRUNCATED_PUSH = (b"--b\r\nContent-Disposition: form-data; name=\"UpdateParameters\"\r\n\r\n"
                  b"{\"Targets\": [\"/redfish/v1/Managers/1\"]}\r\n--b\r\n"
                  b"Content-Disposition: form-data; name=\"UpdateFile\"; filename=\"a\"\r\n\r\n"
                  b"TWRFW1 BMC 1 2 3")


def push_truncated(bmc):
    return bmc.admin().post(bmc.url(PUSH_URI), data=TRUNCATED_PUSH, timeout=10,
                            headers={"Content-Type": "multipart/form-data; boundary=b"})


def push(bmc, image_path, parameters, content_type=None, session=None):
    session = session or bmc.admin()
    with open(image_path, "rb") as image:
        files = [("UpdateParameters", (None, json.dumps(parameters), "application/json")),
                 ("UpdateFile", ("image.bin", image, "application/octet-stream"))]
        if content_type is None:
            return session.post(bmc.url(PUSH_URI), files=files, timeout=60)
        body = b"--x\r\n\r\n" + image.read() + b"\r\n--x--\r\n"
        return session.post(bmc.url(PUSH_URI), data=body, timeout=60,
                            headers={"Content-Type": content_type})


def peak_memory_kib(bmc):
    """The largest peak resident size among the service processes."""
    peaks = []
    for pid in bmc.service_processes():
        with open("/proc/%d/status" % pid) as status:
            for line in status:
                if line.startswith("VmHWM:"):
                    peaks.append(int(line.split()[1]))
    return max(peaks)


def image_dir(bmc):
    directory = os.path.join(bmc.root, "pushed")
    os.makedirs(directory, exist_ok=True)
    return directory


def push_errors(answer):
    assert answer.status_code == 400, answer.text
    return [entry["MessageArgs"][0] for entry in answer.json()["HttpPushUriErrors"]["@Message.ExtendedInfo"]]


def test_32_mib_push_is_staged_without_growing_the_service(bmc):
    path = make_image(bmc, image_dir(bmc), "big.img", "BMC", "3.00.00", size=32 << 20)
    admin = bmc.admin()
    for _ in range(4):
        admin.get(bmc.url("/redfish/v1/UpdateService"))
    before = peak_memory_kib(bmc)
    accepted = push(bmc, path, {"Targets": [BMC_TARGET], "@Redfish.OperationApplyTime": "Immediate"})
    assert accepted.status_code == 202, accepted.text
    assert peak_memory_kib(bmc) - before < 8 << 10
    staged = admin.get(bmc.url("/redfish/v1/UpdateService/FirmwareInventory/Staging_BMC")).json()
    assert staged["Version"] == "3.00.00"
    assert wait_for_end(bmc, admin, accepted.headers["Location"]).status_code == 200
    assert firmware(bmc)["BMC"] == "3.00.00"
    # The flashed image has served.
    assert not os.path.exists(os.path.join(bmc.root, "tmp", "fwimgbuff"))


def test_push_refuses_malformed_requests(bmc):
    path = make_image(bmc, image_dir(bmc), "small.img", "BMC", "3.01.00")
    parse_content = "Please check the parsing content."
    assert push_errors(push(bmc, path, {}, content_type="application/json")) == [parse_content]
    assert push_errors(push(bmc, path, {}, content_type="multipart/form-data")) == [parse_content]
    long_boundary = "multipart/form-data; boundary=" + "b" * 129
    assert push_errors(push(bmc, path, {}, content_type=long_boundary)) == [parse_content]
    assert push_errors(push(bmc, path, {}, content_type="multipart/form-data; boundary=x")) == \
        ["Please check the parsing name."]
    assert push_errors(push(bmc, path, {"Targets": [BMC_TARGET, BIOS_TARGET]})) == \
        ["Target value is not supported, please refer to HttpPushUriTargets."]
    assert push_errors(push(bmc, path, {"Targets": [BMC_TARGET],
                                        "@Redfish.OperationApplyTime": "OnReset"})) == \
        ["ApplyTime value is not supported, please refer to HttpPushUriApplyTime."]
    assert firmware(bmc)["updating"] == "0"


def test_truncated_push_stages_nothing(bmc):
    assert push_errors(push_truncated(bmc)) == ["Upload file error."]
    assert firmware(bmc)["updating"] == "0"


def test_bios_staged_for_reset_waits_in_a_pending_task_until_cancelled(bmc):
    path = make_image(bmc, image_dir(bmc), "bios.img", "BIOS", "4.0.0")
    bmc.bmcsim("power", "on")
    answer = push(bmc, path, {"Targets": [BIOS_TARGET], "@Redfish.OperationApplyTime": "OnReset"})
    assert answer.status_code == 400
    assert answer.json()["error"]["@Message.ExtendedInfo"][0]["MessageId"] == \
        "TWR.1.0.OemBiosUploadFail"
    admin = bmc.admin()
    count = admin.get(bmc.url(TASKS)).json()["Members@odata.count"]
    task = admin.get(bmc.url("%s/%d" % (TASKS, count))).json()
    assert (task["Name"], task["TaskState"]) == ("BIOS Update", "Pending")
    assert "EndTime" not in task
    monitor = admin.get(bmc.url(task["TaskMonitor"]))
    assert monitor.status_code == 202 and monitor.headers["Location"] == task["TaskMonitor"]
    assert firmware(bmc)["updating"] == "1"
    for name in ("pending_task.ini", "OnReset_Update"):
        assert os.path.exists(os.path.join(bmc.root, "nv", name))

    cancelled = admin.delete(bmc.url(task["@odata.id"]))
    assert cancelled.status_code == 200
    assert cancelled.headers["Location"] == task["TaskMonitor"]
    assert firmware(bmc)["updating"] == "0"
    for name in ("pending_task.ini", "OnReset_Update"):
        assert not os.path.exists(os.path.join(bmc.root, "nv", name))
    killed = admin.get(bmc.url(task["@odata.id"])).json()
    assert killed["TaskState"] == "Killed" and "EndTime" in killed
    assert killed["Messages"][-1]["MessageArgs"] == [task["Id"]]
    assert admin.get(bmc.url(task["TaskMonitor"])).status_code == 500
    bmc.bmcsim("power", "off")
    again = push(bmc, path, {"Targets": [BIOS_TARGET]})
    assert again.status_code == 202
    wait_for_end(bmc, admin, again.headers["Location"])


def stage_for_reset(bmc, version):
    path = make_image(bmc, image_dir(bmc), "bios-%s.img" % version, "BIOS", version)
    answer = push(bmc, path, {"Targets": [BIOS_TARGET], "@Redfish.OperationApplyTime": "OnReset"})
    assert answer.status_code == 400, answer.text
    admin = bmc.admin()
    count = admin.get(bmc.url(TASKS)).json()["Members@odata.count"]
    return admin.get(bmc.url("%s/%d" % (TASKS, count))).json()


def test_bios_staged_for_reset_is_written_as_the_host_starts(bmc):
    admin = bmc.admin()
    bmc.bmcsim("power", "on")
    before = firmware(bmc)["BIOS"]
    task = stage_for_reset(bmc, "5.0.0")
    # Power on of a host that runs already starts nothing.
    bmc.bmcsim("power", "on")
    assert firmware(bmc)["BIOS"] == before
    assert admin.get(bmc.url(task["@odata.id"])).json()["TaskState"] == "Pending"

    reset = admin.post(bmc.url(BIOS_TARGET + "/Actions/ComputerSystem.Reset"),
                       json={"ResetType": "ForceRestart"}, timeout=10)
    assert reset.status_code in (200, 204), reset.text
    assert firmware(bmc)["BIOS"] == "5.0.0" and firmware(bmc)["updating"] == "0"
    done = admin.get(bmc.url(task["@odata.id"])).json()
    assert (done["TaskState"], done["PercentComplete"]) == ("Completed", 100) and "EndTime" in done
    logged = [event["text"] for event in bmc.events() if event["code"] == 152]
    assert logged[-1] == "BIOS, OnReset, the new firmware is running, successfully"
    for parts in (("nv", "pending_task.ini"), ("nv", "OnReset_Update"), ("tmp", "bios_rom")):
        assert not os.path.exists(os.path.join(bmc.root, *parts))

    # Power off and on again starts the host too.
    task = stage_for_reset(bmc, "5.0.1")
    bmc.bmcsim("power", "off")
    assert firmware(bmc)["BIOS"] == "5.0.0"
    bmc.bmcsim("power", "on")
    assert firmware(bmc)["BIOS"] == "5.0.1"
    assert admin.get(bmc.url(task["@odata.id"])).json()["TaskState"] == "Completed"


def test_lockdown_refuses_firmware_uploads(bmc):
    path = make_image(bmc, image_dir(bmc), "locked.img", "BMC", "5.00.00")
    bmc.bmcsim("lockdown", "on")
    try:
        answer = push(bmc, path, {"Targets": [BMC_TARGET]})
    finally:
        bmc.bmcsim("lockdown", "off")
    assert answer.status_code == 405
    assert answer.json()["error"]["@Message.ExtendedInfo"][0]["MessageId"] == \
        "TWR.1.0.OemSystemLockdownEnabled"
