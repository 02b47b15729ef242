"""A directory of an instance moved onto a small tmpfs, so that a test can
fill it like a full disk. Mounting needs root; elsewhere the test skips.

Mount before the first request: a service process that already watches a
directory would keep watching the one hidden under the mount."""

import contextlib
import os
import shutil
import subprocess

import pytest


@contextlib.contextmanager
def small_file_system(bmc, relative, size="64k"):
    """Mounts a tmpfs of size over <root>/relative with its contents copied
    in; yields the directory and unmounts it at the end."""
    directory = os.path.join(bmc.root, relative)
    saved = directory + ".saved"
    shutil.copytree(directory, saved, symlinks=True)
    if os.geteuid() != 0 or shutil.which("mount") is None or subprocess.run(
            ["mount", "-t", "tmpfs", "-o", "size=" + size, "tmpfs", directory],
            capture_output=True).returncode != 0:
        shutil.rmtree(saved)
        pytest.skip("no tmpfs can be mounted here")
    try:
        shutil.copytree(saved, directory, symlinks=True, dirs_exist_ok=True)
        yield directory
    finally:
        subprocess.run(["umount", "--lazy", directory], check=True)
        shutil.rmtree(saved)


def fill(path):
    """Writes path until the file system is full (at most 4 MiB)."""
    descriptor = os.open(path, os.O_WRONLY | os.O_CREAT, 0o600)
    try:
        for _ in range(4096):
            try:
                os.write(descriptor, b"\0" * 1024)
            except OSError:
                return
    finally:
        os.close(descriptor)
    pytest.fail("the tmpfs did not fill")
