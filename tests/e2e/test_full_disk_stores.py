"""The stores under /nv on a full disk: every write that cannot be stored
answers an error that says so, and changes nothing."""

import os

import pytest

from full_disk import fill, instance_with_small_directory
from test_http_push import image_dir, push
from test_update import BMC_TARGET, TASKS, firmware, make_image, wait_for_end

SUBSCRIPTIONS = "/redfish/v1/EventService/Subscriptions"
ACCOUNTS = "/redfish/v1/AccountService/Accounts"
PASSWORD = "Passw0rd-1"


@pytest.fixture
def full_nv():
    """A BMC with a subscription and an account, whose /nv can be filled."""
    bmc = instance_with_small_directory("nv", "256k", processes=1)
    try:
        bmc.bmcsim("users", "add", "3", "bystander", PASSWORD, "2")
        admin = bmc.admin()
        created = admin.post(bmc.url(SUBSCRIPTIONS), timeout=10, json={
            "Destination": "http://127.0.0.1:9/events", "Protocol": "Redfish",
            "Context": "before"})
        assert created.status_code == 201, created.text
        yield bmc, admin, created.headers["Location"], \
            os.path.join(bmc.small_directory, "filler")
    finally:
        bmc.stop()


def internal_error(answer):
    assert answer.status_code == 500, answer.text
    return answer.json()["error"]["@Message.ExtendedInfo"][0]["MessageId"]


def test_refused_subscription_and_account_writes_say_so_and_change_nothing(full_nv):
    bmc, admin, subscription, filler = full_nv
    stored = bmc.bmcsim("alerts", "show")
    fill(filler)

    assert internal_error(admin.patch(bmc.url(subscription), json={"Context": "after"},
                                      timeout=10)) == "Base.1.10.InternalError"
    assert internal_error(admin.post(bmc.url(SUBSCRIPTIONS), timeout=10, json={
        "Destination": "http://127.0.0.1:9/more", "Protocol": "Redfish"})) == \
        "Base.1.10.InternalError"
    assert internal_error(admin.delete(bmc.url(subscription), timeout=10)) == \
        "Base.1.10.InternalError"
    assert admin.get(bmc.url(subscription), timeout=10).json()["Context"] == "before"
    assert bmc.bmcsim("alerts", "show") == stored

    assert internal_error(admin.post(bmc.url(ACCOUNTS), timeout=10, json={
        "UserName": "newcomer", "Password": PASSWORD, "RoleId": "Operator"})) == \
        "Base.1.10.InternalError"
    assert internal_error(admin.patch(bmc.url(ACCOUNTS + "/4"), json={"RoleId": "Operator"},
                                      timeout=10)) == "Base.1.10.InternalError"
    assert internal_error(admin.delete(bmc.url(ACCOUNTS + "/4"), timeout=10)) == \
        "Base.1.10.InternalError"
    assert admin.get(bmc.url(ACCOUNTS + "/4"), timeout=10).json()["RoleId"] == "ReadOnly"
    assert "newcomer" not in bmc.bmcsim("users", "list")
    assert "PSCommit: cannot write" in bmc.error_log()

    # Room again: the same writes go through.
    os.remove(filler)
    assert admin.patch(bmc.url(subscription), json={"Context": "after"},
                       timeout=10).status_code == 204
    assert admin.get(bmc.url(subscription), timeout=10).json()["Context"] == "after"
    assert admin.patch(bmc.url(ACCOUNTS + "/4"), json={"RoleId": "Operator"},
                       timeout=10).status_code == 204


def test_a_push_without_room_for_its_task_is_a_service_error(full_nv):
    bmc, admin, _, filler = full_nv
    image = make_image(bmc, image_dir(bmc), "full.img", "BMC", "3.10.00")
    tasks = admin.get(bmc.url(TASKS), timeout=10).json()["Members@odata.count"]
    fill(filler)
    refused = push(bmc, image, {"Targets": [BMC_TARGET]}, session=admin)
    assert refused.status_code == 500, refused.text
    assert [entry["MessageArgs"][0] for entry in
            refused.json()["HttpPushUriErrors"]["@Message.ExtendedInfo"]] == \
        ["Create task service error."]
    assert "[ERROR] HttpPushUri Create Task Service" in bmc.error_log()
    assert admin.get(bmc.url(TASKS), timeout=10).json()["Members@odata.count"] == tasks
    assert firmware(bmc)["updating"] == "0"

    os.remove(filler)
    accepted = push(bmc, image, {"Targets": [BMC_TARGET]}, session=admin)
    assert accepted.status_code == 202, accepted.text
    assert wait_for_end(bmc, admin, accepted.headers["Location"]).status_code == 200
