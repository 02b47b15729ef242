"""The programs that talk to the network for the service: bmc-image-fetch
for SimpleUpdate and bmc-alert-send for event delivery. Passwords reach
them on their standard input, never where ps shows them; a cancelled task
or a killed worker leaves no download running."""

import json
import os
import signal
import socket
import threading
import time

import pytest

from bmc_instance import process_commands
from event_receivers import HttpListener, SilentListener, wait_until

SIMPLE_UPDATE = "/redfish/v1/UpdateService/Actions/UpdateService.SimpleUpdate"
EVENT_SERVICE = "/redfish/v1/EventService"
SECRET = "Never-on-cmdline7"


class TrickleServer:
    """Answers every download with a byte every 0.2 s of an image that never
    ends (for at most 30 s), so that only the BMC can end it."""

    def __init__(self):
        self.listener = socket.socket()
        self.listener.bind(("127.0.0.1", 0))
        self.listener.listen(4)
        self.host = "127.0.0.1:%d" % self.listener.getsockname()[1]
        self.running = True
        threading.Thread(target=self._serve, daemon=True).start()

    def _serve(self):
        try:
            connection, _ = self.listener.accept()
        except OSError:
            return
        with connection:
            connection.recv(65536)
            connection.sendall(b"HTTP/1.1 200 OK\r\nContent-Length: 1000000\r\n\r\n")
            for _ in range(150):
                if not self.running:
                    return
                try:
                    connection.sendall(b"x")
                except OSError:
                    return
                time.sleep(0.2)

    def stop(self):
        self.running = False
        self.listener.close()


def processes_of(bmc, program):
    """The pids of program's processes that belong to this instance."""
    path = os.path.join(bmc.root, "usr", "sbin", program).encode()
    return [pid for pid, _, command in process_commands() if command.split(b"\0")[0] == path]


def senders_settle_within_the_cap(bmc):
    """At most four senders hold a slot; one that has just freed its slot
    may be a moment from its exit, so the count is looked at a few times."""
    for _ in range(20):
        if len(processes_of(bmc, "bmc-alert-send")) <= 4:
            return True
        time.sleep(0.1)
    return False


def running(pid):
    """True while pid is neither gone nor a zombie."""
    try:
        with open("/proc/%d/stat" % pid) as stat:
            return stat.read().rsplit(")", 1)[1].split()[0] != "Z"
    except OSError:
        return False


def assert_secret_hidden(pid):
    for view in ("cmdline", "environ"):
        with open("/proc/%d/%s" % (pid, view), "rb") as shown:
            assert SECRET.encode() not in shown.read(), view


def parent_of(pid):
    with open("/proc/%d/status" % pid) as status:
        return int(next(line for line in status if line.startswith("PPid:")).split()[1])


@pytest.fixture
def trickle():
    server = TrickleServer()
    yield server
    server.stop()


def start_download(bmc, admin, server):
    accepted = admin.post(bmc.url(SIMPLE_UPDATE), json={
        "ImageURI": server.host + "/bmc.img", "TransferProtocol": "HTTP",
        "Username": "fetcher", "Password": SECRET}, timeout=10)
    assert accepted.status_code == 202, accepted.text
    [fetch] = wait_until(lambda: processes_of(bmc, "bmc-image-fetch"))
    task = accepted.json()["Accepted"]["@Message.ExtendedInfo"][0]["MessageArgs"][0]
    return fetch, task


def test_cancelling_the_task_ends_its_download(bmc, admin, trickle):
    fetch, task = start_download(bmc, admin, trickle)
    assert_secret_hidden(fetch)
    assert admin.delete(bmc.url(task), timeout=10).status_code == 200
    assert wait_until(lambda: not running(fetch), attempts=50)
    assert admin.get(bmc.url(task), timeout=10).json()["TaskState"] == "Killed"
    assert wait_until(lambda: bmc.bmcsim("firmware", "show").count("updating=0"))


