"""HTTPS only: a Redfish request over plain HTTP is sent to HTTPS with 308,
its method and body kept; no credentials are taken over plain HTTP."""

import pytest
import requests
import urllib3

from bmc_instance import BmcInstance

urllib3.disable_warnings(urllib3.exceptions.InsecureRequestWarning)

LOGIN = "/redfish/v1/SessionService/Sessions"


@pytest.fixture(scope="module")
def https_only_bmc():
    instance = BmcInstance(https_only=True)
    yield instance
    instance.stop()


def test_plain_http_is_redirected_with_method_and_body_kept(https_only_bmc):
    bmc = https_only_bmc
    credentials = {"UserName": bmc.admin_user, "Password": bmc.admin_password}
    answer = requests.post(bmc.url(LOGIN + "?x=1"), json=credentials, allow_redirects=False,
                           timeout=10)
    assert answer.status_code == 308
    assert answer.headers["Location"] == bmc.tls_base + LOGIN + "?x=1"
    # No session was opened by the plain request.
    assert not [event for event in bmc.events() if event["code"] == 146]
    followed = requests.post(bmc.url(LOGIN), json=credentials, verify=False, timeout=10)
    assert followed.status_code == 201
    assert followed.url.startswith(bmc.tls_base)
    basic = requests.get(bmc.url("/redfish/v1/Systems/1"), auth=(bmc.admin_user, "wrong"),
                         allow_redirects=False, timeout=10)
    assert basic.status_code == 308


def test_https_serves_as_before(https_only_bmc):
    bmc = https_only_bmc
    assert requests.get(bmc.tls_base + "/redfish/v1/Systems/1", verify=False, timeout=10,
                        auth=(bmc.admin_user, bmc.admin_password)).status_code == 200
