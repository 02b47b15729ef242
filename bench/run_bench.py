#!/usr/bin/python3
"""The service against the floor responder, each behind its own lighttpd.

Prints one table: requests per second with wrk at concurrency 1 and 16,
callgrind instructions per request, and each as a ratio to the floor; then
the resident memory of the service processes and the time from process
start to first answer. The numbers are from one short run on a shared
machine: read the ratios, not the absolute values. Each rate ratio is the
median of a few rounds that run the floor and then the service; the floor's
row shows the median of all its runs.

Environment: BENCH_SECONDS (each wrk run, default 1), BENCH_ROUNDS (floor
and service runs per path and concurrency, default 5), BENCH_REQUESTS
(callgrind requests per path after two warm-up requests, default 5),
BMC_BUILD_DIR and BMC_SOURCE_DIR as for the end-to-end tests."""

import base64
import glob
import os
import re
import socket
import statistics
import subprocess
import sys
import tempfile
import time

import requests

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "tests", "e2e"))
from bmc_instance import (BUILD_DIR, SOURCE_DIR, BmcInstance, free_port,  # noqa: E402
                          wait_until_listening)

PATHS = ["/redfish/v1/", "/redfish/v1/Systems/1", "/redfish/v1/Chassis/1/Thermal",
         "/redfish/v1/Chassis/1/Sensors/1", "/redfish/v1/AccountService/Accounts"]
CONCURRENCIES = [1, 16]
SECONDS = float(os.environ.get("BENCH_SECONDS", "1"))
ROUNDS = int(os.environ.get("BENCH_ROUNDS", "5"))
WARM_UP_REQUESTS = 2
MEASURED_REQUESTS = int(os.environ.get("BENCH_REQUESTS", "5"))
START_UP_TRIALS = 3
# What the service must reach, as ratios to the floor.
TARGETS = {"token": {"rps": 0.8, "instructions": 1.5}, "basic": {"rps": 0.6}}
MEMORY_LIMIT_MIB = 6.0
START_UP_LIMIT_MS = 20.0

SERVICE = os.path.join(BUILD_DIR, "service", "index.fcgi")
FLOOR = os.path.join(BUILD_DIR, "bench", "floor_responder")


def pick_cpus():
    """One CPU for the servers (this process and its children), one for wrk."""
    cpus = sorted(os.sched_getaffinity(0))
    server_cpu, client_cpu = cpus[0], cpus[-1]
    os.sched_setaffinity(0, {server_cpu})
    return client_cpu


def site_config(root, port, tls_port, processes, external):
    """lighttpd's configuration as the instances get it; an external site
    connects to a responder that the benchmark starts itself."""
    with open(os.path.join(SOURCE_DIR, "deploy", "lighttpd.conf.in")) as template:
        text = template.read()
    for name, value in (("@ROOT@", root), ("@PORT@", str(port)), ("@TLS_PORT@", str(tls_port)),
                        ("@PROCS@", str(processes))):
        text = text.replace(name, value)
    if external:
        text = "\n".join(line for line in text.splitlines()
                         if not re.search(r'"(bin-path|max-procs|bin-environment)"', line))
        text = text.replace("index.fcgi.socket", "external.socket")
        text = text.replace("lighttpd.pid", "lighttpd-external.pid")
    return text


class Site:
    """A lighttpd on a free loopback port in front of one state root."""

    def __init__(self, root, processes=2, external=False):
        self.root = root
        self.port = free_port()
        self.base = f"http://127.0.0.1:{self.port}"
        self.socket_path = os.path.join(root, "run", "external.socket")
        config = os.path.join(root, "etc", "lighttpd-%s.conf" % ("external" if external else "bench"))
        with open(config, "w") as out:
            out.write(site_config(root, self.port, free_port(), processes, external))
        error_log = os.path.join(root, "log", "lighttpd-error.log")
        with open(error_log, "ab") as log:
            self.server = subprocess.Popen(["lighttpd", "-D", "-f", config], stderr=log)
        wait_until_listening(self.server, self.port, lambda: open(error_log).read())

    def start_responder(self, command):
        """Starts command on a listening socket of its own, as lighttpd would."""
        if os.path.exists(self.socket_path):
            os.unlink(self.socket_path)
        listener = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        listener.bind(self.socket_path)
        listener.listen(64)
        responder = subprocess.Popen(command, stdin=listener.fileno(), stdout=subprocess.DEVNULL,
                                     stderr=subprocess.DEVNULL,
                                     env=dict(os.environ, BMC_ROOT=self.root))
        listener.close()
        return responder

    def stop(self):
        self.server.terminate()
        self.server.wait(timeout=10)


