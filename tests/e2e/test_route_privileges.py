"""Who may do what: the three roles against routes of every area, as an
operator or a read-only user would try them, and system lockdown."""

import pytest

PASSWORD = "Passw0rd-1"
ACCOUNTS = "/redfish/v1/AccountService/Accounts"
SESSIONS = "/redfish/v1/SessionService/Sessions"
SEL = "/redfish/v1/Systems/1/LogServices/Log1"
MANAGER_SEL = "/redfish/v1/Managers/1/LogServices/Log1"
SUBSCRIPTIONS = "/redfish/v1/EventService/Subscriptions"
UPDATE = "/redfish/v1/UpdateService"


@pytest.fixture(scope="module")
def users(bmc):
    """Requests sessions for the three roles, keyed by role; and the ids of
    the operator's and the reader's accounts."""
    admin = bmc.admin()
    ids = {}
    for name, role in (("operator1", "Operator"), ("reader1", "ReadOnly")):
        answer = admin.post(bmc.url(ACCOUNTS), timeout=10,
                            json={"UserName": name, "Password": PASSWORD, "RoleId": role})
        assert answer.status_code == 201, answer.text
        ids[role] = answer.headers["Location"].rsplit("/", 1)[1]
    sessions = {"Administrator": admin,
                "Operator": bmc.basic_session("operator1", PASSWORD),
                "ReadOnly": bmc.basic_session("reader1", PASSWORD)}
    return sessions, ids


def refused(answer):
    if answer.status_code != 403:
        return False
    assert answer.json()["error"]["@Message.ExtendedInfo"][0]["MessageId"] == \
        "Base.1.10.InsufficientPrivilege"
    return True


# (method, path, body, roles refused). Bodies that pass the privilege check
# are invalid or harmless, so that the allowed roles change nothing.
SAMPLE = [
    ("GET", "/redfish/v1/Systems/1", None, ""),
    ("PATCH", "/redfish/v1/Systems/1", {"Bogus": 1}, "R"),
    ("POST", "/redfish/v1/Systems/1/Actions/ComputerSystem.Reset", {"ResetType": "Bogus"}, "R"),
    ("PATCH", "/redfish/v1/Chassis/1", {"Bogus": 1}, "R"),
    ("PATCH", "/redfish/v1/Managers/1/NetworkProtocol", {"Bogus": 1}, "OR"),
    ("PATCH", "/redfish/v1/SessionService", {"Bogus": 1}, "OR"),
    ("PATCH", "/redfish/v1/AccountService", {"Bogus": 1}, "OR"),
    ("POST", ACCOUNTS, {"UserName": "x"}, "OR"),
    ("PATCH", "/redfish/v1/EventService", {"Bogus": 1}, "OR"),
    ("POST", SUBSCRIPTIONS, {"Destination": "bogus"}, "OR"),
    ("POST", "/redfish/v1/EventService/Actions/EventService.SubmitTestEvent", {"Bogus": 1},
     "OR"),
    ("POST", UPDATE + "/Actions/UpdateService.SimpleUpdate", {"Bogus": 1}, "OR"),
    ("POST", "/redfish/v1/CertificateService/Actions/CertificateService.ReplaceCertificate",
     {"Bogus": 1}, "OR"),
    ("POST", "/redfish/v1/Managers/1/VirtualMedia/CD1/Actions/VirtualMedia.InsertMedia",
     {"Bogus": 1}, "OR"),
    ("DELETE", "/redfish/v1/TaskService/Tasks/999", None, "OR"),
    ("GET", "/redfish/v1/TaskService/Tasks", None, ""),
    ("GET", ACCOUNTS, None, ""),
    ("GET", SESSIONS, None, ""),
]


@pytest.mark.parametrize("method, path, body, refused_roles", SAMPLE)
def test_each_area_refuses_exactly_the_roles_without_the_privilege(bmc, users, method, path,
                                                                   body, refused_roles):
    sessions, _ = users
    for role, session in sessions.items():
        answer = session.request(method, bmc.url(path), json=body, timeout=10)
        assert refused(answer) == (role[0] in refused_roles), (role, answer.status_code,
                                                               answer.text)


