"""The task service and its tasks, through lighttpd."""

import os
import signal
import time

from bmc_instance import process_commands
from test_update import SIMPLE_UPDATE, TASKS, task_count, wait_for_end
from update_servers import SilentServer


def test_delete_outside_the_tasks_changes_nothing(bmc):
    admin = bmc.admin()
    before = bmc.bmcsim("tasks", "list")
    count = task_count(admin, bmc)
    for task_id in (0, count + 1, 99999999999999999999):
        assert admin.delete(bmc.url("%s/%d" % (TASKS, task_id))).status_code == 404
    assert bmc.bmcsim("tasks", "list") == before
    assert admin.get(bmc.url("/redfish/v1/TaskMonitor/" + "0" * 32)).status_code == 404


def test_patch_switches_task_creation(bmc):
    admin = bmc.admin()
    refused = admin.patch(bmc.url("/redfish/v1/TaskService"),
                          json={"ServiceEnabled": "no", "DateTime": "x", "Bogus": 1})
    assert refused.status_code == 400
    ids = [entry["MessageId"] for entry in refused.json()["error"]["@Message.ExtendedInfo"]]
    assert ids == ["Base.1.10.PropertyValueTypeError", "Base.1.10.PropertyNotWritable",
                   "Base.1.10.PropertyUnknown"]
    assert admin.patch(bmc.url("/redfish/v1/TaskService"),
                       json={"ServiceEnabled": False}).status_code == 204
    try:
        assert admin.get(bmc.url("/redfish/v1/TaskService")).json()["ServiceEnabled"] is False
        refused = admin.post(bmc.url(SIMPLE_UPDATE),
                             json={"ImageURI": "127.0.0.1:1/a.img", "TransferProtocol": "HTTP"})
        assert refused.status_code == 500
        assert bmc.bmcsim("firmware", "show").count("updating=0") == 1
    finally:
        admin.patch(bmc.url("/redfish/v1/TaskService"), json={"ServiceEnabled": True})


def task_worker(bmc):
    """The index.fcgi of this instance that lighttpd did not start."""
    program = os.path.join(bmc.root, "tmp", "web", "bin", "index.fcgi").encode()
    for _ in range(100):
        services = bmc.service_processes()
        for pid, _, command in process_commands():
            if pid not in services and command.startswith(program):
                return pid
        time.sleep(0.05)
    raise AssertionError("no task worker runs")


def kill_task_worker(bmc):
    """Kills the instance's task worker with SIGKILL and waits until it is gone."""
    worker = task_worker(bmc)
    os.kill(worker, signal.SIGKILL)
    for _ in range(50):
        if not os.path.exists("/proc/%d" % worker):
            break
        time.sleep(0.1)


def test_a_worker_killed_midway_ends_its_task(bmc):
    silent = SilentServer()
    admin = bmc.admin()
    try:
        accepted = admin.post(bmc.url(SIMPLE_UPDATE),
                              json={"ImageURI": silent.host + "/a.img", "TransferProtocol": "HTTP"})
        assert accepted.status_code == 202
        kill_task_worker(bmc)
        monitor = wait_for_end(bmc, admin, accepted.headers["Location"])
    finally:
        silent.stop()
    assert monitor.status_code == 400
    assert "ended unexpectedly" in monitor.json()["error"]["Message"]
    assert "updating=0" in bmc.bmcsim("firmware", "show")
