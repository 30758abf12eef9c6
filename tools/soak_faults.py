"""A web proxy between the library and the service that fails as it is told to."""
import contextlib
import dataclasses
import re
import socket
import struct
import threading
import time

HOST = "127.0.0.1"
LONGEST_WAIT = 60
PIECES = 8
UNAVAILABLE = (b"HTTP/1.1 503 Service Unavailable\r\nConnection: close\r\nContent-Length: 10\r\n\r\n"
               b"Error 503\n")
KEEPING = re.compile(rb"\r\n(?:connection|keep-alive):[^\r]*", re.IGNORECASE)


@dataclasses.dataclass(frozen=True)
class Fault:
    """What is done to every request meanwhile.

    none           nothing
    slow           the reply comes in pieces, with pauses
    refused        nobody listens
    unavailable    HTTP status 503
    reset at once  the connection is reset when the request has come
    reset within   ... and when the head and `kept` bytes of the body have been sent
    cut            the connection ends there
    """
    kind: str = "none"
    kept: int = 0

    def __str__(self):
        return f"{self.kind} after {self.kept} bytes" if self.kind in ("reset within", "cut") else self.kind


class FaultyProxy:
    """Listens from the beginning until it is closed. Every connection is for one request: behind a proxy,
    Wine's WinINet keeps the sockets of others open for long and never uses them again."""

    def __init__(self, service_port):
        self.service_port = service_port
        self.fault = Fault()
        # Keeps the port while nobody listens there.
        self.holder = self.bound(0)
        self.port = self.holder.getsockname()[1]
        self.listen()

    @staticmethod
    def bound(port):
        taken = socket.socket()
        taken.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
        taken.bind((HOST, port))
        return taken

    def listen(self):
        self.listener = self.bound(self.port)
        self.listener.listen(64)
        self.thread = threading.Thread(target=self.accept, args=[self.listener], daemon=True)
        self.thread.start()

    def stop_listening(self):
        self.listener.shutdown(socket.SHUT_RDWR)
        self.thread.join()
        self.listener.close()

    def close(self):
        self.stop_listening()
        self.holder.close()

    @contextlib.contextmanager
    def meanwhile(self, fault):
        self.fault = fault
        if fault.kind == "refused":
            self.stop_listening()
        try:
            yield
        finally:
            if fault.kind == "refused":
                self.listen()
            self.fault = Fault()

    def accept(self, listener):
        while True:
            try:
                connection, _ = listener.accept()
            except OSError:
                return
            threading.Thread(target=self.serve, args=[connection], daemon=True).start()

    def serve(self, connection):
        with contextlib.suppress(OSError), connection:
            connection.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
            connection.settimeout(LONGEST_WAIT)
            if request := read_message(connection):
                self.answer(connection, b"".join(request))

    def answer(self, connection, request):
        fault = self.fault
        if fault.kind == "reset at once":
            return reset(connection)
        if fault.kind == "unavailable":
            return connection.sendall(UNAVAILABLE)
        head, body = self.ask_service(request)
        if fault.kind == "slow":
            return send_slowly(connection, head + body)
        if fault.kind not in ("reset within", "cut"):
            return connection.sendall(head + body)
        connection.sendall(head + body[:fault.kept])
        if fault.kind == "reset within":
            time.sleep(0.02)
            reset(connection)
        return None

    def ask_service(self, request):
        with socket.create_connection((HOST, self.service_port), LONGEST_WAIT) as service:
            service.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
            service.sendall(request)
            head, body = read_message(service)
        return KEEPING.sub(b"", head).replace(b"\r\n", b"\r\nConnection: close\r\n", 1), body


def read_message(connection):
    """Head and body of a request or a reply; nothing when the connection ends before."""
    message = b""
    while (end := message.find(b"\r\n\r\n")) < 0:
        if not (some := connection.recv(65536)):
            return None
        message += some
    head, body = message[:end + 4], bytearray(message[end + 4:])
    length = re.search(rb"\r\ncontent-length: *(\d+)\r\n", head, re.IGNORECASE)
    while length and len(body) < int(length[1]):
        if not (some := connection.recv(65536)):
            return None
        body += some
    return head, bytes(body)


def send_slowly(connection, reply):
    size = len(reply) // PIECES + 1
    for start in range(0, len(reply), size):
        time.sleep(0.003)
        connection.sendall(reply[start:start + size])


def reset(connection):
    """Its end will be one."""
    connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
