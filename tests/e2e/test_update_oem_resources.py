"""The update service's Oem SSLCert and IPMIConfig resources: certificate
upload, and the IPMI configuration downloaded and restored, through
lighttpd."""

import os

import pytest

from test_certificates import pem_file, self_signed, wait_until_served

OEM = "/redfish/v1/UpdateService/Oem/Tarnwright"
SSLCERT = OEM + "/SSLCert"
SSLCERT_UPLOAD = SSLCERT + "/Actions/TwrSSLCert.Upload"
IPMICONFIG = OEM + "/IPMIConfig"
DOWNLOAD = IPMICONFIG + "/Actions/TwrIPMIConfig.Download"
UPLOAD = IPMICONFIG + "/Actions/TwrIPMIConfig.Upload"
ACCOUNTS = "/redfish/v1/AccountService/Accounts"
PASSWORD = "Passw0rd-123"
STORES = [("nv", "bmc", "users"), ("nv", "bmc", "alert_dest"), ("nv", "bmc", "lan.ini"),
          ("nv", "bmc", "serial.ini")]


def upload_pair(bmc, session, parts):
    files = [(name, (name.lower() + ".pem", text, "application/x-pem-file")) for name, text in parts.items()]
    return session.post(bmc.url(SSLCERT_UPLOAD), files=files, timeout=10)


def upload_config(bmc, session, content, part="ConfigFile"):
    return session.post(bmc.url(UPLOAD), files=[(part, ("ipmi_config.json", content))], timeout=10)


def message_ids(answer):
    body = answer.json()
    return [entry["MessageId"] for entry in (body.get("error") or body.get("Success"))["@Message.ExtendedInfo"]]


def stores(bmc):
    contents = {}
    for parts in STORES:
        path = os.path.join(bmc.root, *parts)
        contents[parts[-1]] = open(path, "rb").read() if os.path.exists(path) else None
    return contents


@pytest.fixture
def operator_and_reader(bmc, admin):
    created = []
    for name, role in (("oper1", "Operator"), ("reader1", "ReadOnly")):
        answer = admin.post(bmc.url(ACCOUNTS), timeout=10,
                            json={"UserName": name, "Password": PASSWORD, "RoleId": role})
        assert answer.status_code == 201, answer.text
        created.append(answer.headers["Location"])
    yield [bmc.basic_session(name, PASSWORD) for name in ("oper1", "reader1")]
    for location in created:
        admin.delete(bmc.url(location), timeout=10)


def test_the_update_service_links_both_resources(bmc, admin):
    oem = admin.get(bmc.url("/redfish/v1/UpdateService"), timeout=10).json()["Oem"]["Tarnwright"]
    assert oem["SSLCert"] == {"@odata.id": SSLCERT} and oem["IPMIConfig"] == {"@odata.id": IPMICONFIG}
    config = admin.get(bmc.url(IPMICONFIG), timeout=10).json()
    assert config["Actions"] == {"#TwrIPMIConfig.Upload": {"target": UPLOAD},
                                 "#TwrIPMIConfig.Download": {"target": DOWNLOAD}}


def test_an_uploaded_pair_is_served_and_shown(bmc, admin, tmp_path):
    key, cert = self_signed(str(tmp_path), "uploaded.localdomain")
    answer = upload_pair(bmc, admin, {"Certificate": cert, "PrivateKey": key})
    assert answer.status_code == 200, answer.text
    assert message_ids(answer) == ["TWR.1.0.OemSslcertUploaded"]
    shown = admin.get(bmc.url(SSLCERT), timeout=10).json()
    assert shown["Subject"]["CommonName"] == "uploaded.localdomain"
    assert shown["Actions"]["#TwrSSLCert.Upload"]["target"] == SSLCERT_UPLOAD
    wait_until_served(bmc, cert)
    assert key.strip().splitlines()[1] not in bmc.error_log()


def test_refused_pairs_change_nothing(bmc, admin, tmp_path):
    key, cert = self_signed(str(tmp_path), "first.localdomain")
    other_key, _ = self_signed(str(tmp_path), "second.localdomain")
    before, shown = pem_file(bmc), admin.get(bmc.url(SSLCERT), timeout=10).json()
    refusals = [
        ({"Certificate": cert, "PrivateKey": other_key}, ["TWR.1.0.OemSslcertIllegalPair"]),
        ({"Certificate": "garbage", "PrivateKey": "more garbage"}, ["TWR.1.0.OemSslcertIllegalPair"]),
        ({"Certificate": cert + "x" * 40000, "PrivateKey": key}, ["TWR.1.0.OemSslcertIllegalPair"]),
        ({"Certificate": cert}, ["TWR.1.0.OemSslcertMissingItem"]),
        ({"certificate": cert, "privatekey": key}, ["TWR.1.0.OemSslcertMissingItem"] * 2),
    ]
    for parts, expected in refusals:
        answer = upload_pair(bmc, admin, parts)
        assert (answer.status_code, message_ids(answer)) == (400, expected), answer.text
    not_a_form = admin.post(bmc.url(SSLCERT_UPLOAD), json={"Certificate": cert}, timeout=10)
    assert not_a_form.status_code == 400
    assert pem_file(bmc) == before
    assert admin.get(bmc.url(SSLCERT), timeout=10).json() == shown


