"""Clients of the service: good ones, which know what they have to be answered, and others."""
import asyncio
import random
import socket
import struct
import time

import soak_shop

HOST = "127.0.0.1"
LONGEST_WAIT = 30  # seconds for one answer
PASSWORD = "Secret-1"
OPEN_ERRORS = (OSError, EOFError, asyncio.LimitOverrunError)


class Wrong(Exception):
    """A good client was not answered as it has to be; the text tells how."""


def post(path, body, extra=""):
    return (f"POST {path} HTTP/1.1\r\nHost: soak\r\n{extra}Content-Length: {len(body)}\r\n\r\n"
            .encode("ascii") + body)


def get(path, extra="", method="GET"):
    return f"{method} {path} HTTP/1.1\r\nHost: soak\r\n{extra}\r\n".encode("ascii")


async def read_answer(reader, is_head):
    """Status, fields and body. Raises EOFError when it ends too early."""
    head = (await reader.readuntil(b"\r\n\r\n")).decode("latin-1").split("\r\n")
    fields = dict(line.lower().split(": ", 1) for line in head[1:] if line)
    length = 0 if is_head else int(fields["content-length"])
    return int(head[0].split(" ")[1]), fields, await reader.readexactly(length)


class Connection:
    """As a careful client keeps one: when the service has closed it between two requests, the next is sent
    over another."""

    def __init__(self, port):
        self.port = port
        self.reader = self.writer = None

    async def ask(self, request, is_head=False):
        if self.writer:
            try:
                return await self.ask_once(request, is_head)
            except asyncio.IncompleteReadError as ended:
                if ended.partial:
                    raise
            except ConnectionError:
                pass
            await self.close()
        self.reader, self.writer = await asyncio.open_connection(HOST, self.port)
        return await self.ask_once(request, is_head)

    async def ask_once(self, request, is_head):
        self.writer.write(request)
        return await read_answer(self.reader, is_head)

    async def close(self):
        if self.writer:
            self.writer.close()
            try:
                await self.writer.wait_closed()
            except OSError:
                pass
        self.reader = self.writer = None


