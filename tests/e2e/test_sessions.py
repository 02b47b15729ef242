"""Authentication, the session store and the pipeline's checks, through lighttpd."""

import base64
import concurrent.futures
import glob
import os

import requests

from schema_validation import validate, validate_messages

SESSIONS = "/redfish/v1/SessionService/Sessions"


def token_session(token):
    session = requests.Session()
    session.headers["X-Auth-Token"] = token
    return session


def logout_all(bmc):
    admin = bmc.admin()
    for member in admin.get(bmc.url(SESSIONS)).json()["Members"]:
        admin.delete(bmc.url(member["@odata.id"]))


def session_files(bmc):
    records = glob.glob(os.path.join(bmc.root, "tmp", "redfish_*"))
    directories = [name for name in os.listdir(
        os.path.join(bmc.root, "tmp", "www", "redfish", "v1", "SessionService", "Sessions"))
        if name.isdigit()]
    return records, directories


def test_login_token_and_logout(closed_bmc):
    bmc = closed_bmc
    login = bmc.login()
    assert login.status_code == 201
    token = login.headers["X-Auth-Token"]
    assert len(token) == 32 and token.isalnum() and token == token.lower()
    location = login.headers["Location"]
    assert location.startswith(SESSIONS + "/")
    validate(login.json())
    assert login.json()["UserName"] == bmc.admin_user

    with_token = token_session(token)
    collection = with_token.get(bmc.url(SESSIONS)).json()
    validate(collection)
    assert {"@odata.id": location} in collection["Members"]
    session = with_token.get(bmc.url(location)).json()
    validate(session)
    assert session["UserName"] == bmc.admin_user
    validate(with_token.get(bmc.url("/redfish/v1/SessionService")).json())
    record = glob.glob(os.path.join(bmc.root, "tmp", "redfish_" + token))[0]
    assert os.stat(record).st_mode & 0o077 == 0
    assert os.path.islink(os.path.join(bmc.root, "tmp", "www") + location + "/index.fcgi")

    assert with_token.delete(bmc.url(location)).status_code == 204
    assert with_token.get(bmc.url(SESSIONS)).status_code == 401
    assert not os.path.exists(record)
    assert "delete " + location in bmc.error_log()
    codes = [event["code"] for event in bmc.events()]
    assert 146 in codes and 147 in codes


def test_seventeenth_login_is_refused_and_logout_frees_the_lowest_id(closed_bmc):
    bmc = closed_bmc
    logout_all(bmc)
    locations = [bmc.login().headers["Location"] for _ in range(16)]
    assert sorted(int(l.rsplit("/", 1)[1]) for l in locations) == list(range(1, 17))
    refused = bmc.login()
    assert refused.status_code == 404 and refused.content == b""

    admin = bmc.admin()
    assert admin.delete(bmc.url(SESSIONS + "/3")).status_code == 204
    assert admin.delete(bmc.url(SESSIONS + "/9")).status_code == 204
    assert bmc.login().headers["Location"] == SESSIONS + "/3"
    logout_all(bmc)


def test_idle_session_expires_and_its_files_are_removed(closed_bmc):
    bmc = closed_bmc
    token = bmc.login().headers["X-Auth-Token"]
    record_path = os.path.join(bmc.root, "tmp", "redfish_" + token)
    with open(record_path, "r+b") as record:
        record.write(b"1000".ljust(15, b"\0"))
    assert token_session(token).get(bmc.url(SESSIONS)).status_code == 401
    assert not os.path.exists(record_path)
    assert session_files(bmc) == ([], [])


def test_session_used_within_timeout_stays(closed_bmc):
    bmc = closed_bmc
    bmc.write_setting("sessionservice.ini", "[SessionService]\nSessionTimeout=30\n")
    token = bmc.login().headers["X-Auth-Token"]
    for _ in range(3):
        assert token_session(token).get(bmc.url(SESSIONS)).status_code == 200
    logout_all(bmc)
    os.remove(os.path.join(bmc.root, "nv", "redfish", "sessionservice.ini"))


def test_failed_basic_request_is_logged_and_answered_with_the_uri(closed_bmc):
    bmc = closed_bmc
    before = len(bmc.events())
    answer = bmc.basic_session("nobody", "wrong-password").get(bmc.url("/redfish/v1/SessionService"))
    assert answer.status_code == 401
    assert answer.headers["WWW-Authenticate"] == 'Basic realm="redfish"'
    validate_messages(answer.json())
    message = answer.json()["error"]["@Message.ExtendedInfo"][0]
    assert message["MessageId"] == "Base.1.10.ResourceAtUriUnauthorized"
    assert message["MessageArgs"] == ["/redfish/v1/SessionService", "unauthorized"]
    new = bmc.events()[before:]
    assert [(event["code"], event["text"]) for event in new] == [(137, "/redfish/v1/SessionService")]


