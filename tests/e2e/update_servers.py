"""Image servers on 127.0.0.1 for the update tests: HTTP, FTP, and one that never answers."""

import functools
import http.server
import socket
import threading
import time

from pyftpdlib.authorizers import DummyAuthorizer
from pyftpdlib.handlers import FTPHandler
from pyftpdlib.servers import FTPServer


class HttpImageServer:
    """Serves the files of a directory over HTTP."""

    def __init__(self, directory):
        handler = functools.partial(QuietHandler, directory=directory)
        self.server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), handler)
        self.host = "127.0.0.1:%d" % self.server.server_address[1]
        threading.Thread(target=self.server.serve_forever, daemon=True).start()

    def stop(self):
        self.server.shutdown()
        self.server.server_close()


class QuietHandler(http.server.SimpleHTTPRequestHandler):
    def log_message(self, *arguments):
        pass


class PausingServer:
    """Serves one file over HTTP, pausing for pause seconds after its first half."""

    def __init__(self, path, pause):
        with open(path, "rb") as image:
            content = image.read()
        half = len(content) // 2

        class Handler(QuietHandler):
            def do_GET(self):
                self.send_response(200)
                self.send_header("Content-Length", str(len(content)))
                self.end_headers()
                self.wfile.write(content[:half])
                self.wfile.flush()
                time.sleep(pause)
                self.wfile.write(content[half:])

        self.server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        self.host = "127.0.0.1:%d" % self.server.server_address[1]
        threading.Thread(target=self.server.serve_forever, daemon=True).start()

    def stop(self):
        self.server.shutdown()
        self.server.server_close()


class SilentServer:
    """Accepts connections and sends nothing until stopped."""

    def __init__(self):
        self.listener = socket.socket()
        self.listener.bind(("127.0.0.1", 0))
        self.listener.listen(4)
        self.listener.settimeout(0.2)
        self.host = "127.0.0.1:%d" % self.listener.getsockname()[1]
        self.connections = []
        self.running = True
        self.thread = threading.Thread(target=self._accept, daemon=True)
        self.thread.start()

    def _accept(self):
        for _ in range(600):
            if not self.running:
                return
            try:
                connection, _ = self.listener.accept()
                self.connections.append(connection)
            except socket.timeout:
                continue

    def stop(self):
        self.running = False
        self.thread.join(timeout=5)
        for connection in self.connections:
            connection.close()
        self.listener.close()


class FtpImageServer:
    """Serves a directory over FTP to one user."""

    def __init__(self, directory, user, password):
        authorizer = DummyAuthorizer()
        authorizer.add_user(user, password, directory, perm="elr")
        handler = type("Handler", (FTPHandler,), {"authorizer": authorizer})
        self.server = FTPServer(("127.0.0.1", 0), handler)
        self.host = "127.0.0.1:%d" % self.server.address[1]
        self.thread = threading.Thread(target=self.server.serve_forever,
                                       kwargs={"timeout": 0.2}, daemon=True)
        self.thread.start()

    def stop(self):
        self.server.close_all()


class DripServer:
    """Answers every request with an image that it sends one byte at a time,
    a byte every interval seconds, until stopped: a link that never stalls
    and never ends."""

    def __init__(self, interval=1.0, length=4096):
        self.listener = socket.socket()
        self.listener.bind(("127.0.0.1", 0))
        self.listener.listen(4)
        self.host = "127.0.0.1:%d" % self.listener.getsockname()[1]
        self.interval = interval
        self.length = length
        self.stopped = threading.Event()
        self.thread = threading.Thread(target=self._serve, daemon=True)
        self.thread.start()

    def _serve(self):
        self.listener.settimeout(0.2)
        for _ in range(3000):
            if self.stopped.is_set():
                return
            try:
                connection, _ = self.listener.accept()
            except socket.timeout:
                continue
            threading.Thread(target=self._drip, args=(connection,), daemon=True).start()

    def _drip(self, connection):
        with connection:
            try:
                connection.recv(65536)
                connection.sendall(b"HTTP/1.0 200 OK\r\nContent-Length: %d\r\n\r\n" % self.length)
                for _ in range(self.length):
                    if self.stopped.wait(self.interval):
                        return
                    connection.sendall(b"\0")
            except OSError:
                return

    def stop(self):
        self.stopped.set()
        self.thread.join(timeout=5)
        self.listener.close()
