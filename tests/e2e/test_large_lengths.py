"""Lengths around and past 2 GiB and 4 GiB, which 32 bits hold only in part:
refused whole, never wrapped into a small length that would pass."""

import base64
import glob
import os

import fastcgi_client
from test_http_push import TRUNCATED_PUSH
from test_update import PUSH_URI, firmware, simple_update, wait_for_end
from update_servers import DripServer

LENGTHS = (2**31 - 1, 2**31, 2**32 + len(TRUNCATED_PUSH), 2**63, 10**20)


def test_a_push_declaring_gigabytes_is_refused_before_any_of_it_is_read(bmc):
    # Straight to the service, as a web server without a body limit would
    # pass it: lighttpd itself answers 413 long before.
    socket_path = sorted(glob.glob(os.path.join(bmc.root, "run", "index.fcgi.socket*")))[0]
    credentials = base64.b64encode(("%s:%s" % (bmc.admin_user, bmc.admin_password)).encode())
    for length in LENGTHS:
        params = {"REQUEST_METHOD": "POST", "REQUEST_URI": PUSH_URI,
                  "CONTENT_TYPE": "multipart/form-data; boundary=b",
                  "CONTENT_LENGTH": str(length), "REMOTE_ADDR": "127.0.0.1",
                  "HTTP_AUTHORIZATION": "Basic " + credentials.decode(),
                  "SCRIPT_FILENAME": "/tmp/www/redfish"}
        connection = fastcgi_client.connect(socket_path)
        try:
            answer = fastcgi_client.request(connection, params, body=TRUNCATED_PUSH)
        finally:
            connection.close()
        assert b"Status: 400 Bad Request\r\n" in answer, length
        assert b"Please check the parsing content." in answer, length
    assert "HttpPushUri Content length is too long" in bmc.error_log()
    assert firmware(bmc)["updating"] == "0"


def test_an_image_announced_past_2_gib_is_refused_at_once(bmc):
    admin = bmc.admin()
    for length in (2**31 + 1, 2**32 + 1):
        server = DripServer(interval=0.05, length=length)
        try:
            accepted = simple_update(bmc, admin, ImageURI=server.host + "/bmc.img",
                                     TransferProtocol="HTTP")
            assert accepted.status_code == 202, accepted.text
            ended = wait_for_end(bmc, admin, accepted.headers["Location"])
        finally:
            server.stop()
        assert ended.status_code == 400
        assert "the image is too large" in ended.text, length
        assert "ended unexpectedly" not in ended.text
        assert firmware(bmc)["updating"] == "0"
