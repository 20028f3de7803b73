# A misbehaving HTTP server for the fault tests, on 127.0.0.1:80. The host
# name picks the fault; on every fault host "/links.html" is a plain page
# linking to six pages that show the fault, so a crawl has work queued when it
# is stopped. "www.hostile.test" serves pages of hostile links instead. A
# second listener on 127.0.0.3:80 closes every connection before reading.
import socket
import socketserver
import struct
import threading
import time

import harness

BIG_SIZE = 100 * 1024 * 1024
NO_HEADER_BYTES = b"<html><body>No header at all</body></html>"
RESET_SENT = 5000  # body bytes sent before the reset
LEAF = b"<html><body>leaf</body></html>\n"
LINKS_PAGE = b"<html><body>" + b"".join(
    b'<a href="%d.html">%d</a> ' % (n, n) for n in range(1, 7)) + b"</body></html>\n"
# 100,000 links: off-site hosts, unwanted types, and 50 on-site pages repeated.
MANY_LINKS = b"<html><body>" + b"\n".join(
    (b'<a href="http://www.other%d.test/p.html">o</a>', b'<a href="img%d.xyz">u</a>',
     b'<a href="same%d.html">s</a>')[i % 3] % (i if i % 3 < 2 else i % 50)
    for i in range(100_000)) + b"</body></html>\n"
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
HOSTILE_PAGES = {
    # Each link in double quotes, single quotes and none.
    "/": b"<html><body>" + b"\n".join(
        b'<a href="%s">x</a> <a href=\'%s\'>y</a> <a href=%s>z</a>' % (link, link, link)
        for link in HOSTILE_LINKS) + b"</body></html>\n",
    "/long.html": b'<html><body><a href="' + b"../" * 33_000 + b"x" * 1_000 + b'.html">l</a></body></html>\n',
    "/many.html": MANY_LINKS,
}


class EarlyCloser(socketserver.TCPServer):
    # Accepts on 127.0.0.3:80 and closes at once, before the request is read.
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


class FaultHandler(harness.Handler):
    def answer(self, host, path):
        name = host.split(".")[1] if host.count(".") >= 2 else host
        if name == "hostile":
            self.send(HOSTILE_PAGES.get(path, LEAF))
        elif path == "/links.html":
            self.send(LINKS_PAGE)
        else:
            getattr(self, "fault_" + name, lambda: self.send(b"unknown fault host\n"))()

    def fault_silent(self):
        self.hold()

    def fault_noclose(self):
        # Answers in full and never closes.
        self.send(LEAF, close=False)
        self.hold()

    def fault_reset(self, pause=0.2):
        # Part of the body, then a reset (SO_LINGER 0): after a pause, so the
        # client has handled the bytes before the reset.
        sock = self.request
        try:
            sock.sendall(b"HTTP/1.0 200 OK\r\nContent-Length: 100000\r\n\r\n" + b"r" * RESET_SENT)
            time.sleep(pause)
            sock.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
        except OSError:
            pass
        sock.close()

    def fault_resetnow(self):
        # The reset right behind the bytes, which arrive together with it.
        self.fault_reset(pause=0)

    def fault_drip(self):
        # One byte a second after the header, until the client goes away.
        try:
            self.request.sendall(b"HTTP/1.0 200 OK\r\n\r\n")
            while not self.server.stopping.is_set():
                self.request.sendall(b"d")
                time.sleep(1)
        except OSError:
            pass

    def fault_big(self):
        # 100 MiB of body, then the close.
        block = b"b" * (1024 * 1024)
        try:
            self.request.settimeout(30)
            self.request.sendall(b"HTTP/1.0 200 OK\r\nContent-Length: %d\r\n\r\n" % BIG_SIZE)
            for _ in range(BIG_SIZE // len(block)):
                self.request.sendall(block)
            self.request.shutdown(socket.SHUT_WR)
        except OSError:
            pass

    def fault_nohead(self):
        # Bytes with no header at all, then the close.
        self.send(NO_HEADER_BYTES, head=False)
