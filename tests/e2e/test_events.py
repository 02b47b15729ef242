"""Event service and subscriptions over HTTP, with delivery to real
receivers on loopback: an HTTP listener, snmptrapd and an SMTP sink."""

import os
import shutil
import ssl
import subprocess
import threading

import pytest
import requests

from bmc_instance import process_commands
from event_receivers import HttpListener, SilentListener, SmtpSink, TrapReceiver, wait_until

SERVICE = "/redfish/v1/EventService"
SUBSCRIPTIONS = SERVICE + "/Subscriptions"
SUBMIT = SERVICE + "/Actions/EventService.SubmitTestEvent"


def message_ids(answer):
    return [entry["MessageId"] for entry in answer.json()["error"]["@Message.ExtendedInfo"]]


@pytest.fixture
def admin(bmc):
    session = bmc.admin()
    yield session
    # Each test starts without subscriptions.
    for member in session.get(bmc.url(SUBSCRIPTIONS), timeout=10).json()["Members"]:
        session.delete(bmc.url(member["@odata.id"]), timeout=10)


@pytest.fixture
def listener():
    receiver = HttpListener()
    yield receiver
    receiver.stop()


def subscribe(bmc, admin, **properties):
    answer = admin.post(bmc.url(SUBSCRIPTIONS), json=properties, timeout=10)
    assert answer.status_code == 201, answer.text
    return answer.headers["Location"]


def test_event_service_settings_are_kept_and_bad_ones_change_nothing(bmc, admin):
    service = admin.get(bmc.url(SERVICE), timeout=10).json()
    assert service["EventTypesForSubscription"] == [
        "StatusChange", "ResourceUpdated", "ResourceAdded", "ResourceRemoved", "Alert"]
    assert service["Actions"]["#EventService.SubmitTestEvent"]["target"] == SUBMIT

    answer = admin.patch(bmc.url(SERVICE), json={"DeliveryRetryAttempts": 1,
                                                 "DeliveryRetryIntervalSeconds": 2}, timeout=10)
    assert answer.status_code == 204
    answer = admin.patch(bmc.url(SERVICE), json={"SMTP": {
        "ServiceEnabled": True, "ServerAddress": "127.0.0.1", "Port": 2525,
        "FromAddress": "bmc@example.com", "Password": "smtp-secret"}}, timeout=10)
    assert answer.status_code == 204 and answer.content == b""

    before = admin.get(bmc.url(SERVICE), timeout=10).json()
    assert before["DeliveryRetryAttempts"] == 1 and before["SMTP"]["Port"] == 2525
    assert before["SMTP"]["Password"] is None
    for body, expected in [
            ({"SMTP": {"ConnectionProtocol": "None", "Authentication": "AutoDetect"}},
             ["TWR.1.0.OemSmtpSettingNotAllow"]),
            ({"DeliveryRetryAttempts": 99, "ServiceEnabled": "yes", "Id": "x"},
             ["Base.1.10.PropertyValueFormatError", "Base.1.10.PropertyValueTypeError",
              "Base.1.10.PropertyNotWritable"]),
            ({"SMTP": {"Port": 0, "ServerAddress": "a\nb", "Bogus": 1}},
             ["Base.1.10.PropertyValueFormatError", "Base.1.10.PropertyValueFormatError",
              "Base.1.10.PropertyUnknown"]),
            ({"SMTP": {"ServerAddress": "", "FromAddress": ""}},
             ["Base.1.10.PropertyMissing", "Base.1.10.PropertyMissing"])]:
        answer = admin.patch(bmc.url(SERVICE), json=body, timeout=10)
        assert answer.status_code == 400
        assert message_ids(answer) == expected
    assert admin.get(bmc.url(SERVICE), timeout=10).json() == before


