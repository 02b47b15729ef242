"""index.fcgi and bmcsim finish, when they start, the set of files that a
writer killed between two renames left half-replaced."""

import os
import subprocess
import tempfile

import pytest

from bmc_instance import BUILD_DIR

SERVICE = os.path.join(BUILD_DIR, "service", "index.fcgi")
BMCSIM = os.path.join(BUILD_DIR, "platform", "sim", "tool", "bmcsim")
SET = ("nv/bmc/users", "nv/bmc/alert_dest", "nv/network/lan.ini")


def write(path, text):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w") as file:
        file.write(text)


def dead_pid():
    child = subprocess.Popen(["true"])
    child.wait()
    return child.pid


def leave_half_commit(root):
    """A killed writer's journal of SET ("old" to "new"), its first file
    renamed, the others still in their temporaries."""
    writer = dead_pid()
    lines = []
    for number, name in enumerate(SET):
        target = os.path.join(root, name)
        write(target, "old\n")
        temporary = f"{target}.tmp.{writer}.{number}"
        write(temporary, "new\n")
        lines.append(f"{temporary}\t{target}\n")
        if number == 0:
            os.rename(temporary, target)
    write(os.path.join(root, "var", "bmc", "commits", f"{writer}.0"), "".join(lines))


def start_service(root):
    with open(os.devnull, "rb") as not_a_socket:
        subprocess.run([SERVICE], stdin=not_a_socket, capture_output=True, timeout=30,
                       env={"BMC_ROOT": root, "PATH": os.environ.get("PATH", "")})


def start_bmcsim(root):
    subprocess.run([BMCSIM, "--root", root, "power", "show"], capture_output=True, timeout=30)


@pytest.mark.parametrize("start", [start_service, start_bmcsim])
def test_a_starting_program_finishes_a_killed_writers_set(start):
    with tempfile.TemporaryDirectory() as root:
        leave_half_commit(root)
        start(root)
        for name in SET:
            with open(os.path.join(root, name)) as file:
                assert file.read() == "new\n", name
        assert sorted(os.listdir(os.path.join(root, "nv", "bmc"))) == ["alert_dest", "users"]
        assert os.listdir(os.path.join(root, "var", "bmc", "commits")) == []
