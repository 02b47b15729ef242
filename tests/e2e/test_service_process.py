"""index.fcgi started outside a web server: its exit statuses and log lines."""

import os
import subprocess
import tempfile

from bmc_instance import BUILD_DIR

SERVICE = os.path.join(BUILD_DIR, "service", "index.fcgi")


def run_service(root):
    with open(os.devnull, "rb") as not_a_socket:
        return subprocess.run([SERVICE], stdin=not_a_socket, capture_output=True, timeout=30,
                              env={"BMC_ROOT": root, "PATH": os.environ.get("PATH", "")})


def test_without_a_listening_socket_the_accept_fails_and_the_service_ends():
    with tempfile.TemporaryDirectory() as root:
        ended = run_service(root)
    assert ended.returncode == 0
    assert ended.stderr.decode().startswith("FCGX_Accept_r failed: ")
    assert ended.stdout == b""


def test_without_the_shared_parameter_area_the_service_ends_silently():
    with tempfile.TemporaryDirectory() as parent:
        blocked = os.path.join(parent, "file")
        open(blocked, "w").close()
        ended = run_service(blocked)
    assert ended.returncode == 0
    assert b"FCGX" not in ended.stderr and ended.stdout == b""
