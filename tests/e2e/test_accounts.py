"""Accounts, roles and the account service, over HTTP through lighttpd."""

import os
import stat

import pytest

from schema_validation import validate

SERVICE = "/redfish/v1/AccountService"
ACCOUNTS = SERVICE + "/Accounts"
ROLES = SERVICE + "/Roles"
PASSWORD = "Passw0rd-1"


def message_ids(answer):
    return [entry["MessageId"] for entry in answer.json()["error"]["@Message.ExtendedInfo"]]


def first_message(answer):
    return answer.json()["error"]["@Message.ExtendedInfo"][0]


def read_status(bmc, user, password):
    """The status of a GET of the account service with these credentials."""
    return bmc.basic_session(user, password).get(bmc.url(SERVICE), timeout=10).status_code


def ini_text(bmc, name):
    with open(os.path.join(bmc.root, "nv", "redfish", name)) as settings:
        return settings.read()


@pytest.fixture
def admin(bmc):
    return bmc.admin()


@pytest.fixture
def patch_service(bmc, admin):
    return lambda body: admin.patch(bmc.url(SERVICE), json=body, timeout=10)


@pytest.fixture
def accounts(bmc, admin):
    """Creates accounts for one test and deletes whatever is left of them."""
    created = []

    def create(name, password=PASSWORD, role="Operator", **extra):
        answer = admin.post(bmc.url(ACCOUNTS), timeout=10,
                            json={"UserName": name, "Password": password, "RoleId": role, **extra})
        if answer.status_code == 201:
            created.append(answer.headers["Location"])
        return answer

    yield create
    for location in created:
        admin.delete(bmc.url(location), timeout=10)


def member_ids(bmc, admin):
    collection = admin.get(bmc.url(ACCOUNTS), timeout=10).json()
    validate(collection)
    assert collection["Members@odata.count"] == len(collection["Members"])
    return [member["@odata.id"].rsplit("/", 1)[1] for member in collection["Members"]]


def test_the_reserved_administrator_is_listed_and_slot_zero_never(bmc, admin):
    assert member_ids(bmc, admin) == ["2"]
    account = admin.get(bmc.url(ACCOUNTS + "/2"), timeout=10).json()
    validate(account)
    assert account["@odata.type"] == "#ManagerAccount.v1_5_0.ManagerAccount"
    assert account["Id"] == "2" and account["UserName"] == bmc.admin_user
    assert account["RoleId"] == "Administrator"
    assert account["Password"] is None and account["Enabled"] is True and account["Locked"] is False
    assert account["Links"]["Role"] == {"@odata.id": ROLES + "/Administrator"}
    assert account["AccountTypes"] == ["Redfish"]
    assert account["SNMP"]["AuthenticationKey"] is None
    assert account["SNMP"]["AuthenticationKeySet"] is False
    for empty in ("1", "9", "17", "99999999999"):
        assert admin.get(bmc.url(ACCOUNTS + "/" + empty), timeout=10).status_code == 404, empty


def test_create_answers_201_with_the_account_and_logs_no_password(bmc, admin, accounts):
    answer = accounts("operator1", role="Operator", Enabled=True)
    assert answer.status_code == 201, answer.text
    assert answer.headers["Location"] == ACCOUNTS + "/3"
    validate(answer.json())
    assert answer.json()["UserName"] == "operator1" and answer.json()["RoleId"] == "Operator"
    assert admin.get(bmc.url(ACCOUNTS + "/3"), timeout=10).json()["UserName"] == "operator1"
    assert member_ids(bmc, admin) == ["2", "3"]
    logged = [event["text"] for event in bmc.events() if "operator1" in event["text"]]
    assert logged and not any(PASSWORD in text for text in logged)
    assert read_status(bmc, "operator1", PASSWORD) == 200


@pytest.mark.parametrize("name, accepted", [
    ("fifteen-chars-x", True), ("sixteen-chars-xx", False), ("abc", False), ("abcd", True),
    ("two words", False)])
