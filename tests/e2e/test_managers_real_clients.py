"""OpenStack's sushy and DMTF's redfishtool use the manager: the way Ironic
boots a host from an image, and the way an administrator reads the BMC."""

import json
import subprocess

import sushy

MANAGER = "/redfish/v1/Managers/1"


def redfishtool(bmc, *arguments):
    command = ["redfishtool", "-r", "127.0.0.1:%d" % bmc.port, "-S", "Never", "-u", bmc.admin_user,
               "-p", bmc.admin_password, "Managers", *arguments]
    answer = subprocess.run(command, capture_output=True, text=True, timeout=60)
    assert answer.returncode == 0, answer.stderr
    return answer.stdout


def vmedia(bmc):
    return dict(line.split("=", 1) for line in bmc.bmcsim("vmedia", "show").splitlines())


def test_sushy_reads_the_manager_and_mounts_an_image(bmc):
    client = sushy.Sushy(bmc.url("/redfish/v1"), verify=False,
                         auth=sushy.auth.BasicAuth(bmc.admin_user, bmc.admin_password))
    manager = client.get_manager(MANAGER)
    bmc.bmcsim("bmc", "version", "3.1.0")
    manager.refresh()
    assert (manager.identity, manager.firmware_version) == ("1", "3.1.0")
    assert manager.manager_type == sushy.MANAGER_TYPE_BMC
    assert manager.get_allowed_reset_manager_values() == {
        sushy.RESET_MANAGER_GRACEFUL_RESTART, sushy.RESET_MANAGER_FORCE_RESTART}
    assert [system.identity for system in manager.systems] == ["1"]
    cd = manager.virtual_media.get_member(MANAGER + "/VirtualMedia/CD1")
    assert sushy.VIRTUAL_MEDIA_CD in cd.media_types and not cd.inserted
    cd.insert_media("http://127.0.0.1:9/deploy.iso")
    assert vmedia(bmc)["CD1"] == "http://127.0.0.1:9/deploy.iso"
    cd.refresh()
    assert (cd.inserted, cd.image_name) == (True, "deploy.iso")
    cd.eject_media()
    assert vmedia(bmc)["CD1"] == ""


def test_redfishtool_lists_and_reads_the_manager(bmc):
    listing = redfishtool(bmc, "list")
    assert MANAGER in listing
    manager = json.loads(redfishtool(bmc, "-I", "1"))
    assert manager["@odata.id"] == MANAGER and manager["ManagerType"] == "BMC"
    protocol = json.loads(redfishtool(bmc, "-I", "1", "NetworkProtocol"))
    assert protocol["HTTPS"]["ProtocolEnabled"] is True
    interface = json.loads(redfishtool(bmc, "-I", "1", "EthernetInterfaces", "-i", "1"))
    assert interface["Id"] == "1"
    logs = json.loads(redfishtool(bmc, "-I", "1", "Logs", "-i", "Log1"))
    assert logs["LogEntryType"] == "SEL"