def stop_process(process):
    # libfcgi takes SIGTERM only at the next request; every dump that counts
    # is on disk by now.
    process.kill()
    process.wait(timeout=60)


def make_floor_root(instance, session_record):
    """A root like the instance's, with the floor in the place of index.fcgi."""
    directory = tempfile.TemporaryDirectory(prefix="bmc-floor-")
    root = directory.name
    for sub in ("tmp/web/bin", "tmp/www", "run", "log", "etc/ssl"):
        os.makedirs(os.path.join(root, sub))
    os.symlink(FLOOR, os.path.join(root, "tmp", "web", "bin", "index.fcgi"))
    os.symlink(os.path.join(instance.root, "etc", "ssl", "server.pem"),
               os.path.join(root, "etc", "ssl", "server.pem"))
    with open(session_record, "rb") as record, \
            open(os.path.join(root, "tmp", "floor_session"), "wb") as copy:
        copy.write(record.read())
    return directory


def wrk(client_cpu, url, headers, concurrency):
    command = ["taskset", "-c", str(client_cpu), "wrk", "-t1", "-c%d" % concurrency,
               "-d%gs" % SECONDS, url]
    for name, value in headers.items():
        command += ["-H", "%s: %s" % (name, value)]
    output = subprocess.run(command, check=True, capture_output=True, text=True,
                            timeout=SECONDS + 60).stdout
    if "Non-2xx" in output:
        raise RuntimeError("wrk saw failed answers for %s:\n%s" % (url, output))
    return float(re.search(r"Requests/sec:\s+([0-9.]+)", output).group(1))


def server_cpu_seconds(server):
    """User and system time so far of a lighttpd and the processes it started."""
    ticks = 0
    for pid in [server.pid] + responder_pids(server):
        try:
            with open("/proc/%d/stat" % pid) as stat:
                fields = stat.read().rsplit(")", 1)[1].split()
        except OSError:
            continue
        ticks += int(fields[11]) + int(fields[12])
    return ticks / os.sysconf("SC_CLK_TCK")


def wrk_with_cpu(client_cpu, server, url, headers, concurrency):
    """Requests per second, and the microseconds of CPU that the web server
    and its responders spent per request: steadier than the rate on a busy
    machine."""
    before = server_cpu_seconds(server)
    rate = wrk(client_cpu, url, headers, concurrency)
    return rate, (server_cpu_seconds(server) - before) * 1e6 / (rate * SECONDS)


def paired_rates(client_cpu, floor, service, concurrency):
    """Rates and CPU per request of the floor and the service in alternating
    runs, so that each ratio compares two neighbouring runs on a machine whose
    speed drifts; the medians over the rounds, of each and of the ratios."""
    rounds = []
    for _ in range(ROUNDS):
        floor_rate, floor_cpu = wrk_with_cpu(client_cpu, *floor, concurrency)
        rate, cpu = wrk_with_cpu(client_cpu, *service, concurrency)
        rounds.append({"floor rps": floor_rate, "floor cpu": floor_cpu, "rps": rate, "cpu": cpu,
                       "rps ratio": rate / floor_rate, "cpu ratio": cpu / floor_cpu})
    return {name: statistics.median(one[name] for one in rounds) for name in rounds[0]}


