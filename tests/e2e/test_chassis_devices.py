"""The host's network adapters and PCIe slots under the chassis, and the system's network interfaces."""

import pytest

from schema_validation import validate_messages

CHASSIS = "/redfish/v1/Chassis/1"
ADAPTERS = CHASSIS + "/NetworkAdapters"
DEVICES = CHASSIS + "/PCIeDevices"
SLOTS = CHASSIS + "/PCIeSlots"
INTERFACES = "/redfish/v1/Systems/1/NetworkInterfaces"


@pytest.fixture
def admin(bmc):
    return bmc.admin()


def get(session, bmc, path):
    answer = session.get(bmc.url(path), timeout=10)
    assert answer.status_code == 200, (path, answer.text)
    return answer.json()


def member_uris(session, bmc, path):
    collection = get(session, bmc, path)
    assert collection["Members@odata.count"] == len(collection["Members"])
    return [member["@odata.id"] for member in collection["Members"]]


def test_every_link_of_the_chassis_devices_resolves(bmc, admin):
    chassis = get(admin, bmc, CHASSIS)
    for name in ("NetworkAdapters", "PCIeDevices", "PCIeSlots"):
        get(admin, bmc, chassis[name]["@odata.id"])
    thermal = get(admin, bmc, CHASSIS + "/Thermal")
    nic_links = {item["@odata.id"] for member in thermal["Temperatures"] for item in member["RelatedItem"]
                 if item["@odata.id"].startswith(ADAPTERS)}
    assert nic_links == {ADAPTERS + "/1"}
    adapter = get(admin, bmc, ADAPTERS + "/1")
    [device_link] = adapter["Controllers"][0]["Links"]["PCIeDevices"]
    device = get(admin, bmc, device_link["@odata.id"])
    assert (device["Id"], device["SerialNumber"]) == ("NIC1", adapter["SerialNumber"])
    interface = get(admin, bmc, member_uris(admin, bmc, INTERFACES)[0])
    assert interface["Links"]["NetworkAdapter"] == {"@odata.id": ADAPTERS + "/1"}


def test_the_adapter_reports_its_ports_and_link(bmc, admin):
    assert member_uris(admin, bmc, ADAPTERS) == [ADAPTERS + "/1"]
    assert member_uris(admin, bmc, DEVICES) == [DEVICES + "/NIC1"]
    adapter = get(admin, bmc, ADAPTERS + "/1")
    ports = [line for line in bmc.bmcsim("nics", "show").splitlines() if "adapter 1 " in line]
    assert adapter["Controllers"][0]["ControllerCapabilities"]["NetworkPortCount"] == len(ports)
    assert adapter["Controllers"][0]["PCIeInterface"] == {
        "PCIeType": "Gen4", "MaxPCIeType": "Gen4", "LanesInUse": 16, "MaxLanes": 16}


def test_slots_show_what_sits_in_them(bmc, admin):
    slots = get(admin, bmc, SLOTS)["Slots"]
    assert [slot["SlotType"] for slot in slots] == ["OCP3Small", "FullLength", "FullLength"]
    assert [slot["Status"]["State"] for slot in slots] == ["Enabled", "Absent", "Absent"]
    assert slots[0]["Links"]["PCIeDevice"] == [{"@odata.id": DEVICES + "/NIC1"}]


@pytest.mark.parametrize("path", [
    ADAPTERS + "/0", ADAPTERS + "/2", DEVICES + "/NIC0", DEVICES + "/NIC2", DEVICES + "/NIC99999999999",
    INTERFACES + "/0", INTERFACES + "/2"])
def test_unknown_devices_are_not_found(bmc, admin, path):
    answer = admin.get(bmc.url(path), timeout=10)
    assert answer.status_code == 404, answer.text
    validate_messages(answer.json())