def test_failed_login_answers_401_without_body(closed_bmc):
    bmc = closed_bmc
    before = len(bmc.events())
    answer = bmc.login(user="nobody", password="not-the-password")
    assert answer.status_code == 401 and answer.content == b""
    assert [event["code"] for event in bmc.events()[before:]] == [137]
    assert bmc.login(password="whatever1").status_code == 401


def test_locked_account_is_refused_even_with_its_password(closed_bmc):
    bmc = closed_bmc
    bmc.bmcsim("users", "add", "5", "lockme", "Lock-me-1", "2")
    bmc.write_setting("accountservice.ini",
                      "[AccountService]\nAccountLockoutThreshold=2\nAccountLockoutDuration=600\n"
                      "AccountLockoutCounterResetAfter=600\n")
    for _ in range(2):
        assert bmc.login("lockme", "wrong-one").status_code == 401
    locked = bmc.login("lockme", "Lock-me-1")
    assert locked.status_code == 403
    validate_messages(locked.json())
    message = locked.json()["error"]["@Message.ExtendedInfo"][0]
    assert message == {"MessageId": "TWR.1.0.AccountLockup", "Severity": "Warning",
                       "Resolution": "Please wait until the account is unlocked.",
                       "Message": "The account was locked up."}
    assert bmc.basic_session("lockme", "Lock-me-1").get(bmc.url(SESSIONS)).status_code == 403
    bmc.bmcsim("users", "unlock", "5")
    assert bmc.basic_session("lockme", "Lock-me-1").get(bmc.url(SESSIONS)).status_code == 200
    os.remove(os.path.join(bmc.root, "nv", "redfish", "accountservice.ini"))


def test_read_only_user_may_read_but_not_change(closed_bmc):
    bmc = closed_bmc
    bmc.bmcsim("users", "add", "6", "reader", "Read-only-1", "2")
    reader = bmc.basic_session("reader", "Read-only-1")
    assert reader.get(bmc.url("/redfish/v1/SessionService")).status_code == 200
    answer = reader.patch(bmc.url("/redfish/v1/SessionService"), json={"SessionTimeout": 60})
    assert answer.status_code == 403
    validate_messages(answer.json())
    assert answer.json()["error"]["@Message.ExtendedInfo"][0]["MessageId"] == \
        "Base.1.10.InsufficientPrivilege"

    own = reader.post(bmc.url(SESSIONS), json={"UserName": "reader", "Password": "Read-only-1"})
    others = bmc.login()
    reader_token = token_session(own.headers["X-Auth-Token"])
    assert reader_token.delete(bmc.url(others.headers["Location"])).status_code == 403
    assert reader_token.delete(bmc.url(own.headers["Location"])).status_code == 204
    logout_all(bmc)


def test_conditional_and_version_headers(closed_bmc):
    bmc = closed_bmc
    admin = bmc.admin()
    first = admin.get(bmc.url("/redfish/v1/SessionService"))
    etag = first.headers["ETag"]
    unchanged = admin.get(bmc.url("/redfish/v1/SessionService"), headers={"If-None-Match": etag})
    assert unchanged.status_code == 304 and unchanged.content == b""
    assert admin.get(bmc.url("/redfish/v1/SessionService"),
                     headers={"If-None-Match": '"0000"'}).status_code == 200
    # None-Match answers 204 with the current tag when the client's differs.
    differs = admin.get(bmc.url("/redfish/v1/SessionService"), headers={"None-Match": '"0000"'})
    assert differs.status_code == 204 and differs.headers["ETag"] == etag
    same = admin.get(bmc.url("/redfish/v1/SessionService"), headers={"None-Match": etag})
    assert same.status_code == 200 and same.headers["ETag"] == etag

    old = admin.get(bmc.url("/redfish/v1/SessionService"), headers={"OData-Version": "3.0"})
    assert old.status_code == 412
    validate_messages(old.json())
    assert old.json()["error"]["@Message.ExtendedInfo"][0]["MessageId"] == \
        "TWR.1.0.CertainConfigurationNotSet"
    assert admin.get(bmc.url("/redfish/v1/SessionService"),
                     headers={"OData-Version": "4.01"}).status_code == 200


def test_malformed_credentials_and_paths_are_refused(closed_bmc):
    bmc = closed_bmc
    for header in ("Basic !!!notbase64", "Basic " + "QUFB" * 40, "Bearer abc",
                   "Basic " + base64.b64encode(b"no-colon").decode()):
        answer = requests.get(bmc.url(SESSIONS), headers={"Authorization": header}, timeout=10)
        assert answer.status_code == 401, header
    for token in ("short", "a" * 33, "A" * 32, "../../etc/passwd" + "a" * 16):
        assert token_session(token).get(bmc.url(SESSIONS)).status_code == 401, token
    credentials = base64.b64encode(f"{bmc.admin_user}:{bmc.admin_password}".encode())
    for path in (b"/redfish/v1/SessionService/../AccountService", b"/redfish/v1/Session%53ervice",
                 b"/redfish/v1/./SessionService"):
        answer = bmc.raw(b"GET " + path + b" HTTP/1.0\r\nAuthorization: Basic " + credentials +
                         b"\r\n\r\n")
        assert answer.split(b" ", 2)[1] in (b"400", b"404"), path


