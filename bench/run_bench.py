#!/usr/bin/python3
"""The service against the floor responder, each behind its own lighttpd,
over the whole URI space that a crawl from /redfish/v1 finds.

Prints callgrind instructions per GET of every URI as a ratio to the floor,
once built afresh (answer reuse off) and once with reuse on, with the median,
the 90th percentile, the maximum and the worst URIs; then requests per second
of a crawl-like mixed load (wrk cycling over every URI) at concurrency 1 and
16 against the floor's, the proportional memory per process and the time from
process start to first answer. The numbers are from one run on a shared
machine: read the ratios, not the absolute values. Each rate ratio is the
median of a few rounds that run the floor and then the service.

Environment: BENCH_SECONDS (each wrk run, default 1), BENCH_ROUNDS (floor
and service runs per concurrency, default 5), BENCH_REQUESTS (callgrind
requests per URI after two warm-up requests, default 3), BENCH_URIS (how
many of the crawled URIs, evenly spread, default all), BMC_BUILD_DIR and
BMC_SOURCE_DIR as for the end-to-end tests."""

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
from uri_crawler import crawl  # noqa: E402

CONCURRENCIES = [1, 16]
SECONDS = float(os.environ.get("BENCH_SECONDS", "1"))
ROUNDS = int(os.environ.get("BENCH_ROUNDS", "5"))
WARM_UP_REQUESTS = 2
MEASURED_REQUESTS = int(os.environ.get("BENCH_REQUESTS", "3"))
URI_SAMPLE = int(os.environ.get("BENCH_URIS", "0"))
START_UP_TRIALS = 3
# What the service must reach, as ratios to the floor.
TARGETS = {"afresh max": 3.0, "afresh median": 1.3, "reused max": 1.2, "rps": 0.7,
           "memory": 2.0}
START_UP_LIMIT_MS = 20.0

SERVICE = os.path.join(BUILD_DIR, "service", "index.fcgi")
FLOOR = os.path.join(BUILD_DIR, "bench", "floor_responder")
REUSABLE_ROUTES = os.path.join(BUILD_DIR, "bench", "reusable_routes")
FLOOR_PATH = "/redfish/v1/"  # the floor answers every path alike


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


def deployed_environment():
    """What lighttpd's configuration gives index.fcgi besides its root, for
    the responders that the benchmark starts itself."""
    with open(os.path.join(SOURCE_DIR, "deploy", "lighttpd.conf.in")) as template:
        pairs = re.search(r'"bin-environment" => \((.*)\),', template.read()).group(1)
    return {name: value for name, value in re.findall(r'"([^"]+)" => "([^"]*)"', pairs)
            if name != "BMC_ROOT"}


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

    def start_responder(self, command, reuse_answers=True):
        """Starts command on a listening socket of its own, as lighttpd would."""
        if os.path.exists(self.socket_path):
            os.unlink(self.socket_path)
        listener = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        listener.bind(self.socket_path)
        listener.listen(64)
        responder = subprocess.Popen(command, stdin=listener.fileno(), stdout=subprocess.DEVNULL,
                                     stderr=subprocess.DEVNULL,
                                     env=dict(os.environ, **deployed_environment(),
                                              BMC_ROOT=self.root,
                                              BMC_REUSE_ANSWERS="1" if reuse_answers else "0"))
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


def wrk(client_cpu, url, headers, concurrency, script):
    command = ["taskset", "-c", str(client_cpu), "wrk", "-t1", "-c%d" % concurrency,
               "-d%gs" % SECONDS, "-s", script, url]
    for name, value in headers.items():
        command += ["-H", "%s: %s" % (name, value)]
    output = subprocess.run(command, check=True, capture_output=True, text=True,
                            timeout=SECONDS + 60).stdout
    if "Non-2xx" in output:
        raise RuntimeError("wrk saw failed answers for %s:\n%s" % (url, output))
    return float(re.search(r"Requests/sec:\s+([0-9.]+)", output).group(1))


def crawl_script(uris, workdir):
    """A wrk script that requests the URIs in turn, as a crawling client does."""
    path = os.path.join(workdir, "crawl.lua")
    with open(path, "w") as script:
        script.write("local uris = {%s}\nlocal next_uri = 0\n" %
                     ", ".join('"%s"' % uri for uri in uris))
        script.write("request = function()\n  next_uri = next_uri % #uris + 1\n"
                     "  return wrk.format(\"GET\", uris[next_uri])\nend\n")
    return path

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