def test_a_subscription_is_created_read_changed_and_deleted(bmc, admin, listener):
    location = subscribe(bmc, admin, Destination=listener.url, Protocol="Redfish", Context="first",
                         EventTypes=["Alert"])
    assert location == SUBSCRIPTIONS + "/1"
    members = admin.get(bmc.url(SUBSCRIPTIONS), timeout=10).json()["Members"]
    assert members == [{"@odata.id": location}]

    answer = admin.patch(bmc.url(location), json={"Context": "changed",
                                                  "EventTypes": ["StatusChange", "Alert"]},
                         timeout=10)
    assert answer.status_code == 204
    subscription = admin.get(bmc.url(location), timeout=10).json()
    assert (subscription["Context"], subscription["EventTypes"]) == \
        ("changed", ["StatusChange", "Alert"])
    assert subscription["SubscriptionType"] == "RedfishEvent"
    answer = admin.patch(bmc.url(location), json={"Context": "lost", "Protocol": "SNMPv3"},
                         timeout=10)
    # An SNMPv3 trap needs a host, not a URL, and a user.
    assert message_ids(answer) == ["Base.1.10.PropertyValueFormatError",
                                   "Base.1.10.PropertyMissing"]
    assert admin.get(bmc.url(location), timeout=10).json() == subscription

    answer = admin.delete(bmc.url(location), timeout=10)
    assert answer.status_code == 200 and "Success" in answer.json()
    assert admin.get(bmc.url(location), timeout=10).status_code == 404
    assert admin.patch(bmc.url(location), json={"Context": "x"}, timeout=10).status_code == 404
    for outside in ("0", "17", "x1"):
        assert admin.get(bmc.url(SUBSCRIPTIONS + "/" + outside), timeout=10).status_code == 404


def test_bad_subscriptions_are_refused_and_store_nothing(bmc, admin):
    refused = [
        ({"Destination": "127.0.0.1:162", "Protocol": "SNMPv3",
          "Oem": {"Tarnwright": {"UserName": "trap,user"}}}, ["TWR.1.0.OemSnmpv3IllegalUser"]),
        ({"Destination": "127.0.0.1:162", "Protocol": "SNMPv3",
          "SNMP": {"AuthenticationProtocol": "HMAC_SHA96", "AuthenticationKey": "weakkey1"},
          "Oem": {"Tarnwright": {"UserName": "trapuser"}}}, ["TWR.1.0.OemSnmpv3IllegalKey"]),
        ({"Destination": "127.0.0.1:162", "Protocol": "SNMPv3",
          "SNMP": {"AuthenticationProtocol": "SHA-512"}}, ["TWR.1.0.OemSnmpv3IllegalProtocolType"]),
        ({"Destination": "http://127.0.0.1/", "Protocol": "Kafka"},
         ["Base.1.10.PropertyValueNotInList"]),
        ({"Destination": "http://127.0.0.1/", "Protocol": "Redfish", "EventTypes": ["Boom"]},
         ["Base.1.10.ActionParameterNotSupported"]),
        ({"Destination": "", "Protocol": "Redfish", "Context": 5},
         ["Base.1.10.PropertyValueTypeError", "Base.1.10.PropertyValueTypeError"]),
        ({"Protocol": "Redfish"}, ["Base.1.10.PropertyMissing"]),
        ({"Destination": "ftp://127.0.0.1/", "Protocol": "Redfish"},
         ["Base.1.10.PropertyValueFormatError"]),
        ({"Destination": "127.0.0.1:162", "Protocol": "SNMPv2c"}, ["Base.1.10.PropertyMissing"]),
    ]
    for body, expected in refused:
        answer = admin.post(bmc.url(SUBSCRIPTIONS), json=body, timeout=10)
        assert answer.status_code == 400, body
        assert message_ids(answer) == expected, body
    assert admin.get(bmc.url(SUBSCRIPTIONS), timeout=10).json()["Members"] == []
    assert admin.post(bmc.url(SUBSCRIPTIONS), data="[1]", timeout=10).status_code == 400


