"""Each service process keeps what it parsed of the BMC's files; a change by
bmcsim or by another process must reach the very next request of every
process. The service re-reads any file changed within the last second, so
the cases wait for the files to settle first: only then is the cache used."""

import json
import os
import subprocess
import time

import pytest
import requests

from bmc_instance import BmcInstance

SYSTEM = "/redfish/v1/Systems/1"
CERTIFICATE_VIEWS = ("/redfish/v1/Managers/1/NetworkProtocol/HTTPS/Certificates/1",
                     "/redfish/v1/UpdateService/Oem/Tarnwright/SSLCert")
RAID_DRIVE = "/redfish/v1/Chassis/HA-RAID.0.StorageEnclosure.0/Drives/Disk.Bay.1"
TASKS = "/redfish/v1/TaskService/Tasks"
SLOTS = "/redfish/v1/Chassis/1/PCIeSlots"
# Enough requests that lighttpd gives each of the two processes some.
ROUNDS = 8


@pytest.fixture(scope="module")
def bmc():
    instance = BmcInstance(processes=2)
    yield instance
    instance.stop()


def settle():
    time.sleep(1.5)


def every_answer(session, bmc, path, pick):
    answers = []
    for _ in range(ROUNDS):
        reply = session.get(bmc.url(path), timeout=10)
        assert reply.status_code == 200, reply.text
        answers.append(pick(reply.json()))
    return answers


def test_a_module_removed_by_bmcsim_is_gone_from_the_next_answer(bmc):
    admin = bmc.admin()
    total = lambda body: body["MemorySummary"]["TotalSystemMemoryGiB"]
    settle()
    before = every_answer(admin, bmc, SYSTEM, total)
    assert len(set(before)) == 1
    bmc.bmcsim("smbios", "remove-dimm", "CPU1_DIMM_A1")
    assert every_answer(admin, bmc, SYSTEM, total) == [before[0] - 32] * ROUNDS
    settle()
    assert every_answer(admin, bmc, SYSTEM, total) == [before[0] - 32] * ROUNDS


def temperature(name):
    def pick(thermal):
        return [each["ReadingCelsius"] for each in thermal["Temperatures"]
                if each["Name"] == name]
    return pick


def test_power_and_readings_set_by_bmcsim_reach_every_process(bmc):
    admin = bmc.admin()
    power = lambda body: body["PowerState"]
    cpu = temperature("CPU1 Temp")
    bmc.bmcsim("sensors", "set", "CPU1 Temp", "40")
    settle()
    assert set(every_answer(admin, bmc, SYSTEM, power)) == {"On"}
    assert every_answer(admin, bmc, "/redfish/v1/Chassis/1/Thermal", cpu) == [[40]] * ROUNDS
    bmc.bmcsim("sensors", "set", "CPU1 Temp", "41")
    assert every_answer(admin, bmc, "/redfish/v1/Chassis/1/Thermal", cpu) == [[41]] * ROUNDS
    bmc.bmcsim("power", "off")
    assert set(every_answer(admin, bmc, SYSTEM, power)) == {"Off"}
    settle()
    bmc.bmcsim("power", "on")
    assert set(every_answer(admin, bmc, SYSTEM, power)) == {"On"}


def test_a_setting_patched_through_one_process_is_read_by_every_process(bmc):
    admin = bmc.admin()
    timeout = lambda body: body["SessionTimeout"]
    settle()
    every_answer(admin, bmc, "/redfish/v1/SessionService", timeout)
    for value in (600, 601):
        reply = admin.patch(bmc.url("/redfish/v1/SessionService"), json={"SessionTimeout": value},
                            timeout=10)
        assert reply.status_code in (200, 204), reply.text
        assert every_answer(admin, bmc, "/redfish/v1/SessionService", timeout) == [value] * ROUNDS


def test_an_asset_tag_patched_through_one_process_is_read_by_every_process(bmc):
    admin = bmc.admin()
    tag = lambda body: body["AssetTag"]
    settle()
    every_answer(admin, bmc, "/redfish/v1/Chassis/1", tag)
    for value in ("rack-7", "rack-8"):
        reply = admin.patch(bmc.url("/redfish/v1/Chassis/1"), json={"AssetTag": value}, timeout=10)
        assert reply.status_code == 204, reply.text
        assert every_answer(admin, bmc, "/redfish/v1/Chassis/1", tag) == [value] * ROUNDS


def test_a_setting_rewritten_in_place_at_the_same_size_is_seen(bmc):
    anonymous = requests.Session()
    for open_root, status in (("1", 200), ("0", 401), ("1", 200)):
        bmc.write_setting("redfish.ini", "[Service]\nUnauthenticatedServiceRoot=%s\n" % open_root)
        for _ in range(ROUNDS):
            assert anonymous.get(bmc.url("/redfish/v1"), timeout=10).status_code == status
        settle()


