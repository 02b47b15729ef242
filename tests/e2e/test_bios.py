"""The host's BIOS settings, their pending settings object and the BIOS attribute registry."""

import json
import os

import pytest

from schema_validation import validate_messages

BIOS = "/redfish/v1/Systems/1/Bios"
SETTINGS = BIOS + "/SD"
REGISTRY_FILE = "/redfish/v1/Registries/BiosAttributeRegistry.v1_0_0"


@pytest.fixture
def admin(bmc):
    session = bmc.admin()
    bmc.bmcsim("bios", "post")
    yield session
    for name in ("tmp/user_save_to_bios.json", "tmp/attributes.json"):
        try:
            os.remove(os.path.join(bmc.root, name))
        except FileNotFoundError:
            pass


def get(session, bmc, path):
    answer = session.get(bmc.url(path), timeout=10)
    assert answer.status_code == 200, answer.text
    return answer.json()


def registry(session, bmc):
    location = get(session, bmc, REGISTRY_FILE)["Location"][0]["Uri"]
    return {entry["AttributeName"]: entry for entry in get(session, bmc, location)["RegistryEntries"]["Attributes"]}


def pending_file(bmc):
    try:
        with open(os.path.join(bmc.root, "tmp", "user_save_to_bios.json")) as pending:
            return pending.read()
    except FileNotFoundError:
        return None


def test_bios_shows_what_the_bios_reported_with_registry_defaults(bmc, admin):
    bios = get(admin, bmc, BIOS)
    assert bios["AttributeRegistry"] == "BiosAttributeRegistry.1.0.0"
    assert bios["@Redfish.Settings"]["SettingsObject"] == {"@odata.id": SETTINGS}
    entries = registry(admin, bmc)
    assert bios["Attributes"] == {name: entry["DefaultValue"] for name, entry in entries.items()}
    assert entries["HyperThreading"]["Type"] == "Enumeration"
    assert [value["ValueName"] for value in entries["HyperThreading"]["Value"]] == ["Enabled", "Disabled"]
    assert (entries["BootTimeout"]["LowerBound"], entries["BootTimeout"]["UpperBound"]) == (0, 65535)


def test_a_change_waits_in_the_settings_object_until_the_next_boot(bmc, admin):
    answer = admin.patch(bmc.url(SETTINGS), json={"Attributes": {"HyperThreading": "Disabled", "BootTimeout": 10,
                                                                  "QuietBoot": False}}, timeout=10)
    assert answer.status_code == 204, answer.text
    admin.patch(bmc.url(SETTINGS), json={"Attributes": {"BootTimeout": 12}}, timeout=10)
    assert get(admin, bmc, SETTINGS)["Attributes"] == {"HyperThreading": "Disabled", "BootTimeout": 12,
                                                      "QuietBoot": False}
    assert get(admin, bmc, BIOS)["Attributes"]["HyperThreading"] == "Enabled"
    bmc.bmcsim("bios", "post")
    attributes = get(admin, bmc, BIOS)["Attributes"]
    assert (attributes["HyperThreading"], attributes["BootTimeout"], attributes["QuietBoot"]) == ("Disabled", 12, False)
    assert get(admin, bmc, SETTINGS)["Attributes"] == {}


@pytest.mark.parametrize("attributes, message", [
    ({"NoSuchSetting": "x"}, "PropertyUnknown"),
    ({"BiosRevision": "9.9"}, "PropertyNotWritable"),
    ({"HyperThreading": "enabled"}, "PropertyValueNotInList"),
    ({"HyperThreading": 1}, "PropertyValueTypeError"),
    ({"BootTimeout": 65536}, "PropertyValueOutOfRange"),
    ({"BootTimeout": -1}, "PropertyValueOutOfRange"),
    ({"BootTimeout": 18446744073709551615}, "PropertyValueOutOfRange"),
    ({"BootTimeout": "5"}, "PropertyValueTypeError"),
    ({"BootTimeout": 5.5}, "PropertyValueTypeError"),
    ({"QuietBoot": "true"}, "PropertyValueTypeError"),
    ({"BootURI": "http://" + "a" * 250}, "PropertyValueFormatError"),
    ({"BootDescription": "line\nbreak"}, "PropertyValueFormatError"),
])
def test_a_bad_attribute_is_refused_and_nothing_is_pending(bmc, admin, attributes, message):
    answer = admin.patch(bmc.url(SETTINGS), json={"Attributes": dict(attributes, VTd="Disabled")}, timeout=10)
    assert answer.status_code == 400, answer.text
    validate_messages(answer.json())
    entries = answer.json()["error"]["@Message.ExtendedInfo"]
    assert [entry["MessageId"] for entry in entries] == ["Base.1.10." + message]
    assert entries[0]["RelatedProperties"] == ["/Attributes/" + next(iter(attributes))]
    assert pending_file(bmc) is None


