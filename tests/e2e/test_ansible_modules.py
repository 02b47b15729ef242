"""Ansible's community.general Redfish modules run against the service over
HTTPS, the way an operator's playbook runs them; each step's effect is read
back from the simulated BMC."""

import json
import os
import subprocess

import pytest

from bmc_instance import BmcInstance
from update_servers import HttpImageServer

PLAYBOOK_TIMEOUT = 180
# Every request of a module gives up after this many seconds.
MODULE_TIMEOUT = 20


@pytest.fixture(scope="module")
def bmc():
    instance = BmcInstance()
    # The BIOS has reported its boot options.
    options = os.path.join(instance.root, "nv", "bios")
    os.makedirs(options, exist_ok=True)
    with open(os.path.join(options, "bios_setting"), "w") as settings:
        settings.write("BootOrder=Boot0002,Boot0001,Boot0003\n")
    yield instance
    instance.stop()


def run_steps(bmc, steps):
    """Runs (module, arguments) steps as one playbook; the result of each.

    The modules of this collection never check the certificate, which is
    self-signed here."""
    connection = {"baseuri": "127.0.0.1:%d" % bmc.tls_port, "username": bmc.admin_user,
                  "password": bmc.admin_password, "timeout": MODULE_TIMEOUT}
    tasks = [{"community.general." + module: dict(connection, **arguments),
              "ignore_errors": True} for module, arguments in steps]
    for task in tasks:
        arguments = next(iter(task.values()))
        if "auth_token" in arguments:
            del arguments["username"], arguments["password"]
    path = os.path.join(bmc.root, "playbook.json")
    with open(path, "w") as playbook:
        json.dump([{"hosts": "localhost", "gather_facts": False, "tasks": tasks}], playbook)
    environment = dict(os.environ, ANSIBLE_STDOUT_CALLBACK="json", ANSIBLE_NOCOLOR="1",
                       ANSIBLE_LOCALHOST_WARNING="false",
                       ANSIBLE_HOME=os.path.join(bmc.root, "ansible"),
                       ANSIBLE_LOCAL_TEMP=os.path.join(bmc.root, "ansible", "tmp"))
    finished = subprocess.run(
        ["ansible-playbook", "-i", "localhost,", "-c", "local",
         "-e", "ansible_python_interpreter=/usr/bin/python3", path],
        env=environment, capture_output=True, text=True, timeout=PLAYBOOK_TIMEOUT)
    report = json.loads(finished.stdout)
    results = [task["hosts"]["localhost"] for task in report["plays"][0]["tasks"]]
    assert len(results) == len(steps), finished.stderr
    return results


def assert_succeeded(steps, results):
    failures = [(step, result.get("msg")) for step, result in zip(steps, results)
                if result.get("failed")]
    assert not failures


def command(category, name, **arguments):
    return ("redfish_command", dict(category=category, command=name, **arguments))


def config(category, name, **arguments):
    return ("redfish_config", dict(category=category, command=name, **arguments))


def state(bmc, area, *arguments):
    lines = bmc.bmcsim(area, *arguments).splitlines()
    return dict(line.split("=", 1) for line in lines if "=" in line)


INVENTORY = {
    "Systems": ["GetSystemInventory", "GetCpuInventory", "GetMemoryInventory", "GetNicInventory",
                "GetHealthReport", "GetStorageControllerInventory", "GetDiskInventory",
                "GetVolumeInventory", "GetBiosAttributes", "GetBootOrder", "GetBootOverride"],
    "Chassis": ["GetFanInventory", "GetPsuInventory", "GetChassisPower", "GetChassisThermals",
                "GetChassisInventory", "GetHealthReport"],
    "Accounts": ["ListUsers"],
    "Sessions": ["GetSessions"],
    "Update": ["GetFirmwareInventory", "GetFirmwareUpdateCapabilities"],
    "Manager": ["GetManagerNicInventory", "GetVirtualMedia", "GetLogs", "GetNetworkProtocols",
                "GetHealthReport", "GetHostInterfaces", "GetManagerInventory"],
}


