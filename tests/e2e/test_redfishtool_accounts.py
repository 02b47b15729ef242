"""Account management with redfishtool, a real Redfish client."""

import json
import subprocess

ACCOUNTS = "/redfish/v1/AccountService/Accounts"


def redfishtool(bmc, *arguments):
    """Runs an AccountService command in a session of its own (login, logout)."""
    command = ["redfishtool", "-r", "127.0.0.1:%d" % bmc.port, "-u", bmc.admin_user,
               "-p", bmc.admin_password, "-S", "Never", "-A", "Session", "AccountService", *arguments]
    answer = subprocess.run(command, capture_output=True, text=True, timeout=60)
    assert answer.returncode == 0, answer.stderr
    return answer.stdout


def read_status(bmc, user, password, path):
    return bmc.basic_session(user, password).get(bmc.url(path), timeout=10).status_code


def listed_users(bmc):
    listing = json.loads(redfishtool(bmc, "Accounts", "list"))
    return {member["UserName"]: member["@odata.id"] for member in listing["Members"]}


def test_list_add_change_and_delete_a_user(bmc):
    assert listed_users(bmc) == {bmc.admin_user: ACCOUNTS + "/2"}

    redfishtool(bmc, "adduser", "tooluser", "Tool-pass1", "ReadOnly")
    location = listed_users(bmc)["tooluser"]
    account = json.loads(redfishtool(bmc, "Accounts", "-m", "UserName:tooluser"))
    assert (account["RoleId"], account["Enabled"]) == ("ReadOnly", True)
    assert read_status(bmc, "tooluser", "Tool-pass1", location) == 200

    redfishtool(bmc, "setpassword", "tooluser", "Tool-pass2")
    assert read_status(bmc, "tooluser", "Tool-pass2", location) == 200
    redfishtool(bmc, "useradmin", "tooluser", "disable")
    assert bmc.admin().get(bmc.url(location), timeout=10).json()["Enabled"] is False

    redfishtool(bmc, "deleteuser", "tooluser")
    assert "tooluser" not in listed_users(bmc)
    assert bmc.admin().get(bmc.url(location), timeout=10).status_code == 404


def test_roles_are_listed_as_predefined(bmc):
    roles = json.loads(redfishtool(bmc, "Roles", "list"))["Members"]
    assert [(role["Id"], role["IsPredefined"]) for role in roles] == [
        ("Administrator", True), ("Operator", True), ("ReadOnly", True)]
