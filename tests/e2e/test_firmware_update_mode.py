"""Updating a component in steps through the OEM firmware inventory (enter
update mode, upload, update or cancel), and pushes of the components that
only the push URI updates."""

import os

import pytest

from bmc_instance import BmcInstance
from test_http_push import image_dir, push
from test_update import BMC_TARGET, TASKS, UPDATE_SERVICE, firmware, make_image, \
    simple_update, update_events, wait_for_end
from test_update_faults import post_to_killed_service
from test_update_oem_resources import operator_and_reader  # noqa: F401 (fixture)

OEM_INVENTORY = UPDATE_SERVICE + "/Oem/Tarnwright/FirmwareInventory"
INVENTORY = UPDATE_SERVICE + "/FirmwareInventory"
ACTIONS = ("EnterUpdateMode", "Upload", "Update", "Cancel")


def action(member, name):
    return "%s/%s/Actions/TwrFirmwareInventory.%s" % (OEM_INVENTORY, member, name)


def post(bmc, session, member, name, **body):
    return session.post(bmc.url(action(member, name)), json=body, timeout=10)


def upload(bmc, session, member, path):
    with open(path, "rb") as image:
        return session.post(bmc.url(action(member, "Upload")), timeout=60,
                            files=[("UpdateFile", ("image.bin", image, "application/octet-stream"))])


def refusal(answer):
    assert answer.status_code == 400, answer.text
    info = answer.json()["error"]["@Message.ExtendedInfo"][0]
    return info["MessageId"], info["MessageArgs"]


def task_of(bmc, session, accepted):
    assert accepted.status_code == 202, accepted.text
    uri = accepted.json()["Accepted"]["@Message.ExtendedInfo"][0]["MessageArgs"][0]
    return session.get(bmc.url(uri)).json()


def enter(bmc, session, member):
    return task_of(bmc, session, post(bmc, session, member, "EnterUpdateMode"))


def test_the_bmc_is_updated_in_steps_and_nothing_else_runs_meanwhile(bmc, admin):
    member = admin.get(bmc.url(OEM_INVENTORY + "/BMC")).json()
    assert sorted(member["Actions"]["Oem"]) == sorted("#TwrFirmwareInventory." + a for a in ACTIONS)
    info = admin.get(bmc.url(member["Actions"]["Oem"]["#TwrFirmwareInventory.Update"]
                             ["@Redfish.ActionInfo"])).json()
    assert info["Parameters"] == []

    good = make_image(bmc, image_dir(bmc), "steps-bmc.img", "BMC", "7.00.00")
    other = make_image(bmc, image_dir(bmc), "steps-bios.img", "BIOS", "7.0.0")
    assert refusal(post(bmc, admin, "BMC", "Update"))[1] == [
        "The BMC firmware is not in update mode"]
    assert refusal(post(bmc, admin, "BMC", "EnterUpdateMode", Force=True))[0] == \
        "Base.1.10.ActionParameterUnknown"
    logged = len(update_events(bmc))
    task = enter(bmc, admin, "BMC")
    assert (task["Name"], task["TaskState"]) == ("BMC Update", "Pending")
    assert firmware(bmc)["update-mode"] == "BMC" and firmware(bmc)["updating"] == "1"

    # One component at a time, and no other way of updating meanwhile.
    busy = ("TWR.1.0.OemFirmwareAlreadyInUpdateMode", ["BMC"])
    assert refusal(post(bmc, admin, "BIOS", "EnterUpdateMode")) == busy
    assert refusal(post(bmc, admin, "BMC", "EnterUpdateMode")) == busy
    assert refusal(simple_update(bmc, admin, ImageURI="127.0.0.1/x.img",
                                 TransferProtocol="HTTP"))[0] == busy[0]
    assert refusal(upload(bmc, admin, "BIOS", other))[1] == ["The BIOS firmware is not in update mode"]

    # An image for another component, or none, is refused and nothing is staged.
    assert upload(bmc, admin, "BMC", other).status_code == 400
    assert admin.get(bmc.url(INVENTORY + "/Staging_BMC")).status_code == 404
    assert refusal(post(bmc, admin, "BMC", "Update"))[1] == ["No image was uploaded for the BMC firmware"]

    answer = upload(bmc, admin, "BMC", good)
    assert answer.status_code == 200, answer.text
    assert admin.get(bmc.url(INVENTORY + "/Staging_BMC")).json()["Version"] == "7.00.00"
    assert firmware(bmc)["BMC"] != "7.00.00"

    started = post(bmc, admin, "BMC", "Update")
    assert started.status_code == 202, started.text
    assert started.headers["Location"] == task["TaskMonitor"]
    assert refusal(post(bmc, admin, "BMC", "Cancel")) == busy
    assert wait_for_end(bmc, admin, task["TaskMonitor"]).status_code == 200
    assert firmware(bmc)["BMC"] == "7.00.00"
    assert (firmware(bmc)["update-mode"], firmware(bmc)["updating"]) == ("", "0")
    action_uri = action("BMC", "Update")
    assert update_events(bmc)[logged:] == [
        "BMC, %s, started" % action_uri,
        "BMC, %s, the new firmware is running, successfully" % action_uri]


