"""A minimal FastCGI client, to talk to index.fcgi behind lighttpd's back."""

import socket
import struct

BEGIN_REQUEST, END_REQUEST, PARAMS, STDIN, STDOUT = 1, 3, 4, 5, 6
RESPONDER, KEEP_CONN = 1, 1


def _record(kind, request_id, content):
    return struct.pack(">BBHHBx", 1, kind, request_id, len(content), 0) + content


def _length(size):
    return bytes([size]) if size < 128 else struct.pack(">I", size | 0x80000000)


def _params(params):
    encoded = b""
    for name, value in params.items():
        name, value = name.encode(), value.encode()
        encoded += _length(len(name)) + _length(len(value)) + name + value
    return encoded


def _read_exactly(connection, size):
    data = b""
    while len(data) < size:
        chunk = connection.recv(size - len(data))
        if not chunk:
            raise ConnectionError("FastCGI connection closed")
        data += chunk
    return data


def request(connection, params, body=b"", request_id=1):
    """Sends one request on an open connection (kept open) and returns stdout."""
    connection.sendall(
        _record(BEGIN_REQUEST, request_id, struct.pack(">HB5x", RESPONDER, KEEP_CONN))
        + _record(PARAMS, request_id, _params(params)) + _record(PARAMS, request_id, b"")
        + (_record(STDIN, request_id, body) if body else b"") + _record(STDIN, request_id, b""))
    output = b""
    for _ in range(10000):
        header = _read_exactly(connection, 8)
        _, kind, _, length, padding = struct.unpack(">BBHHBx", header)
        content = _read_exactly(connection, length + padding)[:length]
        if kind == STDOUT:
            output += content
        elif kind == END_REQUEST:
            return output
    raise RuntimeError("no end of request")


def connect(socket_path):
    connection = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
    connection.settimeout(10)
    connection.connect(socket_path)
    return connection