def test_the_seventeenth_subscription_exceeds_the_limit(bmc, admin):
    for n in range(16):
        subscribe(bmc, admin, Destination="http://127.0.0.1:9/%d" % n, Protocol="Redfish",
                  EventTypes=["ResourceRemoved"])
    answer = admin.post(bmc.url(SUBSCRIPTIONS), json={"Destination": "http://127.0.0.1:9/",
                                                      "Protocol": "Redfish"}, timeout=10)
    assert answer.status_code == 400
    assert message_ids(answer) == ["Base.1.10.EventSubscriptionLimitExceeded"]
    # A freed entry is the next one taken.
    admin.delete(bmc.url(SUBSCRIPTIONS + "/5"), timeout=10)
    assert subscribe(bmc, admin, Destination="http://127.0.0.1:9/", Protocol="Redfish") == \
        SUBSCRIPTIONS + "/5"


def test_submit_test_event_reaches_the_listener(bmc, admin, listener):
    answer = admin.post(bmc.url(SUBMIT), json={}, timeout=10)
    assert answer.status_code == 200 and "Success" in answer.json()  # nothing subscribed

    subscribe(bmc, admin, Destination=listener.url, Protocol="Redfish", Context="ops")
    answer = admin.post(bmc.url(SUBMIT), json={"Severity": "OK"}, timeout=10)
    assert answer.status_code == 400
    assert message_ids(answer) == ["Base.1.10.PropertyValueNotInList"]
    answer = admin.post(bmc.url(SUBMIT), json={"Severity": "Critical", "MessageArgs": ["a"],
                                               "Message": "Fan tray pulled", "Extra": 1},
                        timeout=10)
    assert message_ids(answer) == ["Base.1.10.ActionParameterNotSupported"]

    answer = admin.post(bmc.url(SUBMIT), json={"Severity": "Critical", "EventId": "e2e-1",
                                               "Message": "Fan tray pulled"}, timeout=10)
    assert answer.status_code == 200
    [event] = listener.wait_for(lambda event: event["EventId"] == "e2e-1")
    assert event["Severity"] == "Critical" and event["Message"] == "Fan tray pulled"
    assert event["MessageId"] == "TWR.v1.0.TestAlert"
    assert event["OriginOfCondition"] == {"@odata.id": SERVICE}
    assert listener.documents[-1]["Context"] == "ops"


def test_a_receiver_that_never_answers_does_not_hold_the_request(bmc, admin):
    silent = SilentListener()
    try:
        subscribe(bmc, admin, Destination=silent.url, Protocol="Redfish")
        answer = admin.post(bmc.url(SUBMIT), json={}, timeout=5)
        assert answer.status_code == 200
        # The delivery is still waiting on the receiver after the answer.
        assert wait_until(lambda: silent.connections)
        assert "gave up" not in bmc.bmcsim("alerts", "log")
    finally:
        silent.stop()


