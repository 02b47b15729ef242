"""The system's extras over HTTP through lighttpd: memory metrics, the VLANs
of the host's ports, the system log's alert acknowledgement, the system's
view of its network adapters, the node manager, the out-of-band update
state, the BMC facts, and the host's side of the host interface. Each
change is checked in the simulator through bmcsim."""

import pytest

import csdl_validation
from redfish_answers import assert_success, error_entries, message_of, shown

SYSTEM = "/redfish/v1/Systems/1"
VLANS = SYSTEM + "/EthernetInterfaces/1/VLANs"
SEL = SYSTEM + "/LogServices/Log1"
ACKNOWLEDGE = SEL + "/Actions/Oem/TwrLogService.ClearAcknowledgements"
NODE_MANAGER = SYSTEM + "/Oem/Tarnwright/NodeManager"
CLEAR_POLICIES = NODE_MANAGER + "/Actions/TwrNodeManager.ClearAllPolicies"
HOST_NICS = "/redfish/v1/Managers/1/HostInterfaces/1/HostEthernetInterfaces"
PASSWORD = "Passw0rd-1"


@pytest.fixture(scope="module")
def roles(bmc):
    """Sessions of an operator and a read-only user."""
    admin = bmc.admin()
    for name, role in (("operator2", "Operator"), ("reader2", "ReadOnly")):
        answer = admin.post(bmc.url("/redfish/v1/AccountService/Accounts"), timeout=10,
                            json={"UserName": name, "Password": PASSWORD, "RoleId": role})
        assert answer.status_code == 201, answer.text
    return {"Operator": bmc.basic_session("operator2", PASSWORD),
            "ReadOnly": bmc.basic_session("reader2", PASSWORD)}


def get(admin, bmc, path):
    answer = admin.get(bmc.url(path), timeout=10)
    assert answer.status_code == 200, (path, answer.text)
    return answer.json()


def assert_refused(answer, *message_ids):
    assert answer.status_code == 400, answer.text
    assert sorted(entry["MessageId"] for entry in error_entries(answer)) == sorted(message_ids)


def assert_forbidden(answer):
    assert answer.status_code == 403, answer.text
    assert message_of(answer)[0] == "Base.1.10.InsufficientPrivilege"


def test_memory_metrics_count_each_modules_errors(bmc, admin):
    modules = [member["@odata.id"] for member in get(admin, bmc, SYSTEM + "/Memory")["Members"]]
    first, second = (get(admin, bmc, uri) for uri in modules[:2])
    assert first["Metrics"] == {"@odata.id": modules[0] + "/MemoryMetrics"}
    bmc.bmcsim("memory", "errors", first["DeviceLocator"], "7", "0")
    bmc.bmcsim("memory", "errors", second["DeviceLocator"], "2", "1")
    assert first["DeviceLocator"] + ": correctable 7 | uncorrectable 0" in bmc.bmcsim("memory", "show")

    metrics = get(admin, bmc, modules[0] + "/MemoryMetrics")
    csdl_validation.validate(metrics)
    assert metrics["@odata.id"] == modules[0] + "/MemoryMetrics"
    assert metrics["CurrentPeriod"] == {"CorrectableECCErrorCount": 7, "UncorrectableECCErrorCount": 0}
    assert metrics["HealthData"]["AlarmTrips"] == {"CorrectableECCError": True, "UncorrectableECCError": False}
    assert get(admin, bmc, modules[1] + "/MemoryMetrics")["HealthData"]["AlarmTrips"]["UncorrectableECCError"]
    summary = get(admin, bmc, SYSTEM + "/MemorySummary/MemoryMetrics")
    assert summary["CurrentPeriod"] == {"CorrectableECCErrorCount": 9, "UncorrectableECCErrorCount": 1}

    # An empty slot or a module number that does not exist has no metrics.
    assert admin.get(bmc.url(SYSTEM + "/Memory/99/MemoryMetrics"), timeout=10).status_code == 404
    assert admin.patch(bmc.url(modules[0] + "/MemoryMetrics"), json={}, timeout=10).status_code == 405