@pytest.mark.parametrize("body", [{"Attributes": "x"}, {"Attributes": {}, "Name": "x"}, {}, []])
def test_a_malformed_settings_body_is_refused(bmc, admin, body):
    answer = admin.patch(bmc.url(SETTINGS), data=json.dumps(body), timeout=10)
    assert answer.status_code == 400, answer.text
    assert pending_file(bmc) is None


RESET_BIOS = BIOS + "/Actions/Bios.ResetBios"


def test_reset_bios_brings_the_defaults_at_the_next_boot(bmc, admin):
    admin.patch(bmc.url(SETTINGS), json={"Attributes": {"VTd": "Disabled", "BootTimeout": 30}}, timeout=10)
    bmc.bmcsim("bios", "post")
    assert get(admin, bmc, BIOS)["Actions"]["#Bios.ResetBios"]["target"] == RESET_BIOS
    answer = admin.post(bmc.url(RESET_BIOS), json={}, timeout=10)
    assert answer.status_code == 200, answer.text
    # A change made after the reset still counts.
    admin.patch(bmc.url(SETTINGS), json={"Attributes": {"QuietBoot": False}}, timeout=10)
    assert get(admin, bmc, BIOS)["Attributes"]["VTd"] == "Disabled"
    bmc.bmcsim("bios", "post")
    defaults = {name: entry["DefaultValue"] for name, entry in registry(admin, bmc).items()}
    assert get(admin, bmc, BIOS)["Attributes"] == dict(defaults, QuietBoot=False)


@pytest.mark.parametrize("body", [{"ResetType": "Defaults"}, [], "x"])
def test_reset_bios_takes_no_parameters(bmc, admin, body):
    answer = admin.post(bmc.url(RESET_BIOS), json=body, timeout=10)
    assert answer.status_code == 400, answer.text
    assert pending_file(bmc) is None
    assert bmc.request("POST", RESET_BIOS, json={}).status_code == 401
    assert pending_file(bmc) is None


def test_bios_itself_is_read_only(bmc, admin):
    answer = admin.patch(bmc.url(BIOS), json={"Attributes": {"VTd": "Disabled"}}, timeout=10)
    assert answer.status_code == 405
    assert bmc.request("PATCH", SETTINGS, json={"Attributes": {"VTd": "Disabled"}}).status_code == 401
    assert pending_file(bmc) is None


SECURE_BOOT = "/redfish/v1/Systems/1/SecureBoot"


def test_secure_boot_changes_at_the_next_boot(bmc, admin):
    assert get(admin, bmc, SECURE_BOOT)["SecureBootCurrentBoot"] == "Disabled"
    answer = admin.patch(bmc.url(SECURE_BOOT), json={"SecureBootEnable": True}, timeout=10)
    assert answer.status_code == 204, answer.text
    secure_boot = get(admin, bmc, SECURE_BOOT)
    assert (secure_boot["SecureBootEnable"], secure_boot["SecureBootCurrentBoot"]) == (True, "Disabled")
    assert get(admin, bmc, SETTINGS)["Attributes"] == {"SecureBoot": "Enabled"}
    bmc.bmcsim("bios", "post")
    secure_boot = get(admin, bmc, SECURE_BOOT)
    assert (secure_boot["SecureBootEnable"], secure_boot["SecureBootCurrentBoot"]) == (True, "Enabled")


