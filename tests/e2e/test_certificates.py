"""The HTTPS certificate that lighttpd really serves, read and replaced
through the certificate service."""

import datetime
import os
import socket
import ssl
import subprocess
import time

import pytest
from cryptography import x509
from cryptography.hazmat.primitives import hashes, serialization
from cryptography.hazmat.primitives.asymmetric import ec
from cryptography.x509.oid import NameOID

from schema_validation import validate, validate_messages

SERVICE = "/redfish/v1/CertificateService"
REPLACE = SERVICE + "/Actions/CertificateService.ReplaceCertificate"
GENERATE = SERVICE + "/Actions/CertificateService.GenerateCSR"
COLLECTION = "/redfish/v1/Managers/1/NetworkProtocol/HTTPS/Certificates"
CERTIFICATE = COLLECTION + "/1"
REKEY = CERTIFICATE + "/Actions/Certificate.Rekey"
RENEW = CERTIFICATE + "/Actions/Certificate.Renew"


def der(pem):
    return ssl.PEM_cert_to_DER_cert(pem)


def served(bmc, timeout=10):
    return ssl.get_server_certificate(("127.0.0.1", bmc.tls_port), timeout=timeout)


def wait_until_served(bmc, cert):
    """Waits up to 30 s for lighttpd's reload to serve cert."""
    deadline = time.monotonic() + 30
    while time.monotonic() < deadline:
        try:
            if der(served(bmc, timeout=max(deadline - time.monotonic(), 0.1))) == der(cert):
                return
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
    """Even while clients hold connections they say nothing on: the reload
    waits for them only until lighttpd lets them go."""
    key, cert = self_signed(str(tmp_path), "replaced.localdomain")
    silent = [socket.create_connection(("127.0.0.1", port), timeout=10) for port in (bmc.port, bmc.tls_port)]
    answer = admin.post(bmc.url(REPLACE), timeout=10, json={
        "CertificateString": key + cert, "CertificateType": "PEM",
        "CertificateUri": {"@odata.id": CERTIFICATE}})
    assert answer.status_code == 200, answer.text
    assert os.stat(os.path.join(bmc.root, "etc", "ssl", "server.pem")).st_mode & 0o777 == 0o600
    # Neither silent client reads or closes; the admin session's pooled
    # connection is left unread as well.
    wait_until_served(bmc, cert)
    for connection in silent:
        connection.close()
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
        # A certificate alone must belong to a key the BMC keeps.
        ({"CertificateString": cert, "CertificateType": "PEM", "CertificateUri": target},
         "TWR.1.0.OemSslcertIllegalPair"),
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


class Authority:
    """A certificate authority of the test that signs the BMC's requests."""

    def __init__(self):
        self.key = ec.generate_private_key(ec.SECP256R1())
        name = x509.Name([x509.NameAttribute(NameOID.COMMON_NAME, "Test CA")])
        self.certificate = self._builder(name, self.key.public_key()).issuer_name(name).add_extension(
            x509.BasicConstraints(ca=True, path_length=None), critical=True).sign(self.key, hashes.SHA256())

    @staticmethod
    def _builder(subject, public_key):
        now = datetime.datetime.now(datetime.timezone.utc)
        return (x509.CertificateBuilder().subject_name(subject).public_key(public_key)
                .serial_number(x509.random_serial_number())
                .not_valid_before(now - datetime.timedelta(minutes=5))
                .not_valid_after(now + datetime.timedelta(days=30)))

    def sign(self, csr_pem):
        """The certificate for a request, and the chain of it and the authority, as PEM."""
        request = x509.load_pem_x509_csr(csr_pem.encode())
        assert request.is_signature_valid
        builder = self._builder(request.subject, request.public_key()).issuer_name(self.certificate.subject)
        try:
            names = request.extensions.get_extension_for_class(x509.SubjectAlternativeName).value
            builder = builder.add_extension(names, critical=False)
        except x509.ExtensionNotFound:
            pass
        signed = builder.sign(self.key, hashes.SHA256()).public_bytes(serialization.Encoding.PEM).decode()
        return signed, signed + self.certificate.public_bytes(serialization.Encoding.PEM).decode()


def public_der(key_holder):
    return key_holder.public_key().public_bytes(serialization.Encoding.DER,
                                                serialization.PublicFormat.SubjectPublicKeyInfo)


def pending_key_path(bmc):
    return os.path.join(bmc.root, "etc", "ssl", "pending-key.pem")


def replace_with(bmc, admin, pem):
    return admin.post(bmc.url(REPLACE), timeout=10, json={
        "CertificateString": pem, "CertificateType": "PEM", "CertificateUri": {"@odata.id": CERTIFICATE}})