def test_every_inventory_reads(bmc):
    steps = [("redfish_info", {"category": category, "command": name})
             for category, names in INVENTORY.items() for name in names]
    results = run_steps(bmc, steps)
    assert_succeeded(steps, results)
    for (_, arguments), result in zip(steps, results):
        facts = result["redfish_facts"]
        assert facts and all(fact["ret"] for fact in facts.values()), (arguments, facts)
    by_command = {step[1]["command"]: result["redfish_facts"]
                  for step, result in zip(steps, results)}
    order = by_command["GetBootOrder"]["boot_order"]["entries"][0][1]
    assert [option["BootOptionReference"] for option in order] == ["Boot0002", "Boot0001",
                                                                  "Boot0003"]
    users = by_command["ListUsers"]["user"]["entries"]
    assert any(user.get("UserName") == bmc.admin_user for user in users)


def test_power_boot_override_and_indicator_leds(bmc):
    steps = [command("Systems", "PowerOn"), command("Systems", "PowerForceRestart"),
             command("Systems", "SetOneTimeBoot", bootdevice="Pxe"),
             command("Chassis", "IndicatorLedBlink", resource_id="1"),
             command("Systems", "PowerForceOff")]
    results = run_steps(bmc, steps)
    assert_succeeded(steps, results)
    assert state(bmc, "power", "show")["power"] == "off"
    assert int(state(bmc, "power", "show")["resets"]) >= 1
    assert state(bmc, "boot", "show")["target"] == "Pxe"
    assert state(bmc, "state", "show")["identify_blink"] != "0"

    steps = [command("Systems", "EnableContinuousBootOverride", bootdevice="Hdd"),
             command("Systems", "IndicatorLedOn", resource_id="1")]
    assert_succeeded(steps, run_steps(bmc, steps))
    boot = state(bmc, "boot", "show")
    assert (boot["override"], boot["target"]) == ("continuous", "Hdd")
    assert state(bmc, "state", "show")["identify_blink"] == "0"

    steps = [command("Systems", "DisableBootOverride"),
             command("Chassis", "IndicatorLedOff", resource_id="1")]
    assert_succeeded(steps, run_steps(bmc, steps))
    assert state(bmc, "boot", "show")["override"] == "disabled"
    assert state(bmc, "state", "show")["identify_lit"] == "0"


def user_row(bmc, name):
    for line in bmc.bmcsim("users", "list").splitlines()[1:]:
        fields = line.split()
        if fields[2] == name:
            return fields
    return None


def test_account_life_cycle_and_account_service(bmc):
    steps = [command("Accounts", "AddUser", new_username="ansible", new_password="Ans1ble-pass",
                     roleid="Operator"),
             command("Accounts", "UpdateUserRole", account_username="ansible", roleid="ReadOnly"),
             command("Accounts", "UpdateUserPassword", account_username="ansible",
                     account_password="Ans1ble-next"),
             command("Accounts", "DisableUser", account_username="ansible")]
    assert_succeeded(steps, run_steps(bmc, steps))
    row = user_row(bmc, "ansible")
    assert (row[4], row[5]) == ("ReadOnly", "no")
    assert bmc.basic_session("ansible", "Ans1ble-next").get(bmc.url("/redfish/v1/Systems")) \
        .status_code == 401

    steps = [command("Accounts", "EnableUser", account_username="ansible"),
             command("Accounts", "UpdateUserName", account_username="ansible",
                     update_username="ansible2"),
             command("Accounts", "UpdateAccountServiceProperties",
                     account_properties={"AccountLockoutThreshold": 5,
                                         "AccountLockoutDuration": 600})]
    assert_succeeded(steps, run_steps(bmc, steps))
    assert user_row(bmc, "ansible") is None
    assert user_row(bmc, "ansible2")[5] == "yes"
    assert bmc.basic_session("ansible2", "Ans1ble-next").get(bmc.url("/redfish/v1/Systems")) \
        .status_code == 200
    service = bmc.admin().get(bmc.url("/redfish/v1/AccountService")).json()
    assert (service["AccountLockoutThreshold"], service["AccountLockoutDuration"]) == (5, 600)

    steps = [command("Accounts", "DeleteUser", account_username="ansible2")]
    assert_succeeded(steps, run_steps(bmc, steps))
    assert user_row(bmc, "ansible2") is None