def test_other_users_data_is_read_only_by_those_who_manage_them(bmc, users):
    sessions, ids = users
    reader, operator, admin = sessions["ReadOnly"], sessions["Operator"], sessions["Administrator"]
    # An account: its owner and administrators read it, nobody else.
    assert reader.get(bmc.url(f"{ACCOUNTS}/{ids['ReadOnly']}"), timeout=10).status_code == 200
    assert refused(reader.get(bmc.url(f"{ACCOUNTS}/{ids['Operator']}"), timeout=10))
    assert refused(operator.get(bmc.url(f"{ACCOUNTS}/2"), timeout=10))
    assert admin.get(bmc.url(f"{ACCOUNTS}/{ids['ReadOnly']}"), timeout=10).status_code == 200
    # A session: its owner's name and address are for the owner and administrators.
    login = bmc.login("operator1", PASSWORD)
    assert login.status_code == 201
    session_uri = login.headers["Location"]
    token = {"X-Auth-Token": login.headers["X-Auth-Token"]}
    assert bmc.get(session_uri, headers=token).status_code == 200
    assert refused(reader.get(bmc.url(session_uri), timeout=10))
    assert refused(reader.delete(bmc.url(session_uri), timeout=10))
    assert admin.get(bmc.url(session_uri), timeout=10).status_code == 200
    assert bmc.request("DELETE", session_uri, headers=token).status_code in (200, 204)
    # A subscription's destination and context.
    created = admin.post(bmc.url(SUBSCRIPTIONS), timeout=10, json={
        "Destination": "http://127.0.0.1:9/events", "Protocol": "Redfish", "Context": "secret"})
    assert created.status_code == 201, created.text
    subscription = created.headers["Location"]
    try:
        assert refused(reader.get(bmc.url(subscription), timeout=10))
        assert refused(operator.get(bmc.url(subscription), timeout=10))
        assert admin.get(bmc.url(subscription), timeout=10).json()["Context"] == "secret"
    finally:
        admin.delete(bmc.url(subscription), timeout=10)


def test_only_administrators_clear_a_log_and_the_clearing_is_recorded(bmc, users):
    sessions, _ = users
    bmc.bmcsim("eventlog", "add", "12", "before the clearing")
    before = bmc.events()
    for role in ("Operator", "ReadOnly"):
        for log in (SEL, MANAGER_SEL):
            answer = sessions[role].post(bmc.url(log + "/Actions/LogService.ClearLog"), json={},
                                         timeout=10)
            assert refused(answer), (role, log)
    assert bmc.events()[:len(before)] == before
    answer = sessions["Administrator"].post(bmc.url(SEL + "/Actions/LogService.ClearLog"),
                                            json={}, timeout=10)
    assert answer.status_code == 200
    entries = sessions["ReadOnly"].get(bmc.url(SEL + "/Entries"), timeout=10).json()["Members"]
    first = sessions["ReadOnly"].get(bmc.url(entries[0]["@odata.id"]), timeout=10).json()
    assert first["Message"] == f"{bmc.admin_user}, cleared the event log"


@pytest.fixture
def lockdown(bmc):
    bmc.bmcsim("lockdown", "on")
    yield
    bmc.bmcsim("lockdown", "off")


@pytest.mark.parametrize("path, body", [
    (UPDATE + "/Actions/UpdateService.SimpleUpdate",
     {"ImageURI": "http://127.0.0.1:9/image.bin", "TransferProtocol": "HTTP"}),
    (UPDATE + "/Actions/UpdateService.StartUpdate", {}),
    (UPDATE + "/Actions/Oem/TwrUpdateService.Install", {}),
    (UPDATE + "/upload", None),
    (UPDATE + "/Oem/Tarnwright/SSLCert/Actions/TwrSSLCert.Upload", None),
    (UPDATE + "/Oem/Tarnwright/IPMIConfig/Actions/TwrIPMIConfig.Upload", None),
    ("/redfish/v1/CertificateService/Actions/CertificateService.ReplaceCertificate",
     {"CertificateString": "x", "CertificateType": "PEM"}),
])
def test_lockdown_refuses_every_firmware_and_configuration_change(bmc, lockdown, path, body):
    version = bmc.bmcsim("bmc", "show")
    answer = bmc.admin().post(bmc.url(path), json=body, data=None if body else b"x" * 16,
                              timeout=10)
    assert answer.status_code == 405
    message = answer.json()["error"]["@Message.ExtendedInfo"][0]
    assert message["MessageId"] == "TWR.1.0.OemSystemLockdownEnabled"
    assert bmc.bmcsim("bmc", "show") == version