@pytest.mark.parametrize("body, message", [
    ({"SecureBootEnable": "true"}, "PropertyValueTypeError"),
    ({"SecureBootEnable": None}, "PropertyValueTypeError"),
    ({"SecureBootCurrentBoot": "Enabled"}, "PropertyUnknown"),
])
def test_a_bad_secure_boot_change_is_refused(bmc, admin, body, message):
    answer = admin.patch(bmc.url(SECURE_BOOT), json=body, timeout=10)
    assert answer.status_code == 400, answer.text
    assert [entry["MessageId"] for entry in answer.json()["error"]["@Message.ExtendedInfo"]] == [
        "Base.1.10." + message]
    assert pending_file(bmc) is None


def test_secure_boot_before_the_bios_reports_runs_on_its_default(bmc, admin):
    os.remove(os.path.join(bmc.root, "tmp", "attributes.json"))
    secure_boot = get(admin, bmc, SECURE_BOOT)
    assert (secure_boot["SecureBootEnable"], secure_boot["SecureBootCurrentBoot"],
            secure_boot["SecureBootMode"]) == (False, "Disabled", "UserMode")
    answer = admin.patch(bmc.url(SECURE_BOOT), json={"SecureBootEnable": True}, timeout=10)
    assert answer.status_code == 204, answer.text
    assert get(admin, bmc, SECURE_BOOT)["SecureBootEnable"] is True
    bmc.bmcsim("bios", "post")
    assert get(admin, bmc, SECURE_BOOT)["SecureBootCurrentBoot"] == "Enabled"


def test_an_http_boot_uri_joins_the_pending_bios_changes(bmc, admin):
    admin.patch(bmc.url(SETTINGS), json={"Attributes": {"VTd": "Disabled"}}, timeout=10)
    answer = admin.patch(bmc.url("/redfish/v1/Systems/1"), json={"Boot": {"HttpBootUri": "http://10.0.0.9/a.efi"}},
                         timeout=10)
    assert answer.status_code == 200, answer.text
    pending = get(admin, bmc, SETTINGS)["Attributes"]
    assert (pending["VTd"], pending["BootURI"]) == ("Disabled", "http://10.0.0.9/a.efi")


CHANGE_PASSWORD = BIOS + "/Actions/Bios.ChangePassword"
RESET_KEYS = SECURE_BOOT + "/Actions/SecureBoot.ResetKeys"


def bios_state(bmc):
    return dict(line.split("=", 1) for line in bmc.bmcsim("bios", "show").splitlines())


def security_file(bmc):
    path = os.path.join(bmc.root, "nv", "bios", "security.ini")
    return open(path).read() if os.path.exists(path) else None


def change_password(session, bmc, old, new):
    return session.post(bmc.url(CHANGE_PASSWORD), timeout=10,
                        json={"PasswordName": "AdminPassword", "OldPassword": old, "NewPassword": new})


