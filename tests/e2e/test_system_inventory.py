"""The host's processors and memory modules, read from the simulated SMBIOS table."""

import os
import subprocess

import pytest

from schema_validation import validate, validate_messages

SYSTEM = "/redfish/v1/Systems/1"
PROCESSORS = SYSTEM + "/Processors"
MEMORY = SYSTEM + "/Memory"


@pytest.fixture
def admin(bmc):
    session = bmc.admin()
    yield session
    bmc.bmcsim("smbios", "regenerate")


def get_valid(session, bmc, path):
    answer = session.get(bmc.url(path), timeout=10)
    assert answer.status_code == 200, answer.text
    body = answer.json()
    validate(body)
    return body


def members(session, bmc, path):
    """The member URIs of a collection; the DMTF bundle has no JSON form of these collections."""
    answer = session.get(bmc.url(path), timeout=10)
    assert answer.status_code == 200, answer.text
    collection = answer.json()
    assert collection["@odata.id"] == path
    assert collection["Members@odata.count"] == len(collection["Members"])
    return [member["@odata.id"] for member in collection["Members"]]


def smbios_lines(bmc, kind):
    """The fields of each "kind: a | b | c" line of bmcsim smbios show."""
    return [line.split(": ", 1)[1].split(" | ")
            for line in bmc.bmcsim("smbios", "show").splitlines() if line.startswith(kind + ": ")]


def assert_not_found(session, bmc, path):
    answer = session.get(bmc.url(path), timeout=10)
    assert answer.status_code == 404, (path, answer.text)
    validate_messages(answer.json())


def test_processors_are_the_populated_sockets(bmc, admin):
    uris = members(admin, bmc, PROCESSORS)
    assert uris == [PROCESSORS + "/1", PROCESSORS + "/2"]
    for uri, (socket, model, cores, threads, speed) in zip(uris, smbios_lines(bmc, "processor")):
        processor = get_valid(admin, bmc, uri)
        assert (processor["Id"], processor["Socket"], processor["Model"]) == (uri[-1], socket, model)
        assert processor["TotalCores"] == int(cores.split()[0])
        assert processor["TotalThreads"] == int(threads.split()[0])
        assert processor["MaxSpeedMHz"] == int(speed.split()[0])
        assert (processor["ProcessorType"], processor["ProcessorArchitecture"]) == ("CPU", "x86")
        assert processor["ProcessorId"]["EffectiveModel"] == "0x6a"
        assert processor["Status"]["State"] == "Enabled"


def test_power_and_thermal_links_to_processors_resolve(bmc, admin):
    power = get_valid(admin, bmc, "/redfish/v1/Chassis/1/Power")
    thermal = get_valid(admin, bmc, "/redfish/v1/Chassis/1/Thermal")
    links = {item["@odata.id"] for member in power["PowerControl"] + thermal["Temperatures"]
             for item in member["RelatedItem"] if item["@odata.id"].startswith(PROCESSORS)}
    assert links == {PROCESSORS + "/1", PROCESSORS + "/2"}
    for link in links:
        get_valid(admin, bmc, link)
    chassis = get_valid(admin, bmc, "/redfish/v1/Chassis/1")
    assert members(admin, bmc, chassis["Memory"]["@odata.id"])


def test_memory_lists_the_modules_as_smbios_does(bmc, admin):
    modules = {locator: (size, speed, part) for locator, size, speed, part in smbios_lines(bmc, "memory")
               if size != "0 MiB"}
    uris = members(admin, bmc, MEMORY)
    assert len(uris) == len(modules) == 8
    for uri in uris:
        module = get_valid(admin, bmc, uri)
        size, speed, part = modules[module["DeviceLocator"]]
        assert "%d MiB" % module["CapacityMiB"] == size
        assert module["AllowedSpeedsMHz"] == [int(speed.split()[0])]
        assert (module["PartNumber"], module["MemoryDeviceType"]) == (part, "DDR4")