def test_a_killed_worker_leaves_no_download_running(bmc, admin, trickle):
    fetch, task = start_download(bmc, admin, trickle)
    os.kill(parent_of(fetch), signal.SIGKILL)
    assert wait_until(lambda: not running(fetch), attempts=50)
    assert wait_until(lambda: admin.get(bmc.url(task), timeout=10).json()["TaskState"] ==
                      "Exception")


def test_an_alert_delivery_keeps_the_smtp_password_off_its_command_line(bmc, admin):
    silent = SilentListener()
    port = silent.socket.getsockname()[1]
    try:
        answer = admin.patch(bmc.url(EVENT_SERVICE), json={"SMTP": {
            "ServiceEnabled": True, "ServerAddress": "127.0.0.1", "Port": port,
            "FromAddress": "bmc@example.com", "ConnectionProtocol": "StartTLS",
            "Authentication": "Plain", "Username": "mailer", "Password": SECRET}}, timeout=10)
        assert answer.status_code == 204, answer.text
        answer = admin.post(bmc.url(EVENT_SERVICE + "/Subscriptions"), json={
            "Destination": "mailto:ops@example.com", "Protocol": "SMTP"}, timeout=10)
        assert answer.status_code == 201, answer.text
        subscription = answer.headers["Location"]
        admin.post(bmc.url(EVENT_SERVICE + "/Actions/EventService.SubmitTestEvent"), json={},
                   timeout=10)
        # The delivery waits on the silent server, up to its 10-second bound.
        [sender] = wait_until(lambda: processes_of(bmc, "bmc-alert-send"))
        assert_secret_hidden(sender)
        admin.delete(bmc.url(subscription), timeout=10)
        os.kill(sender, signal.SIGKILL)
    finally:
        silent.stop()


def test_alert_senders_are_few_and_the_queue_is_bounded(bmc, admin):
    """Many events to receivers that never answer: at most four senders run,
    the queue keeps its newest 64 deliveries, and senders killed with
    SIGKILL block nothing."""
    silent = [SilentListener(), SilentListener()]
    subscriptions = []
    try:
        admin.patch(bmc.url(EVENT_SERVICE), json={"DeliveryRetryAttempts": 0}, timeout=10)
        for listener in silent:
            answer = admin.post(bmc.url(EVENT_SERVICE + "/Subscriptions"), timeout=10, json={
                "Destination": listener.url, "Protocol": "Redfish"})
            assert answer.status_code == 201, answer.text
            subscriptions.append(answer.headers["Location"])
        for number in range(40):
            answer = admin.post(bmc.url(EVENT_SERVICE + "/Actions/EventService.SubmitTestEvent"),
                                json={"EventId": "flood-%d" % number}, timeout=10)
            assert answer.status_code == 200
            assert senders_settle_within_the_cap(bmc)
        queue = os.path.join(bmc.root, "var", "spool", "alerts", "queue")
        assert os.stat(queue).st_mode & 0o777 == 0o600
        with open(queue) as queued:
            assert len(json.load(queued)) <= 64
        assert "Redfish: dropped, the delivery queue is full" in bmc.bmcsim("alerts", "log")

        for sender in processes_of(bmc, "bmc-alert-send"):
            os.kill(sender, signal.SIGKILL)
        for subscription in subscriptions:
            admin.delete(bmc.url(subscription), timeout=10)
        subscriptions = []
        receiver = HttpListener()
        try:
            answer = admin.post(bmc.url(EVENT_SERVICE + "/Subscriptions"), timeout=10, json={
                "Destination": receiver.url, "Protocol": "Redfish"})
            subscriptions.append(answer.headers["Location"])
            # The queue's older alerts go first, each to a receiver now closed.
            for listener in silent:
                listener.stop()
            admin.post(bmc.url(EVENT_SERVICE + "/Actions/EventService.SubmitTestEvent"),
                       json={"EventId": "after-kill"}, timeout=10)
            assert receiver.wait_for(lambda event: event["EventId"] == "after-kill")
        finally:
            receiver.stop()
    finally:
        for subscription in subscriptions:
            admin.delete(bmc.url(subscription), timeout=10)
        for listener in silent:
            listener.stop()
        for sender in processes_of(bmc, "bmc-alert-send"):
            os.kill(sender, signal.SIGKILL)
