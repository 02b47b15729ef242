"""The files of the legacy /restapi tree: the BMC's configuration exported
and imported, and the BIOS configuration file downloaded and uploaded,
through lighttpd."""

import json
import os

import pytest

from schema_validation import validate_messages
from test_update_oem_resources import PASSWORD, message_ids, operator_and_reader, stores  # noqa: F401

ACTIONS = "/restapi/twri/Actions"
EXPORT = ACTIONS + "/File.Export"
IMPORT = ACTIONS + "/File.Import"
BIOS_DOWNLOAD = ACTIONS + "/BiosFile.Download"
BIOS_UPLOAD = ACTIONS + "/BiosFile.Upload"
SETTINGS = "/redfish/v1/Systems/1/Bios/SD"


def pending_bios(bmc):
    path = os.path.join(bmc.root, "tmp", "user_save_to_bios.json")
    return open(path).read() if os.path.exists(path) else None


def upload_bios(bmc, session, content, part="BiosFile"):
    return session.post(bmc.url(BIOS_UPLOAD), files=[(part, ("bios_config.json", content))], timeout=10)


def test_an_imported_export_restores_the_configuration_without_secrets(bmc, admin):
    answer = admin.post(bmc.url(EXPORT), json={}, timeout=10)
    assert answer.status_code == 200, answer.text
    assert answer.headers["Content-Disposition"] == 'attachment; filename="bmc_config.json"'
    assert answer.headers["Content-Type"] == "application/octet-stream"
    saved = answer.json()
    assert saved["Version"] == 1 and "users" in json.dumps(saved["IPMIConfig"])
    assert "pbkdf2" not in answer.text and "admin-pass1" not in answer.text
    bmc.bmcsim("serial", "bitrate", "9600")
    bmc.bmcsim("lan", "service", "IPMI", "off")
    imported = admin.post(bmc.url(IMPORT), json=saved, timeout=10)
    assert imported.status_code == 200, imported.text
    assert "bitrate=115200" in bmc.bmcsim("serial", "show")
    assert admin.post(bmc.url(EXPORT), json={}, timeout=10).json() == saved
    # The administrator's password survived a file without hashes.
    assert admin.get(bmc.url("/redfish/v1/Systems"), timeout=10).status_code == 200


def test_a_refused_import_changes_nothing(bmc, admin):
    saved = admin.post(bmc.url(EXPORT), json={}, timeout=10).json()
    bmc.bmcsim("serial", "bitrate", "9600")
    before = stores(bmc)
    # A valid change beside a bad one: neither is taken.
    text = json.dumps(saved["IPMIConfig"])
    assert '"bit_rate": 115200' in text
    bad_value = dict(saved, IPMIConfig=json.loads(text.replace('"bit_rate": 115200', '"bit_rate": 115201')))
    refusals = [bad_value, dict(saved, Version=2), dict(saved, Extra=1), {"Version": 1}, [saved]]
    for body in refusals:
        answer = admin.post(bmc.url(IMPORT), json=body, timeout=10)
        assert (answer.status_code, message_ids(answer)) == (400, ["TWR.1.0.OemFileoperationErrorMessage"]), \
            answer.text
        validate_messages(answer.json())
    assert admin.post(bmc.url(IMPORT), data=b"{not json", timeout=10,
                      headers={"Content-Type": "application/json"}).status_code == 400
    assert stores(bmc) == before
    assert "bitrate=9600" in bmc.bmcsim("serial", "show")
    bmc.bmcsim("serial", "bitrate", "115200")


def test_the_bios_file_goes_to_the_bios_at_its_next_start(bmc, admin):
    bmc.bmcsim("bios", "post")
    answer = admin.post(bmc.url(BIOS_DOWNLOAD), json={}, timeout=10)
    assert answer.status_code == 200, answer.text
    assert answer.headers["Content-Disposition"] == 'attachment; filename="bios_config.json"'
    attributes = answer.json()["Attributes"]
    assert attributes["HyperThreading"] == "Enabled" and "BiosRevision" not in attributes
    attributes.update(HyperThreading="Disabled", BootTimeout=12)
    uploaded = upload_bios(bmc, admin, json.dumps({"Attributes": attributes}))
    assert uploaded.status_code == 200, uploaded.text
    assert admin.get(bmc.url(SETTINGS), timeout=10).json()["Attributes"]["HyperThreading"] == "Disabled"
    bmc.bmcsim("bios", "post")
    assert admin.post(bmc.url(BIOS_DOWNLOAD), json={}, timeout=10).json()["Attributes"] == attributes


def test_a_bad_bios_file_hands_nothing_over(bmc, admin):
    bmc.bmcsim("bios", "post")
    assert pending_bios(bmc) is None
    several = {"Attributes": {"HyperThreading": "Maybe", "BootTimeout": 70000, "Colour": "red",
                              "BiosRevision": "9.9", "VTd": "Disabled"}}
    answer = upload_bios(bmc, admin, json.dumps(several))
    assert answer.status_code == 400
    validate_messages(answer.json())
    ids = message_ids(answer)
    assert ids[0] == "TWR.1.0.OemFileoperationErrorMessage" and len(ids) == 5, ids
    for content in (b"\xff" * 64, b'{"Attributes": 1}', b'{"Attributes": {}, "More": 1}', b"x" * (49 * 1024)):
        refused = upload_bios(bmc, admin, content)
        assert refused.status_code == 400, refused.text
        assert "TWR.1.0.OemFileoperationErrorMessage" in message_ids(refused)
    assert message_ids(upload_bios(bmc, admin, b"{}", part="File")) == ["TWR.1.0.OemFileoperationErrorMessage"]
    assert pending_bios(bmc) is None


def test_who_may_move_which_file(bmc, admin, operator_and_reader):  # noqa: F811
    operator, reader = operator_and_reader
    saved = admin.post(bmc.url(EXPORT), json={}, timeout=10).json()
    before = stores(bmc), pending_bios(bmc)
    for session in operator_and_reader:
        assert session.post(bmc.url(EXPORT), json={}, timeout=10).status_code == 403
        assert session.post(bmc.url(IMPORT), json=saved, timeout=10).status_code == 403
    # The BIOS is the host's: an operator may move its file, a reader may not.
    assert reader.post(bmc.url(BIOS_DOWNLOAD), json={}, timeout=10).status_code == 403
    assert upload_bios(bmc, reader, '{"Attributes": {"VTd": "Disabled"}}').status_code == 403
    assert (stores(bmc), pending_bios(bmc)) == before
    assert upload_bios(bmc, operator, '{"Attributes": {"VTd": "Disabled"}}').status_code == 200
    bmc.bmcsim("bios", "post")