def session_ids(bmc):
    members = bmc.admin().get(bmc.url("/redfish/v1/SessionService/Sessions")).json()["Members"]
    return [member["@odata.id"] for member in members]


def test_sessions_are_created_deleted_and_cleared(bmc):
    created = run_steps(bmc, [command("Sessions", "CreateSession"),
                              command("Sessions", "CreateSession")])
    sessions = [result["session"] for result in created]
    assert all(session["uri"] in session_ids(bmc) for session in sessions)

    first = sessions[0]
    steps = [command("Sessions", "DeleteSession", auth_token=first["token"],
                     session_uri=first["uri"])]
    assert_succeeded(steps, run_steps(bmc, steps))
    assert first["uri"] not in session_ids(bmc)
    assert sessions[1]["uri"] in session_ids(bmc)

    steps = [command("Sessions", "ClearSessions")]
    assert_succeeded(steps, run_steps(bmc, steps))
    assert session_ids(bmc) == []


def test_manager_log_virtual_media_and_restart(bmc):
    image = "http://127.0.0.1:9/installer.iso"
    steps = [command("Manager", "ClearLogs"),
             command("Manager", "VirtualMediaInsert",
                     virtual_media={"image_url": image, "media_types": ["CD", "DVD"]})]
    assert_succeeded(steps, run_steps(bmc, steps))
    log = bmc.bmcsim("eventlog", "show").splitlines()
    assert "cleared the event log" in log[0]
    assert state(bmc, "vmedia", "show")["CD1"] == image

    resets = int(state(bmc, "bmc", "show")["resets"])
    steps = [command("Manager", "VirtualMediaEject", virtual_media={"image_url": image}),
             command("Manager", "GracefulRestart")]
    assert_succeeded(steps, run_steps(bmc, steps))
    assert state(bmc, "vmedia", "show")["CD1"] == ""
    assert int(state(bmc, "bmc", "show")["resets"]) == resets + 1


def test_simple_update_and_its_status(bmc):
    directory = os.path.join(bmc.root, "ansible-images")
    os.makedirs(directory)
    bmc.bmcsim("firmware", "image", "BMC", "7.10.00", os.path.join(directory, "bmc.img"))
    server = HttpImageServer(directory)
    try:
        steps = [command("Update", "SimpleUpdate",
                         update_image_uri="http://%s/bmc.img" % server.host,
                         update_protocol="HTTP", update_targets=["/redfish/v1/Managers/1"])]
        started = run_steps(bmc, steps)
        assert_succeeded(steps, started)
        handle = started[0]["return_values"]["update_status"]["handle"]
        status = None
        for _ in range(20):
            steps = [("redfish_info", {"category": "Update", "command": "GetUpdateStatus",
                                       "update_handle": handle})]
            results = run_steps(bmc, steps)
            assert_succeeded(steps, results)
            status = results[0]["redfish_facts"]["update_status"]
            if status["status"] in ("Completed", "Exception", "Killed", "Cancelled"):
                break
    finally:
        server.stop()
    assert status["status"] == "Completed"
    assert state(bmc, "firmware", "show")["BMC"] == "7.10.00"