def test_user_name_lengths_and_blanks(bmc, accounts, name, accepted):
    answer = accounts(name)
    assert answer.status_code == (201 if accepted else 400), answer.text
    if not accepted:
        assert message_ids(answer) == ["Base.1.10.PropertyValueFormatError"]


@pytest.mark.parametrize("password, accepted", [
    ("8chars-x", True), ("twenty-characters-xy", True),
    ("7chars-", False), ("twenty-one-characters", False)])
def test_password_lengths(bmc, accounts, password, accepted):
    answer = accounts("pwuser", password=password)
    assert answer.status_code == (201 if accepted else 400), answer.text
    if not accepted:
        assert message_ids(answer) == ["Base.1.10.PropertyValueFormatError"]
        assert password not in answer.text


def test_a_refused_create_reports_every_problem_and_creates_nothing(bmc, admin, accounts):
    missing = admin.post(bmc.url(ACCOUNTS), json={"Enabled": True}, timeout=10)
    assert missing.status_code == 400
    assert message_ids(missing) == ["Base.1.10.PropertyMissing"] * 3
    unknown = accounts("newuser", role="Superuser", Shell="/bin/sh")
    assert unknown.status_code == 400
    assert sorted(message_ids(unknown)) == ["Base.1.10.ActionParameterUnknown",
                                            "Base.1.10.PropertyValueTypeError"]
    duplicate = accounts(bmc.admin_user)
    assert message_ids(duplicate) == ["Base.1.10.ActionParameterDuplicate"]
    assert admin.post(bmc.url(ACCOUNTS), data="{", timeout=10).status_code == 400
    assert member_ids(bmc, admin) == ["2"]


def test_fourteen_accounts_fill_the_table(bmc, admin, accounts):
    for number in range(14):
        assert accounts("user%02d" % number).status_code == 201
    assert member_ids(bmc, admin) == [str(account_id) for account_id in range(2, 17)]
    full = accounts("onetoomany")
    assert full.status_code == 400
    assert message_ids(full) == ["Base.1.10.CreateLimitReachedForResource"]


def test_the_reserved_administrator_cannot_be_deleted_or_change_role(bmc, admin):
    for account_id in ("1", "2", "17"):
        answer = admin.delete(bmc.url(ACCOUNTS + "/" + account_id), timeout=10)
        assert answer.status_code == 400, account_id
        assert message_ids(answer) == ["Base.1.10.InvalidIndex"]
    role = admin.patch(bmc.url(ACCOUNTS + "/2"), json={"RoleId": "Operator"}, timeout=10)
    assert role.status_code == 400 and message_ids(role) == ["Base.1.10.PropertyNotWritable"]
    assert admin.get(bmc.url(ACCOUNTS + "/2"), timeout=10).json()["RoleId"] == "Administrator"


def test_patch_applies_each_change_and_a_refused_patch_changes_nothing(bmc, admin, accounts):
    location = accounts("patchme").headers["Location"]
    refused = admin.patch(bmc.url(location), timeout=10, json={
        "UserName": "renamed", "RoleId": "Operator", "Password": "short", "Enabled": "no", "Color": 1})
    assert refused.status_code == 400
    assert sorted(message_ids(refused)) == [
        "Base.1.10.PropertyUnknown", "Base.1.10.PropertyValueFormatError", "Base.1.10.PropertyValueTypeError"]
    assert admin.get(bmc.url(location), timeout=10).json()["UserName"] == "patchme"

    applied = admin.patch(bmc.url(location), timeout=10, json={
        "UserName": "renamed", "Password": "N3w-password", "RoleId": "ReadOnly", "Enabled": False})
    assert applied.status_code == 204 and applied.content == b""
    account = admin.get(bmc.url(location), timeout=10).json()
    validate(account)
    assert (account["UserName"], account["RoleId"]) == ("renamed", "ReadOnly")
    assert account["Enabled"] is False
    assert account["Links"]["Role"]["@odata.id"] == ROLES + "/ReadOnly"
    texts = [event["text"] for event in bmc.events()]
    assert "renamed, password changed" in texts and "renamed, account disabled" in texts
    assert not any("N3w-password" in text for text in texts)

    assert admin.patch(bmc.url(location), json={}, timeout=10).status_code == 400
    assert admin.patch(bmc.url(ACCOUNTS + "/9"), json={"Enabled": True}, timeout=10).status_code == 404


