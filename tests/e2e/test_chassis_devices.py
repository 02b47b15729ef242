"""The host's network adapters, PCIe devices and slots under the chassis, and the system's network interfaces."""

import re
import subprocess

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
    adapter = get(admin, bmc, ADAPTERS + "/1")
    ports = [line for line in bmc.bmcsim("nics", "show").splitlines() if "adapter 1 " in line]
    assert adapter["Controllers"][0]["ControllerCapabilities"]["NetworkPortCount"] == len(ports)
    assert adapter["Controllers"][0]["PCIeInterface"] == {
        "PCIeType": "Gen4", "MaxPCIeType": "Gen4", "LanesInUse": 16, "MaxLanes": 16}


def test_slots_show_what_sits_in_them(bmc, admin):
    slots = get(admin, bmc, SLOTS)["Slots"]
    assert [slot["SlotType"] for slot in slots] == ["OCP3Small"] + ["FullLength"] * 4
    held = {number: DEVICES + "/" + name for name, (place, number) in simulated_places(bmc).items()
            if place == "slot"}
    for number, slot in enumerate(slots, 1):
        if number in held:
            assert slot["Links"]["PCIeDevice"] == [{"@odata.id": held[number]}]
        else:
            assert slot["Status"] == {"State": "Absent"} and "Links" not in slot


@pytest.mark.parametrize("path", [
    ADAPTERS + "/0", ADAPTERS + "/2", DEVICES + "/NIC0", DEVICES + "/NIC2", DEVICES + "/NIC99999999999",
    DEVICES + "/GPU9", DEVICES + "/GPU1/PCIeFunctions/1", DEVICES + "/NIC1/PCIeFunctions/2",
    DEVICES + "/NVMeSSD3/PCIeFunctions", ADAPTERS + "/2/NetworkPorts", ADAPTERS + "/1/NetworkPorts/3",
    ADAPTERS + "/1/NetworkDeviceFunctions/0", INTERFACES + "/0", INTERFACES + "/2"])
def test_unknown_devices_are_not_found(bmc, admin, path):
    answer = admin.get(bmc.url(path), timeout=10)
    assert answer.status_code == 404, answer.text
    validate_messages(answer.json())


SHOWN = re.compile(r"^(\w+): (slot|bay) (\d+) \| (\w{4}):(\w{4}) subsystem (\w{4}):(\w{4}) \| class (\w{6}) "
                   r"\| link (down|Gen\d x\d+) of (Gen\d) x(\d+) \| functions (\d+) \| firmware (\S+) \| serial (\S+)$")


def simulated_devices(bmc):
    """What the simulator holds, by device name, as `bmcsim pcie show` prints it."""
    devices = {}
    for line in bmc.bmcsim("pcie", "show").splitlines():
        (name, place, number, vendor, device, sub_vendor, sub_id, class_code, link, max_gen, max_lanes,
         functions, firmware, serial) = SHOWN.match(line).groups()
        devices[name] = {"place": (place, int(number)), "ids": ("0x" + vendor, "0x" + device, "0x" + sub_vendor,
                                                               "0x" + sub_id, "0x" + class_code),
                         "link": link, "max": (max_gen, int(max_lanes)), "functions": int(functions),
                         "firmware": firmware, "serial": serial}
    return devices


def simulated_places(bmc):
    return {name: device["place"] for name, device in simulated_devices(bmc).items()}


def assert_device_matches(session, bmc, name, simulated):
    device = get(session, bmc, DEVICES + "/" + name)
    assert (device["Id"], device["SerialNumber"], device["FirmwareVersion"]) == (
        name, simulated["serial"], simulated["firmware"])
    interface = device["PCIeInterface"]
    assert (interface["MaxPCIeType"], interface["MaxLanes"]) == simulated["max"]
    if simulated["link"] == "down":
        assert interface["LanesInUse"] == 0 and "PCIeType" not in interface
    else:
        assert "%s x%d" % (interface["PCIeType"], interface["LanesInUse"]) == simulated["link"]
    functions = member_uris(session, bmc, device["PCIeFunctions"]["@odata.id"])
    assert len(functions) == simulated["functions"]
    for number, uri in enumerate(functions):
        function = get(session, bmc, uri)
        assert function["FunctionId"] == number
        assert (function["VendorId"], function["DeviceId"], function["SubsystemVendorId"], function["SubsystemId"],
                function["ClassCode"]) == simulated["ids"]
        assert function["Links"]["PCIeDevice"] == {"@odata.id": DEVICES + "/" + name}
    return device