def test_session_service_settings(closed_bmc):
    bmc = closed_bmc
    admin = bmc.admin()
    service = bmc.url("/redfish/v1/SessionService")
    assert admin.patch(service, json={"SessionTimeout": 600}).status_code == 204
    validate(admin.get(service).json())
    assert admin.get(service).json()["SessionTimeout"] == 600
    for body in ({"SessionTimeout": 29}, {"SessionTimeout": "600"}, {"Unknown": 1},
                 {"SessionTimeout": 2 ** 63}, {"SessionTimeout": 2 ** 64 + 1},
                 {"SessionTimeout": 300, "ServiceEnabled": "yes"}):
        answer = admin.patch(service, json=body)
        assert answer.status_code == 400, body
        validate_messages(answer.json())
        assert answer.json()["error"]["code"] == "Base.v1_10_3.GeneralError"
    assert admin.get(service).json()["SessionTimeout"] == 600
    for body in ([], "text", 2 ** 64):  # answered as every resource answers them
        for uri in (service, bmc.url("/redfish/v1/AccountService")):
            answer = admin.patch(uri, json=body)
            assert answer.status_code == 400, (uri, body)
            assert [entry["MessageId"] for entry in answer.json()["error"]["@Message.ExtendedInfo"]] == \
                ["Base.1.10.UnrecognizedRequestBody"]
    malformed = admin.patch(service, data=b"{not json", headers={"Content-Type": "application/json"})
    assert malformed.status_code == 400
    assert malformed.json()["error"]["@Message.ExtendedInfo"][0]["MessageId"] == "Base.1.10.MalformedJSON"


def test_collection_lists_only_numeric_directories(closed_bmc):
    bmc = closed_bmc
    logout_all(bmc)
    os.makedirs(os.path.join(bmc.root, "tmp", "www", "redfish", "v1", "SessionService",
                             "Sessions", "stale"), exist_ok=True)
    location = bmc.login().headers["Location"]
    members = bmc.admin().get(bmc.url(SESSIONS)).json()["Members"]
    assert members == [{"@odata.id": location}]
    logout_all(bmc)


def test_service_root_needs_credentials_unless_opened(closed_bmc, bmc):
    assert closed_bmc.get("/redfish/v1/SessionService").status_code == 401
    assert closed_bmc.get("/redfish").status_code == 401
    assert bmc.get("/redfish").status_code == 200
    assert bmc.get("/redfish/v1/SessionService").status_code == 401


def test_concurrent_logins_fill_exactly_sixteen_sessions():
    from bmc_instance import BmcInstance
    bmc = BmcInstance(processes=4)
    try:
        with concurrent.futures.ThreadPoolExecutor(max_workers=40) as pool:
            answers = list(pool.map(lambda _: bmc.login(), range(40)))
        created = [answer for answer in answers if answer.status_code == 201]
        refused = [answer for answer in answers if answer.status_code == 404]
        assert len(created) == 16 and len(refused) == 24
        ids = sorted(int(answer.headers["Location"].rsplit("/", 1)[1]) for answer in created)
        assert ids == list(range(1, 17))
        records, directories = session_files(bmc)
        assert len(records) == 16 and sorted(map(int, directories)) == ids
        tokens = {answer.headers["X-Auth-Token"] for answer in created}
        assert len(tokens) == 16
        assert all(token_session(token).get(bmc.url(SESSIONS)).status_code == 200 for token in tokens)
    finally:
        bmc.stop()


def test_every_basic_request_is_audited_whole_by_concurrent_processes():
    from bmc_instance import BmcInstance
    bmc = BmcInstance(processes=4)
    log = os.path.join(bmc.root, "var", "log", "session_audit.log")
    try:
        before = open(log).read().splitlines() if os.path.exists(log) else []

        def basic_get(_):
            return bmc.basic_session(bmc.admin_user, bmc.admin_password).get(
                bmc.url("/redfish/v1/Systems/1")).status_code

        with concurrent.futures.ThreadPoolExecutor(max_workers=16) as pool:
            assert set(pool.map(basic_get, range(120))) == {200}
        lines = open(log).read().splitlines()[len(before):]
        assert len(lines) == 120
        for line in lines:
            seconds, rest = line.split(" ", 1)
            assert seconds.isdigit() and rest == "login user=%s address=127.0.0.1" % bmc.admin_user
        assert os.stat(log).st_mode & 0o777 == 0o600
    finally:
        bmc.stop()