def test_snmp_settings_are_stored_but_never_shown(bmc, admin, accounts):
    location = accounts("snmpuser").headers["Location"]
    weak_key = {"AuthenticationProtocol": "HMAC_MD5", "AuthenticationKey": "weakkey1"}
    illegal = admin.patch(bmc.url(location), json={"SNMP": weak_key}, timeout=10)
    assert message_ids(illegal) == ["TWR.1.0.OemSnmpv3IllegalKey"]
    answer = admin.patch(bmc.url(location), timeout=10, json={
        "SNMP": {"AuthenticationProtocol": "HMAC_SHA96", "AuthenticationKey": "Str0ngKey",
                 "EncryptionProtocol": "CFB128_AES128", "EncryptionKey": "Str0ngKey2"}})
    assert answer.status_code == 204, answer.text
    account = admin.get(bmc.url(location), timeout=10).json()
    validate(account)
    assert account["SNMP"] == {
        "AuthenticationProtocol": "HMAC_SHA96", "EncryptionProtocol": "CFB128_AES128",
        "AuthenticationKey": None, "EncryptionKey": None,
        "AuthenticationKeySet": True, "EncryptionKeySet": True}
    assert account["AccountTypes"] == ["Redfish", "SNMP"]


def test_a_read_only_user_may_change_only_its_own_password(bmc, admin, accounts):
    viewer_location = accounts("viewer", role="ReadOnly").headers["Location"]
    other_location = accounts("other").headers["Location"]
    viewer = bmc.basic_session("viewer", PASSWORD)
    new_account = {"UserName": "viewer2", "Password": PASSWORD, "RoleId": "ReadOnly"}
    for method, path, body in (("PATCH", other_location, {"Password": "Anoth3r-pass"}),
                               ("PATCH", viewer_location, {"RoleId": "Administrator"}),
                               ("PATCH", viewer_location, {"Password": "Anoth3r-pass", "Enabled": True}),
                               ("DELETE", viewer_location, None),
                               ("POST", ACCOUNTS, new_account)):
        answer = viewer.request(method, bmc.url(path), json=body, timeout=10)
        assert answer.status_code == 403, (method, path, body)
        assert message_ids(answer) == ["Base.1.10.InsufficientPrivilege"]
    own = viewer.patch(bmc.url(viewer_location), json={"Password": "Anoth3r-pass"}, timeout=10)
    assert own.status_code == 204
    assert read_status(bmc, "viewer", "Anoth3r-pass") == 200
    assert admin.get(bmc.url(viewer_location), timeout=10).json()["RoleId"] == "ReadOnly"


def test_a_user_with_an_open_session_is_neither_disabled_nor_deleted(bmc, admin, accounts):
    location = accounts("sessionuser").headers["Location"]
    login = bmc.login("sessionuser", PASSWORD)
    assert login.status_code == 201
    disable = admin.patch(bmc.url(location), json={"Enabled": False}, timeout=10)
    assert disable.status_code == 400 and message_ids(disable) == ["TWR.1.0.OemUserDisableFail"]
    delete = admin.delete(bmc.url(location), timeout=10)
    assert delete.status_code == 400 and message_ids(delete) == ["TWR.1.0.OemUserDisableFail"]
    assert admin.get(bmc.url(location), timeout=10).json()["Enabled"] is True

    token = {"X-Auth-Token": login.headers["X-Auth-Token"]}
    logout = bmc.request("DELETE", login.headers["Location"], headers=token)
    assert logout.status_code == 204
    removed = admin.delete(bmc.url(location), timeout=10)
    assert removed.status_code == 200
    removal = removed.json()["AccountRemoved"]["@Message.ExtendedInfo"][0]
    assert removal["MessageId"] == "Base.1.10.AccountRemoved"
    assert admin.get(bmc.url(location), timeout=10).status_code == 404
    assert admin.delete(bmc.url(location), timeout=10).status_code == 404