def test_power_changes_and_sensor_crossings_reach_matching_subscriptions(bmc, admin, listener):
    status = HttpListener()
    try:
        subscribe(bmc, admin, Destination=status.url, Protocol="Redfish",
                  EventTypes=["StatusChange"])
        subscribe(bmc, admin, Destination=listener.url, Protocol="Redfish", EventTypes=["Alert"])
        bmc.bmcsim("power", "on")
        bmc.bmcsim("power", "off")
        [power] = status.wait_for(lambda event: event["MessageId"] == "Event.1.0.HostPowerOff")
        assert power["OriginOfCondition"] == {"@odata.id": "/redfish/v1/Systems/1"}
        bmc.bmcsim("power", "on")

        bmc.bmcsim("sensors", "set", "CPU1 Temp", "95")
        [crossing] = listener.wait_for(lambda event: event["EventType"] == "Alert")
        assert crossing["MessageId"] in ("Event.1.0.SensorThresholdWarning",
                                         "Event.1.0.SensorThresholdCritical")
        assert crossing["MessageArgs"][0] == "CPU1 Temp"
        sensor = admin.get(bmc.url(crossing["OriginOfCondition"]["@odata.id"]), timeout=10)
        assert sensor.json()["Name"] == "CPU1 Temp"
        assert not [event for event in listener.events() if event["EventType"] != "Alert"]
        bmc.bmcsim("sensors", "reset")

        subscribe(bmc, admin, Destination=status.url, Protocol="Redfish",
                  EventTypes=["ResourceUpdated"])
        account = admin.post(bmc.url("/redfish/v1/AccountService/Accounts"), json={
            "UserName": "eventuser", "Password": "Event-pass1", "RoleId": "ReadOnly"}, timeout=10)
        assert account.status_code == 201
        admin.delete(bmc.url(account.headers["Location"]), timeout=10)
        changes = status.wait_for(lambda event: event["EventType"] == "ResourceUpdated" and
                                  "eventuser" in event["Message"])
        assert changes[0]["MessageId"] == "Event.1.0.AccountModified"
        assert changes[0]["OriginOfCondition"] == {
            "@odata.id": "/redfish/v1/AccountService/Accounts"}
    finally:
        bmc.bmcsim("sensors", "reset")
        status.stop()


def event_filter_processes(bmc):
    """The instance's event filters and the bmc-event-alert processes that
    they run, each as a filter's child. A fork that has not yet become
    another program shows its parent's command line, and under an emulator
    it can even outlive its parent before its exec: such forks count as
    neither."""
    sbin = os.path.join(bmc.root, "usr", "sbin").encode()
    filter_path = os.path.join(sbin, b"bmc-event-filter")
    alert_path = os.path.join(sbin, b"bmc-event-alert")
    started = {pid: (parent, command.split(b"\0")[0])
               for pid, parent, command in process_commands()}
    pairs = [(started.get(parent, (0, b""))[1], path) for parent, path in started.values()]
    return {"bmc-event-filter": sum(1 for parent, path in pairs
                                    if path == filter_path and parent != filter_path),
            "bmc-event-alert": pairs.count((filter_path, alert_path)),
            "any": sum(1 for _, path in pairs if path in (filter_path, alert_path))}


def test_a_burst_of_logged_events_runs_one_event_alert_at_a_time(bmc, admin, listener):
    """Account changes logged by four writers at once: the events wait in the
    filter's queue, one bmc-event-alert at a time turns them into alerts,
    and none of them is lost."""
    subscribe(bmc, admin, Destination=listener.url, Protocol="Redfish",
              EventTypes=["ResourceUpdated"])
    names = ["burst%d" % number for number in range(40)]

    def log_changes(share):
        for name in share:
            bmc.bmcsim("eventlog", "add", "148", name + ", modified")

    writers = [threading.Thread(target=log_changes, args=(names[start::4],))
               for start in range(4)]
    for writer in writers:
        writer.start()
    # A filter started while the slot looked free leaves at once if another
    # holds it; only the holder runs bmc-event-alert.
    most = {"bmc-event-alert": 0, "bmc-event-filter": 0, "any": 0}
    counts = most
    for _ in range(3000):
        counts = event_filter_processes(bmc)
        most = {kind: max(most[kind], counts[kind]) for kind in most}
        if not any(writer.is_alive() for writer in writers) and not counts["any"]:
            break
    for writer in writers:
        writer.join(timeout=60)
    assert most["bmc-event-alert"] <= 1 and most["bmc-event-filter"] >= 1, most
    assert not counts["any"], counts

    def arrived():
        return {event["MessageArgs"][0] for event in listener.events()} >= set(names)

    assert wait_until(arrived, attempts=300), sorted(
        {event["MessageArgs"][0] for event in listener.events()})
    assert "dropped" not in bmc.bmcsim("alerts", "log")