def test_a_removed_module_leaves_memory_and_the_summary(bmc, admin):
    before = members(admin, bmc, MEMORY)
    by_locator = {get_valid(admin, bmc, uri)["DeviceLocator"]: uri for uri in before}
    total = get_valid(admin, bmc, SYSTEM)["MemorySummary"]["TotalSystemMemoryGiB"]
    bmc.bmcsim("smbios", "remove-dimm", "CPU2_DIMM_B1")
    after = members(admin, bmc, MEMORY)
    assert after == [uri for uri in before if uri != by_locator["CPU2_DIMM_B1"]]
    assert_not_found(admin, bmc, by_locator["CPU2_DIMM_B1"])
    assert get_valid(admin, bmc, by_locator["CPU2_DIMM_A1"])["DeviceLocator"] == "CPU2_DIMM_A1"
    assert get_valid(admin, bmc, SYSTEM)["MemorySummary"]["TotalSystemMemoryGiB"] == total - 32


@pytest.mark.parametrize("path", [
    PROCESSORS + "/0", PROCESSORS + "/3", PROCESSORS + "/99999999999999999999", MEMORY + "/0",
    MEMORY + "/5", MEMORY + "/17", MEMORY + "/4294967297"])
def test_unknown_or_empty_members_are_not_found(bmc, admin, path):
    assert_not_found(admin, bmc, path)


def test_a_corrupt_table_shows_no_inventory(bmc, admin):
    bmc.bmcsim("smbios", "corrupt")
    assert members(admin, bmc, PROCESSORS) == []
    assert members(admin, bmc, MEMORY) == []
    assert_not_found(admin, bmc, PROCESSORS + "/1")
    assert_not_found(admin, bmc, MEMORY + "/1")


def test_inventory_is_read_only_and_needs_credentials(bmc, admin):
    for path in (PROCESSORS, PROCESSORS + "/1", MEMORY, MEMORY + "/1"):
        assert admin.patch(bmc.url(path), json={"Name": "x"}, timeout=10).status_code == 405
        assert admin.delete(bmc.url(path), timeout=10).status_code == 405
        assert bmc.get(path).status_code == 401


# ---------------------------------------------------------------- network ports and drives

INTERFACES = SYSTEM + "/EthernetInterfaces"
SIMPLE_STORAGE = SYSTEM + "/SimpleStorage"


def ports(bmc):
    """The fields of each port line of bmcsim nics show."""
    return [line.split(": ", 1)[1].split(" | ") for line in bmc.bmcsim("nics", "show").splitlines()]


@pytest.fixture
def hardware(bmc, admin):
    yield admin
    for command in (("nics", "link", "1", "up"), ("nics", "link", "2", "down"),
                    ("storage", "drive", "0", "insert"), ("storage", "drive", "1", "insert")):
        bmc.bmcsim(*command)


def test_ethernet_interfaces_are_the_host_ports(bmc, hardware):
    uris = members(hardware, bmc, INTERFACES)
    assert len(uris) == len(ports(bmc)) == 2
    for uri, (_, _, mac, link, speed) in zip(uris, ports(bmc)):
        interface = hardware.get(bmc.url(uri), timeout=10).json()
        assert interface["@odata.id"] == uri
        assert interface["MACAddress"] == interface["PermanentMACAddress"] == mac
        assert interface["LinkStatus"] == {"up": "LinkUp", "down": "LinkDown"}[link]
        assert "%d Mbps" % interface["SpeedMbps"] == speed


def test_a_link_change_shows_in_the_interface(bmc, hardware):
    bmc.bmcsim("nics", "link", "1", "down")
    bmc.bmcsim("nics", "link", "2", "up")
    first, second = (hardware.get(bmc.url(uri), timeout=10).json() for uri in members(hardware, bmc, INTERFACES))
    assert (first["LinkStatus"], first["SpeedMbps"]) == ("LinkDown", 0)
    assert (second["LinkStatus"], second["SpeedMbps"]) == ("LinkUp", 25000)


def test_simple_storage_lists_every_bay(bmc, hardware):
    assert members(hardware, bmc, SIMPLE_STORAGE) == [SIMPLE_STORAGE + "/1"]
    devices = hardware.get(bmc.url(SIMPLE_STORAGE + "/1"), timeout=10).json()["Devices"]
    assert [device["Name"] for device in devices] == ["Disk.Bay.%d" % bay for bay in range(4)]
    assert [device["Status"]["State"] for device in devices] == ["Enabled", "Enabled", "Absent", "Absent"]
    assert devices[1]["CapacityBytes"] == 4000787030016
    bmc.bmcsim("storage", "drive", "0", "remove")
    devices = hardware.get(bmc.url(SIMPLE_STORAGE + "/1"), timeout=10).json()["Devices"]
    assert devices[0] == {"Name": "Disk.Bay.0", "Status": {"State": "Absent"}}