def test_a_locked_account_is_unlocked_by_patching_locked_false(bmc, admin, accounts, patch_service):
    assert patch_service({"AccountLockoutThreshold": 2}).status_code == 204
    try:
        location = accounts("lockme").headers["Location"]
        for _ in range(2):
            assert read_status(bmc, "lockme", "Wrong-pass1") == 401
        assert admin.get(bmc.url(location), timeout=10).json()["Locked"] is True
        refused = admin.patch(bmc.url(location), json={"Locked": True}, timeout=10)
        assert message_ids(refused) == ["Base.1.10.PropertyValueNotInList"]
        assert admin.patch(bmc.url(location), json={"Locked": False}, timeout=10).status_code == 204
        assert admin.get(bmc.url(location), timeout=10).json()["Locked"] is False
        assert read_status(bmc, "lockme", PASSWORD) == 200
    finally:
        patch_service({"AccountLockoutThreshold": 0})


def test_account_service_document(bmc, admin):
    service = admin.get(bmc.url(SERVICE), timeout=10).json()
    validate(service)
    assert service["@odata.type"] == "#AccountService.v1_7_0.AccountService"
    assert (service["MinPasswordLength"], service["MaxPasswordLength"]) == (8, 20)
    assert service["Accounts"] == {"@odata.id": ACCOUNTS} and service["Roles"] == {"@odata.id": ROLES}
    assert service["LDAP"]["Authentication"]["Password"] is None
    assert "LDAPService" not in service["ActiveDirectory"]


@pytest.mark.parametrize("name, value, accepted", [
    ("AccountLockoutThreshold", 0, True), ("AccountLockoutThreshold", 5, True),
    ("AccountLockoutThreshold", 6, False), ("AccountLockoutDuration", 0, True),
    ("AccountLockoutDuration", 1800, True), ("AccountLockoutDuration", 1801, False),
    ("AccountLockoutCounterResetAfter", 1800, True), ("AccountLockoutCounterResetAfter", -1, False),
    ("AccountLockoutDuration", "60", False)])
def test_lockout_ranges_are_stored_and_read_back(bmc, admin, patch_service, name, value, accepted):
    answer = patch_service({name: value})
    assert answer.status_code == (204 if accepted else 400), answer.text
    if accepted:
        assert "%s=%d" % (name, value) in ini_text(bmc, "accountservice.ini")
        assert admin.get(bmc.url(SERVICE), timeout=10).json()[name] == value
    else:
        expected = "PropertyValueTypeError" if isinstance(value, str) else "PropertyValueFormatError"
        assert message_ids(answer) == ["Base.1.10." + expected]


def test_a_refused_account_service_patch_stores_nothing(bmc, admin, patch_service):
    assert patch_service({"AccountLockoutThreshold": 1, "AccountLockoutDuration": 60,
                          "AccountLockoutCounterResetAfter": 60}).status_code == 204
    before = ini_text(bmc, "accountservice.ini")
    mode = os.stat(os.path.join(bmc.root, "nv", "redfish", "accountservice.ini")).st_mode
    assert stat.S_IMODE(mode) == 0o600
    for body in ({"AccountLockoutThreshold": 3, "AccountLockoutDuration": 1801},
                 {"AccountLockoutThreshold": 3, "AccountLockoutCounterResetAfter": 1801},
                 {"AccountLockoutThreshold": 3, "LDAP": {"ServiceAddresses": ["http://x"]}}):
        assert patch_service(body).status_code == 400, body
        assert ini_text(bmc, "accountservice.ini") == before
    assert admin.get(bmc.url(SERVICE), timeout=10).json()["AccountLockoutThreshold"] == 1
    patch_service({"AccountLockoutThreshold": 0})


