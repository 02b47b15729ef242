"""The BMC's clock past 2038-01-19T03:14:07Z, the last second that 32 bits
of signed seconds hold: sessions, the event log, tasks, dumps and
certificates go on as before, and every time shows its whole year."""

import datetime
import os

import pytest
import requests
from cryptography import x509
from cryptography.hazmat.primitives import hashes, serialization
from cryptography.hazmat.primitives.asymmetric import ec
from cryptography.x509.oid import NameOID

from bmc_instance import BmcInstance
from test_certificates import CERTIFICATE, REPLACE, pem_file
from test_dumps import BMC_EVIDENCE, GENERATE_BMC, generated
from test_update import finished_task, simple_update
from update_servers import SilentServer

LAST_32_BIT_SECOND = 2**31 - 1
SESSIONS = "/redfish/v1/SessionService/Sessions"
SEL_ENTRIES = "/redfish/v1/Systems/1/LogServices/Log1/Entries"
TIMEOUT = 600


@pytest.fixture(scope="module")
def bmc():
    instance = BmcInstance()
    instance.write_setting("sessionservice.ini", "[SessionService]\nSessionTimeout=%d\n" % TIMEOUT)
    yield instance
    instance.stop()


def set_clock(bmc, moment):
    bmc.bmcsim("clock", "set", str(moment))


def with_token(token):
    session = requests.Session()
    session.headers["X-Auth-Token"] = token
    return session


def test_a_session_lasts_across_the_limit_and_then_expires(bmc):
    set_clock(bmc, LAST_32_BIT_SECOND - 60)
    login = bmc.login()
    assert login.status_code == 201
    session = with_token(login.headers["X-Auth-Token"])
    # Used after the limit: its last use is stored past 32 bits.
    set_clock(bmc, LAST_32_BIT_SECOND + 300)
    manager = session.get(bmc.url("/redfish/v1/Managers/1"), timeout=10)
    assert manager.status_code == 200
    assert manager.json()["DateTime"].startswith("2038-01-19T03:19:")
    set_clock(bmc, LAST_32_BIT_SECOND + 300 + TIMEOUT - 30)
    assert session.get(bmc.url(login.headers["Location"]), timeout=10).status_code == 200
    set_clock(bmc, LAST_32_BIT_SECOND + 300 + 2 * TIMEOUT + 60)
    assert session.get(bmc.url(login.headers["Location"]), timeout=10).status_code == 401
    bmc.bmcsim("clock", "reset")


def test_events_tasks_and_dumps_carry_their_time_after_2038(bmc):
    admin = bmc.admin()
    set_clock(bmc, "2040-02-29T12:00:00Z")
    bmc.bmcsim("eventlog", "add", "200", "Fan 3 failed")
    entries = admin.get(bmc.url(SEL_ENTRIES), timeout=10).json()["Members"]
    assert (entries[-1]["Message"], entries[-1]["Created"][:16]) == ("Fan 3 failed", "2040-02-29T12:00")
    silent = SilentServer()
    try:
        ended = finished_task(bmc, admin, simple_update(bmc, admin, ImageURI=silent.host + "/a.img",
                                                        TransferProtocol="HTTP"))
    finally:
        silent.stop()
    assert ended["StartTime"][:16] == ended["EndTime"][:16] == "2040-02-29T12:00"
    generated(bmc, admin, GENERATE_BMC)
    assert admin.get(bmc.url(BMC_EVIDENCE), timeout=10).json()["Created"][:16] == "2040-02-29T12:00"
    bmc.bmcsim("clock", "reset")


def certificate_of_the_2040s():
    key = ec.generate_private_key(ec.SECP256R1())
    name = x509.Name([x509.NameAttribute(NameOID.COMMON_NAME, "bmc.2040s")])
    utc = datetime.timezone.utc
    certificate = (x509.CertificateBuilder().subject_name(name).issuer_name(name)
                   .public_key(key.public_key()).serial_number(2040)
                   .not_valid_before(datetime.datetime(2040, 1, 1, tzinfo=utc))
                   .not_valid_after(datetime.datetime(2050, 1, 1, tzinfo=utc))
                   .sign(key, hashes.SHA256()))
    key_pem = key.private_bytes(serialization.Encoding.PEM, serialization.PrivateFormat.PKCS8,
                                serialization.NoEncryption())
    return key_pem.decode() + certificate.public_bytes(serialization.Encoding.PEM).decode()


def test_a_certificate_of_the_2040s_is_taken_only_once_its_time_has_come(bmc):
    admin = bmc.admin()
    replacement = {"CertificateString": certificate_of_the_2040s(), "CertificateType": "PEM",
                   "CertificateUri": {"@odata.id": CERTIFICATE}}
    before = pem_file(bmc)
    assert admin.post(bmc.url(REPLACE), json=replacement, timeout=10).status_code == 400
    assert pem_file(bmc) == before
    set_clock(bmc, "2041-06-01T00:00:00Z")
    try:
        assert admin.post(bmc.url(REPLACE), json=replacement, timeout=10).status_code == 200
        shown = admin.get(bmc.url(CERTIFICATE), timeout=10).json()
        assert (shown["ValidNotBefore"], shown["ValidNotAfter"]) == (
            "2040-01-01T00:00:00+00:00", "2050-01-01T00:00:00+00:00")
        assert os.stat(os.path.join(bmc.root, "etc", "ssl", "server.pem")).st_mode & 0o777 == 0o600
    finally:
        bmc.bmcsim("clock", "reset")