def test_cancel_leaves_update_mode_and_drops_the_image(bmc, admin):
    image = make_image(bmc, image_dir(bmc), "cancel-bios.img", "BIOS", "7.1.0")
    before = firmware(bmc)["BIOS"]
    task = enter(bmc, admin, "BIOS")
    assert upload(bmc, admin, "BIOS", image).status_code == 200
    bmc.bmcsim("power", "on")
    refused = post(bmc, admin, "BIOS", "Update")
    assert refused.status_code == 400
    assert "Update BIOS image requries system power off." in refused.text
    assert admin.get(bmc.url(task["@odata.id"])).json()["TaskState"] == "Pending"

    cancelled = post(bmc, admin, "BIOS", "Cancel")
    assert cancelled.status_code == 200, cancelled.text
    ended = admin.get(bmc.url(task["@odata.id"])).json()
    assert ended["TaskState"] == "Killed" and "EndTime" in ended
    assert not os.path.exists(os.path.join(bmc.root, "tmp", "bios_rom"))
    assert admin.get(bmc.url(INVENTORY + "/Staging_BIOS")).status_code == 404
    assert (firmware(bmc)["update-mode"], firmware(bmc)["updating"]) == ("", "0")
    assert firmware(bmc)["BIOS"] == before
    assert refusal(post(bmc, admin, "BIOS", "Cancel"))[1] == ["The BIOS firmware is not in update mode"]

    # Deleting the task leaves update mode too.
    task = enter(bmc, admin, "BIOS")
    assert admin.delete(bmc.url(task["@odata.id"])).status_code == 200
    assert (firmware(bmc)["update-mode"], firmware(bmc)["updating"]) == ("", "0")


def test_raid_controllers_are_listed_as_found_and_updated_the_same_way(bmc, admin):
    bmc.bmcsim("storage", "set", "broadcom", "2")
    bmc.bmcsim("storage", "set", "marvell", "0")
    members = [m["@odata.id"].rsplit("/", 1)[1]
               for m in admin.get(bmc.url(OEM_INVENTORY)).json()["Members"]]
    assert members == ["BMC", "BIOS", "HARAIDController.0", "HARAIDController.1"]
    assert admin.get(bmc.url(INVENTORY + "/Broadcom1")).json()["Version"] == firmware(bmc)["Broadcom"]
    assert admin.get(bmc.url(OEM_INVENTORY + "/HARAIDController.2")).status_code == 404
    assert post(bmc, admin, "HARAIDController.2", "EnterUpdateMode").status_code == 404
    assert post(bmc, admin, "MRVL_HARAIDController.0", "EnterUpdateMode").status_code == 404
    assert admin.get(bmc.url(OEM_INVENTORY + "/MRVL_HARAIDController.0/UpdateActionInfo")) \
        .status_code == 404

    image = make_image(bmc, image_dir(bmc), "raid.img", "Broadcom", "52.30.0")
    task = enter(bmc, admin, "HARAIDController.1")
    assert task["Name"] == "Broadcom Update"
    assert upload(bmc, admin, "HARAIDController.1", image).status_code == 200
    assert admin.get(bmc.url(INVENTORY + "/Staging_Broadcom0")).json()["Version"] == "52.30.0"
    assert post(bmc, admin, "HARAIDController.1", "Update").status_code == 202
    assert wait_for_end(bmc, admin, task["TaskMonitor"]).status_code == 200
    assert firmware(bmc)["Broadcom"] == "52.30.0"


