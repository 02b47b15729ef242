"""Fault injection: service processes killed with SIGKILL while logins,
logouts and account changes run; afterwards the stores hold every
acknowledged write, nothing refused, and no litter."""

import concurrent.futures
import os
import random
import signal
import threading
import time

import pytest
import requests

from bmc_instance import BmcInstance

SESSIONS = "/redfish/v1/SessionService/Sessions"
ACCOUNTS = "/redfish/v1/AccountService/Accounts"
PASSWORD = "Passw0rd-1"
WORKERS = 4
ROUNDS = 25
KILLS = 30


@pytest.fixture
def busy_bmc():
    instance = BmcInstance(processes=4)
    yield instance
    instance.stop()


def sessions_directory(bmc):
    return os.path.join(bmc.root, "tmp", "www", "redfish", "v1", "SessionService", "Sessions")


def session_litter(bmc):
    tmp = os.path.join(bmc.root, "tmp")
    return ([name for name in os.listdir(tmp) if name.startswith("redfish_") and name.endswith(".tmp")]
            + [name for name in os.listdir(sessions_directory(bmc)) if not name.isdigit()])


def attempt(method, url, **kwargs):
    """The answer's status, or None when the process died under it."""
    try:
        return requests.request(method, url, timeout=10, **kwargs).status_code
    except requests.RequestException:
        return None


class AccountHistory:
    """What one worker asked of its account: acknowledged and unsure names."""

    def __init__(self, name):
        self.acknowledged = name
        self.unsure = []
        self.refused = []

    def possible(self):
        return {self.acknowledged, *self.unsure}


def work(bmc, worker, history):
    admin = (bmc.admin_user, bmc.admin_password)
    account = bmc.url(f"{ACCOUNTS}/{worker + 4}")  # slot worker + 3
    for round_number in range(ROUNDS):
        login = None
        try:
            login = bmc.login()
        except requests.RequestException:
            pass
        name = f"w{worker}r{round_number}"
        status = attempt("PATCH", account, auth=admin, json={"UserName": name})
        if status == 204:
            history.acknowledged, history.unsure = name, []
        elif status is None or status >= 500:
            history.unsure.append(name)
        refused = f"x{worker}r{round_number}"
        if attempt("PATCH", account, auth=admin, json={"UserName": refused, "Password": "short"}) != 400:
            history.unsure.append(refused)
        else:
            history.refused.append(refused)
        if login is not None and login.status_code == 201:
            attempt("DELETE", bmc.url(login.headers["Location"]),
                    headers={"X-Auth-Token": login.headers["X-Auth-Token"]})


def kill_service_processes(bmc, stop):
    chooser = random.Random(8)
    for _ in range(KILLS):
        if stop.is_set():
            return
        processes = bmc.service_processes()
        if processes:
            try:
                os.kill(chooser.choice(processes), signal.SIGKILL)
            except ProcessLookupError:
                pass
        time.sleep(chooser.uniform(0.02, 0.15))


def wait_for_service(bmc):
    """lighttpd restarts the killed processes; the first answers may be 503."""
    for _ in range(100):
        if attempt("GET", bmc.url(SESSIONS), auth=(bmc.admin_user, bmc.admin_password)) == 200:
            return
        time.sleep(0.1)
    pytest.fail("the service did not come back")


def test_killed_processes_lose_no_acknowledged_write_and_leave_no_litter(busy_bmc):
    bmc = busy_bmc
    histories = []
    for worker in range(WORKERS):
        bmc.bmcsim("users", "add", str(worker + 3), f"w{worker}start", PASSWORD, "3")
        histories.append(AccountHistory(f"w{worker}start"))

    stop = threading.Event()
    killer = threading.Thread(target=kill_service_processes, args=(bmc, stop))
    killer.start()
    try:
        with concurrent.futures.ThreadPoolExecutor(WORKERS) as pool:
            for done in [pool.submit(work, bmc, worker, histories[worker]) for worker in range(WORKERS)]:
                done.result()
    finally:
        stop.set()
        killer.join()

    wait_for_service(bmc)
    listing = bmc.bmcsim("users", "list")
    for worker, history in enumerate(histories):
        names = [line.split()[2] for line in listing.splitlines()
                 if line.split() and line.split()[0] == str(worker + 3)]
        assert names and names[0] in history.possible(), (worker, names, history.acknowledged)
        assert not any(refused in listing for refused in history.refused)

    admin = bmc.admin()
    for member in admin.get(bmc.url(SESSIONS), timeout=10).json()["Members"]:
        admin.delete(bmc.url(member["@odata.id"]), timeout=10)
    tokens = [bmc.login() for _ in range(16)]  # the first login sweeps
    assert [answer.status_code for answer in tokens] == [201] * 16
    assert session_litter(bmc) == []
    listed = {member["@odata.id"].rsplit("/", 1)[1]
              for member in admin.get(bmc.url(SESSIONS), timeout=10).json()["Members"]}
    directories = {name for name in os.listdir(sessions_directory(bmc)) if name.isdigit()}
    records = [name for name in os.listdir(os.path.join(bmc.root, "tmp")) if name.startswith("redfish_")
               and len(name) == len("redfish_") + 32]
    assert listed == directories == {str(id) for id in range(1, 17)}
    assert len(records) == 16
    assert bmc.login().status_code == 404