def test_read_only_properties_and_the_single_literal(bmc, admin, patch_service):
    for body in ({"Status": {}}, {"MaxPasswordLength": 30}, {"ServiceEnabledMinPasswordLength": 1}):
        answer = patch_service(body)
        assert answer.status_code == 400, body
        assert message_ids(answer) == ["Base.1.10.PropertyNotWritable"]
    for body in ({"ServiceEnabled": False}, {"MinPasswordLength": 10}):
        assert patch_service(body).status_code == 204, body
    assert admin.get(bmc.url(SERVICE), timeout=10).json()["MinPasswordLength"] == 8
    unknown = patch_service({"Colour": "blue"})
    assert message_ids(unknown) == ["Base.1.10.PropertyUnknown"]


LDAP_SETTINGS = {
    "ServiceEnabled": True,
    "ServiceAddresses": ["ldaps://[fd00::5]:636", "ldap://dir.example"],
    "Authentication": {"Username": "cn=bmc,dc=example,dc=com", "Password": "Bind-secret1"},
    "RemoteRoleMapping": [{"RemoteGroup": "admins", "LocalRole": "Administrator"}],
    "LDAPService": {"SearchSettings": {"BaseDistinguishedNames": ["dc=example,dc=com"],
                                       "UsernameAttribute": "uid", "GroupNameAttribute": "cn",
                                       "GroupsAttribute": "memberOf"}},
}


def test_ldap_settings_are_stored_for_the_owner_only(bmc, admin, patch_service):
    answer = patch_service({"LDAP": LDAP_SETTINGS})
    assert answer.status_code == 204, answer.text
    try:
        ldap = admin.get(bmc.url(SERVICE), timeout=10).json()["LDAP"]
        assert ldap["ServiceEnabled"] is True
        assert ldap["ServiceAddresses"] == LDAP_SETTINGS["ServiceAddresses"]
        assert ldap["Authentication"]["Password"] is None
        assert ldap["RemoteRoleMapping"] == LDAP_SETTINGS["RemoteRoleMapping"]
        assert ldap["LDAPService"] == LDAP_SETTINGS["LDAPService"]
        text = ini_text(bmc, "ldap.ini")
        assert "[LDAP]" in text and "ServiceEnabled=1" in text and "GroupnameAttribute=cn" in text
        mode = os.stat(os.path.join(bmc.root, "nv", "redfish", "ldap.ini")).st_mode
        assert stat.S_IMODE(mode) == 0o600
        assert "Bind-secret1" not in admin.get(bmc.url(SERVICE), timeout=10).text
    finally:
        patch_service({"LDAP": {"ServiceEnabled": False}})


@pytest.mark.parametrize("ldap, expected", [
    ({"ServiceAddresses": ["dir.example"]}, "TWR.1.0.OemLdapBadServiceAddresses"),
    ({"ServiceAddresses": ["ldap://dir.example:port"]}, "TWR.1.0.OemLdapBadPortNumber"),
    ({"ServiceAddresses": ["ldap://[fd00::5]:x"]}, "TWR.1.0.OemLdapBadPortNumber"),
    ({"Authentication": {"Username": ""}}, "Base.1.10.PropertyValueTypeError"),
    ({"RemoteRoleMapping": [{"RemoteUser": "bob", "LocalRole": "User"}]},
     "TWR.1.0.OemLdapBadLocalRole"),
    ({"RemoteRoleMapping": [{"LocalRole": "Operator"}]}, "Base.1.10.PropertyMissing"),
    ({"RemoteRoleMapping": [{}]}, "Base.1.10.InvalidIndex"),
    ({"RemoteRoleMapping": ["bob"]}, "Base.1.10.PropertyValueFormatError"),
])
def test_refused_directory_settings(bmc, admin, patch_service, ldap, expected):
    assert patch_service({"LDAP": {"RemoteRoleMapping": []}}).status_code == 204
    before = admin.get(bmc.url(SERVICE), timeout=10).json()["LDAP"]
    answer = patch_service({"LDAP": ldap})
    assert answer.status_code == 400 and message_ids(answer) == [expected]
    assert admin.get(bmc.url(SERVICE), timeout=10).json()["LDAP"] == before