def instructions_per_request(site, binary, requests_by_key, workdir):
    """Callgrind instructions of each request: the responder dumps its
    counters as each accept begins, so dump n + 1 holds request n."""
    output = os.path.join(workdir, "callgrind.out")
    responder = site.start_responder(
        ["valgrind", "--tool=callgrind", "--dump-before=FCGX_Accept_r",
         "--callgrind-out-file=" + output, binary])
    order = []
    try:
        for key, (path, headers) in requests_by_key.items():
            for number in range(WARM_UP_REQUESTS + MEASURED_REQUESTS):
                answer = requests.get(site.base + path, headers=headers, timeout=120)
                answer.raise_for_status()
                order.append(key if number >= WARM_UP_REQUESTS else None)
        # One more, so that the last measured request has a dump of its own.
        requests.get(site.base + "/redfish/v1/", timeout=120)
    finally:
        stop_process(responder)
    samples = {}
    for index, key in enumerate(order):
        if key is not None:
            samples.setdefault(key, []).append(dump_total("%s.%d" % (output, index + 2)))
    for dump in glob.glob(output + "*"):
        os.unlink(dump)
    return {key: statistics.median(values) for key, values in samples.items()}


def dump_total(path):
    with open(path) as dump:
        for line in dump:
            if line.startswith("totals:"):
                return int(line.split()[1])
    raise RuntimeError("no totals in " + path)


def start_up_ms(site, binary, path, headers):
    """Process start to first answer, the median of a few starts."""
    trials = []
    for _ in range(START_UP_TRIALS):
        started = time.perf_counter()
        responder = site.start_responder([binary])
        try:
            requests.get(site.base + path, headers=headers, timeout=30).raise_for_status()
            trials.append((time.perf_counter() - started) * 1000)
        finally:
            stop_process(responder)
    return statistics.median(trials)


def resident_mib(pids):
    """The largest proportional set size (private pages, plus an equal share
    of the pages shared with other processes) and the largest resident set
    size (shared library pages counted whole) of the processes."""
    sizes = {"Pss:": [], "Rss:": []}
    for pid in pids:
        with open("/proc/%d/smaps_rollup" % pid) as rollup:
            for line in rollup:
                fields = line.split()
                if fields[0] in sizes:
                    sizes[fields[0]].append(int(fields[1]) / 1024)
    return max(sizes["Pss:"]), max(sizes["Rss:"])


def responder_pids(server):
    """The processes that a lighttpd started."""
    pids = []
    for entry in filter(str.isdigit, os.listdir("/proc")):
        try:
            with open("/proc/%s/stat" % entry) as stat:
                if int(stat.read().rsplit(")", 1)[1].split()[1]) == server.pid:
                    pids.append(int(entry))
        except OSError:
            continue
    return pids


def auth_headers(instance):
    answer = instance.login()
    answer.raise_for_status()
    token = answer.headers["X-Auth-Token"]
    basic = base64.b64encode(("%s:%s" % (instance.admin_user, instance.admin_password)).encode())
    return token, {"token": {"X-Auth-Token": token},
                   "basic": {"Authorization": "Basic " + basic.decode()}}


def warm_up(instance, keys, headers):
    """Each process reads every file once; answers are kept once their files
    have settled, a second after they were written."""
    for _ in range(2):
        for auth, path in keys:
            for _ in range(4):
                requests.get(instance.url(path), headers=headers[auth], timeout=10)
        time.sleep(1.1)