def replace_program(path, make):
    """Puts what make writes at path in place of the file there, whole."""
    fresh = path + ".new"
    make(fresh)
    os.replace(fresh, path)


def test_an_event_alert_that_hangs_is_killed_and_later_events_go_out(bmc, admin, listener):
    # A client of its own: the wait outlasts the web server's keep-alive
    # idle time, and admin's clean-up must not reuse a connection it closed.
    with bmc.admin() as client:
        subscribe(bmc, client, Destination=listener.url, Protocol="Redfish",
                  EventTypes=["ResourceUpdated"])
    program = os.path.join(bmc.root, "usr", "sbin", "bmc-event-alert")
    service_program = os.readlink(program)

    def hanging(path):
        with open(path, "w") as script:
            script.write("#!/bin/sh\nexec sleep 60\n")
        os.chmod(path, 0o700)

    replace_program(program, hanging)
    try:
        bmc.bmcsim("eventlog", "add", "148", "hung, modified")
        assert wait_until(lambda: "event 148: bmc-event-alert overran 5 seconds, killed" in
                          bmc.bmcsim("alerts", "log"), attempts=200)
    finally:
        replace_program(program, lambda path: os.symlink(service_program, path))
    bmc.bmcsim("eventlog", "add", "148", "later, modified")
    assert listener.wait_for(lambda event: event["MessageArgs"][0] == "later")

def test_snmp_traps_arrive_at_snmptrapd(bmc, admin):
    receiver = TrapReceiver(bmc.bmcsim("alerts", "engine-id").strip())
    try:
        subscribe(bmc, admin, Destination=receiver.destination, Protocol="SNMPv2c",
                  SNMP={"TrapCommunity": receiver.community})
        subscribe(bmc, admin, Destination=receiver.destination, Protocol="SNMPv3",
                  SNMP={"AuthenticationProtocol": "HMAC_SHA96",
                        "AuthenticationKey": receiver.authentication_key,
                        "EncryptionProtocol": "CFB128_AES128",
                        "EncryptionKey": receiver.encryption_key},
                  Oem={"Tarnwright": {"UserName": receiver.user}})
        admin.post(bmc.url(SUBMIT), json={"Message": "Trap test"}, timeout=10)
        assert wait_until(lambda: receiver.text().count('"Trap test"') >= 2), receiver.text()
        text = receiver.text()
        assert "TWR.v1.0.TestAlert" in text
    finally:
        receiver.stop()


def test_an_email_goes_to_the_mailbox_with_subject_and_sender(bmc, admin):
    sink = SmtpSink()
    try:
        admin.patch(bmc.url(SERVICE), json={"SMTP": {
            "ServiceEnabled": True, "ServerAddress": "127.0.0.1", "Port": sink.port,
            "FromAddress": "bmc@example.com", "ConnectionProtocol": "None",
            "Authentication": "None"}}, timeout=10)
        subscribe(bmc, admin, Destination="mailto:ops@example.com", Protocol="SMTP",
                  Oem={"Tarnwright": {"SMTPSubject": "BMC alert", "UserName": "Operations"}})
        admin.post(bmc.url(SUBMIT), json={"Message": "Mail test"}, timeout=10)
        [envelope] = wait_until(lambda: sink.messages)
        assert envelope.mail_from == "bmc@example.com"
        assert envelope.rcpt_tos == ["ops@example.com"]
        mail = envelope.content.decode()
        assert "Subject: BMC alert" in mail and "Mail test" in mail
        assert "To: Operations <ops@example.com>" in mail
    finally:
        sink.stop()


def mail_settings(port, **settings):
    return {"SMTP": {"ServiceEnabled": True, "ServerAddress": "127.0.0.1", "Port": port,
                     "FromAddress": "bmc@example.com", **settings}}