def test_only_administrators_enter_update_mode_and_lockdown_refuses_it(
        bmc, admin, operator_and_reader):  # noqa: F811
    for session in operator_and_reader:
        assert post(bmc, session, "BMC", "EnterUpdateMode").status_code == 403
    assert firmware(bmc)["update-mode"] == ""
    task = enter(bmc, admin, "BMC")
    bmc.bmcsim("lockdown", "on")
    try:
        for name in ("EnterUpdateMode", "Update"):
            assert post(bmc, admin, "BMC", name).status_code == 405
        # Leaving update mode changes no firmware.
        assert post(bmc, admin, "BMC", "Cancel").status_code == 200
    finally:
        bmc.bmcsim("lockdown", "off")
    assert admin.get(bmc.url(task["@odata.id"])).json()["TaskState"] == "Killed"


def test_pushes_update_the_other_components(bmc, admin):
    inventory = admin.get(bmc.url(INVENTORY)).json()
    listed = {m["@odata.id"].rsplit("/", 1)[1] for m in inventory["Members"]}
    components = [("CPLD", "CPLD_Motherboard", "Staging_CPLD_Motherboard", "CPLD Update", "0A"),
                  ("CPLD_Backplane", "CPLD_Backplane", "CPLD_Backplane_0", "CPLD Update", "0B"),
                  ("NIC", "NIC0", "StagingNIC0", "NIC Update", "14.33.00"),
                  ("GPU", "GPU0", "StagingGPU0", "GPU Update", "96.01.00"),
                  ("LCMC", "LCMC", "LCMC_Backplane", "BPN LCMC Update", "01.02.04")]
    for component, member, staged, task_name, version in components:
        assert member in listed
        path = make_image(bmc, image_dir(bmc), component + ".img", component, version)
        target = INVENTORY + "/" + member
        task = task_of(bmc, admin, push(bmc, path, {"Targets": [target]}))
        assert task["Name"] == task_name
        assert wait_for_end(bmc, admin, task["TaskMonitor"]).status_code == 200, component
        assert firmware(bmc)[component] == version
        assert admin.get(bmc.url(INVENTORY + "/" + staged)).json()["Version"] == version
        assert admin.get(bmc.url(target)).json()["Version"] == version
    # An image of another component is flashed nowhere.
    path = make_image(bmc, image_dir(bmc), "wrong.img", "GPU", "99.00.00")
    task = task_of(bmc, admin, push(bmc, path, {"Targets": [INVENTORY + "/NIC0"]}))
    assert wait_for_end(bmc, admin, task["TaskMonitor"]).status_code == 400
    assert firmware(bmc)["NIC"] == "14.33.00" and firmware(bmc)["GPU"] == "96.01.00"
    # Only the BMC and the BIOS are pulled.
    pulled = simple_update(bmc, admin, ImageURI="127.0.0.1/x.img", TransferProtocol="HTTP",
                           Targets=[INVENTORY + "/NIC0"])
    assert pulled.status_code == 400 and "Input Targets format error." in pulled.text


@pytest.fixture
def killed_in_update_mode():
    instance = BmcInstance(kill_at="update-mode")
    yield instance
    instance.stop()


def test_a_process_killed_entering_update_mode_holds_nothing_back(killed_in_update_mode):
    bmc = killed_in_update_mode
    admin = bmc.admin()
    post_to_killed_service(bmc, lambda: post(bmc, admin, "BMC", "EnterUpdateMode"))
    count = admin.get(bmc.url(TASKS)).json()["Members@odata.count"]
    task = admin.get(bmc.url("%s/%d" % (TASKS, count))).json()
    assert task["TaskState"] == "Exception"
    assert (firmware(bmc)["update-mode"], firmware(bmc)["updating"]) == ("", "0")
    path = make_image(bmc, image_dir(bmc), "after.img", "BMC", "7.02.00")
    accepted = push(bmc, path, {"Targets": [BMC_TARGET]})
    ended = wait_for_end(bmc, admin, accepted.headers["Location"])
    assert ended.status_code == 200, ended.text
