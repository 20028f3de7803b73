"""A misbehaving HTTP server for the fault tests, on 127.0.0.1:80. The host
name picks the fault; on every fault host "/links.html" is a plain page linking
to six pages that show the fault, so a crawl has work queued when it is
stopped. "www.hostile.test" serves pages of hostile links instead. A second
listener on 127.0.0.3:80 closes every connection before reading anything."""
import socket
import socketserver
import struct
import threading
import time

from fixture_server import LoggingServer, header

BIG_SIZE = 100 * 1024 * 1024
NO_HEADER_BYTES = b"<html><body>No header at all</body></html>"
RESET_SENT = 5000  # body bytes sent before the reset
LEAF = b"<html><body>leaf</body></html>\n"
LINKS_PAGE = b"<html><body>" + b"".join(
    b'<a href="%d.html">%d</a> ' % (n, n) for n in range(1, 7)) + b"</body></html>\n"


def many_links_page():
    """100,000 links: off-site hosts, unwanted types, and 50 on-site pages repeated."""
    links = []
    for i in range(100_000):
        if i % 3 == 0:
            links.append(b'<a href="http://www.other%d.test/p.html">o</a>' % i)
        elif i % 3 == 1:
            links.append(b'<a href="img%d.xyz">u</a>' % i)
        else:
            links.append(b'<a href="same%d.html">s</a>' % (i % 50))
    return b"<html><body>" + b"\n".join(links) + b"</body></html>\n"


HOSTILE_LINKS = [
    b"http://../../escape-a.html",
    b"http://../escape-b.html",
    b"http://./escape-c.html",
    b"http://..",
    b"http://.",
    b"http://../../",
    b"/../../../../escape-d.html",
    b"../../../../../../escape-e.html",
    b"\\..\\..\\..\\escape-f.html",
    b"..\\..\\..\\..\\escape-g.html",
    b"/tmp/escape-h.html",
    b"\\tmp\\escape-i.html",
    b"C:\\escape-j.html",
    b"\\\\server\\share\\escape-k.html",
    b"file:///tmp/escape-l.html",
    b"http://www.hostile.test/../../../escape-m.html",
    b"http://www.hostile.test/..\\..\\..\\escape-n.html",
    b"http://..www.hostile.test/escape-o.html",
    b"http://www./escape-p.html",
    b"http://www.../escape-q.html",
    b"http://www.hostile.test/.././.././escape-r.html",
    b"sub/../../../../escape-s.html",
    b"A" * 295 + b".html",
    b"nul\x00byte/escape\x00t.html",
    b"high\xe9\xff\x80/\x81\xfeescape-u.html",
    b"long.html",
    b"many.html",
]


def hostile_pages():
    index = b"<html><body>" + b"\n".join(
        b'<a href="' + link + b'">x</a> <a href=\'' + link + b'\'>y</a> <a href=' + link + b'>z</a>'
        for link in HOSTILE_LINKS) + b"</body></html>\n"
    long_link = (b'<html><body><a href="' + b"../" * 33_000 + b"x" * 1_000 +
                 b'.html">l</a></body></html>\n')
    return {"/": index, "/long.html": long_link, "/many.html": many_links_page()}


class Server(LoggingServer):
    """Logs (host, path, raw request)."""

    def __init__(self):
        self.hostile = hostile_pages()
        super().__init__(Handler)


class EarlyCloser(socketserver.TCPServer):
    """Accepts on 127.0.0.3:80 and closes at once, before the request is read."""
    allow_reuse_address = True

    def __init__(self):
        self.accepted = 0
        super().__init__(("127.0.0.3", 80), socketserver.BaseRequestHandler)
        threading.Thread(target=self.serve_forever, daemon=True).start()

    def process_request(self, request, client_address):
        self.accepted += 1
        request.close()

    def stop(self):
        self.shutdown()
        self.server_close()


class Handler(socketserver.BaseRequestHandler):
    def handle(self):
        sock = self.request
        sock.settimeout(0.5)
        if self.server.stopping.is_set():
            return
        raw = self.read_request(sock)
        if raw is None:
            return
        host = header(raw, b"Host").decode("latin-1")
        parts = raw.split(b" ")
        path = parts[1].decode("latin-1") if len(parts) > 2 else "/"
        with self.server.lock:
            self.server.requests.append((host, path, raw))
        name = host.split(".")[1] if host.count(".") >= 2 else host
        if name == "hostile":
            self.send(sock, self.server.hostile.get(path, LEAF))
        elif path == "/links.html":
            self.send(sock, LINKS_PAGE)
        else:
            getattr(self, "fault_" + name, self.fault_unknown)(sock)

    def read_request(self, sock):
        raw = b""
        deadline = time.monotonic() + 10
        while b"\r\n\r\n" not in raw and time.monotonic() < deadline:
            try:
                chunk = sock.recv(65536)
            except socket.timeout:
                continue
            except OSError:
                return None
            if not chunk:
                return None
            raw += chunk
        return raw

    # --- faults, one per host name ---

    def fault_silent(self, sock):
        """Accepts and never answers."""
        self.hold(sock)

    def fault_noclose(self, sock):
        """Answers in full and never closes."""
        self.send(sock, LEAF, close=False)
        self.hold(sock)

    def fault_reset(self, sock, pause=0.2):
        """Sends part of the body, then resets the connection (SO_LINGER 0):
        after a pause, so the client has handled the bytes before the reset."""
        head = b"HTTP/1.0 200 OK\r\nContent-Length: 100000\r\n\r\n"
        try:
            sock.sendall(head + b"r" * RESET_SENT)
            time.sleep(pause)
            sock.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
        except OSError:
            pass
        sock.close()

    def fault_resetnow(self, sock):
        """The reset right behind the bytes, which arrive together with it."""
        self.fault_reset(sock, pause=0)

    def fault_drip(self, sock):
        """One byte a second after the header, until the client goes away."""
        try:
            sock.sendall(b"HTTP/1.0 200 OK\r\n\r\n")
            while not self.server.stopping.is_set():
                sock.sendall(b"d")
                time.sleep(1)
        except OSError:
            pass

    def fault_big(self, sock):
        """100 MiB of body, then the close."""
        head = b"HTTP/1.0 200 OK\r\nContent-Length: %d\r\n\r\n" % BIG_SIZE
        block = b"b" * (1024 * 1024)
        try:
            sock.settimeout(30)
            sock.sendall(head)
            for _ in range(BIG_SIZE // len(block)):
                sock.sendall(block)
            sock.shutdown(socket.SHUT_WR)
        except OSError:
            pass

    def fault_nohead(self, sock):
        """Bytes with no header at all, then the close."""
        self.send(sock, NO_HEADER_BYTES, head=False)

    def fault_unknown(self, sock):
        self.send(sock, b"unknown fault host\n")

    # --- helpers ---

    def hold(self, sock):
        while not self.server.stopping.is_set():
            try:
                if not sock.recv(1024):
                    return
            except socket.timeout:
                continue
            except OSError:
                return

    @staticmethod
    def send(sock, body, head=True, close=True):
        data = body
        if head:
            data = b"HTTP/1.0 200 OK\r\nContent-Length: %d\r\n\r\n" % len(body) + body
        try:
            sock.sendall(data)
            if close:
                sock.shutdown(socket.SHUT_WR)
        except OSError:
            pass