def test_vlans_are_added_changed_and_deleted(bmc, admin, roles):
    assert get(admin, bmc, SYSTEM + "/EthernetInterfaces/1")["VLANs"] == {"@odata.id": VLANS}
    assert get(admin, bmc, VLANS)["Members"] == []

    created = admin.post(bmc.url(VLANS), json={"VLANId": 100}, timeout=10)
    assert created.status_code == 201, created.text
    uri = created.headers["Location"]
    assert uri == VLANS + "/1" and created.json()["@odata.id"] == uri
    assert (created.json()["VLANId"], created.json()["VLANEnable"]) == (100, True)
    csdl_validation.validate(created.json())
    assert "port1 vlan1: id 100 | on" in bmc.bmcsim("vlans", "show")

    assert admin.patch(bmc.url(uri), json={"VLANId": 4094, "VLANEnable": False}, timeout=10).status_code == 204
    assert "port1 vlan1: id 4094 | off" in bmc.bmcsim("vlans", "show")
    assert get(admin, bmc, VLANS)["Members"] == [{"@odata.id": uri}]


def test_refused_vlan_changes_leave_the_vlans_as_they_were(bmc, admin, roles):
    uri = admin.post(bmc.url(VLANS), json={"VLANId": 300}, timeout=10).headers["Location"]
    before = bmc.bmcsim("vlans", "show")

    assert_refused(admin.patch(bmc.url(uri), json={"VLANId": 4095, "VLANEnable": "yes", "Name": "x", "MTU": 9000},
                               timeout=10),
                   "Base.1.10.PropertyValueFormatError", "Base.1.10.PropertyValueTypeError",
                   "Base.1.10.PropertyNotWritable", "Base.1.10.PropertyUnknown")
    assert_refused(admin.post(bmc.url(VLANS), json={"VLANEnable": True}, timeout=10), "Base.1.10.PropertyMissing")
    assert_refused(admin.post(bmc.url(VLANS), json={"VLANId": -1}, timeout=10), "Base.1.10.PropertyValueFormatError")
    # Two VLANs of a port never share an id, whether added or changed.
    assert_refused(admin.post(bmc.url(VLANS), json={"VLANId": 300}, timeout=10), "Base.1.10.ResourceAlreadyExists")
    other = admin.post(bmc.url(VLANS), json={"VLANId": 301}, timeout=10).headers["Location"]
    assert_refused(admin.patch(bmc.url(other), json={"VLANId": 300}, timeout=10), "Base.1.10.ResourceAlreadyExists")
    assert admin.delete(bmc.url(other), timeout=10).status_code == 204
    assert bmc.bmcsim("vlans", "show") == before

    reader = roles["ReadOnly"]
    assert reader.get(bmc.url(uri), timeout=10).status_code == 200
    assert_forbidden(reader.post(bmc.url(VLANS), json={"VLANId": 5}, timeout=10))
    assert_forbidden(reader.patch(bmc.url(uri), json={"VLANEnable": True}, timeout=10))
    assert_forbidden(reader.delete(bmc.url(uri), timeout=10))
    assert bmc.bmcsim("vlans", "show") == before
    assert admin.get(bmc.url(SYSTEM + "/EthernetInterfaces/9/VLANs"), timeout=10).status_code == 404
    assert admin.get(bmc.url(VLANS + "/8"), timeout=10).status_code == 404