@pytest.mark.parametrize("path", [
    INTERFACES + "/0", INTERFACES + "/3", INTERFACES + "/ToManager", SIMPLE_STORAGE + "/0",
    SIMPLE_STORAGE + "/2"])
def test_unknown_ports_and_controllers_are_not_found(bmc, admin, path):
    assert_not_found(admin, bmc, path)


def test_the_tool_refuses_ports_and_bays_it_does_not_have(bmc):
    for command in (("nics", "link", "3", "up"), ("nics", "link", "1", "sideways"),
                    ("storage", "drive", "2", "insert"), ("storage", "drive", "9", "remove"),
                    ("smbios", "remove-dimm", "CPU1_DIMM_E1"), ("smbios", "remove-dimm", "nowhere")):
        with pytest.raises(subprocess.CalledProcessError):
            bmc.bmcsim(*command)


# ---------------------------------------------------------------- boot options

BOOT_OPTIONS = SYSTEM + "/BootOptions"


@pytest.fixture
def boot_order(bmc, admin):
    path = os.path.join(bmc.root, "nv", "bios", "bios_setting")
    # The BIOS's directory exists once the BIOS has written anything; on a
    # worker that ran no earlier test of this module, it has not yet.
    os.makedirs(os.path.dirname(path), exist_ok=True)

    def write(text):
        with open(path, "w") as setting:
            setting.write(text)
    yield write
    os.remove(path)


def test_boot_options_follow_the_bios_boot_order(bmc, admin, boot_order):
    boot_order("BootOrder=Boot0003,Boot000a,Boot0003,Shell,Boot,BootXY\n")
    assert members(admin, bmc, BOOT_OPTIONS) == [BOOT_OPTIONS + "/Boot0003", BOOT_OPTIONS + "/Boot000a"]
    assert get_valid(admin, bmc, SYSTEM)["Boot"]["BootOptions"] == {"@odata.id": BOOT_OPTIONS}
    option = admin.get(bmc.url(BOOT_OPTIONS + "/Boot000A"), timeout=10).json()
    assert (option["@odata.id"], option["BootOptionReference"]) == (BOOT_OPTIONS + "/Boot000a", "Boot000a")
    assert_not_found(admin, bmc, BOOT_OPTIONS + "/Boot0001")
    boot_order("BootOrder=Boot0001\n")
    assert members(admin, bmc, BOOT_OPTIONS) == [BOOT_OPTIONS + "/Boot0001"]
    assert_not_found(admin, bmc, BOOT_OPTIONS + "/Boot0003")


# ---------------------------------------------------------------- summary metrics

@pytest.fixture
def sensors(bmc, admin):
    yield admin
    bmc.bmcsim("sensors", "reset")
    bmc.bmcsim("power", "on")


def test_summary_metrics_follow_the_sensors(bmc, sensors):
    system = get_valid(sensors, bmc, SYSTEM)
    processor_metrics = system["ProcessorSummary"]["Metrics"]["@odata.id"]
    memory_metrics = system["MemorySummary"]["Metrics"]["@odata.id"]
    assert sensors.get(bmc.url(processor_metrics), timeout=10).json()["TemperatureCelsius"] == 47
    assert sensors.get(bmc.url(memory_metrics), timeout=10).json()["HealthData"]["AlarmTrips"] == {
        "Temperature": False, "UncorrectableECCError": False}
    bmc.bmcsim("sensors", "set", "CPU1 Temp", "88")
    bmc.bmcsim("sensors", "set", "CPU2_DIMM_B1 Temp", "95")
    assert sensors.get(bmc.url(processor_metrics), timeout=10).json()["TemperatureCelsius"] == 88
    assert sensors.get(bmc.url(memory_metrics), timeout=10).json()["HealthData"]["AlarmTrips"]["Temperature"]
    bmc.bmcsim("power", "off")
    assert sensors.get(bmc.url(processor_metrics), timeout=10).json()["TemperatureCelsius"] is None
