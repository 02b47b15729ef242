"""Filling a small file system, for the tests of writes on a full disk."""

import os

import pytest


def fill(path):
    """Writes zeros to path until the file system holding it is full."""
    descriptor = os.open(path, os.O_WRONLY | os.O_CREAT, 0o600)
    try:
        for _ in range(2000):
            try:
                os.write(descriptor, b"\0" * 1024)
            except OSError:
                return
    finally:
        os.close(descriptor)
    pytest.fail("the file system did not fill")