class GoodClient:
    """Asks for everything that the service has, at random, and compares each answer with what it has to
    be."""

    def __init__(self, shop, number, seed):
        self.shop = shop
        self.random = random.Random(f"{seed} good {number}")
        self.connection = Connection(shop.port)
        self.user = f"Soak {number}"
        self.created = 0
        self.seconds = []  # of each answer with the status and the bytes that it has to have
        self.wrong = []
        everything = {self.search: 30, self.refused_search: 3, self.whole_map: 8, self.head: 4, self.part: 25,
                      self.no_part: 3, self.no_map: 3, self.pages: 2, self.sign_in: 0.6, self.create: 0.2}
        self.kinds, self.weights = list(everything), list(everything.values())

    async def work(self, over):
        """Until then. On average about one request a second."""
        await asyncio.sleep(self.random.random())  # not all at the same moment
        while not over.is_set():
            for _ in range(self.random.randint(1, 5)):
                await self.one(self.random.choices(self.kinds, self.weights)[0])
                if over.is_set():
                    break
                # Less than the service waits for the next request of a connection.
                await asyncio.sleep(self.random.uniform(0.2, 0.7))
            await self.connection.close()
            await asyncio.sleep(self.random.uniform(0.5, 2.5))
        await self.connection.close()

    async def one(self, kind):
        try:
            await asyncio.wait_for(kind(), LONGEST_WAIT)
        except asyncio.TimeoutError:
            await self.note(kind, f"no answer within {LONGEST_WAIT} s")
        except Wrong as wrong:
            await self.note(kind, str(wrong))
        except (*OPEN_ERRORS, ValueError, KeyError) as error:
            await self.note(kind, f"{type(error).__name__} {error}")

    async def note(self, kind, what):
        self.wrong.append(f"{kind.__name__}: {what}")
        await self.connection.close()

    def address(self, path):
        """As a path or, as a proxy gets it, whole."""
        return path if self.random.random() < 0.5 else f"http://soak.example{path}"

    async def expect(self, request, status, body, is_head=False):
        began = time.monotonic()
        answer = await self.connection.ask(request, is_head)
        seconds = time.monotonic() - began
        if answer[0] != status:
            raise Wrong(f"status {answer[0]}, not {status}, for {request[:80]!r}")
        if body is not None and answer[2] != body:
            raise Wrong(f"{len(answer[2])} bytes, not these {len(body)}, for {request[:80]!r}")
        self.seconds.append(seconds)
        return answer

    async def program(self, name, request, reply):
        await self.expect(post(self.address(f"/cgi-bin/{name}.cgi"), request), 200, reply)

    def any_file(self):
        return self.random.choice(list(self.shop.files.items()))

    async def search(self):
        boxes = []
        for _ in range(self.random.choice([0, 1, 1, 1, 3])):
            south, west = self.random.randrange(-8000000, 7000000), self.random.randrange(-16000000, 15000000)
            boxes.append((south, west, self.random.randrange(south, 8000000),
                          self.random.randrange(west, 16000000)))
        await self.program("mapstore", soak_shop.search(boxes), self.shop.answer(boxes))

    async def refused_search(self):
        await self.program("mapstore", soak_shop.search([(5, 0, -5, 0)]), struct.pack("<i", 5))

    async def whole_map(self):
        path, contents = self.any_file()
        await self.expect(get(self.address(path)), 200, contents)

    async def head(self):
        path, contents = self.any_file()
        _, fields, _ = await self.expect(get(self.address(path), method="HEAD"), 200, b"", True)
        if int(fields["content-length"]) != len(contents):
            raise Wrong(f"a length of {fields['content-length']} for {path}")

    async def part(self):
        path, contents = self.any_file()
        if not contents:
            return await self.no_part()
        first = self.random.randrange(len(contents))
        last = min(first + self.random.randrange(20000), len(contents) - 1)
        _, fields, _ = await self.expect(get(self.address(path), f"Range: bytes={first}-{last}\r\n"), 206,
                                         contents[first:last + 1])
        if fields["content-range"] != f"bytes {first}-{last}/{len(contents)}":
            raise Wrong(f"the range {fields['content-range']} for {first}-{last} of {path}")

    async def no_part(self):
        path, contents = self.any_file()
        await self.expect(get(self.address(path), f"Range: bytes={len(contents)}-\r\n"), 416, b"Error 416\n")

    async def no_map(self):
        await self.expect(get(self.address("/maps/none.map")), 404, b"Error 404\n")

    async def pages(self):
        page = (await self.expect(get("/"), 200, None))[2].decode("utf-8")
        if not all(f"<bdi>{one[0]}</bdi>" in page for one in self.shop.maps):
            raise Wrong("the page lacks maps")
        page = (await self.expect(get("/forgot.htm"), 200, None))[2].decode("utf-8")
        if not page.endswith("</html>\n"):
            raise Wrong("the page has no end")

    async def create(self):
        """An account of this client's; the first is there to sign in with."""
        user = f"{self.user} {self.created}"
        address = user.replace(" ", ".") + "@example.org"
        await self.program("licapp", soak_shop.creation(user, PASSWORD, address), struct.pack("<i", 0))
        await self.program("licapp", soak_shop.creation(user, PASSWORD, address), struct.pack("<i", 2))
        self.created += 1

    async def sign_in(self):
        if self.created == 0:
            return await self.create()
        user = f"{self.user} {self.random.randrange(self.created)}"
        await self.program("licapp", soak_shop.sign_in(user, PASSWORD), struct.pack("<ii", 0, 0))
        await self.program("licapp", soak_shop.sign_in(user, PASSWORD + "x"), struct.pack("<i", 5))
        await self.program("licapp", soak_shop.sign_in("Nobody", PASSWORD), struct.pack("<i", 4))