def enabling(ldap=None, active_directory=None):
    """A PATCH body that switches the directory services."""
    body = {}
    if ldap is not None:
        body["LDAP"] = {"ServiceEnabled": ldap}
    if active_directory is not None:
        body["ActiveDirectory"] = {"ServiceEnabled": active_directory}
    return body


def test_only_one_authentication_service_at_a_time(bmc, patch_service):
    both = patch_service(enabling(ldap=True, active_directory=True))
    assert message_ids(both) == ["TWR.1.0.OemOnlyOneAuthenticationServiceCanBeEnabled"]
    assert patch_service(enabling(ldap=True)).status_code == 204
    try:
        running = patch_service(enabling(active_directory=True))
        assert message_ids(running) == ["TWR.1.0.OemOtherAuthenticationServiceIsRunning"]
        assert first_message(running)["MessageArgs"] == ["LDAP", "ActiveDirectory"]
        assert patch_service(enabling(ldap=False, active_directory=True)).status_code == 204
        assert "ServiceEnabled=1" in ini_text(bmc, "ad.ini")
        assert "ServiceEnabled=0" in ini_text(bmc, "ldap.ini")
    finally:
        patch_service(enabling(ldap=False, active_directory=False))
    bmc.bmcsim("directory", "radius", "server", "192.0.2.10")
    bmc.bmcsim("directory", "radius", "enable")
    try:
        assert first_message(patch_service(enabling(ldap=True)))["MessageArgs"] == ["Radius", "LDAP"]
    finally:
        bmc.bmcsim("directory", "radius", "disable")


def test_a_directory_with_a_logged_in_user_stays_enabled(bmc, admin, patch_service):
    bmc.bmcsim("directory", "ldap", "user", "carol", "Carol-pass1", "Operator")
    assert patch_service(enabling(ldap=True)).status_code == 204
    login = bmc.login("carol", "Carol-pass1")
    assert login.status_code == 201
    token = {"X-Auth-Token": login.headers["X-Auth-Token"]}
    try:
        refused = patch_service(enabling(ldap=False))
        assert message_ids(refused) == ["TWR.1.0.OemUserNotToDisabledServiceWhenUserLogined"]
        assert admin.get(bmc.url(SERVICE), timeout=10).json()["LDAP"]["ServiceEnabled"] is True
    finally:
        bmc.request("DELETE", login.headers["Location"], headers=token)
    assert patch_service(enabling(ldap=False)).status_code == 204


def test_three_predefined_roles(bmc, admin, accounts):
    accounts("roleuser", role="ReadOnly")
    collection = admin.get(bmc.url(ROLES), timeout=10).json()
    validate(collection)
    assert [member["@odata.id"] for member in collection["Members"]] == [
        ROLES + "/Administrator", ROLES + "/Operator", ROLES + "/ReadOnly"]
    assert collection["Members@odata.count"] == 3
    administrator = admin.get(bmc.url(ROLES + "/Administrator"), timeout=10).json()
    validate(administrator)
    assert administrator["@odata.type"] == "#Role.v1_2_3.Role"
    assert administrator["IsPredefined"] is True and administrator["Name"] == "User Role"
    assert administrator["AssignedPrivileges"] == [
        "Login", "ConfigureManager", "ConfigureUsers", "ConfigureSelf", "ConfigureComponents"]
    assert administrator["OemPrivileges"] == ["OemClearLog", "OemPowerControl"]
    read_only = admin.get(bmc.url(ROLES + "/ReadOnly"), timeout=10).json()
    validate(read_only)
    assert read_only["AssignedPrivileges"] == ["Login", "ConfigureSelf"]
    assert admin.get(bmc.url(ROLES + "/Custom"), timeout=10).status_code == 404
