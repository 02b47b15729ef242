"""The user table on a full disk: a refused account write changes nothing,
now or with a later commit of the same process."""

import os

import pytest

from full_disk import fill, instance_with_small_directory

ACCOUNTS = "/redfish/v1/AccountService/Accounts"
PASSWORD = "Passw0rd-1"


@pytest.fixture
def full_disk_bmc():
    """A BMC whose user table lives on a small tmpfs that can be filled."""
    bmc = instance_with_small_directory(os.path.join("nv", "bmc"), "64k")
    try:
        yield bmc, os.path.join(bmc.small_directory, "filler")
    finally:
        bmc.stop()


def test_a_write_refused_on_a_full_disk_never_appears(full_disk_bmc):
    bmc, filler = full_disk_bmc
    admin = bmc.admin()
    bmc.bmcsim("users", "add", "3", "bystander", PASSWORD, "2")
    fill(filler)
    for _ in range(4):  # reach both service processes
        refused = admin.post(bmc.url(ACCOUNTS), timeout=10,
                             json={"UserName": "sneaky", "Password": PASSWORD, "RoleId": "Administrator"})
        assert refused.status_code >= 400
        promoted = admin.patch(bmc.url(ACCOUNTS + "/4"), json={"RoleId": "Administrator"}, timeout=10)
        assert promoted.status_code >= 400
    os.remove(filler)
    for role in ("Operator", "ReadOnly", "Operator", "ReadOnly"):
        assert admin.patch(bmc.url(ACCOUNTS + "/4"), json={"RoleId": role}, timeout=10).status_code == 204
    listing = bmc.bmcsim("users", "list")
    assert "sneaky" not in listing
    assert admin.get(bmc.url(ACCOUNTS + "/4"), timeout=10).json()["RoleId"] == "ReadOnly"
