"""Sessions bound to their live account, the lockout defaults and the login's
refusals, through lighttpd with two service processes."""

import os

import pytest
import requests

from schema_validation import validate_messages

SESSIONS = "/redfish/v1/SessionService/Sessions"
ACCOUNTS = "/redfish/v1/AccountService/Accounts"
PASSWORD = "Passw0rd-1"


def token_session(answer):
    session = requests.Session()
    session.headers["X-Auth-Token"] = answer.headers["X-Auth-Token"]
    return session


def message_ids(answer):
    return [entry["MessageId"] for entry in answer.json()["error"]["@Message.ExtendedInfo"]]


def is_admin(bmc, session):
    """An empty account POST is 400 for ConfigureUsers and 403 without it."""
    return session.post(bmc.url(ACCOUNTS), json={}, timeout=10).status_code == 400


@pytest.fixture
def accounts(closed_bmc):
    """Slots 3 to 8 are this test's; every session is ended afterwards."""
    bmc = closed_bmc
    yield lambda slot, name, level="4": bmc.bmcsim("users", "add", str(slot), name, PASSWORD, level)
    admin = bmc.admin()
    for member in admin.get(bmc.url(SESSIONS), timeout=10).json()["Members"]:
        admin.delete(bmc.url(member["@odata.id"]), timeout=10)
    for line in bmc.bmcsim("users", "list").splitlines()[1:]:
        if line.split()[0] in {str(slot) for slot in range(3, 9)}:
            bmc.bmcsim("users", "delete", line.split()[0])
    os.makedirs(os.path.join(bmc.root, "nv", "redfish"), exist_ok=True)
    for name in ("accountservice.ini", "sessionservice.ini"):
        path = os.path.join(bmc.root, "nv", "redfish", name)
        if os.path.exists(path):
            os.remove(path)


def test_a_session_takes_its_accounts_current_role(closed_bmc, accounts):
    bmc = closed_bmc
    accounts(3, "rolechange")
    session = token_session(bmc.login("rolechange", PASSWORD))
    assert is_admin(bmc, session)
    demoted = bmc.admin().patch(bmc.url(ACCOUNTS + "/4"), json={"RoleId": "ReadOnly"}, timeout=10)
    assert demoted.status_code == 204
    assert not is_admin(bmc, session)


@pytest.mark.parametrize("change", ["disable", "delete"])
def test_a_session_ends_when_its_account_is_changed_outside(closed_bmc, accounts, change):
    bmc = closed_bmc
    accounts(3, "outside")
    login = bmc.login("outside", PASSWORD)
    session = token_session(login)
    assert session.get(bmc.url(SESSIONS), timeout=10).status_code == 200
    bmc.bmcsim("users", change, "3")
    assert session.get(bmc.url(SESSIONS), timeout=10).status_code == 401
    members = bmc.admin().get(bmc.url(SESSIONS), timeout=10).json()["Members"]
    assert {"@odata.id": login.headers["Location"]} not in members


def test_a_deleted_administrators_token_creates_nothing(closed_bmc, accounts):
    bmc = closed_bmc
    accounts(3, "bob1")
    old = token_session(bmc.login("bob1", PASSWORD))
    bmc.bmcsim("users", "delete", "3")
    accounts(3, "bob1", "2")  # a new user of the slot under the same name
    created = old.post(bmc.url(ACCOUNTS), timeout=10,
                       json={"UserName": "intruder", "Password": PASSWORD, "RoleId": "Administrator"})
    assert created.status_code == 401
    assert "intruder" not in bmc.bmcsim("users", "list")


def test_ownership_goes_by_slot_not_by_name(closed_bmc, accounts):
    bmc = closed_bmc
    accounts(3, "bob1", "2")
    reader = token_session(bmc.login("bob1", PASSWORD))
    admin = bmc.admin()
    assert admin.patch(bmc.url(ACCOUNTS + "/4"), json={"UserName": "bob9"}, timeout=10).status_code == 204
    accounts(4, "bob1")
    assert reader.patch(bmc.url(ACCOUNTS + "/5"), json={"Password": "Stol3n-pass"},
                        timeout=10).status_code == 401
    assert bmc.login("bob1", PASSWORD).status_code == 201


