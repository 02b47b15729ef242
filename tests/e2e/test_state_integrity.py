"""What the service keeps and refuses under conditional, concurrent, damaging
and out-of-range requests, over HTTP through lighttpd."""

import os
import shutil
import subprocess
import threading

import pytest

from bmc_instance import BmcInstance

SESSION_SERVICE = "/redfish/v1/SessionService"
ACCOUNT_SERVICE = "/redfish/v1/AccountService"
CHASSIS = "/redfish/v1/Chassis/1"
SYSTEM = "/redfish/v1/Systems/1"


def message_ids(answer):
    return [entry["MessageId"] for entry in answer.json()["error"]["@Message.ExtendedInfo"]]


def timeout_of(admin, bmc):
    return admin.get(bmc.url(SESSION_SERVICE), timeout=10).json()["SessionTimeout"]


def test_if_match_guards_patch_and_delete(bmc):
    admin = bmc.admin()
    first = admin.get(bmc.url(SESSION_SERVICE), timeout=10)
    etag = first.headers["ETag"]
    stale = admin.patch(bmc.url(SESSION_SERVICE), json={"SessionTimeout": 600},
                        headers={"If-Match": '"0123456789abcdef0123456789abcdef"'}, timeout=10)
    assert stale.status_code == 412
    assert message_ids(stale) == ["Base.1.10.PreconditionFailed"]
    assert timeout_of(admin, bmc) == first.json()["SessionTimeout"]

    changed = admin.patch(bmc.url(SESSION_SERVICE), json={"SessionTimeout": 601},
                          headers={"If-Match": '"x", ' + etag}, timeout=10)
    assert changed.status_code == 204
    again = admin.patch(bmc.url(SESSION_SERVICE), json={"SessionTimeout": 602},
                        headers={"If-Match": etag}, timeout=10)
    assert again.status_code == 412 and timeout_of(admin, bmc) == 601
    current = admin.get(bmc.url(SESSION_SERVICE), timeout=10).headers["ETag"]
    assert admin.patch(bmc.url(SESSION_SERVICE), json={"SessionTimeout": 603},
                       headers={"If-Match": "*"}, timeout=10).status_code == 204
    assert current != admin.get(bmc.url(SESSION_SERVICE), timeout=10).headers["ETag"]

    login = bmc.login()
    session = login.headers["Location"]
    refused = admin.delete(bmc.url(session), headers={"If-Match": etag}, timeout=10)
    assert refused.status_code == 412 and admin.get(bmc.url(session), timeout=10).status_code == 200
    session_etag = admin.get(bmc.url(session), timeout=10).headers["ETag"]
    assert admin.delete(bmc.url(session), headers={"If-Match": session_etag},
                        timeout=10).status_code == 204


@pytest.mark.parametrize("value", [2**63, 2**64 - 1, 2**70, -2**63, 29, 86401])
def test_session_timeout_out_of_any_range_is_the_propertys_error(bmc, value):
    admin = bmc.admin()
    before = timeout_of(admin, bmc)
    answer = admin.patch(bmc.url(SESSION_SERVICE), data=f'{{"SessionTimeout": {value}}}',
                         headers={"Content-Type": "application/json"}, timeout=10)
    assert answer.status_code == 400, answer.text
    assert message_ids(answer) == ["Base.1.10.PropertyValueFormatError"]
    assert timeout_of(admin, bmc) == before


def test_bodies_are_taken_by_their_length_and_nul_strings_refused(bmc):
    admin = bmc.admin()
    before = timeout_of(admin, bmc)
    tail = admin.patch(bmc.url(SESSION_SERVICE), data=b'{"SessionTimeout": 900}\x00{"x": 1}',
                       headers={"Content-Type": "application/json"}, timeout=10)
    assert tail.status_code == 400 and message_ids(tail) == ["Base.1.10.MalformedJSON"]
    assert timeout_of(admin, bmc) == before

    tag = admin.get(bmc.url(CHASSIS), timeout=10).json()["AssetTag"]
    for body in ({"AssetTag": "rack\u0000 7"}, {"Boot": {"HttpBootUri": "http://a/\u0000b"}}):
        path = CHASSIS if "AssetTag" in body else SYSTEM
        answer = admin.patch(bmc.url(path), json=body, timeout=10)
        assert answer.status_code == 400, answer.text
        assert message_ids(answer) == ["Base.1.10.PropertyValueFormatError"]
    assert admin.get(bmc.url(CHASSIS), timeout=10).json()["AssetTag"] == tag


def test_one_character_asset_tags_keep_the_fru_whole(bmc):
    admin = bmc.admin()
    before = admin.get(bmc.url(CHASSIS), timeout=10).json()
    for tag in ("x", "\u00fc", "y", ""):
        assert admin.patch(bmc.url(CHASSIS), json={"AssetTag": tag}, timeout=10).status_code == 204
        after = admin.get(bmc.url(CHASSIS), timeout=10).json()
        assert after["AssetTag"] == tag
        assert (after["SerialNumber"], after["PartNumber"]) == (before["SerialNumber"],
                                                                before["PartNumber"])
    assert admin.get(bmc.url(SYSTEM), timeout=10).json()["SerialNumber"]


def test_damaged_shared_state_is_survived(bmc):
    admin = bmc.admin()
    members = admin.get(bmc.url(CHASSIS + "/Sensors"), timeout=10).json()["Members"]
    bmc.bmcsim("state", "set", "sensor_count", "3000")
    answer = admin.get(bmc.url(CHASSIS + "/Sensors"), timeout=10)
    assert answer.status_code == 200 and answer.json()["Members"] == members
    assert admin.get(bmc.url(CHASSIS + "/Sensors/3000"), timeout=10).status_code == 404
    assert admin.get(bmc.url(SYSTEM), timeout=10).status_code == 200

    processes = bmc.service_processes()
    os.truncate(os.path.join(bmc.root, "var", "bmc", "global.bin"), 0)
    for _ in range(2 * len(processes)):
        assert admin.get(bmc.url(SYSTEM), timeout=10).status_code == 200
    assert bmc.service_processes() == processes
    assert "shared state initialised again" in bmc.error_log()