def test_a_port_holds_a_bounded_number_of_vlans(bmc, admin):
    port = SYSTEM + "/EthernetInterfaces/2/VLANs"
    for vlan_id in range(1, 9):
        assert admin.post(bmc.url(port), json={"VLANId": vlan_id}, timeout=10).status_code == 201
    assert_refused(admin.post(bmc.url(port), json={"VLANId": 9}, timeout=10),
                   "Base.1.10.CreateLimitReachedForResource")
    assert get(admin, bmc, port)["Members@odata.count"] == 8
    assert admin.delete(bmc.url(port + "/3"), timeout=10).status_code == 204
    assert admin.delete(bmc.url(port + "/3"), timeout=10).status_code == 404
    # The freed number is taken again; the others keep theirs.
    assert admin.post(bmc.url(port), json={"VLANId": 9}, timeout=10).headers["Location"] == port + "/3"
    assert "port2 vlan4: id 4 | on" in bmc.bmcsim("vlans", "show")


def test_acknowledging_the_system_logs_alerts(bmc, admin, roles):
    service = get(admin, bmc, SEL)
    assert service["Actions"]["Oem"] == {"#TwrLogService.ClearAcknowledgements": {"target": ACKNOWLEDGE}}
    assert "Oem" not in get(admin, bmc, "/redfish/v1/Managers/1/LogServices/Log1")["Actions"]
    bmc.bmcsim("eventlog", "add", "172", "CPU1 Temp, 101")
    assert get(admin, bmc, SEL)["Status"]["Health"] == "Critical"

    # Refused: parameters, and roles without the log-clearing privilege.
    answer = admin.post(bmc.url(ACKNOWLEDGE), json={"Force": True}, timeout=10)
    assert message_of(answer)[0] == "Base.1.10.ActionParameterUnknown"
    for session in roles.values():
        assert_forbidden(session.post(bmc.url(ACKNOWLEDGE), json={}, timeout=10))
    assert "unacknowledged alerts: critical" in bmc.bmcsim("eventlog", "alerts")

    assert_success(admin.post(bmc.url(ACKNOWLEDGE), json={}, timeout=10))
    assert "unacknowledged alerts: none" in bmc.bmcsim("eventlog", "alerts")
    assert get(admin, bmc, SEL)["Status"]["Health"] == "OK"
    # The records stay; only a later alert raises the state again.
    assert any(event["code"] == 172 for event in bmc.events())
    bmc.bmcsim("eventlog", "add", "171", "DIMM Temp, 85")
    assert get(admin, bmc, SEL)["Status"]["Health"] == "Warning"


def test_the_systems_network_interface_lists_its_adapters_functions_and_ports(bmc, admin):
    adapter = "/redfish/v1/Chassis/1/NetworkAdapters/1"
    interface = get(admin, bmc, SYSTEM + "/NetworkInterfaces/1")
    for segment in ("NetworkDeviceFunctions", "NetworkPorts"):
        assert interface[segment] == {"@odata.id": SYSTEM + "/NetworkInterfaces/1/" + segment}
        body = get(admin, bmc, SYSTEM + "/NetworkInterfaces/1/" + segment)
        assert body["@odata.id"] == SYSTEM + "/NetworkInterfaces/1/" + segment
        assert body["Members"] == [{"@odata.id": f"{adapter}/{segment}/{n}"} for n in (1, 2)]
        assert admin.get(bmc.url(SYSTEM + "/NetworkInterfaces/7/" + segment), timeout=10).status_code == 404


