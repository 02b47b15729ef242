"""The service loop, the response writer and routing, over HTTP through lighttpd."""

import glob
import json
import os
import socket

import fastcgi_client

SSL_CERT_UPLOAD = "/redfish/v1/UpdateService/Oem/Tarnwright/SSLCert/Actions/TwrSSLCert.Upload"
IPMI_CONFIG_UPLOAD = (
    "/redfish/v1/UpdateService/Oem/Tarnwright/IPMIConfig/Actions/TwrIPMIConfig.Upload")


def test_version_document_and_its_headers(bmc):
    answer = bmc.get("/redfish")
    assert answer.status_code == 200
    assert answer.content == b'{"v1":"/redfish/v1/"}'
    assert answer.headers["Content-Type"] == "application/json; charset=UTF-8"
    assert answer.headers["Content-Length"] == "21"
    assert "Access-Control-Allow-Origin" not in answer.headers
    assert "ETag" not in answer.headers

    with_origin = bmc.get("/redfish", headers={"Origin": "https://console.example"})
    assert with_origin.headers["Access-Control-Allow-Origin"] == "https://console.example"

    assert bmc.admin().get(bmc.url("/restapi")).json() == {"twri": "/restapi/twri/"}


def test_doubled_slashes_reach_the_same_document(bmc):
    assert bmc.raw(b"GET //redfish HTTP/1.0\r\n\r\n").endswith(b'{"v1":"/redfish/v1/"}')


def test_unsupported_methods_answer_405_without_body(bmc):
    head = bmc.request("HEAD", "/redfish")
    assert head.status_code == 405 and head.content == b""
    admin = bmc.admin()
    post = admin.post(bmc.url("/redfish"), data=b"{}")
    assert post.status_code == 405 and post.content == b""
    assert admin.delete(bmc.url("/restapi")).status_code == 405


def test_a_get_with_a_body_is_answered_as_a_get(bmc):
    answer = bmc.raw(b"GET /redfish HTTP/1.0\r\nContent-Length: 2\r\n\r\n{}")
    assert answer.split(b"\r\n", 1)[0].split()[1] == b"200"
    assert answer.endswith(b'{"v1":"/redfish/v1/"}')


def test_lower_case_method_is_not_get(bmc):
    answer = bmc.raw(b"get /redfish HTTP/1.0\r\n\r\n")
    assert answer.split(b"\r\n", 1)[0].split()[1] in (b"405", b"501")
    assert b'"v1"' not in answer


def test_unknown_path_answers_404_without_body(bmc):
    for path in ("/redfish/v2", "/redfish/v1/Chassis/2", "/restapi/twri/Unknown"):
        answer = bmc.get(path)
        assert answer.status_code == 404, path
        assert answer.content == b""


def test_a_failing_request_does_not_end_the_service_process(single_process_bmc):
    bmc = single_process_bmc
    assert bmc.get("/redfish").status_code == 200
    before = bmc.service_processes()
    assert len(before) == 1
    admin = bmc.admin()
    for _ in range(3):
        assert admin.put(bmc.url("/redfish"), data=b"x").status_code == 405
        assert bmc.get("/redfish/v1/Nowhere").status_code == 404
    assert bmc.get("/redfish").status_code == 200
    assert bmc.service_processes() == before


def test_body_beyond_content_length_is_drained(single_process_bmc):
    bmc = single_process_bmc
    socket_path = glob.glob(os.path.join(bmc.root, "run", "index.fcgi.socket*"))[0]
    login = json.dumps({"UserName": bmc.admin_user, "Password": bmc.admin_password}).encode()
    params = {"REQUEST_METHOD": "POST", "REQUEST_URI": "/redfish/v1/SessionService/Sessions",
              "CONTENT_LENGTH": str(len(login)), "SCRIPT_FILENAME": "/tmp/www/redfish"}
    connection = fastcgi_client.connect(socket_path)
    try:
        first = fastcgi_client.request(connection, params, body=login + b"} not JSON beyond")
        assert first.startswith(b"X-Auth-Token:")
        assert b"Status: 201 Created\r\n" in first
        second = fastcgi_client.request(
            connection, {"REQUEST_METHOD": "GET", "REQUEST_URI": "/redfish"}, request_id=2)
        assert second.endswith(b'{"v1":"/redfish/v1/"}')
    finally:
        connection.close()


def headers_only_answer(bmc, path, length):
    """Sends a POST's headers announcing length bytes, and no body; returns
    the status line that comes back before any of the body is sent."""
    with socket.create_connection(("127.0.0.1", bmc.port), timeout=10) as connection:
        connection.sendall(b"POST %s HTTP/1.1\r\nHost: bmc\r\nContent-Type: application/json\r\n"
                           b"Content-Length: %d\r\n\r\n" % (path.encode(), length))
        return connection.recv(65536).split(b"\r\n", 1)[0]


def test_large_bodies_are_refused_before_authentication(bmc):
    # Without credentials nothing but the upload URIs may make lighttpd
    # spool more than a JSON body to the BMC's RAM.
    for path, length in [("/redfish/v1/Systems/1", 60 << 20),
                         ("/redfish/v1/SessionService/Sessions", (64 << 10) + 1),
                         ("/redfish/v1/UpdateService/uploads", 60 << 20),
                         ("/redfish/v1/UpdateService/upload/x", 60 << 20),
                         (SSL_CERT_UPLOAD, 1 << 20), (IPMI_CONFIG_UPLOAD, 1 << 20)]:
        assert headers_only_answer(bmc, path, length) == b"HTTP/1.1 413 Payload Too Large", path
    assert not [name for name in os.listdir(os.path.join(bmc.root, "tmp")) if "upload" in name]

    largest_json = b'{"AssetTag": "%s"}' % (b"x" * ((64 << 10) - 20))
    answer = bmc.request("PATCH", "/redfish/v1/Systems/1", data=largest_json,
                         headers={"Content-Type": "application/json"})
    assert answer.status_code == 401
    certificate_form = bmc.request("POST", SSL_CERT_UPLOAD,
                                   files={"Certificate": "x" * 32768, "PrivateKey": "y" * 32768})
    assert certificate_form.status_code == 401
