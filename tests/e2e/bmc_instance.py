"""One simulated BMC served by a real lighttpd on a free loopback port."""

import json
import os
import shutil
import signal
import socket
import subprocess
import tempfile
import time

import requests

SOURCE_DIR = os.environ.get("BMC_SOURCE_DIR", os.path.join(os.path.dirname(__file__), "..", ".."))
BUILD_DIR = os.environ.get("BMC_BUILD_DIR", os.path.join(SOURCE_DIR, "build"))


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


def wait_until_listening(server, port, error_log):
    """Waits, boundedly, until the lighttpd process server accepts on port."""
    for _ in range(100):
        if server.poll() is not None:
            raise RuntimeError("lighttpd exited: " + error_log())
        try:
            with socket.create_connection(("127.0.0.1", port), timeout=0.2):
                return
        except OSError:
            time.sleep(0.05)
    raise RuntimeError("lighttpd did not listen on port %d" % port)


class NoTmpfs(RuntimeError):
    """No tmpfs can be mounted here (mounting needs root); tests skip."""


def mount_tmpfs(directory, size):
    """Mounts a tmpfs of size over directory."""
    if os.geteuid() != 0 or shutil.which("mount") is None or subprocess.run(
            ["mount", "-t", "tmpfs", "-o", "size=" + size, "tmpfs", directory],
            capture_output=True).returncode != 0:
        raise NoTmpfs("no tmpfs can be mounted here")


def mount_small_directory(root, relative, size):
    """Mounts a tmpfs of size over root/relative with its contents copied in;
    returns the directory."""
    directory = os.path.join(root, relative)
    saved = directory + ".saved"
    shutil.copytree(directory, saved, symlinks=True)
    try:
        mount_tmpfs(directory, size)
        shutil.copytree(saved, directory, symlinks=True, dirs_exist_ok=True)
    finally:
        shutil.rmtree(saved)
    return directory


STALE_ANSWER = "differs from a fresh one"

ADMIN_USER = "admin"
ADMIN_PASSWORD = "Adm1n-pass"


# The interpreter that binfmt_misc starts an armhf program with (make
# test-armhf): it puts itself and the program's path before the program's
# own command line.
ARM_EMULATOR = b"/usr/libexec/qemu-binfmt/arm-binfmt-P\0"


def process_commands():
    """(pid, parent pid, command line with NUL separators) of every process
    that is still there to read, as the process was started."""
    for entry in filter(str.isdigit, os.listdir("/proc")):
        try:
            with open(f"/proc/{entry}/stat") as stat:
                parent = int(stat.read().rsplit(")", 1)[1].split()[1])
            with open(f"/proc/{entry}/cmdline", "rb") as cmdline:
                command = cmdline.read()
        except OSError:
            continue
        if command.startswith(ARM_EMULATOR):
            command = command.split(b"\0", 2)[2]
        yield int(entry), parent, command


