"""DMTF's redfishtool and OpenStack's sushy log in and read the session service."""

import subprocess

import sushy
import sushy.auth


def redfishtool(bmc, *arguments, secure=True):
    host = ["-S", "Always", "-r", f"127.0.0.1:{bmc.tls_port}"] if secure else \
        ["-S", "Never", "-r", f"127.0.0.1:{bmc.port}"]
    return subprocess.run(["redfishtool", *host, "-u", bmc.admin_user, "-p", bmc.admin_password,
                           "-A", "Session", *arguments],
                          capture_output=True, text=True, timeout=120, check=True).stdout


def test_redfishtool_lists_sessions_over_https_and_http(bmc):
    for secure in (True, False):
        listing = redfishtool(bmc, "SessionService", "Sessions", "list", secure=secure)
        assert '"UserName": "admin"' in listing
    # redfishtool logs out again after each command.
    assert bmc.admin().get(bmc.url("/redfish/v1/SessionService/Sessions")).json()["Members"] == []


def test_sushy_opens_a_session_and_reads_the_session_service(bmc):
    login = sushy.auth.SessionAuth(bmc.admin_user, bmc.admin_password)
    client = sushy.Sushy(bmc.url("/redfish/v1"), verify=False, auth=login)
    service = client.get_session_service()
    assert service.session_timeout == 1800
    members = list(service.sessions.members_identities)
    assert len(members) == 1
    assert service.sessions.get_member(members[0]).username == bmc.admin_user
    login.close()
    assert bmc.admin().get(bmc.url("/redfish/v1/SessionService/Sessions")).json()["Members"] == []
