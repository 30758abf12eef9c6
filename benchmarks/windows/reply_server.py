"""A web server on this computer that sends replies which are made beforehand, so that it takes no time."""
import socket
import socketserver
import struct
import threading

FILE_SIZE = 8 << 20


def text(value):
    units = value.encode("utf-16-le")
    return struct.pack("<i", len(units) // 2) + units


def reply_with(count):
    """What the service answers when it has made up so many maps."""
    parts = [struct.pack("<ii", 0, count)]
    for number in range(1, count + 1):
        parts += [struct.pack("<i", 4), text(f"Made-up map {number:07}"),
                  struct.pack("<i", 100 + number * 7919 % 60000), text(f"/maps/made-up/{number:07}.map"),
                  text(f"Map {number} of {count}, made up for large searches.")]
    parts.append(struct.pack("<i", count))
    return b"".join(parts)


def file_content():
    """Bytes of which no page is like the next."""
    return b"".join(struct.pack("<I", word * 2654435761 & 0xFFFFFFFF) for word in range(FILE_SIZE // 4))


class Handler(socketserver.StreamRequestHandler):
    """A connection, kept for as many requests as the client makes."""
    disable_nagle_algorithm = True

    def next_line(self):
        # The client sends the body of a request when its head has been acknowledged, which could take 40 ms.
        self.request.setsockopt(socket.IPPROTO_TCP, socket.TCP_QUICKACK, 1)
        return self.rfile.readline()

    def handle(self):
        while line := self.next_line():
            length = 0
            while (field := self.rfile.readline()) not in (b"\r\n", b""):
                name, _, value = field.partition(b":")
                if name.lower() == b"content-length":
                    length = int(value)
            self.rfile.read(length)
            self.wfile.write(self.server.search_reply if line.startswith(b"POST") else self.server.file_reply)


class ReplyServer(socketserver.ThreadingTCPServer):
    """Answers every POST with the maps of a search, and every GET with a file. Stands in for any host, when
    it is named as the proxy."""
    daemon_threads = True
    allow_reuse_address = True

    def __init__(self):
        super().__init__(("127.0.0.1", 0), Handler)
        self.search_reply = b""
        self.file_reply = with_head(file_content())
        threading.Thread(target=self.serve_forever, daemon=True).start()

    @property
    def address(self):
        return f"http://127.0.0.1:{self.server_address[1]}"

    def offer(self, count):
        """Has so many maps from here on."""
        self.search_reply = with_head(reply_with(count))


def with_head(body):
    return b"HTTP/1.1 200 OK\r\nContent-Type: application/octet-stream\r\nContent-Length: %d\r\n\r\n" % len(
        body) + body