def test_the_bios_password_changes_at_the_next_start_and_needs_the_old_one(bmc, admin):
    bios = get(admin, bmc, BIOS)
    info = get(admin, bmc, bios["Actions"]["#Bios.ChangePassword"]["@Redfish.ActionInfo"])
    assert [parameter["Name"] for parameter in info["Parameters"]] == ["PasswordName", "OldPassword", "NewPassword"]
    assert bios_state(bmc)["admin_password"] == "none"
    answer = change_password(admin, bmc, "", "Bios-pass1")
    assert answer.status_code == 200, answer.text
    assert bios_state(bmc)["admin_password"] == "none, new one pending"
    bmc.bmcsim("bios", "post")
    assert bios_state(bmc)["admin_password"] == "set"
    stored = security_file(bmc)
    assert "Bios-pass1" not in stored and "pbkdf2-sha256$" in stored
    assert os.stat(os.path.join(bmc.root, "nv", "bios", "security.ini")).st_mode & 0o777 == 0o600

    wrong = change_password(admin, bmc, "Bios-pass0", "Bios-pass2")
    assert wrong.status_code == 400
    assert [(entry["MessageId"], entry["MessageArgs"][1]) for entry in
            wrong.json()["error"]["@Message.ExtendedInfo"]] == [("Base.1.10.ActionParameterValueFormatError",
                                                                  "OldPassword")]
    bad = admin.post(bmc.url(CHANGE_PASSWORD), timeout=10, json={
        "PasswordName": "UserPassword", "NewPassword": "x" * 21, "Color": 1})
    assert bad.status_code == 400
    assert sorted(entry["MessageId"] for entry in bad.json()["error"]["@Message.ExtendedInfo"]) == [
        "Base.1.10.ActionParameterMissing", "Base.1.10.ActionParameterUnknown",
        "Base.1.10.ActionParameterValueFormatError", "Base.1.10.ActionParameterValueNotInList"]
    for answer in (wrong, bad):
        validate_messages(answer.json())
        assert "Bios-pass" not in answer.text and "x" * 21 not in answer.text
    assert security_file(bmc) == stored
    assert "Bios-pass" not in bmc.error_log()

    assert change_password(admin, bmc, "Bios-pass1", "Bios-pass2").status_code == 200
    bmc.bmcsim("bios", "post")
    assert change_password(admin, bmc, "Bios-pass1", "Bios-pass3").status_code == 400
    assert change_password(admin, bmc, "Bios-pass2", "Bios-pass3").status_code == 200


def test_reset_keys_changes_the_key_databases_and_the_mode(bmc, admin):
    secure_boot = get(admin, bmc, SECURE_BOOT)
    info = get(admin, bmc, secure_boot["Actions"]["#SecureBoot.ResetKeys"]["@Redfish.ActionInfo"])
    assert info["Parameters"][0]["AllowableValues"] == ["ResetAllKeysToDefault", "DeleteAllKeys", "DeletePK"]
    admin.patch(bmc.url(SECURE_BOOT), json={"SecureBootEnable": True}, timeout=10)
    bmc.bmcsim("bios", "post")
    assert (bios_state(bmc)["secure_boot_keys"], bios_state(bmc)["secure_boot_mode"]) == (
        "PK:1,KEK:1,db:2,dbx:1", "UserMode")
    for reset, keys, mode in [("DeletePK", "PK:0,KEK:1,db:2,dbx:1", "SetupMode"),
                              ("ResetAllKeysToDefault", "PK:1,KEK:1,db:2,dbx:1", "UserMode"),
                              ("DeleteAllKeys", "PK:0,KEK:0,db:0,dbx:0", "SetupMode")]:
        answer = admin.post(bmc.url(RESET_KEYS), json={"ResetKeysType": reset}, timeout=10)
        assert answer.status_code == 200, answer.text
        assert (bios_state(bmc)["secure_boot_keys"], bios_state(bmc)["secure_boot_mode"]) == (keys, mode)
        secure_boot = get(admin, bmc, SECURE_BOOT)
        assert secure_boot["SecureBootMode"] == mode
        assert secure_boot["SecureBootCurrentBoot"] == ("Enabled" if mode == "UserMode" else "Disabled")
    before = security_file(bmc)
    for body in ({"ResetKeysType": "DeleteKEK"}, {"ResetKeysType": 1}, {}, {"ResetKeysType": "DeletePK", "X": 1}):
        answer = admin.post(bmc.url(RESET_KEYS), json=body, timeout=10)
        assert answer.status_code == 400, body
        validate_messages(answer.json())
    assert security_file(bmc) == before


def test_a_read_only_user_changes_no_bios_password_or_keys(bmc, admin):
    bmc.bmcsim("users", "add", "5", "reader", "Read-only-1", "2")
    reader = bmc.basic_session("reader", "Read-only-1")
    before = security_file(bmc)
    assert change_password(reader, bmc, "", "Bios-pass9").status_code == 403
    assert reader.post(bmc.url(RESET_KEYS), json={"ResetKeysType": "DeletePK"}, timeout=10).status_code == 403
    assert security_file(bmc) == before
    bmc.bmcsim("users", "delete", "5")
