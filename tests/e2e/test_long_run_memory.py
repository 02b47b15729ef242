"""A few minutes of mixed load on four service processes: GETs over the
whole published URI space, logins and logouts, PATCHes. No request may
fail, and no service process may keep more memory after the run than
after its warm-up, beyond MEMORY_GROWTH_BOUND_KIB."""

import threading
import time

import requests

from bmc_instance import ARM_EMULATOR, BmcInstance
from uri_crawler import crawl

PROCESSES = 4
CLIENTS = 6
SESSIONS = "/redfish/v1/SessionService/Sessions"
ACCOUNT_SERVICE = "/redfish/v1/AccountService"
CHASSIS = "/redfish/v1/Chassis/1"
# Each client's rounds; a round is one login, its GETs, a PATCH, a logout.
WARM_UP_ROUNDS = 40
RUN_ROUNDS = 400
GETS_PER_ROUND = 12
# The run stops early rather than take longer than this (seconds).
RUN_SECONDS_LIMIT = 240
MEMORY_GROWTH_BOUND_KIB = 2048


# Under qemu-user (make test-armhf) the 32-bit program lives in the low
# 4 GiB of the emulator's address space; above it are the emulator's own
# heap and translated code, which grow as new code paths first run.
EMULATED_ADDRESS_LIMIT = 1 << 32


def emulated(pid):
    with open("/proc/%d/cmdline" % pid, "rb") as cmdline:
        return cmdline.read().startswith(ARM_EMULATOR)


def memory_kib(pid):
    """(resident, proportional) memory of a process's program in KiB."""
    limit = EMULATED_ADDRESS_LIMIT if emulated(pid) else None
    values = {"Rss": 0, "Pss": 0}
    counted = True
    with open("/proc/%d/smaps" % pid) as mappings:
        for line in mappings:
            name, _, rest = line.partition(":")
            if " " in name:  # a mapping's first line: "start-end perms ..."
                counted = limit is None or int(name.split("-")[0], 16) < limit
            elif name in values and counted:
                values[name] += int(rest.split()[0])
    return values["Rss"], values["Pss"]


class Client(threading.Thread):
    """Runs rounds of mixed requests and notes every failed one."""

    def __init__(self, bmc, number, uris, rounds, deadline):
        super().__init__(daemon=True)
        self.bmc, self.number, self.uris = bmc, number, uris
        self.rounds, self.deadline = rounds, deadline
        self.failures = []

    def request(self, session, method, path, **kwargs):
        try:
            answer = session.request(method, self.bmc.url(path), timeout=30, **kwargs)
        except requests.RequestException as error:
            self.failures.append("%s %s: %s" % (method, path, error))
            return None
        if answer.status_code >= 500:
            self.failures.append("%s %s: %d %s" % (method, path, answer.status_code,
                                                   answer.text[:200]))
        return answer

    def one_round(self, basic, round_number):
        login = self.request(requests.Session(), "POST", SESSIONS, json={
            "UserName": self.bmc.admin_user, "Password": self.bmc.admin_password})
        if login is None or login.status_code != 201:
            self.failures.append("login: %s" % (login and login.status_code))
            return
        token = requests.Session()
        token.headers["X-Auth-Token"] = login.headers["X-Auth-Token"]
        start = (self.number * 7919 + round_number * GETS_PER_ROUND) % len(self.uris)
        for step in range(GETS_PER_ROUND):
            session = token if step % 2 else basic
            self.request(session, "GET", self.uris[(start + step) % len(self.uris)])
        tag = "load-%d-%d" % (self.number, round_number % 5)
        self.request(token, "PATCH", CHASSIS, json={"AssetTag": tag})
        self.request(basic, "PATCH", ACCOUNT_SERVICE,
                     json={"AccountLockoutDuration": 60 + round_number % 3})
        self.request(token, "DELETE", login.headers["Location"])

    def run(self):
        basic = self.bmc.admin()
        for round_number in range(self.rounds):
            if time.monotonic() > self.deadline:
                break
            self.one_round(basic, round_number)


def run_clients(bmc, uris, rounds, seconds):
    deadline = time.monotonic() + seconds
    clients = [Client(bmc, number, uris, rounds, deadline) for number in range(CLIENTS)]
    for client in clients:
        client.start()
    for client in clients:
        client.join(seconds + 60)
    assert not any(client.is_alive() for client in clients), "a client did not finish"
    failures = [failure for client in clients for failure in client.failures]
    assert failures == [], "\n".join(failures[:20])


def test_service_processes_keep_their_memory_under_mixed_load():
    bmc = BmcInstance(processes=PROCESSES)
    try:
        uris = sorted(uri for uri, (status, _, _) in crawl(bmc).items() if status == 200)
        run_clients(bmc, uris, WARM_UP_ROUNDS, RUN_SECONDS_LIMIT)
        pids = bmc.service_processes()
        assert len(pids) == PROCESSES
        before = {pid: memory_kib(pid) for pid in pids}
        run_clients(bmc, uris, RUN_ROUNDS, RUN_SECONDS_LIMIT)
        assert bmc.service_processes() == pids, "a service process was replaced"
        after = {pid: memory_kib(pid) for pid in pids}
        grown = {pid: (before[pid], after[pid]) for pid in pids
                 if any(now - then > MEMORY_GROWTH_BOUND_KIB
                        for then, now in zip(before[pid], after[pid]))}
        assert grown == {}, "(Rss, Pss) KiB after warm-up and after the run: %s" % grown
    finally:
        bmc.stop()
