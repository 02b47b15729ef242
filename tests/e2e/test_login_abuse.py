"""An attacker's view of authentication: the host interface's credential,
lockout, the session table and the event log, through lighttpd."""

import base64
import http.client
import json
import os
import shutil
import signal
import stat
import subprocess

import pytest

from bmc_instance import BmcInstance
from full_disk import fill

SESSIONS = "/redfish/v1/SessionService/Sessions"
SERVICE = "/redfish/v1/SessionService"
HOST_ADDRESS = "127.0.0.2"
HOSTFW_PASSWORD = "HostFw#Pass1"
PASSWORD = "Passw0rd-1"


def send(bmc, method, path, user=None, password=None, token=None, body=None,
         to="127.0.0.1", source="127.0.0.1"):
    """One request from the loopback address source to the address to;
    returns the status and the parsed body (None when empty)."""
    headers = {"Content-Type": "application/json"}
    if user is not None:
        credentials = base64.b64encode(f"{user}:{password}".encode()).decode()
        headers["Authorization"] = "Basic " + credentials
    if token:
        headers["X-Auth-Token"] = token
    connection = http.client.HTTPConnection(to, bmc.port, timeout=10, source_address=(source, 0))
    try:
        connection.request(method, path, body=json.dumps(body) if body is not None else None,
                           headers=headers)
        answer = connection.getresponse()
        data = answer.read()
        return answer.status, (json.loads(data) if data else None), answer.headers
    finally:
        connection.close()


def login(bmc, user, password, to="127.0.0.1", source="127.0.0.1"):
    return send(bmc, "POST", SESSIONS, body={"UserName": user, "Password": password},
                to=to, source=source)


def message_id(body):
    return body["error"]["@Message.ExtendedInfo"][0]["MessageId"]


@pytest.fixture(scope="module")
def bmc():
    instance = BmcInstance(also_listen_on=(HOST_ADDRESS,))
    yield instance
    instance.stop()


@pytest.fixture
def host_interface(bmc):
    bmc.bmcsim("hostif", "on")
    bmc.bmcsim("hostif", "address", HOST_ADDRESS)
    bmc.bmcsim("hostif", "credential", "hostfw", HOSTFW_PASSWORD)
    yield
    bmc.bmcsim("hostif", "credential", "clear")
    bmc.bmcsim("hostif", "off")


def test_the_host_firmware_credential_works_only_over_the_host_interface(bmc, host_interface):
    change = {"SessionTimeout": 600}
    assert send(bmc, "PATCH", SERVICE, "hostfw", HOSTFW_PASSWORD, body=change)[0] == 401
    assert login(bmc, "hostfw", HOSTFW_PASSWORD)[0] == 401
    assert send(bmc, "PATCH", SERVICE, "hostfw", HOSTFW_PASSWORD, body=change,
                to=HOST_ADDRESS)[0] == 204

    status, _, headers = login(bmc, "hostfw", HOSTFW_PASSWORD, to=HOST_ADDRESS)
    assert status == 201
    token = headers["X-Auth-Token"]
    assert send(bmc, "GET", SERVICE, token=token, to=HOST_ADDRESS)[0] == 200
    assert send(bmc, "GET", SERVICE, token=token)[0] == 401  # from the network
    bmc.bmcsim("hostif", "credential", "clear")
    assert send(bmc, "GET", SERVICE, token=token, to=HOST_ADDRESS)[0] == 401

    bmc.bmcsim("hostif", "credential", "hostfw", HOSTFW_PASSWORD)
    token = login(bmc, "hostfw", HOSTFW_PASSWORD, to=HOST_ADDRESS)[2]["X-Auth-Token"]
    bmc.bmcsim("hostif", "off")
    assert send(bmc, "GET", SERVICE, token=token, to=HOST_ADDRESS)[0] == 401
    bmc.bmcsim("hostif", "on")
    assert send(bmc, "GET", SERVICE, token=token, to=HOST_ADDRESS)[0] == 401


def test_the_host_firmware_credential_locks_like_an_account(bmc, host_interface):
    for _ in range(8):
        assert send(bmc, "GET", SERVICE, "hostfw", "wrong-pass", to=HOST_ADDRESS)[0] in (401, 403)
    status, body, _ = send(bmc, "GET", SERVICE, "hostfw", HOSTFW_PASSWORD, to=HOST_ADDRESS)
    assert status == 403 and message_id(body) == "TWR.1.0.AccountLockup"


def test_directory_sessions_end_with_their_directory(bmc):
    bmc.bmcsim("directory", "ldap", "enable")
    bmc.bmcsim("directory", "ldap", "user", "ldapadmin", PASSWORD, "4")
    token = login(bmc, "ldapadmin", PASSWORD)[2]["X-Auth-Token"]
    assert send(bmc, "GET", SERVICE, token=token)[0] == 200
    bmc.bmcsim("directory", "ldap", "disable")
    assert send(bmc, "GET", SERVICE, token=token)[0] == 401


def test_names_that_are_no_user_lock_like_users(bmc):
    bmc.bmcsim("users", "add", "5", "realuser", PASSWORD, "ReadOnly")
    for _ in range(5):
        assert login(bmc, "realuser", "wrong-pass")[0] == 401
        assert login(bmc, "ghostuser", "wrong-pass")[0] == 401
    real, ghost = login(bmc, "realuser", PASSWORD), login(bmc, "ghostuser", "wrong-pass")
    assert real[0] == ghost[0] == 403
    assert message_id(real[1]) == message_id(ghost[1]) == "TWR.1.0.AccountLockup"
    bmc.bmcsim("users", "delete", "5")


