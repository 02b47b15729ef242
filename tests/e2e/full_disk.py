"""Instances with a directory on a small tmpfs, that a test fills like a
full disk. Mounting needs root; elsewhere the test skips."""

import os

import pytest

from bmc_instance import BmcInstance, NoTmpfs


def instance_with_small_directory(relative, size, **options):
    """A BmcInstance whose <root>/relative is a tmpfs of size."""
    try:
        return BmcInstance(small_directory=(relative, size), **options)
    except NoTmpfs as error:
        pytest.skip(str(error))


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
