"""The HTTP server of the end-to-end tests: serves tests/e2e/site for the test
site, keeps every request's raw bytes, and plays a silent and a slow host."""
import os
import socket
import socketserver
import threading
import time

NOT_FOUND_BODY = b"<html><body><h1>Not Found</h1><p>No such page here.</p></body></html>\n"
SILENT_HOST = b"www.silent.test"
SLOW_HOST = b"www.slow.test"
SLOW_PAGE = (b'<html><body>Slow site <a href="one.html">1</a> <a href="two.html">2</a> '
             b'<a href="three.html">3</a></body></html>\n')


class LoggingServer(socketserver.ThreadingTCPServer):
    """A threaded server on 127.0.0.1:80 that keeps what its handler logs in
    `requests` (in arrival order) and serves until stop()."""
    allow_reuse_address = True
    daemon_threads = True

    def __init__(self, handler):
        self.requests = []
        self.lock = threading.Lock()
        self.stopping = threading.Event()
        super().__init__(("127.0.0.1", 80), handler)
        threading.Thread(target=self.serve_forever, daemon=True).start()

    def take_requests(self):
        with self.lock:
            taken, self.requests = self.requests, []
        return taken

    def request_count(self):
        with self.lock:
            return len(self.requests)

    def stop(self):
        self.stopping.set()
        self.shutdown()
        self.server_close()


class Server(LoggingServer):
    """Logs (host, raw request bytes)."""

    def __init__(self, site, delay=0.0):
        self.site = site
        self.delay = delay
        super().__init__(Handler)


def header(raw, name):
    for line in raw.split(b"\r\n")[1:]:
        if line.lower().startswith(name.lower() + b":"):
            return line.split(b":", 1)[1].strip()
    return b""


class Handler(socketserver.BaseRequestHandler):
    def handle(self):
        sock = self.request
        sock.settimeout(10)
        raw = b""
        try:
            while b"\r\n\r\n" not in raw:
                chunk = sock.recv(65536)
                if not chunk:
                    break
                raw += chunk
        except OSError:
            return
        host = header(raw, b"Host")
        with self.server.lock:
            self.server.requests.append((host, raw))
        parts = raw.split(b" ")
        path = parts[1].decode("latin-1") if len(parts) > 2 else "/"
        if host == SILENT_HOST:
            self.hold(sock)
            return
        if host == SLOW_HOST:
            if path != "/":
                self.hold(sock)
                return
            self.send(sock, b"200 OK", SLOW_PAGE)
            return
        if self.server.delay:
            time.sleep(self.server.delay)
        self.serve_file(sock, path)

    def hold(self, sock):
        """Accepts and never answers, until the client gives up or the test ends."""
        while not self.server.stopping.is_set():
            try:
                if not sock.recv(1024):
                    return
            except socket.timeout:
                continue
            except OSError:
                return

    def serve_file(self, sock, path):
        local = path.split("?", 1)[0].lstrip("/")
        if local == "" or local.endswith("/"):
            local += "index.html"
        full = os.path.normpath(os.path.join(self.server.site, local))
        if full.startswith(self.server.site) and os.path.isfile(full):
            with open(full, "rb") as f:
                self.send(sock, b"200 OK", f.read())
        else:
            self.send(sock, b"404 Not Found", NOT_FOUND_BODY)

    @staticmethod
    def send(sock, status, body):
        head = b"HTTP/1.0 " + status + b"\r\nContent-Length: " + str(len(body)).encode() + b"\r\n\r\n"
        try:
            sock.sendall(head + body)
            sock.shutdown(socket.SHUT_WR)
        except OSError:
            pass