class BadClient:
    """Does what no client should. It expects nothing, but never waits longer than it means to."""

    def __init__(self, shop, number, seed):
        self.shop = shop
        self.random = random.Random(f"{seed} bad {number}")
        self.kinds = [self.half_request, self.reset_in_the_middle, self.one_byte_at_a_time, self.garbage,
                      self.long_lines, self.left_open, self.false_length, self.slow_reader,
                      self.hostile_body]
        # Each has done everything before it does anything twice, so that short runs have it all, too.
        self.turn = number
        self.done = dict.fromkeys((kind.__name__ for kind in self.kinds), 0)

    async def work(self, over):
        while not over.is_set():
            kind = self.kinds[self.turn % len(self.kinds)]
            self.turn += 1
            await self.one(kind)
            self.done[kind.__name__] += 1
            await asyncio.sleep(self.random.uniform(0.2, 2))

    async def one(self, kind):
        writer = None
        try:
            reader, writer = await asyncio.open_connection(HOST, self.shop.port, limit=1 << 16)
            await asyncio.wait_for(kind(reader, writer), LONGEST_WAIT)
        except (*OPEN_ERRORS, asyncio.TimeoutError):
            pass  # the service may end it as it likes
        finally:
            if writer:
                writer.close()

    def request(self):
        path, contents = self.random.choice(list(self.shop.files.items()))
        return self.random.choice([
            get(path), get(path, f"Range: bytes=0-{len(contents)}\r\n"), get("/"),
            post("/cgi-bin/mapstore.cgi", soak_shop.search([(-5, -5, 5, 5)] * 9)),
            post("/cgi-bin/licapp.cgi", soak_shop.sign_in("Nobody", PASSWORD)),
        ])

    @staticmethod
    def reset(writer):
        writer.get_extra_info("socket").setsockopt(socket.SOL_SOCKET, socket.SO_LINGER,
                                                   struct.pack("ii", 1, 0))
        writer.transport.abort()

    async def half_request(self, _, writer):
        request = self.request()
        writer.write(request[:self.random.randrange(1, len(request))])
        await writer.drain()

    async def reset_in_the_middle(self, reader, writer):
        request = self.request()
        if self.random.random() < 0.5:
            writer.write(request[:self.random.randrange(1, len(request))])
        else:
            writer.write(get("/maps/large.map"))
            await reader.readexactly(self.random.randrange(1, 5000))
        await asyncio.sleep(0.05)
        self.reset(writer)

    async def one_byte_at_a_time(self, reader, writer):
        for byte in self.request():
            writer.write(bytes([byte]))
            await asyncio.sleep(self.random.uniform(0.005, 0.03))
        await read_answer(reader, False)

    async def garbage(self, reader, writer):
        size = self.random.choice([1, 10, 100, 3000])
        line = self.random.choice([b"", b"GET ", b"POST / HTTP/1.1\r\n", b"\r\n\r\n", b"\x16\x03\x01\x02"])
        writer.write(line + self.random.randbytes(size) + self.random.choice([b"", b"\r\n\r\n"]))
        await asyncio.wait_for(reader.read(), self.random.uniform(0.1, 2))

    async def long_lines(self, reader, writer):
        long = "x" * self.random.choice([8191, 8192, 8193, 20000, 200000])
        writer.write(self.random.choice([
            get(f"/{long}"), get("/", f"X: {long}\r\n"), get("/", f"{long}: X\r\n"), get("/", method=long),
            get("/", "".join(f"X{number}: x\r\n" for number in range(3000))),
            get("/maps/large.map", "Range: bytes=" + "0-1," * 3000 + "5-6\r\n"),
        ]))
        await asyncio.wait_for(reader.read(), 3)

    async def left_open(self, _, writer):
        if self.random.random() < 0.5:
            writer.write(get("/forgot.htm"))
        await asyncio.sleep(self.random.uniform(0.5, 8))

    async def false_length(self, reader, writer):
        length = self.random.choice(["-1", "5", "100", "1048577", "99999999999999999999", "x", "1, 2"])
        head = self.random.choice([f"Content-Length: {length}\r\n", "Transfer-Encoding: chunked\r\n",
                                   "Transfer-Encoding: x\r\nContent-Length: 5\r\n"])
        writer.write(f"POST /cgi-bin/mapstore.cgi HTTP/1.1\r\nHost: soak\r\n{head}\r\n".encode("ascii"))
        writer.write(self.random.choice([b"", b"12345", b"FFFFFFFF\r\nabc", b"x\r\n", b"5\r\nabcdefgh"]))
        await asyncio.wait_for(reader.read(), self.random.uniform(0.1, 2))

    async def slow_reader(self, reader, writer):
        writer.write(get("/maps/large.map"))
        for _ in range(self.random.randrange(1, 12)):
            await reader.read(256)
            await asyncio.sleep(0.3)

    async def hostile_body(self, reader, writer):
        number = self.random.choice([0, 1, -1, 8, 10, 101, 1000, 1001, 2**31 - 1, -2**31])
        body = struct.pack("<i", self.random.choice([8, 10, 101, number])) + struct.pack("<i", number)
        body += self.random.randbytes(self.random.choice([0, 1, 16, 500]))
        writer.write(post(f"/cgi-bin/{self.random.choice(['mapstore', 'licapp'])}.cgi", body))
        await read_answer(reader, False)