def wrk_with_cpu(client_cpu, server, url, headers, concurrency, script):
    """Requests per second, and the microseconds of CPU that the web server
    and its responders spent per request: steadier than the rate on a busy
    machine."""
    before = server_cpu_seconds(server)
    rate = wrk(client_cpu, url, headers, concurrency, script)
    return rate, (server_cpu_seconds(server) - before) * 1e6 / (rate * SECONDS)


def paired_rates(client_cpu, floor, service, concurrency, script):
    """Rates and CPU per request of the floor and the service in alternating
    runs, so that each ratio compares two neighbouring runs on a machine whose
    speed drifts; the medians over the rounds, of each and of the ratios."""
    rounds = []
    for _ in range(ROUNDS):
        floor_rate, floor_cpu = wrk_with_cpu(client_cpu, *floor, concurrency, script)
        rate, cpu = wrk_with_cpu(client_cpu, *service, concurrency, script)
        rounds.append({"floor rps": floor_rate, "floor cpu": floor_cpu, "rps": rate, "cpu": cpu,
                       "rps ratio": rate / floor_rate, "cpu ratio": cpu / floor_cpu})
    return {name: statistics.median(one[name] for one in rounds) for name in rounds[0]}


def instructions_per_request(site, binary, requests_by_key, workdir, reuse_answers=True):
    """Callgrind instructions of each request: the responder dumps its
    counters as each accept begins, so dump n + 1 holds request n."""
    output = os.path.join(workdir, "callgrind.out")
    responder = site.start_responder(
        ["valgrind", "--tool=callgrind", "--dump-before=FCGX_Accept_r",
         "--callgrind-out-file=" + output, binary], reuse_answers)
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


def crawled_uris(instance):
    """Every URI of the crawl that the service answers (lighttpd serves the
    schema files itself) and whose GET succeeds, evenly thinned to
    BENCH_URIS when that is set."""
    uris = sorted(uri for uri, (status, _, _) in crawl(instance).items()
                  if status == 200 and re.match(r"/(redfish|restapi)(/|$)", uri))
    if 0 < URI_SAMPLE < len(uris):
        step = len(uris) / URI_SAMPLE
        uris = [uris[int(index * step)] for index in range(URI_SAMPLE)]
    return uris


def reusable(uris):
    answer = subprocess.run([REUSABLE_ROUTES], input="\n".join(uris) + "\n", check=True,
                            capture_output=True, text=True, timeout=60).stdout
    return {line.rsplit(" ", 1)[0] for line in answer.splitlines() if line.endswith(" reusable")}


def token_headers(instance):
    answer = instance.login()
    answer.raise_for_status()
    token = answer.headers["X-Auth-Token"]
    return token, {"X-Auth-Token": token}


def warm_up(instance, uris, headers):
    """Each process reads every file once; answers are kept once their files
    have settled, a second after they were written."""
    for _ in range(2):
        for uri in uris:
            for _ in range(4):
                requests.get(instance.url(uri), headers=headers, timeout=10)
        time.sleep(1.1)


def mixed_load(client_cpu, instance, floor_site, uris, headers, workdir):
    script = crawl_script(uris, workdir)
    return {concurrency: paired_rates(client_cpu, (floor_site.server, floor_site.base, {}),
                                      (instance.server, instance.url(""), headers),
                                      concurrency, script)
            for concurrency in CONCURRENCIES}


def instructions(instance, floor_root, uris, headers, workdir):
    """Instructions per GET of every URI, built afresh and with reuse on, and
    the floor's; then the start-up times."""
    service_site = Site(instance.root, external=True)
    floor_site = Site(floor_root, external=True)
    try:
        by_uri = {uri: (uri, headers) for uri in uris}
        counts = {"afresh": instructions_per_request(service_site, SERVICE, by_uri, workdir,
                                                     reuse_answers=False),
                  "reused": instructions_per_request(service_site, SERVICE, by_uri, workdir),
                  "floor": instructions_per_request(floor_site, FLOOR,
                                                    {FLOOR_PATH: (FLOOR_PATH, {})},
                                                    workdir)[FLOOR_PATH]}
        start_up = {"service": start_up_ms(service_site, SERVICE, uris[0], headers),
                    "floor": start_up_ms(floor_site, FLOOR, FLOOR_PATH, {})}
        return counts, start_up
    finally:
        service_site.stop()
        floor_site.stop()