def test_nobody_locks_the_reserved_administrator_out_for_everyone(bmc):
    for _ in range(8):
        send(bmc, "GET", SERVICE, bmc.admin_user, "wrong-pass", source="127.0.0.3")
    assert send(bmc, "GET", SERVICE, bmc.admin_user, bmc.admin_password,
                source="127.0.0.3")[0] == 403
    assert send(bmc, "GET", SERVICE, bmc.admin_user, bmc.admin_password)[0] == 200


def test_an_alias_logs_in_as_the_stored_name_and_is_logged_so(bmc):
    bmc.bmcsim("users", "add", "6", "abcdefghijklmnop", PASSWORD, "Operator")
    status, _, headers = login(bmc, "abcdefghijklmnopZZZZ", PASSWORD)
    assert status == 201
    session = send(bmc, "GET", headers["Location"], token=headers["X-Auth-Token"])[1]
    assert session["UserName"] == "abcdefghijklmnop"
    assert send(bmc, "GET", SERVICE, "abcdefghijklmnopYYYY", PASSWORD)[0] == 200
    with open(os.path.join(bmc.root, "var", "log", "session_audit.log")) as audit:
        lines = audit.read()
    assert "user=abcdefghijklmnop " in lines
    assert "ZZZZ" not in lines and "YYYY" not in lines
    send(bmc, "DELETE", headers["Location"], token=headers["X-Auth-Token"])
    bmc.bmcsim("users", "delete", "6")


def test_a_flood_of_failures_is_logged_boundedly_per_address(bmc):
    before = len(bmc.events())
    for _ in range(25):
        assert send(bmc, "GET", "/redfish/v1/Systems", source="127.0.0.4")[0] == 401
    assert send(bmc, "GET", "/redfish/v1/Chassis", source="127.0.0.5")[0] == 401
    failures = [event for event in bmc.events()[before:] if event["code"] == 137]
    assert len(failures) == 11
    assert failures[-1]["text"] == "/redfish/v1/Chassis"


def test_read_only_sessions_leave_room_for_administrators(bmc):
    bmc.bmcsim("users", "add", "7", "reader", PASSWORD, "ReadOnly")
    bmc.bmcsim("users", "add", "8", "callback", PASSWORD, "Callback")
    tokens = []
    try:
        assert login(bmc, "callback", PASSWORD)[0] == 401  # no role, no login
        for _ in range(12):
            status, _, headers = login(bmc, "reader", PASSWORD)
            assert status == 201
            tokens.append((headers["Location"], headers["X-Auth-Token"]))
        status, body, _ = login(bmc, "reader", PASSWORD)
        assert status == 503 and message_id(body) == "Base.1.10.SessionLimitExceeded"
        for _ in range(4):
            status, _, headers = login(bmc, bmc.admin_user, bmc.admin_password)
            assert status == 201
            tokens.append((headers["Location"], headers["X-Auth-Token"]))
        status, body, _ = login(bmc, bmc.admin_user, bmc.admin_password)
        assert status == 404 and body is None  # the table is full
    finally:
        for location, token in tokens:
            send(bmc, "DELETE", location, token=token)
        bmc.bmcsim("users", "delete", "7")
        bmc.bmcsim("users", "delete", "8")


def test_session_tokens_are_private_to_the_services_user(bmc):
    status, _, headers = login(bmc, bmc.admin_user, bmc.admin_password)
    assert status == 201
    token = headers["X-Auth-Token"]
    tmp = os.path.join(bmc.root, "tmp")
    session_directory = os.path.join(tmp, "www", "redfish", "v1", "SessionService", "Sessions",
                                     headers["Location"].rsplit("/", 1)[1])
    modes = {path: stat.S_IMODE(os.stat(path).st_mode) for path in (
        tmp, os.path.join(tmp, "redfish_" + token), os.path.join(tmp, "redfish.lock"),
        session_directory)}
    assert modes == {tmp: 0o700, os.path.join(tmp, "redfish_" + token): 0o600,
                     os.path.join(tmp, "redfish.lock"): 0o600, session_directory: 0o700}
    send(bmc, "DELETE", headers["Location"], token=token)


@pytest.fixture
def full_disk_bmc():
    """A BMC whose /var (lockout records, audit, event log) is a small tmpfs."""
    mounted = []

    def mount_var(instance):
        var = os.path.join(instance.root, "var")
        saved = os.path.join(instance.root, "var.saved")
        shutil.copytree(var, saved, symlinks=True)
        if subprocess.run(["mount", "-t", "tmpfs", "-o", "size=1m", "tmpfs", var],
                          capture_output=True).returncode == 0:
            mounted.append(var)
            shutil.copytree(saved, var, symlinks=True, dirs_exist_ok=True)

    instance = BmcInstance(before_start=mount_var)
    if not mounted:
        instance.stop()
        pytest.skip("no tmpfs can be mounted here")
    yield instance, os.path.join(mounted[0], "filler")
    instance.server.send_signal(signal.SIGTERM)
    instance.server.wait(timeout=10)
    subprocess.run(["umount", "--lazy", mounted[0]], check=True)
    instance.stop()


def test_lockout_fails_closed_on_a_full_disk(full_disk_bmc):
    bmc, filler = full_disk_bmc
    bmc.bmcsim("users", "add", "3", "target", PASSWORD, "Operator")
    fill(filler)
    for _ in range(8):
        assert send(bmc, "GET", SERVICE, "target", "wrong-pass")[0] == 401
    assert send(bmc, "GET", SERVICE, "target", PASSWORD)[0] != 200
    assert "cannot record a bad password" in bmc.error_log()
    os.remove(filler)
    assert send(bmc, "GET", SERVICE, "target", PASSWORD)[0] == 200