def test_pcie_inventory_is_what_the_simulator_holds(bmc, admin):
    simulated = simulated_devices(bmc)
    assert {"NIC1", "GPU1", "NVMeSSD1", "PCIeSSD1"} <= set(simulated)
    assert member_uris(admin, bmc, DEVICES) == [DEVICES + "/" + name for name in simulated]
    for name, device in simulated.items():
        assert_device_matches(admin, bmc, name, device)
    nic_function = get(admin, bmc, DEVICES + "/NIC1/PCIeFunctions/1")
    assert nic_function["DeviceClass"] == "NetworkController"
    assert nic_function["Links"]["NetworkDeviceFunctions"] == [
        {"@odata.id": ADAPTERS + "/1/NetworkDeviceFunctions/2"}]


def test_a_device_the_simulator_adds_appears_until_removed(bmc, admin):
    taken = {number for place, number in simulated_places(bmc).values() if place == "slot"}
    slot = min(set(range(2, 6)) - taken)
    name = bmc.bmcsim("pcie", "add", "GPU", str(slot), "GPU-TEST-01").strip()
    try:
        assert DEVICES + "/" + name in member_uris(admin, bmc, DEVICES)
        device = assert_device_matches(admin, bmc, name, simulated_devices(bmc)[name])
        assert device["Status"]["Health"] == "OK"
        assert get(admin, bmc, SLOTS)["Slots"][slot - 1]["Links"]["PCIeDevice"] == [
            {"@odata.id": DEVICES + "/" + name}]
        # A link that trained narrower is degraded; one that is down has lost the device.
        bmc.bmcsim("pcie", "link", name, "3", "8")
        device = assert_device_matches(admin, bmc, name, simulated_devices(bmc)[name])
        assert device["Status"]["Health"] == "Warning"
        bmc.bmcsim("pcie", "link", name, "down")
        device = assert_device_matches(admin, bmc, name, simulated_devices(bmc)[name])
        assert device["Status"]["Health"] == "Critical"
    finally:
        bmc.bmcsim("pcie", "remove", name)
    assert admin.get(bmc.url(DEVICES + "/" + name), timeout=10).status_code == 404
    assert DEVICES + "/" + name not in member_uris(admin, bmc, DEVICES)


def test_the_simulator_refuses_a_taken_place_and_changes_nothing(bmc):
    before = bmc.bmcsim("pcie", "show")
    for arguments in (("GPU", "1", "X1"), ("GPU", "2", "X2"), ("NVMeSSD", "1", "X3"), ("NIC", "3", "X4"),
                      ("GPU", "9", "X5"), ("GPU", "3", "bad serial")):
        with pytest.raises(subprocess.CalledProcessError):
            bmc.bmcsim("pcie", "add", *arguments)
    assert bmc.bmcsim("pcie", "show") == before


def test_adapter_ports_and_functions_follow_the_simulated_links(bmc, admin):
    ports = member_uris(admin, bmc, ADAPTERS + "/1/NetworkPorts")
    functions = member_uris(admin, bmc, ADAPTERS + "/1/NetworkDeviceFunctions")
    shown = [line.split(" | ") for line in bmc.bmcsim("nics", "show").splitlines() if "adapter 1 " in line]
    assert len(ports) == len(functions) == len(shown)
    bmc.bmcsim("nics", "link", "2", "down")
    assert get(admin, bmc, ports[1])["LinkStatus"] == "Down"
    bmc.bmcsim("nics", "link", "2", "up")
    port = get(admin, bmc, ports[1])
    assert (port["LinkStatus"], port["CurrentLinkSpeedMbps"]) == ("Up", 25000)
    for number, (port_uri, function_uri, line) in enumerate(zip(ports, functions, shown), 1):
        function = get(admin, bmc, function_uri)
        mac = line[2]
        assert function["Ethernet"]["MACAddress"] == mac
        assert get(admin, bmc, port_uri)["AssociatedNetworkAddresses"] == [mac]
        assert function["Links"]["PhysicalPortAssignment"] == {"@odata.id": port_uri}
        pcie_function = get(admin, bmc, function["Links"]["PCIeFunction"]["@odata.id"])
        assert pcie_function["Links"]["NetworkDeviceFunctions"] == [{"@odata.id": function_uri}]


def test_devices_are_read_only(bmc, admin):
    before = get(admin, bmc, DEVICES + "/GPU1")
    for path in (DEVICES + "/GPU1", DEVICES + "/GPU1/PCIeFunctions/0", ADAPTERS + "/1/NetworkPorts/1"):
        answer = admin.patch(bmc.url(path), json={"SerialNumber": "X"}, timeout=10)
        assert answer.status_code == 405, answer.text
        assert answer.headers["Allow"] == "GET"
    assert get(admin, bmc, DEVICES + "/GPU1") == before