def measure(client_cpu):
    instance = BmcInstance(processes=2, check_reused_responses=False)
    floor_directory = None
    try:
        instance.bmcsim("sensors", "drift")
        uris = crawled_uris(instance)
        token, headers = token_headers(instance)
        floor_directory = make_floor_root(instance,
                                          os.path.join(instance.root, "tmp", "redfish_" + token))
        floor_site = Site(floor_directory.name)
        with tempfile.TemporaryDirectory(prefix="bmc-bench-") as workdir:
            try:
                warm_up(instance, uris, headers)
                rates = mixed_load(client_cpu, instance, floor_site, uris, headers, workdir)
                memory = {"service": resident_mib(instance.service_processes()),
                          "floor": resident_mib(responder_pids(floor_site.server))}
            finally:
                floor_site.stop()
            counts, start_up = instructions(instance, floor_directory.name, uris, headers,
                                            workdir)
        return {"uris": uris, "reusable": reusable(uris), "rates": rates, "memory": memory,
                "counts": counts, "start_up": start_up}
    finally:
        instance.stop()
        if floor_directory:
            floor_directory.cleanup()


def percentile(values, fraction):
    ordered = sorted(values)
    return ordered[min(len(ordered) - 1, int(fraction * len(ordered)))]


def verdict(ok):
    return "ok" if ok else "MISSED"


def print_instructions(results):
    """The ratios of every GET to the floor; the number of targets missed."""
    counts, floor = results["counts"], results["counts"]["floor"]
    afresh = {uri: counts["afresh"][uri] / floor for uri in results["uris"]}
    reused = {uri: counts["reused"][uri] / floor for uri in results["reusable"]}
    print("%d URIs; floor %.0f instructions per request" % (len(afresh), floor))
    line = "%-16s %7s %7s %7s  %s"
    print(line % ("ratio to floor", "median", "p90", "max", "target"))
    median, worst = statistics.median(afresh.values()), max(afresh.values())
    afresh_ok = median <= TARGETS["afresh median"] and worst <= TARGETS["afresh max"]
    print(line % ("built afresh", "%.2f" % median, "%.2f" % percentile(afresh.values(), 0.9),
                  "%.2f" % worst, verdict(afresh_ok)))
    reused_ok = all(ratio <= TARGETS["reused max"] for ratio in reused.values())
    if reused:
        print(line % ("reused (%d)" % len(reused), "%.2f" % statistics.median(reused.values()),
                      "%.2f" % percentile(reused.values(), 0.9), "%.2f" % max(reused.values()),
                      verdict(reused_ok)))
    print_worst("the ten worst built afresh:", afresh, counts["afresh"], 10)
    print_worst("the three worst reused:", reused, counts["reused"], 3)
    return (not afresh_ok) + (not reused_ok)


def print_worst(title, ratios, counts, how_many):
    print(title)
    for uri in sorted(ratios, key=ratios.get, reverse=True)[:how_many]:
        print("  %-70s %10.0f %6.2f" % (uri, counts[uri], ratios[uri]))


def print_rates(rates):
    missed = 0
    for concurrency, rate in rates.items():
        ok = rate["rps ratio"] >= TARGETS["rps"]
        missed += not ok
        print("mixed crawl load, concurrency %d: %.0f req/s (floor %.0f), ratio %.2f; "
              "%.1f us CPU per request (floor %.1f): %s"
              % (concurrency, rate["rps"], rate["floor rps"], rate["rps ratio"], rate["cpu"],
                 rate["floor cpu"], verdict(ok)))
    return missed


def print_process(memory, start_up):
    memory_ok = memory["service"][0] <= TARGETS["memory"] * memory["floor"][0]
    print("resident memory per service process: %.1f MiB proportional, %.1f MiB with whole "
          "shared libraries (floor %.1f and %.1f): %s"
          % (*memory["service"], *memory["floor"], verdict(memory_ok)))
    start_ok = start_up["service"] <= START_UP_LIMIT_MS
    print("process start to first answer: %.1f ms (floor %.1f ms, at most %g): %s"
          % (start_up["service"], start_up["floor"], START_UP_LIMIT_MS, verdict(start_ok)))
    return (not memory_ok) + (not start_ok)


def main():
    client_cpu = pick_cpus()
    results = measure(client_cpu)
    missed = (print_instructions(results) + print_rates(results["rates"]) +
              print_process(results["memory"], results["start_up"]))
    print("%d of the targets missed" % missed if missed else "every target met")


if __name__ == "__main__":
    main()