def test_a_generated_request_signed_elsewhere_is_installed_with_its_kept_key(bmc, admin):
    service = admin.get(bmc.url(SERVICE), timeout=10).json()
    assert service["Actions"]["#CertificateService.GenerateCSR"]["target"] == GENERATE
    validate(admin.get(bmc.url(service["Actions"]["#CertificateService.GenerateCSR"]["@Redfish.ActionInfo"]),
                       timeout=10).json())
    answer = admin.post(bmc.url(GENERATE), timeout=10, json={
        "CommonName": "bmc7.example.com", "Organization": "Rack 7", "Country": "DE",
        "AlternativeNames": ["bmc7.example.com", "192.0.2.7"], "KeyPairAlgorithm": "TPM_ALG_ECDSA",
        "KeyCurveId": "TPM_ECC_NIST_P384", "ChallengePassword": "s3cret-challenge",
        "CertificateCollection": {"@odata.id": COLLECTION}})
    assert answer.status_code == 200, answer.text
    assert answer.json()["CertificateCollection"] == {"@odata.id": COLLECTION}
    assert "PRIVATE KEY" not in answer.text
    request = x509.load_pem_x509_csr(answer.json()["CSRString"].encode())
    assert request.subject.get_attributes_for_oid(NameOID.COMMON_NAME)[0].value == "bmc7.example.com"
    assert request.public_key().curve.name == "secp384r1"
    names = request.extensions.get_extension_for_class(x509.SubjectAlternativeName).value
    assert [str(address) for address in names.get_values_for_type(x509.IPAddress)] == ["192.0.2.7"]
    assert os.stat(pending_key_path(bmc)).st_mode & 0o777 == 0o600
    assert "s3cret-challenge" not in bmc.error_log() and "PRIVATE KEY" not in bmc.error_log()

    signed, chain = Authority().sign(answer.json()["CSRString"])
    installed = replace_with(bmc, admin, chain)
    assert installed.status_code == 200, installed.text
    wait_until_served(bmc, signed)
    assert admin.get(bmc.url(CERTIFICATE), timeout=10).json()["Subject"]["CommonName"] == "bmc7.example.com"
    assert not os.path.exists(pending_key_path(bmc))
    served_key = serialization.load_pem_private_key(pem_file(bmc).encode(), None)
    assert public_der(served_key) == public_der(request)


def test_rekey_makes_a_new_key_and_renew_keeps_the_served_one(bmc, admin):
    served_certificate = x509.load_pem_x509_certificate(served(bmc).encode())
    # A new 3072-bit key takes a small BMC seconds to make.
    rekeyed = admin.post(bmc.url(REKEY), json={"KeyBitLength": 3072}, timeout=60)
    assert rekeyed.status_code == 200, rekeyed.text
    assert rekeyed.json()["Certificate"] == {"@odata.id": CERTIFICATE}
    request = x509.load_pem_x509_csr(rekeyed.json()["CSRString"].encode())
    assert request.subject == served_certificate.subject
    assert request.public_key().key_size == 3072
    assert public_der(request) != public_der(served_certificate)
    renewed = admin.post(bmc.url(RENEW), json={}, timeout=10)
    assert renewed.status_code == 200, renewed.text
    request = x509.load_pem_x509_csr(renewed.json()["CSRString"].encode())
    assert request.subject == served_certificate.subject
    assert public_der(request) == public_der(served_certificate)
    # The renewed certificate is installed with the served key; the pending
    # key of the rekey waits on.
    signed, chain = Authority().sign(renewed.json()["CSRString"])
    assert replace_with(bmc, admin, chain).status_code == 200
    wait_until_served(bmc, signed)
    assert os.path.exists(pending_key_path(bmc))


def test_bad_requests_and_foreign_certificates_change_nothing(bmc, admin, tmp_path):
    before = pem_file(bmc)
    if os.path.exists(pending_key_path(bmc)):
        os.remove(pending_key_path(bmc))
    answer = admin.post(bmc.url(GENERATE), timeout=10, json={
        "KeyPairAlgorithm": "TPM_ALG_RSA", "KeyBitLength": 1024, "KeyCurveId": "TPM_ECC_NIST_P256",
        "Country": "Germany", "ChallengePassword": 7, "Color": "red",
        "CertificateCollection": {"@odata.id": COLLECTION}})
    assert answer.status_code == 400
    validate_messages(answer.json())
    assert sorted(entry["MessageId"] for entry in answer.json()["error"]["@Message.ExtendedInfo"]) == sorted([
        "Base.1.10.ActionParameterMissing", "Base.1.10.ActionParameterValueNotInList",
        "Base.1.10.ActionParameterValueNotInList", "Base.1.10.ActionParameterValueFormatError",
        "Base.1.10.ActionParameterValueTypeError", "Base.1.10.ActionParameterUnknown"])
    for body in ({"KeyCurveId": "TPM_ECC_NIST_P521"}, {"KeyPairAlgorithm": "TPM_ALG_DSA"}, {"Color": 1}):
        assert admin.post(bmc.url(REKEY), json=body, timeout=10).status_code == 400
    rekey = admin.post(bmc.url(REKEY), json={"KeyBitLength": "big", "KeyCurveId": "TPM_ECC_NIST_P521"}, timeout=10)
    assert [entry["MessageId"] for entry in rekey.json()["error"]["@Message.ExtendedInfo"]] == [
        "Base.1.10.ActionParameterValueTypeError", "Base.1.10.ActionParameterValueNotInList"]
    assert admin.post(bmc.url(RENEW), json={"KeyBitLength": 2048}, timeout=10).status_code == 400
    assert not os.path.exists(pending_key_path(bmc))
    # Signed for a key the BMC never made.
    _, foreign = self_signed(str(tmp_path), "foreign")
    refused = replace_with(bmc, admin, foreign)
    assert refused.status_code == 400
    assert refused.json()["error"]["@Message.ExtendedInfo"][0]["MessageId"] == "TWR.1.0.OemSslcertIllegalPair"
    assert pem_file(bmc) == before


def test_an_operator_may_not_ask_for_a_certificate(bmc):
    bmc.bmcsim("users", "add", "6", "operator6", "Operator-pass6", "3")
    operator = bmc.basic_session("operator6", "Operator-pass6")
    body = {"CommonName": "x", "CertificateCollection": {"@odata.id": COLLECTION}}
    assert operator.post(bmc.url(GENERATE), json=body, timeout=10).status_code == 403
    assert operator.post(bmc.url(REKEY), json={}, timeout=10).status_code == 403
    assert operator.post(bmc.url(RENEW), json={}, timeout=10).status_code == 403
    assert not os.path.exists(pending_key_path(bmc))
    bmc.bmcsim("users", "delete", "6")
