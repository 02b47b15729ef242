"""What the BMC's own network clients may reach: a BMC refuses loopback,
link-local and its own address as event destinations and image hosts
(tests elsewhere allow them, as make run does), and tells nobody more about
a failed download than that it failed."""

import socket
import time

import pytest

from bmc_instance import BmcInstance

SUBSCRIPTIONS = "/redfish/v1/EventService/Subscriptions"
SIMPLE_UPDATE = "/redfish/v1/UpdateService/Actions/UpdateService.SimpleUpdate"


@pytest.fixture(scope="module")
def strict_bmc():
    instance = BmcInstance(allow_local_destinations=False)
    yield instance
    instance.stop()


def message_ids(answer):
    return [entry["MessageId"] for entry in answer.json()["error"]["@Message.ExtendedInfo"]]


def own_address(bmc):
    return next(line.split("=", 1)[1] for line in bmc.bmcsim("lan", "show").splitlines()
                if line.startswith("address="))


def test_local_destinations_are_refused(strict_bmc):
    bmc, admin = strict_bmc, strict_bmc.admin()
    for destination in ["http://127.0.0.1/internal-admin", "https://169.254.169.254/latest/meta-data",
                        "http://[::1]:8080/x", "http://127.1/x", "http://LocalHost./x",
                        "http://user@0.0.0.0/x", "http://[::ffff:127.0.0.1]/x",
                        "http://%s/x" % own_address(bmc)]:
        answer = admin.post(bmc.url(SUBSCRIPTIONS), json={"Destination": destination, "Protocol": "Redfish"},
                            timeout=10)
        assert (answer.status_code, message_ids(answer)) == (400, ["Base.1.10.PropertyValueIncorrect"]), destination
    answer = admin.post(bmc.url(SUBSCRIPTIONS), timeout=10, json={
        "Destination": "localhost:162", "Protocol": "SNMPv2c", "SNMP": {"TrapCommunity": "public"}})
    assert message_ids(answer) == ["Base.1.10.PropertyValueIncorrect"]
    answer = admin.patch(bmc.url("/redfish/v1/EventService"), timeout=10, json={"SMTP": {
        "ServiceEnabled": True, "ServerAddress": "169.254.0.7", "FromAddress": "bmc@example.com"}})
    assert message_ids(answer) == ["Base.1.10.PropertyValueIncorrect"]
    answer = admin.post(bmc.url(SIMPLE_UPDATE), json={"ImageURI": "127.0.0.1:22/bmc.img",
                                                      "TransferProtocol": "HTTP"}, timeout=10)
    assert answer.status_code == 400
    assert answer.json()["SimpleUpdateErrors"]["@Message.ExtendedInfo"][0]["MessageArgs"] == [
        "Input ImageURI host is not allowed."]
    assert admin.get(bmc.url(SUBSCRIPTIONS), timeout=10).json()["Members"] == []

    answer = admin.post(bmc.url(SUBSCRIPTIONS), json={"Destination": "http://192.0.2.10/events",
                                                      "Protocol": "Redfish"}, timeout=10)
    assert answer.status_code == 201
    admin.delete(bmc.url(answer.headers["Location"]), timeout=10)


def closed_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


def test_a_failed_download_says_no_more_than_that(bmc):
    admin = bmc.admin()
    accepted = admin.post(bmc.url(SIMPLE_UPDATE), timeout=10, json={
        "ImageURI": "127.0.0.1:%d/bmc.img" % closed_port(), "TransferProtocol": "HTTP"})
    assert accepted.status_code == 202, accepted.text
    task = accepted.json()["Accepted"]["@Message.ExtendedInfo"][0]["MessageArgs"][0]
    for _ in range(100):
        body = admin.get(bmc.url(task), timeout=10).json()
        if body["TaskState"] == "Exception":
            break
        time.sleep(0.1)
    message = body["Messages"][-1]["Message"]
    assert "the image could not be downloaded" in message
    assert "port" not in message and "refused" not in message.lower()