def test_node_manager_policies_are_cleared(bmc, admin, roles):
    bmc.bmcsim("state", "set", "node_manager_present", "0")
    assert admin.get(bmc.url(NODE_MANAGER), timeout=10).status_code == 404
    assert "NodeManager" not in get(admin, bmc, SYSTEM)["Oem"]["Tarnwright"]
    bmc.bmcsim("state", "set", "node_manager_present", "1")
    assert get(admin, bmc, SYSTEM)["Oem"]["Tarnwright"]["NodeManager"] == {"@odata.id": NODE_MANAGER}
    bmc.bmcsim("nodemanager", "add", "2", "450", "on")
    bmc.bmcsim("nodemanager", "add", "1", "300", "off", "1000", "5")

    body = get(admin, bmc, NODE_MANAGER)
    csdl_validation.validate(body)
    assert body["MaxPolicies"] == 16
    assert body["Policies"] == [
        {"PolicyId": 1, "PolicyEnabled": False, "PowerLimitWatts": 300, "CorrectionTimeMs": 1000,
         "ReportingPeriodSeconds": 5},
        {"PolicyId": 2, "PolicyEnabled": True, "PowerLimitWatts": 450, "CorrectionTimeMs": 6000,
         "ReportingPeriodSeconds": 10}]
    assert body["Actions"] == {"#TwrNodeManager.ClearAllPolicies": {"target": CLEAR_POLICIES}}

    before = bmc.bmcsim("nodemanager", "show")
    assert message_of(admin.post(bmc.url(CLEAR_POLICIES), json={"PolicyId": 1}, timeout=10))[0] == \
        "Base.1.10.ActionParameterUnknown"
    assert_forbidden(roles["ReadOnly"].post(bmc.url(CLEAR_POLICIES), json={}, timeout=10))
    assert bmc.bmcsim("nodemanager", "show") == before

    assert_success(roles["Operator"].post(bmc.url(CLEAR_POLICIES), json={}, timeout=10))
    assert bmc.bmcsim("nodemanager", "show") == ""
    assert get(admin, bmc, NODE_MANAGER)["Policies"] == []


def test_out_of_band_update_state_and_bmc_facts(bmc, admin):
    links = get(admin, bmc, SYSTEM)["Oem"]["Tarnwright"]
    firmware = shown(bmc, "firmware", "show")
    bmc.bmcsim("state", "set", "fw_update_flags", "2")
    oob = get(admin, bmc, links["OOB"]["@odata.id"])
    csdl_validation.validate(oob)
    assert oob["UpdateInProgress"] is False and oob["BiosInUpdateMode"] is True
    assert (oob["BiosVersion"], oob["BmcVersion"]) == (firmware["BIOS"], firmware["BMC"])
    assert oob["StagedBiosVersion"] is None
    bmc.bmcsim("state", "set", "fw_update_flags", "0")
    assert get(admin, bmc, links["OOB"]["@odata.id"])["BiosInUpdateMode"] is False

    lan = shown(bmc, "lan", "show")
    info = get(admin, bmc, links["BmcInfo"]["@odata.id"])
    csdl_validation.validate(info)
    assert (info["MACAddress"], info["IPv4Address"], info["HostName"]) == (lan["mac"], lan["address"], lan["hostname"])
    assert info["FirmwareVersion"] == firmware["BMC"]
    assert info["Manager"] == {"@odata.id": "/redfish/v1/Managers/1"}
    for path in (links["OOB"]["@odata.id"], links["BmcInfo"]["@odata.id"]):
        assert admin.patch(bmc.url(path), json={"BiosVersion": "x"}, timeout=10).status_code == 405


def test_the_host_interface_lists_the_hosts_network_interface(bmc, admin):
    assert get(admin, bmc, HOST_NICS)["Members"] == [{"@odata.id": HOST_NICS + "/1"}]
    bmc.bmcsim("hostif", "hostnic", "02:00:00:aa:bb:01", "169.254.3.2", "255.255.255.0")
    assert "host nic: 02:00:00:aa:bb:01 | 169.254.3.2/255.255.255.0" in bmc.bmcsim("hostif", "show")
    nic = get(admin, bmc, HOST_NICS + "/1")
    assert nic["MACAddress"] == "02:00:00:aa:bb:01"
    assert nic["IPv4Addresses"] == [{"Address": "169.254.3.2", "SubnetMask": "255.255.255.0",
                                     "AddressOrigin": "Static", "Gateway": None}]
    assert nic["DHCPv4"] == {"DHCPEnabled": False}
    assert admin.get(bmc.url(HOST_NICS + "/2"), timeout=10).status_code == 404