def install_certificate(bmc, directory, name):
    """A new key and certificate in the web server's file, put in place by
    another process as the BMC's tools do: written aside, then renamed."""
    key, cert = os.path.join(directory, name + ".key"), os.path.join(directory, name + ".crt")
    subprocess.run(["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt",
                    "ec_paramgen_curve:prime256v1", "-nodes", "-days", "30", "-subj", "/CN=" + name,
                    "-keyout", key, "-out", cert], check=True, capture_output=True, timeout=30)
    served = os.path.join(bmc.root, "etc", "ssl", "server.pem")
    with open(served + ".new", "w") as pem, open(key) as key_text, open(cert) as cert_text:
        pem.write(key_text.read() + cert_text.read())
    os.chmod(served + ".new", 0o600)
    os.replace(served + ".new", served)


def test_a_certificate_replaced_by_another_process_is_shown_by_the_next_request(bmc, tmp_path):
    admin = bmc.admin()
    common_name = lambda body: body["Subject"]["CommonName"]
    settle()
    for path in CERTIFICATE_VIEWS:
        assert every_answer(admin, bmc, path, common_name) == ["bmc.localdomain"] * ROUNDS
    for name in ("one.rack7", "two.rack7"):
        install_certificate(bmc, str(tmp_path), name)
        for path in CERTIFICATE_VIEWS:
            assert every_answer(admin, bmc, path, common_name) == [name] * ROUNDS
        settle()


def test_raid_drives_and_controllers_changed_by_bmcsim_reach_the_next_request(bmc):
    admin = bmc.admin()
    health = lambda body: body["Status"]["Health"]
    bmc.bmcsim("storage", "set", "broadcom", "1")
    settle()
    assert every_answer(admin, bmc, RAID_DRIVE, health) == ["OK"] * ROUNDS
    bmc.bmcsim("storage", "raid", "fail", "HA-RAID.0", "1")
    assert every_answer(admin, bmc, RAID_DRIVE, health) == ["Critical"] * ROUNDS
    settle()
    bmc.bmcsim("storage", "raid", "replace", "HA-RAID.0", "1")
    assert every_answer(admin, bmc, RAID_DRIVE, health) == ["OK"] * ROUNDS
    settle()
    bmc.bmcsim("storage", "set", "broadcom", "0")
    for _ in range(ROUNDS):
        assert admin.get(bmc.url(RAID_DRIVE), timeout=10).status_code == 404


def test_a_pcie_card_added_and_removed_by_bmcsim_reaches_the_next_request(bmc):
    admin = bmc.admin()
    slot_links = lambda body: [each.get("Links") for each in body["Slots"]]
    settle()
    before = every_answer(admin, bmc, SLOTS, slot_links)
    empty = next(number for number, links in enumerate(before[0], 1) if links is None)
    name = bmc.bmcsim("pcie", "add", "GPU", str(empty), "GPU-CACHE-01").strip()
    added = {"PCIeDevice": [{"@odata.id": "/redfish/v1/Chassis/1/PCIeDevices/" + name}]}
    for links in every_answer(admin, bmc, SLOTS, slot_links):
        assert links[empty - 1] == added
    settle()
    bmc.bmcsim("pcie", "remove", name)
    assert every_answer(admin, bmc, SLOTS, slot_links) == [before[0]] * ROUNDS


def test_a_task_that_a_worker_runs_is_followed_by_every_process(bmc):
    admin = bmc.admin()
    count = lambda body: body["Members@odata.count"]
    state = lambda body: body["TaskState"]
    bmc.bmcsim("storage", "set", "broadcom", "1")
    bmc.bmcsim("storage", "raid", "seconds", "erase", "1")
    settle()
    before = every_answer(admin, bmc, TASKS, count)
    accepted = admin.post(bmc.url(RAID_DRIVE[:-1] + "4/Actions/Drive.SecureErase"), timeout=10)
    assert accepted.status_code == 202, accepted.text
    task = accepted.json()["Accepted"]["@Message.ExtendedInfo"][0]["MessageArgs"][0]
    assert every_answer(admin, bmc, TASKS, count) == [before[0] + 1] * ROUNDS
    for _ in range(100):
        if set(every_answer(admin, bmc, task, state)) == {"Completed"}:
            break
        time.sleep(0.1)
    assert every_answer(admin, bmc, task, state) == ["Completed"] * ROUNDS


def replace_file(path, text):
    """Written aside, then renamed: as the BIOS's programs hand over a file."""
    with open(path + ".new", "w") as new:
        new.write(text)
    os.replace(path + ".new", path)


def test_boot_settings_that_the_bios_hands_over_reach_the_next_request(bmc):
    admin = bmc.admin()
    boot = lambda body: (body["Boot"].get("BootOrder"), body["Boot"].get("HttpBootUri"))
    settings = os.path.join(bmc.root, "nv", "bios", "bios_setting")
    attributes = os.path.join(bmc.root, "tmp", "attributes.json")
    try:
        with open(attributes) as current:
            document = json.load(current)
    except FileNotFoundError:
        document = {"Attributes": {}}
    for order, uri in ((["Boot0001", "Boot0002"], "http://10.0.0.7/a.efi"),
                       (["Boot0002", "Boot0001"], "http://10.0.0.8/b.efi")):
        settle()
        every_answer(admin, bmc, SYSTEM, boot)
        replace_file(settings, "BootOrder=%s\nBootNext=\n" % ",".join(order))
        document["Attributes"]["BootURI"] = uri
        replace_file(attributes, json.dumps(document))
        assert every_answer(admin, bmc, SYSTEM, boot) == [(order, uri)] * ROUNDS