def test_only_administrators_change_or_download(bmc, admin, operator_and_reader, tmp_path):
    key, cert = self_signed(str(tmp_path), "refused.localdomain")
    download = admin.post(bmc.url(DOWNLOAD), json={}, timeout=10).content
    before = stores(bmc), pem_file(bmc)
    for session in operator_and_reader:
        assert session.get(bmc.url(SSLCERT), timeout=10).status_code == 200
        assert upload_pair(bmc, session, {"Certificate": cert, "PrivateKey": key}).status_code == 403
        assert session.post(bmc.url(DOWNLOAD), json={}, timeout=10).status_code == 403
        assert upload_config(bmc, session, download).status_code == 403
    assert (stores(bmc), pem_file(bmc)) == before


def test_an_uploaded_download_restores_the_settings(bmc, admin):
    answer = admin.post(bmc.url(DOWNLOAD), json={}, timeout=10)
    assert answer.status_code == 200
    assert answer.headers["Content-Type"] == "application/octet-stream"
    assert answer.headers["Content-Disposition"] == 'attachment; filename="ipmi_config.json"'
    saved = answer.content
    assert saved.startswith(b'{"format":"ipmi-config","version":1,')
    bmc.bmcsim("serial", "bitrate", "9600")
    bmc.bmcsim("lan", "service", "IPMI", "off")
    created = admin.post(bmc.url(ACCOUNTS), timeout=10,
                         json={"UserName": "later1", "Password": PASSWORD, "RoleId": "Operator"})
    assert created.status_code == 201
    assert admin.post(bmc.url(DOWNLOAD), json={}, timeout=10).content != saved
    restored = upload_config(bmc, admin, saved)
    assert restored.status_code == 200, restored.text
    assert message_ids(restored) == ["TWR.1.0.OemIpmiConfigRestored"]
    assert admin.post(bmc.url(DOWNLOAD), json={}, timeout=10).content == saved
    assert admin.get(bmc.url(created.headers["Location"]), timeout=10).status_code == 404
    assert "bitrate=115200" in bmc.bmcsim("serial", "show")
    assert bmc.basic_session("later1", PASSWORD).get(bmc.url("/redfish/v1/Systems"), timeout=10).status_code == 401


def test_keys_leave_only_when_asked_for(bmc, admin):
    subscription = admin.post(bmc.url("/redfish/v1/EventService/Subscriptions"), timeout=10, json={
        "Destination": "127.0.0.1:1162", "Protocol": "SNMPv3", "Oem": {"Tarnwright": {"UserName": "trapper"}},
        "SNMP": {"AuthenticationProtocol": "HMAC_SHA96", "AuthenticationKey": "TrapKey123abc",
                 "EncryptionProtocol": "CFB128_AES128", "EncryptionKey": "TrapKey456def"}})
    assert subscription.status_code == 201, subscription.text
    try:
        plain = admin.post(bmc.url(DOWNLOAD), json={}, timeout=10).content
        assert b"TrapKey" not in plain and b"pbkdf2" not in plain and b'"trapper"' in plain
        full = admin.post(bmc.url(DOWNLOAD), json={"IncludeKeys": True}, timeout=10).content
        assert b"TrapKey123abc" in full and b"TrapKey456def" in full and b"pbkdf2" in full
        refused = admin.post(bmc.url(DOWNLOAD), json={"IncludeKeys": "yes", "Everything": True}, timeout=10)
        assert (refused.status_code, message_ids(refused)) == (
            400, ["Base.1.10.ActionParameterValueTypeError", "Base.1.10.ActionParameterUnknown"])
        # A file without keys restores the stored ones: the keys and logins stay.
        assert upload_config(bmc, admin, plain).status_code == 200
        assert admin.post(bmc.url(DOWNLOAD), json={"IncludeKeys": True}, timeout=10).content == full
    finally:
        admin.delete(bmc.url(subscription.headers["Location"]), timeout=10)


def test_a_refused_configuration_changes_nothing(bmc, admin):
    saved = admin.post(bmc.url(DOWNLOAD), json={}, timeout=10).content
    before = stores(bmc)
    hostile = saved.replace(b'"privilege":4,"enabled":true', b'"privilege":4,"enabled":false', 1)
    assert hostile != saved
    refusals = [saved[:len(saved) // 2], saved.replace(b'"version":1', b'"version":2'), hostile,
                saved.replace(b'"bit_rate":115200', b'"bit_rate":115201'), b"\x00" * 100]
    for content in refusals:
        answer = upload_config(bmc, admin, content)
        assert (answer.status_code, message_ids(answer)) == (400, ["TWR.1.0.OemIpmiConfigRestoreErrorMessage"]), \
            answer.text
    missing = upload_config(bmc, admin, saved, part="File")
    assert (missing.status_code, message_ids(missing)) == (400, ["TWR.1.0.OemIpmiConfigMissingItem"])
    assert stores(bmc) == before
