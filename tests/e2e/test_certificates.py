"""The HTTPS certificate that lighttpd really serves, read and replaced
through the certificate service."""

import os
import ssl
import subprocess
import time

import pytest

from schema_validation import validate, validate_messages

SERVICE = "/redfish/v1/CertificateService"
REPLACE = SERVICE + "/Actions/CertificateService.ReplaceCertificate"
CERTIFICATE = "/redfish/v1/Managers/1/NetworkProtocol/HTTPS/Certificates/1"


def der(pem):
    return ssl.PEM_cert_to_DER_cert(pem)


def served(bmc):
    return ssl.get_server_certificate(("127.0.0.1", bmc.tls_port), timeout=10)


def wait_until_served(bmc, cert):
    """Waits up to 10 s for lighttpd's reload to serve cert."""
    for _ in range(100):
        try:
            if der(served(bmc)) == der(cert):
                break
        except OSError:
            pass
        time.sleep(0.1)
    assert der(served(bmc)) == der(cert)


def self_signed(directory, name, days="30", key_options=("ec", "-pkeyopt", "ec_paramgen_curve:prime256v1")):
    """A new key (EC P-256 unless told) and a certificate for it, as PEM texts."""
    key, cert = os.path.join(directory, name + ".key"), os.path.join(directory, name + ".crt")
    subprocess.run(["openssl", "req", "-x509", "-newkey", *key_options,
                    "-nodes", "-days", days, "-subj", "/CN=%s/O=Rack 7" % name, "-keyout", key, "-out", cert],
                   check=True, capture_output=True)
    with open(key) as key_file, open(cert) as cert_file:
        return key_file.read(), cert_file.read()


def pem_file(bmc):
    with open(os.path.join(bmc.root, "etc", "ssl", "server.pem")) as pem:
        return pem.read()


@pytest.fixture
def admin(bmc):
    return bmc.admin()


def test_the_service_shows_the_certificate_lighttpd_serves(bmc, admin):
    service = admin.get(bmc.url(SERVICE), timeout=10).json()
    locations = admin.get(bmc.url(service["CertificateLocations"]["@odata.id"]), timeout=10).json()
    assert locations["Links"]["Certificates"] == [{"@odata.id": CERTIFICATE}]
    protocol = admin.get(bmc.url("/redfish/v1/Managers/1/NetworkProtocol"), timeout=10).json()
    collection = admin.get(bmc.url(protocol["HTTPS"]["Certificates"]["@odata.id"]), timeout=10).json()
    assert collection["Members"] == [{"@odata.id": CERTIFICATE}]
    certificate = admin.get(bmc.url(CERTIFICATE), timeout=10).json()
    assert der(certificate["CertificateString"]) == der(served(bmc))
    assert certificate["Subject"]["CommonName"] == "bmc.localdomain"
    assert "PRIVATE KEY" not in certificate["CertificateString"]
    info = admin.get(bmc.url(service["Actions"]["#CertificateService.ReplaceCertificate"]["@Redfish.ActionInfo"]),
                     timeout=10).json()
    validate(info)


def test_a_replaced_certificate_is_served_after_the_reload(bmc, admin, tmp_path):
    key, cert = self_signed(str(tmp_path), "replaced.localdomain")
    answer = admin.post(bmc.url(REPLACE), timeout=10, json={
        "CertificateString": key + cert, "CertificateType": "PEM",
        "CertificateUri": {"@odata.id": CERTIFICATE}})
    assert answer.status_code == 200, answer.text
    assert os.stat(os.path.join(bmc.root, "etc", "ssl", "server.pem")).st_mode & 0o777 == 0o600
    wait_until_served(bmc, cert)
    body = admin.get(bmc.url(CERTIFICATE), timeout=10).json()
    assert (body["Subject"]["CommonName"], body["Subject"]["Organization"]) == ("replaced.localdomain", "Rack 7")


def test_a_bad_replacement_is_refused_and_the_old_pair_stays(bmc, admin, tmp_path):
    key, cert = self_signed(str(tmp_path), "one")
    other_key, _ = self_signed(str(tmp_path), "two")
    # lighttpd would fail every handshake with it.
    weak_key, weak_cert = self_signed(str(tmp_path), "weak", key_options=("rsa:512",))
    before = pem_file(bmc)
    target = {"@odata.id": CERTIFICATE}
    cases = [
        ({"CertificateString": other_key + cert, "CertificateType": "PEM", "CertificateUri": target},
         "Base.1.10.ActionParameterValueFormatError"),
        ({"CertificateString": cert, "CertificateType": "PEM", "CertificateUri": target},
         "Base.1.10.ActionParameterValueFormatError"),
        ({"CertificateString": weak_key + weak_cert, "CertificateType": "PEM", "CertificateUri": target},
         "Base.1.10.ActionParameterValueFormatError"),
        ({"CertificateString": key, "CertificateType": "PEM", "CertificateUri": target},
         "Base.1.10.ActionParameterValueFormatError"),
        ({"CertificateString": "garbage", "CertificateType": "PEM", "CertificateUri": target},
         "Base.1.10.ActionParameterValueFormatError"),
        ({"CertificateString": key + cert, "CertificateType": "PKCS7", "CertificateUri": target},
         "Base.1.10.ActionParameterValueNotInList"),
        ({"CertificateString": key + cert, "CertificateType": "PEM",
          "CertificateUri": {"@odata.id": "/redfish/v1/Managers/1"}}, "Base.1.10.ActionParameterValueFormatError"),
        ({"CertificateString": key + cert, "CertificateType": "PEM"}, "Base.1.10.ActionParameterMissing"),
    ]
    for body, message_id in cases:
        answer = admin.post(bmc.url(REPLACE), json=body, timeout=10)
        assert answer.status_code == 400, body
        validate_messages(answer.json())
        assert [entry["MessageId"] for entry in answer.json()["error"]["@Message.ExtendedInfo"]] == [message_id]
        assert "PRIVATE KEY" not in answer.text and "BEGIN" not in answer.text
    assert pem_file(bmc) == before
    assert "PRIVATE KEY" not in bmc.error_log()