def test_bios_boot_order_and_secure_boot_settings(bmc):
    # The host starts, and its BIOS reports the attributes it takes.
    bmc.bmcsim("bios", "post")
    steps = [config("Systems", "SetBiosAttributes",
                    bios_attributes={"QuietBoot": False, "BootTimeout": 9}),
             config("Systems", "SetBootOrder", boot_order=["Boot0003", "Boot0001", "Boot0002"]),
             config("Systems", "EnableSecureBoot")]
    assert_succeeded(steps, run_steps(bmc, steps))
    assert state(bmc, "bios", "show")["boot_order"] == "Boot0003,Boot0001,Boot0002"
    bmc.bmcsim("bios", "post")
    attributes = bmc.admin().get(bmc.url("/redfish/v1/Systems/1/Bios")).json()["Attributes"]
    assert (attributes["QuietBoot"], attributes["BootTimeout"]) == (False, 9)
    assert bmc.admin().get(bmc.url("/redfish/v1/Systems/1/SecureBoot")).json()[
        "SecureBootCurrentBoot"] == "Enabled"

    steps = [config("Systems", "SetBiosDefaultSettings"),
             config("Systems", "SetDefaultBootOrder")]
    assert_succeeded(steps, run_steps(bmc, steps))
    assert state(bmc, "bios", "show")["boot_order"] == "Boot0001,Boot0002,Boot0003"
    bmc.bmcsim("bios", "post")
    attributes = bmc.admin().get(bmc.url("/redfish/v1/Systems/1/Bios")).json()["Attributes"]
    assert (attributes["QuietBoot"], attributes["BootTimeout"]) == (True, 5)
    assert attributes["SecureBoot"] == "Disabled"


def test_manager_nic_host_interface_and_session_service(bmc):
    address = state(bmc, "lan", "show")["address"]
    steps = [config("Manager", "SetManagerNic", nic_addr=address,
                    nic_config={"HostName": "ansible-bmc"}),
             config("Manager", "SetHostInterface", hostinterface_config={"InterfaceEnabled": True}),
             config("Sessions", "SetSessionService", sessions_config={"SessionTimeout": 900})]
    assert_succeeded(steps, run_steps(bmc, steps))
    assert state(bmc, "lan", "show")["hostname"] == "ansible-bmc"
    assert bmc.bmcsim("hostif", "show").splitlines()[0] == "on"
    service = bmc.admin().get(bmc.url("/redfish/v1/SessionService")).json()
    assert service["SessionTimeout"] == 900

    steps = [config("Manager", "SetHostInterface",
                    hostinterface_config={"InterfaceEnabled": False})]
    assert_succeeded(steps, run_steps(bmc, steps))
    assert bmc.bmcsim("hostif", "show").splitlines()[0] == "off"


def test_network_protocols(bmc):
    steps = [config("Manager", "SetNetworkProtocols",
                    network_protocols={"SSH": {"ProtocolEnabled": False, "Port": 2222},
                                       "SNMP": {"ProtocolEnabled": "off"}})]
    assert_succeeded(steps, run_steps(bmc, steps))
    lan = state(bmc, "lan", "show")
    assert (lan["SSH"], lan["SSH.port"], lan["SNMP"]) == ("off", "2222", "off")

    # A port no service can have is refused, and nothing changes.
    steps = [config("Manager", "SetNetworkProtocols",
                    network_protocols={"SSH": {"ProtocolEnabled": True, "Port": 70000}})]
    results = run_steps(bmc, steps)
    assert results[0].get("failed") and "HTTP Error 400" in results[0]["msg"]
    assert "'70000' for the property SSH/Port" in results[0]["msg"]
    assert state(bmc, "lan", "show") == lan

    steps = [config("Manager", "SetNetworkProtocols",
                    network_protocols={"SSH": {"ProtocolEnabled": True, "Port": 22},
                                       "SNMP": {"ProtocolEnabled": True}})]
    assert_succeeded(steps, run_steps(bmc, steps))
    lan = state(bmc, "lan", "show")
    assert (lan["SSH"], lan["SSH.port"], lan["SNMP"]) == ("on", "22", "on")