@pytest.fixture
def trusted_tls(bmc, tmp_path):
    """A server certificate for 127.0.0.1 that the BMC's alert delivery trusts."""
    key, cert = str(tmp_path / "smtp.key"), str(tmp_path / "smtp.crt")
    subprocess.run(["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1",
                    "-nodes", "-days", "2", "-subj", "/CN=127.0.0.1", "-addext", "subjectAltName=IP:127.0.0.1",
                    "-keyout", key, "-out", cert], check=True, capture_output=True)
    trusted = os.path.join(bmc.root, "etc", "ssl", "alert_ca.pem")
    shutil.copy(cert, trusted)
    context = ssl.create_default_context(ssl.Purpose.CLIENT_AUTH)
    context.load_cert_chain(cert, key)
    yield context
    os.remove(trusted)


def test_the_smtp_password_goes_only_inside_tls(bmc, admin, trusted_tls):
    clear_only, with_tls = SmtpSink(), SmtpSink(tls_context=trusted_tls)
    try:
        subscribe(bmc, admin, Destination="mailto:ops@example.com", Protocol="SMTP")
        # A server without STARTTLS gets no mail rather than the password.
        answer = admin.patch(bmc.url(SERVICE), json=mail_settings(
            clear_only.port, ConnectionProtocol="AutoDetect", Authentication="AutoDetect",
            Username="mailer", Password="Mail-secret1"), timeout=10)
        assert answer.status_code == 204, answer.text
        given_up = bmc.bmcsim("alerts", "log").count("SMTP: gave up")
        admin.post(bmc.url(SUBMIT), json={"EventId": "clear"}, timeout=10)
        assert wait_until(lambda: bmc.bmcsim("alerts", "log").count("SMTP: gave up") > given_up)
        assert clear_only.logins == [] and clear_only.messages == []

        # Each named mechanism logs in with its own name, inside TLS.
        for mechanism, sent in [("Plain", "PLAIN"), ("Login", "LOGIN")]:
            answer = admin.patch(bmc.url(SERVICE), json=mail_settings(
                with_tls.port, ConnectionProtocol="StartTLS", Authentication=mechanism,
                Password="Mail-secret1"), timeout=10)
            assert answer.status_code == 204, answer.text
            admin.post(bmc.url(SUBMIT), json={"EventId": mechanism}, timeout=10)
            assert wait_until(lambda: with_tls.logins and with_tls.logins[-1][0] == sent)
            assert with_tls.logins[-1] == (sent, "mailer", "Mail-secret1", True)
        assert wait_until(lambda: len(with_tls.messages) == 2)
    finally:
        clear_only.stop()
        with_tls.stop()


def test_a_new_mail_server_needs_the_password_again(bmc, admin):
    answer = admin.patch(bmc.url(SERVICE), json=mail_settings(
        2525, ConnectionProtocol="StartTLS", Authentication="Plain", Username="mailer",
        Password="Mail-secret1"), timeout=10)
    assert answer.status_code == 204, answer.text
    settings = os.path.join(bmc.root, "nv", "redfish", "event.ini")
    for body, expected in [
            ({"SMTP": {"ServerAddress": "192.0.2.25"}}, ["Base.1.10.PropertyMissing"]),
            ({"SMTP": {"ConnectionProtocol": "None"}}, ["Base.1.10.PropertyValueConflict"])]:
        answer = admin.patch(bmc.url(SERVICE), json=body, timeout=10)
        assert (answer.status_code, message_ids(answer)) == (400, expected), body
    with open(settings) as stored:
        assert "ServerAddress=127.0.0.1" in stored.read()
    answer = admin.patch(bmc.url(SERVICE), json={"SMTP": {"ServerAddress": "192.0.2.25",
                                                          "Password": "Other-secret2"}}, timeout=10)
    assert answer.status_code == 204, answer.text
    with open(settings) as stored:
        text = stored.read()
    assert "ServerAddress=192.0.2.25" in text and "Other-secret2" in text and "Mail-secret1" not in text