class BmcInstance:
    admin_user = ADMIN_USER
    admin_password = ADMIN_PASSWORD

    def __init__(self, processes=2, open_service_root=False, check_reused_responses=True,
                 https_only=False, kill_at=None, state_size=None, allow_local_destinations=True,
                 also_listen_on=(), before_start=None, small_directory=None):
        self.directory = tempfile.TemporaryDirectory(prefix="bmc-e2e-")
        self.root = self.directory.name
        # The whole root on a small file system of its own, which a test
        # can fill (NoTmpfs when it cannot be mounted).
        self.mounted = False
        if state_size:
            try:
                mount_tmpfs(self.root, state_size)
            except NoTmpfs:
                self.directory.cleanup()
                raise
            self.mounted = True
        self.port = free_port()
        self.tls_port = free_port()
        self.base = f"http://127.0.0.1:{self.port}"
        self.tls_base = f"https://127.0.0.1:{self.tls_port}"
        preparation = dict(os.environ, HTTPS_ONLY="1" if https_only else "0")
        subprocess.run([os.path.join(SOURCE_DIR, "scripts", "prepare-instance.sh"), self.root,
                        BUILD_DIR, str(self.port), str(self.tls_port), str(processes)], check=True,
                       env=preparation)
        self.bmcsim("users", "seed", ADMIN_USER, ADMIN_PASSWORD)
        if open_service_root:
            self.write_setting("redfish.ini", "[Service]\nUnauthenticatedServiceRoot=1\n")
        # The tests' receivers and image servers listen on loopback.
        if allow_local_destinations:
            self.write_setting("outbound.ini", "[Destinations]\nAllowLocal=1\n")
        # Other loopback addresses on the same port, such as the host
        # interface's own address.
        with open(os.path.join(self.root, "etc", "lighttpd.conf"), "a") as config:
            for address in also_listen_on:
                config.write(f'$SERVER["socket"] == "{address}:{self.port}" {{ }}\n')
        if before_start:
            before_start(self)
        # A directory moved onto a small tmpfs of its own, (relative path,
        # size), that a test can fill like a full disk. Mounted before the
        # service starts, which would otherwise watch the directory hidden
        # under the mount.
        self.small_directory = None
        if small_directory:
            try:
                self.small_directory = mount_small_directory(self.root, *small_directory)
            except NoTmpfs:
                self.directory.cleanup()
                raise
        # The service processes' diagnostics go where lighttpd's standard
        # error goes: the instance's error log, as with make run.
        # Every reused GET answer is also built afresh and compared (stop()
        # fails the test on a difference); the benchmark measures without.
        environment = dict(os.environ)
        if check_reused_responses:
            environment["BMC_CHECK_REUSED_RESPONSES"] = "1"
        # The service processes kill themselves at this step (the test hook
        # of platform/kill_point.h).
        if kill_at:
            environment["BMC_KILL_AT"] = kill_at
        with open(os.path.join(self.root, "log", "lighttpd-error.log"), "ab") as log:
            self.server = subprocess.Popen(
                ["lighttpd", "-D", "-f", os.path.join(self.root, "etc", "lighttpd.conf")],
                stderr=log, env=environment)
        self._wait_until_listening()

    def _wait_until_listening(self):
        wait_until_listening(self.server, self.port, self.error_log)

    def url(self, path, address="127.0.0.1"):
        return f"http://{address}:{self.port}{path}"

    def write_setting(self, name, text):
        with open(os.path.join(self.root, "nv", "redfish", name), "w") as settings:
            settings.write(text)

    def admin(self):
        """A requests session that sends the administrator's Basic credentials."""
        return self.basic_session(ADMIN_USER, ADMIN_PASSWORD)

    def basic_session(self, user, password):
        session = requests.Session()
        session.auth = (user, password)
        return session

    def login(self, user=ADMIN_USER, password=ADMIN_PASSWORD):
        """Opens a Redfish session; returns the answer of the login."""
        return requests.post(self.url("/redfish/v1/SessionService/Sessions"),
                             json={"UserName": user, "Password": password}, timeout=10)

    def events(self):
        """The BMC event log, one dict per record."""
        try:
            with open(os.path.join(self.root, "var", "log", "bmc_events.jsonl")) as log:
                return [json.loads(line) for line in log if line.strip()]
        except OSError:
            return []

    def get(self, path, **kwargs):
        return requests.get(self.url(path), timeout=10, **kwargs)

    def request(self, method, path, **kwargs):
        return requests.request(method, self.url(path), timeout=10, **kwargs)

    def raw(self, request_bytes):
        """Sends bytes as they stand and returns every byte of the answer."""
        with socket.create_connection(("127.0.0.1", self.port), timeout=10) as connection:
            connection.sendall(request_bytes)
            connection.shutdown(socket.SHUT_WR)
            chunks = []
            for _ in range(1000):
                chunk = connection.recv(65536)
                if not chunk:
                    break
                chunks.append(chunk)
            return b"".join(chunks)

    def service_processes(self):
        """The pids of the index.fcgi processes that lighttpd started."""
        return sorted(pid for pid, parent, command in process_commands()
                      if parent == self.server.pid and b"index.fcgi" in command)

    def bmcsim(self, *arguments):
        tool = os.path.join(BUILD_DIR, "platform", "sim", "tool", "bmcsim")
        return subprocess.run([tool, "--root", self.root, *arguments], check=True,
                              capture_output=True, text=True).stdout

    def error_log(self):
        try:
            with open(os.path.join(self.root, "log", "lighttpd-error.log")) as log:
                return log.read()
        except OSError:
            return ""

    def _end_leftover_programs(self):
        """Kills the instance's programs that outlive lighttpd (a task's
        worker and its helpers), so that none writes into the root as it is
        removed; waits for them boundedly."""
        prefix = self.root.encode() + b"/"
        for _ in range(50):
            leftover = [pid for pid, _, command in process_commands() if command.startswith(prefix)]
            if not leftover:
                return
            for pid in leftover:
                try:
                    os.kill(pid, signal.SIGKILL)
                except OSError:
                    pass
            time.sleep(0.1)

    def stop(self):
        if self.server.poll() is None:
            self.server.send_signal(signal.SIGTERM)
            try:
                self.server.wait(timeout=10)
            except subprocess.TimeoutExpired:
                self.server.kill()
                self.server.wait()
        stale = [line for line in self.error_log().splitlines() if STALE_ANSWER in line]
        self._end_leftover_programs()
        if self.small_directory:
            subprocess.run(["umount", "-l", self.small_directory], check=False)
        if self.mounted:
            subprocess.run(["umount", "-l", self.root], check=False)
        self.directory.cleanup()
        assert not stale, "\n".join(stale)
