"""OpenStack's sushy and DMTF's redfishtool read, reset and boot the computer system."""

import json
import subprocess
import time

import pytest
import sushy

SYSTEM = "/redfish/v1/Systems/1"


def host_power(bmc):
    return dict(line.split("=", 1) for line in bmc.bmcsim("power", "show").splitlines() if "=" in line)


def wait_for_power(bmc, wanted):
    """Polls the simulated host until power is wanted; a power cycle takes a second."""
    for _ in range(100):
        if host_power(bmc)["power"] == wanted:
            return True
        time.sleep(0.1)
    return False


def redfishtool(bmc, *arguments):
    command = ["redfishtool", "-r", "127.0.0.1:%d" % bmc.port, "-S", "Never", "-u", bmc.admin_user,
               "-p", bmc.admin_password, "Systems", *arguments]
    answer = subprocess.run(command, capture_output=True, text=True, timeout=60)
    assert answer.returncode == 0, answer.stderr
    return answer.stdout


@pytest.fixture(autouse=True)
def powered_host(bmc):
    bmc.bmcsim("power", "on")
    for byte in ("boot_flags.0", "boot_flags.1"):
        bmc.bmcsim("state", "set", byte, "0")


@pytest.fixture
def system(bmc):
    client = sushy.Sushy(bmc.url("/redfish/v1"), username=bmc.admin_user, password=bmc.admin_password)
    return client.get_system(SYSTEM)


def test_sushy_reads_the_system(bmc, system):
    assert system.identity == "1"
    assert system.power_state == sushy.POWER_STATE_ON
    assert system.memory_summary.size_gib == 256
    assert system.boot.enabled == sushy.BOOT_SOURCE_ENABLED_DISABLED
    assert sushy.BOOT_SOURCE_TARGET_PXE in system.get_allowed_system_boot_source_values()


def test_sushy_resets_the_host(bmc, system):
    system.reset_system(sushy.RESET_FORCE_OFF)
    assert host_power(bmc)["power"] == "off"
    system.refresh()
    assert system.power_state == sushy.POWER_STATE_OFF

    system.reset_system(sushy.RESET_ON)
    assert host_power(bmc)["power"] == "on"

    cycles = int(host_power(bmc)["cycles"])
    system.reset_system(sushy.RESET_GRACEFUL_RESTART)
    assert int(host_power(bmc)["cycles"]) == cycles + 1
    assert wait_for_power(bmc, "on")


def test_sushy_sets_a_one_time_pxe_boot(bmc, system):
    system.set_system_boot_options(target=sushy.BOOT_SOURCE_TARGET_PXE, enabled=sushy.BOOT_SOURCE_ENABLED_ONCE)
    system.refresh()
    assert system.boot.target == sushy.BOOT_SOURCE_TARGET_PXE
    assert system.boot.enabled == sushy.BOOT_SOURCE_ENABLED_ONCE
    boot = dict(line.split("=", 1) for line in bmc.bmcsim("boot", "show").splitlines() if "=" in line)
    assert (boot["override"], boot["target"]) == ("once", "Pxe")


def test_redfishtool_lists_and_resets_the_system(bmc):
    listing = json.loads(redfishtool(bmc, "list"))
    assert [member["@odata.id"] for member in listing["Members"]] == [SYSTEM]

    redfishtool(bmc, "reset", "ForceOff")
    assert host_power(bmc)["power"] == "off"
    redfishtool(bmc, "reset", "On")
    assert host_power(bmc)["power"] == "on"
    resets = int(host_power(bmc)["resets"])
    redfishtool(bmc, "reset", "ForceRestart")
    assert int(host_power(bmc)["resets"]) == resets + 1


def test_redfishtool_refuses_a_reset_type_the_action_info_leaves_out(bmc):
    command = ["redfishtool", "-r", "127.0.0.1:%d" % bmc.port, "-S", "Never", "-u", bmc.admin_user,
               "-p", bmc.admin_password, "Systems", "reset", "PushPowerButton"]
    answer = subprocess.run(command, capture_output=True, text=True, timeout=60)
    assert answer.returncode != 0
    assert "ActionInfo" in answer.stderr
    assert host_power(bmc)["power"] == "on"
