"""Real event receivers on loopback for the event tests: an HTTP listener,
snmptrapd and an SMTP sink. Waits are bounded polls."""

import http.server
import json
import os
import socket
import subprocess
import tempfile
import threading
import time

from aiosmtpd.controller import Controller
from aiosmtpd.smtp import AuthResult

from bmc_instance import free_port


def wait_until(condition, attempts=100, pause=0.1):
    for _ in range(attempts):
        result = condition()
        if result:
            return result
        time.sleep(pause)
    return condition()


class HttpListener:
    """Records the JSON documents POSTed to it."""

    def __init__(self):
        self.documents = []
        listener = self

        class Handler(http.server.BaseHTTPRequestHandler):
            def do_POST(self):
                length = int(self.headers.get("Content-Length", 0))
                listener.documents.append(json.loads(self.rfile.read(length)))
                self.send_response(204)
                self.end_headers()

            def log_message(self, *arguments):
                pass

        self.server = http.server.ThreadingHTTPServer(("127.0.0.1", free_port()), Handler)
        self.url = "http://127.0.0.1:%d/events" % self.server.server_address[1]
        threading.Thread(target=self.server.serve_forever, daemon=True).start()

    def events(self):
        return [event for document in self.documents for event in document["Events"]]

    def wait_for(self, predicate):
        return wait_until(lambda: [event for event in self.events() if predicate(event)])

    def stop(self):
        self.server.shutdown()
        self.server.server_close()


class SilentListener:
    """Accepts connections and never answers."""

    def __init__(self):
        self.socket = socket.socket()
        self.socket.bind(("127.0.0.1", 0))
        self.socket.listen(8)
        self.url = "http://127.0.0.1:%d/events" % self.socket.getsockname()[1]
        self.connections = []
        threading.Thread(target=self._accept, daemon=True).start()

    def _accept(self):
        for _ in range(64):
            try:
                connection, _ = self.socket.accept()
            except OSError:
                return
            self.connections.append(connection)

    def stop(self):
        for connection in self.connections:
            connection.close()
        # Wakes the accepting thread, so that the port is closed at once.
        try:
            self.socket.shutdown(socket.SHUT_RDWR)
        except OSError:
            pass
        self.socket.close()


class TrapReceiver:
    """Debian's snmptrapd in the foreground, accepting one community and one
    SNMPv3 user of the BMC's engine ID."""

    community = "e2e-community"
    user = "trapuser"
    authentication_key = "Auth-Pass1"
    encryption_key = "Priv-Pass1"

    def __init__(self, engine_id):
        self.directory = tempfile.TemporaryDirectory(prefix="snmptrapd-")
        self.port = free_port()
        config = os.path.join(self.directory.name, "snmptrapd.conf")
        with open(config, "w") as file:
            file.write("authCommunity log %s\n" % self.community)
            file.write("createUser -e %s %s SHA %s AES %s\n" % (
                engine_id, self.user, self.authentication_key, self.encryption_key))
            file.write("authUser log %s priv\n" % self.user)
        self.output = open(os.path.join(self.directory.name, "traps.log"), "w+")
        environment = dict(os.environ, SNMP_PERSISTENT_DIR=self.directory.name)
        self.process = subprocess.Popen(
            ["snmptrapd", "-f", "-Lo", "-On", "-M", "/dev/null", "-m", "", "-c", config, "-C",
             "udp:127.0.0.1:%d" % self.port],
            stdout=self.output, stderr=subprocess.STDOUT, env=environment)
        wait_until(lambda: "NET-SNMP version" in self.text())

    @property
    def destination(self):
        return "127.0.0.1:%d" % self.port

    def text(self):
        self.output.flush()
        with open(self.output.name) as log:
            return log.read()

    def stop(self):
        self.process.terminate()
        self.process.wait(timeout=10)
        self.output.close()
        self.directory.cleanup()


class SmtpSink:
    """An aiosmtpd server that keeps every message, and every login with
    whether it came inside TLS. It offers AUTH PLAIN and LOGIN, also in
    clear; STARTTLS only when given a TLS context."""

    def __init__(self, tls_context=None):
        self.messages = []
        self.logins = []
        sink = self

        class Handler:
            async def handle_DATA(self, server, session, envelope):
                sink.messages.append(envelope)
                return "250 OK"

        def authenticate(server, session, envelope, mechanism, credentials):
            sink.logins.append((mechanism, credentials.login.decode(), credentials.password.decode(),
                                session.ssl is not None))
            return AuthResult(success=True)

        self.port = free_port()
        self.controller = Controller(Handler(), hostname="127.0.0.1", port=self.port,
                                     tls_context=tls_context, authenticator=authenticate,
                                     auth_require_tls=False)
        self.controller.start()

    def stop(self):
        self.controller.stop()