def test_a_password_change_ends_the_accounts_other_sessions(closed_bmc, accounts):
    bmc = closed_bmc
    accounts(3, "twice", "2")
    first = token_session(bmc.login("twice", PASSWORD))
    second_login = bmc.login("twice", PASSWORD)
    second = token_session(second_login)
    changed = second.patch(bmc.url(ACCOUNTS + "/4"), json={"Password": "N3w-password"}, timeout=10)
    assert changed.status_code == 204
    assert first.get(bmc.url(SESSIONS), timeout=10).status_code == 401
    assert second.get(bmc.url(second_login.headers["Location"]), timeout=10).status_code == 200


def test_a_renamed_account_loses_its_sessions_and_may_then_be_disabled(closed_bmc, accounts):
    bmc = closed_bmc
    accounts(3, "sixteen-chars-xx")  # the table holds 16; Redfish creates 15
    login = bmc.login("sixteen-chars-xx", PASSWORD)
    session = token_session(login)
    shown = session.get(bmc.url(login.headers["Location"]), timeout=10).json()
    assert shown["UserName"] == "sixteen-chars-xx"
    admin = bmc.admin()
    disable = admin.patch(bmc.url(ACCOUNTS + "/4"), json={"Enabled": False}, timeout=10)
    assert disable.status_code == 400 and message_ids(disable) == ["TWR.1.0.OemUserDisableFail"]

    assert admin.patch(bmc.url(ACCOUNTS + "/4"), json={"UserName": "renamed"}, timeout=10).status_code == 204
    assert session.get(bmc.url(SESSIONS), timeout=10).status_code == 401
    assert admin.patch(bmc.url(ACCOUNTS + "/4"), json={"Enabled": False}, timeout=10).status_code == 204


def test_the_reserved_administrator_cannot_be_disabled(closed_bmc):
    bmc = closed_bmc
    answer = bmc.admin().patch(bmc.url(ACCOUNTS + "/2"), json={"Enabled": False}, timeout=10)
    assert answer.status_code == 400
    validate_messages(answer.json())
    assert message_ids(answer) == ["Base.1.10.PropertyNotWritable"]
    assert bmc.admin().get(bmc.url(ACCOUNTS + "/2"), timeout=10).json()["Enabled"] is True


def test_a_disabled_session_service_opens_no_sessions(closed_bmc, accounts):
    bmc = closed_bmc
    service = bmc.url("/redfish/v1/SessionService")
    open_before = token_session(bmc.login())
    assert bmc.admin().patch(service, json={"ServiceEnabled": False}, timeout=10).status_code == 204
    refused = bmc.login()
    assert refused.status_code == 403
    validate_messages(refused.json())
    assert message_ids(refused) == ["Base.1.10.AccessDenied"]
    assert "X-Auth-Token" not in refused.headers
    assert open_before.get(service, timeout=10).status_code == 200
    assert bmc.admin().patch(service, json={"ServiceEnabled": True}, timeout=10).status_code == 204
    assert bmc.login().status_code == 201


@pytest.mark.parametrize("body", [
    '{"UserName": "admin\\u0000junk", "Password": "admin-pass1"}',
    '{"UserName": "admin", "Password": "admin-pass1\\u0000junk"}',
])
def test_a_login_with_an_embedded_nul_is_refused(closed_bmc, body):
    bmc = closed_bmc
    answer = requests.post(bmc.url(SESSIONS), data=body.replace("admin-pass1", bmc.admin_password)
                           .replace('"admin', '"' + bmc.admin_user), timeout=10,
                           headers={"Content-Type": "application/json"})
    assert answer.status_code == 400
    assert "X-Auth-Token" not in answer.headers
    assert message_ids(answer) == ["Base.1.10.PropertyValueFormatError"]
    assert bmc.admin_password not in answer.text


def test_guessing_locks_the_account_by_default_and_every_third_failure_is_logged(closed_bmc, accounts):
    bmc = closed_bmc
    policy = bmc.admin().get(bmc.url("/redfish/v1/AccountService"), timeout=10).json()
    assert (policy["AccountLockoutThreshold"], policy["AccountLockoutDuration"],
            policy["AccountLockoutCounterResetAfter"]) == (5, 60, 60)
    accounts(3, "guessme", "2")
    before = len(bmc.events())
    for attempt in range(5):
        assert bmc.login("guessme", f"Wrong-pass{attempt}").status_code == 401
    assert [event["code"] for event in bmc.events()[before:]].count(137) == 1
    assert bmc.login("guessme", PASSWORD).status_code == 403
    assert bmc.basic_session("guessme", PASSWORD).get(bmc.url(SESSIONS), timeout=10).status_code == 403
