"""What Ironic-style inspection reads with sushy, and redfishtool's processor listing."""

import json
import subprocess

import pytest
import sushy

SYSTEM = "/redfish/v1/Systems/1"


@pytest.fixture
def system(bmc):
    client = sushy.Sushy(bmc.url("/redfish/v1"), username=bmc.admin_user, password=bmc.admin_password)
    return client.get_system(SYSTEM)


def test_sushy_inspects_processors_memory_disks_and_nics(system):
    assert system.processors.summary == (96, sushy.PROCESSOR_ARCH_x86)
    processor = system.processors.get_members()[0]
    assert (processor.socket, processor.total_cores, processor.total_threads) == ("CPU1", 24, 48)
    # This sushy reads memory through the summary only.
    assert system.memory_summary.size_gib == 256
    assert system.simple_storage.max_size_bytes == 4000787030016
    # Ironic's root device hints read the drives of Storage.
    assert system.storage.max_drive_size_bytes == 4000787030016
    drives = system.storage.get_members()[0].drives
    assert [(drive.name, drive.protocol) for drive in drives] == [
        ("Disk.Bay.0", sushy.Protocol.SATA), ("Disk.Bay.1", sushy.Protocol.SATA)]
    assert system.ethernet_interfaces.summary == {
        "3c:fd:fe:a0:00:01": sushy.STATE_ENABLED, "3c:fd:fe:a0:00:02": sushy.STATE_ENABLED}


def test_redfishtool_lists_the_processors(bmc):
    command = ["redfishtool", "-r", "127.0.0.1:%d" % bmc.port, "-S", "Never", "-u", bmc.admin_user,
               "-p", bmc.admin_password, "Systems", "Processors"]
    answer = subprocess.run(command, capture_output=True, text=True, timeout=60)
    assert answer.returncode == 0, answer.stderr
    listing = json.loads(answer.stdout)
    assert [member["@odata.id"] for member in listing["Members"]] == [
        SYSTEM + "/Processors/1", SYSTEM + "/Processors/2"]