def test_a_system_patch_that_fails_half_way_leaves_nothing_applied(bmc):
    admin = bmc.admin()
    before = admin.get(bmc.url(SYSTEM), timeout=10).json()
    blocked = os.path.join(bmc.root, "tmp", "user_save_to_bios.json")
    os.makedirs(os.path.join(blocked, "in-the-way"))
    try:
        answer = admin.patch(bmc.url(SYSTEM), json={
            "IndicatorLED": "Blinking" if before["IndicatorLED"] != "Blinking" else "Off",
            "Boot": {"BootSourceOverrideEnabled": "Continuous",
                     "HttpBootUri": "http://10.0.0.9/boot.efi"}}, timeout=10)
        assert answer.status_code == 500
    finally:
        shutil.rmtree(blocked)
    after = admin.get(bmc.url(SYSTEM), timeout=10).json()
    assert after["IndicatorLED"] == before["IndicatorLED"]
    assert after["Boot"] == before["Boot"]


# (path, property, values) written by one client each, at the same time.
WRITERS = [
    (SESSION_SERVICE, "SessionTimeout", lambda n: {"SessionTimeout": 60 + n}),
    (SESSION_SERVICE, "ServiceEnabled", lambda n: {"ServiceEnabled": n % 2 == 0}),
    (ACCOUNT_SERVICE, "AccountLockoutDuration", lambda n: {"AccountLockoutDuration": 100 + n}),
    (ACCOUNT_SERVICE, "AccountLockoutCounterResetAfter",
     lambda n: {"AccountLockoutCounterResetAfter": 200 + n}),
    (ACCOUNT_SERVICE, "LDAP", lambda n: {"AccountLockoutThreshold": n % 6, "LDAP": {
        "Authentication": {"Username": f"cn=bind{n},dc=example"}}}),
]
ROUNDS = 25


def read_back(body, name):
    if name == "LDAP":
        return {"AccountLockoutThreshold": body["AccountLockoutThreshold"],
                "LDAP": {"Authentication": {"Username": body["LDAP"]["Authentication"]["Username"]}}}
    return {name: body[name]}


def test_concurrent_patches_from_several_processes_lose_nothing():
    bmc = BmcInstance(processes=4)
    try:
        acknowledged = {}

        def write(path, name, value_of):
            admin = bmc.admin()
            # The last round is even, so ServiceEnabled ends true.
            for n in range(ROUNDS):
                answer = admin.patch(bmc.url(path), json=value_of(n), timeout=30)
                if answer.status_code == 204:
                    acknowledged[name] = value_of(n)

        threads = [threading.Thread(target=write, args=writer) for writer in WRITERS]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join(120)
        admin = bmc.admin()
        for path, name, _ in WRITERS:
            assert name in acknowledged
            body = admin.get(bmc.url(path), timeout=10).json()
            assert read_back(body, name) == acknowledged[name], name
        leftovers = [name for name in os.listdir(os.path.join(bmc.root, "nv", "redfish"))
                     if ".tmp." in name]
        assert leftovers == []
    finally:
        bmc.stop()


def test_a_full_disk_refuses_the_change_and_keeps_the_old_settings():
    if os.geteuid() != 0 or shutil.which("mount") is None:
        pytest.skip("mounting a small tmpfs needs root")
    bmc = BmcInstance(processes=1)
    settings = os.path.join(bmc.root, "nv", "redfish")
    mounted = False
    try:
        admin = bmc.admin()
        assert admin.patch(bmc.url(SESSION_SERVICE), json={"SessionTimeout": 700},
                           timeout=10).status_code == 204
        saved = {name: open(os.path.join(settings, name), "rb").read()
                 for name in os.listdir(settings) if name.endswith(".ini")}
        if subprocess.run(["mount", "-t", "tmpfs", "-o", "size=16k", "tmpfs", settings],
                          capture_output=True).returncode != 0:
            pytest.skip("this machine does not allow mounting a tmpfs")
        mounted = True
        for name, content in saved.items():
            with open(os.path.join(settings, name), "wb") as file:
                file.write(content)
        with open(os.path.join(settings, "filler"), "wb", buffering=0) as filler:
            for _ in range(64):
                try:
                    filler.write(b"\0" * 1024)
                except OSError:
                    break
        refused = admin.patch(bmc.url(SESSION_SERVICE), json={"SessionTimeout": 800}, timeout=10)
        assert refused.status_code == 500
        account = admin.patch(bmc.url(ACCOUNT_SERVICE), json={
            "AccountLockoutDuration": 1234, "LDAP": {"Authentication": {"Username": "cn=full"}}},
            timeout=10)
        assert account.status_code == 500
        assert timeout_of(admin, bmc) == 700
        body = admin.get(bmc.url(ACCOUNT_SERVICE), timeout=10).json()
        assert body["AccountLockoutDuration"] != 1234
        assert body["LDAP"]["Authentication"]["Username"] != "cn=full"
        assert [name for name in os.listdir(settings) if ".tmp." in name] == []

        os.remove(os.path.join(settings, "filler"))
        assert admin.patch(bmc.url(SESSION_SERVICE), json={"SessionTimeout": 800},
                           timeout=10).status_code == 204
        assert timeout_of(admin, bmc) == 800
    finally:
        if mounted:
            subprocess.run(["umount", "-l", settings], check=False)
        bmc.stop()