def measure(client_cpu):
    instance = BmcInstance(processes=2, check_reused_responses=False)
    floor_directory = None
    sites = []
    try:
        token, headers = auth_headers(instance)
        floor_directory = make_floor_root(instance,
                                          os.path.join(instance.root, "tmp", "redfish_" + token))
        floor_site = Site(floor_directory.name)
        sites.append(floor_site)
        keys = [(auth, path) for auth in headers for path in PATHS]
        warm_up(instance, keys, headers)
        rates = {}
        for concurrency in CONCURRENCIES:
            for auth, path in keys:
                rates[(auth, path, concurrency)] = paired_rates(
                    client_cpu, (floor_site.server, floor_site.base + PATHS[0], {}),
                    (instance.server, instance.url(path), headers[auth]), concurrency)
        memory = {"service": resident_mib(instance.service_processes()),
                  "floor": resident_mib(responder_pids(floor_site.server))}
        floor_site.stop()
        sites.remove(floor_site)

        service_site = Site(instance.root, external=True)
        floor_external = Site(floor_directory.name, external=True)
        sites += [service_site, floor_external]
        with tempfile.TemporaryDirectory(prefix="bmc-callgrind-") as workdir:
            instructions = instructions_per_request(
                service_site, SERVICE,
                {key: (key[1], headers[key[0]]) for key in keys}, workdir)
            instructions.update(instructions_per_request(
                floor_external, FLOOR, {"floor": (PATHS[0], {})}, workdir))
        start_up = {"service": start_up_ms(service_site, SERVICE, PATHS[0], headers["token"]),
                    "floor": start_up_ms(floor_external, FLOOR, PATHS[0], {})}
        return keys, rates, instructions, memory, start_up
    finally:
        for site in sites:
            site.stop()
        instance.stop()
        if floor_directory:
            floor_directory.cleanup()


def meets(auth, ratios):
    target = TARGETS[auth]
    return (all(ratio >= target["rps"] for ratio in ratios["rps"]) and
            ratios["instructions"] <= target.get("instructions", float("inf")))


def print_table(keys, rates, instructions, memory, start_up):
    line = "%-36s %-6s %9s %6s %9s %6s %10s %6s %9s %6s  %s"
    print(line % ("path", "auth", "req/s c1", "floor", "req/s c16", "floor", "instr/req",
                  "floor", "cpu us c16", "floor", "target"))
    floor = {(name, c): statistics.median(rates[(auth, path, c)]["floor " + name]
                                          for auth, path in keys)
             for name in ("rps", "cpu") for c in CONCURRENCIES}
    print(line % ("(floor responder)", "-", "%.0f" % floor[("rps", 1)], "1.00",
                  "%.0f" % floor[("rps", 16)], "1.00", "%.0f" % instructions["floor"], "1.00",
                  "%.1f" % floor[("cpu", 16)], "1.00", ""))
    missed = 0
    for auth, path in keys:
        by_concurrency = [rates[(auth, path, c)] for c in CONCURRENCIES]
        ratios = {"rps": [one["rps ratio"] for one in by_concurrency],
                  "instructions": instructions[(auth, path)] / instructions["floor"]}
        ok = meets(auth, ratios)
        missed += not ok
        c1, c16 = by_concurrency
        print(line % (path, auth, "%.0f" % c1["rps"], "%.2f" % c1["rps ratio"],
                      "%.0f" % c16["rps"], "%.2f" % c16["rps ratio"],
                      "%.0f" % instructions[(auth, path)], "%.2f" % ratios["instructions"],
                      "%.1f" % c16["cpu"], "%.2f" % c16["cpu ratio"], "ok" if ok else "MISSED"))
    memory_ok = memory["service"][0] <= MEMORY_LIMIT_MIB
    print("resident memory per service process: %.1f MiB proportional, %.1f MiB with whole "
          "shared libraries (floor %.1f and %.1f; at most %g proportional): %s"
          % (*memory["service"], *memory["floor"], MEMORY_LIMIT_MIB,
             "ok" if memory_ok else "MISSED"))
    start_ok = start_up["service"] <= START_UP_LIMIT_MS
    print("process start to first answer: %.1f ms (floor %.1f ms, at most %g): %s"
          % (start_up["service"], start_up["floor"], START_UP_LIMIT_MS,
             "ok" if start_ok else "MISSED"))
    return missed + (not memory_ok) + (not start_ok)


def main():
    client_cpu = pick_cpus()
    missed = print_table(*measure(client_cpu))
    print("%d of the targets missed" % missed if missed else "every target met")


if __name__ == "__main__":
    main()
