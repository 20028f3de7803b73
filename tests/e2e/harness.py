# What the end-to-end checkers share: the private network namespace with its
# hosts file, a logging server on port 80, one run of the program from its own
# program folder with its own settings folder, tree snapshots and the
# "N passed, N failed" report. A checker calls main(hosts, server classes);
# the first server is the one whose requests each Run takes.
import hashlib
import os
import shutil
import signal
import socket
import socketserver
import subprocess
import sys
import tempfile
import threading
import time
import unittest

DONE_LINE = b"The website has been downloaded.\n"
# Under the sanitizers (make test-sanitize sets ASAN_OPTIONS) freed blocks
# wait in a quarantine of up to 256 MiB and every byte has its shadow: peak
# RSS bounds allow that much more there.
SANITIZER_RSS_BYTES = 320 * 1024 * 1024 if "ASAN_OPTIONS" in os.environ else 0
PROGRAM = WORK = SERVER = None
SERVERS = []


class LoggingServer(socketserver.ThreadingTCPServer):
    # Threaded, on 127.0.0.1:80; keeps (host, path, raw request) in arrival order.
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


class Handler(socketserver.BaseRequestHandler):
    # Reads and logs the request, then calls answer(host, path).
    def handle(self):
        self.request.settimeout(0.5)
        raw, deadline = b"", time.monotonic() + 10
        while b"\r\n\r\n" not in raw and time.monotonic() < deadline:
            if self.server.stopping.is_set():
                return
            try:
                chunk = self.request.recv(65536)
            except socket.timeout:
                continue
            except OSError:
                return
            if not chunk:
                return
            raw += chunk
        host = next((line.split(b":", 1)[1].strip() for line in raw.split(b"\r\n")[1:]
                     if line.lower().startswith(b"host:")), b"").decode("latin-1")
        parts = raw.split(b" ")
        path = parts[1].decode("latin-1") if len(parts) > 2 else "/"
        with self.server.lock:
            self.server.requests.append((host, path, raw))
        self.answer(host, path)

    def hold(self):
        # Never answers, until the client gives up or the test ends.
        while not self.server.stopping.is_set():
            try:
                if not self.request.recv(1024):
                    return
            except socket.timeout:
                continue
            except OSError:
                return

    def send(self, body, status=b"200 OK", head=True, close=True):
        if head:
            body = b"HTTP/1.0 %s\r\nContent-Length: %d\r\n\r\n%s" % (status, len(body), body)
        try:
            self.request.sendall(body)
            if close:
                self.request.shutdown(socket.SHUT_WR)
        except OSError:
            pass


def tree(top):
    # Every file under top: relative path -> full path.
    return {os.path.relpath(os.path.join(root, n), top): os.path.join(root, n)
            for root, _, names in os.walk(top) for n in names}


def snapshot(top, skip=()):
    # Relative path -> (kind, size, mtime, digest) for everything under top.
    found = {}
    for root, dirs, names in os.walk(top):
        dirs[:] = [d for d in dirs if os.path.join(root, d) not in skip]
        for d in dirs:
            found[os.path.relpath(os.path.join(root, d), top)] = ("dir",)
        for name in names:
            path = os.path.join(root, name)
            st = os.lstat(path)
            with open(path, "rb") as f:
                digest = hashlib.sha1(f.read()).hexdigest()
            found[os.path.relpath(path, top)] = ("file", st.st_size, st.st_mtime_ns, digest)
    return found


def changes(before, after):
    return sorted(p for p in set(before) | set(after) if before.get(p) != after.get(p))


class Run:
    # One run of the program from a copy in its own program folder, "{out}" in
    # the arguments standing for the target folder. prepare() runs before the
    # start, during(run) while the program runs; measure wraps it in
    # /usr/bin/time -v for the peak resident set size. With installed, the
    # copy's folder is mounted read-only (refused even to root), as /usr/bin
    # is to a user, so the program keeps its files (given in files) in
    # $XDG_DATA_HOME/Vantorin instead.
    out_folder = "mirror"

    def __init__(self, name, args, files=None, during=None, measure=False, cwd=None,
                 installed=False):
        self.folder = os.path.join(WORK, name)
        self.program_folder = os.path.join(self.folder, "program")
        self.out = os.path.join(self.folder, self.out_folder)
        self.config = os.path.join(self.folder, "config")
        data_home = os.path.join(self.folder, "data", "share")
        self.files_folder = os.path.join(data_home, "Vantorin") if installed else self.program_folder
        program = os.path.join(self.program_folder, "vantorin")
        os.makedirs(self.program_folder)
        shutil.copy2(PROGRAM, program)
        for relative, data in (files or {}).items():
            os.makedirs(os.path.dirname(os.path.join(self.files_folder, relative)), exist_ok=True)
            with open(os.path.join(self.files_folder, relative), "wb") as f:
                f.write(data)
        if installed:
            subprocess.run(["mount", "--bind", self.program_folder, self.program_folder], check=True)
            subprocess.run(["mount", "-o", "remount,bind,ro", self.program_folder], check=True)
        runtime = os.path.join(self.folder, "runtime")
        os.makedirs(runtime, mode=0o700)
        env = dict(os.environ, XDG_CONFIG_HOME=self.config, XDG_DATA_HOME=data_home,
                   XDG_RUNTIME_DIR=runtime)
        self.prepare()
        command = [program] + [a.replace("{out}", self.out) for a in args]
        time_file = os.path.join(self.folder, "time.txt")
        if measure:
            command = ["/usr/bin/time", "-v", "-o", time_file] + command
        SERVER.take_requests()
        started = time.monotonic()
        self.proc = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                     env=env, cwd=cwd and os.path.join(self.folder, cwd))
        self.note = {}
        if during:
            during(self)
        self.stdout, self.stderr = self.proc.communicate(timeout=120)
        self.seconds = time.monotonic() - started
        self.status = self.proc.returncode
        self.requests = SERVER.take_requests()
        if installed:
            subprocess.run(["umount", self.program_folder], check=True)
        if measure:
            with open(time_file) as f:
                self.peak_rss_kib = int(next(line for line in f if "Maximum resident" in line)
                                        .rsplit(":", 1)[1])
            os.remove(time_file)

    def prepare(self):
        pass

    def files(self):
        return tree(self.out)

    def tmp_files(self):
        return [p for p in self.files() if p.endswith(".tmp")]

    def wait_for_requests(self, count, limit=20):
        deadline = time.monotonic() + limit
        while time.monotonic() < deadline and SERVER.request_count() < count:
            time.sleep(0.05)

    def interrupt(self):
        # SIGINT; notes how long the program took to exit.
        signalled = time.monotonic()
        self.proc.send_signal(signal.SIGINT)
        try:
            self.proc.wait(timeout=10)
        except subprocess.TimeoutExpired:
            pass
        self.note["exit_after"] = time.monotonic() - signalled


def main(hosts, *server_classes):
    global PROGRAM, WORK, SERVER
    PROGRAM = os.path.abspath(sys.argv[1])
    WORK = tempfile.mkdtemp(prefix="vantorin-e2e-")
    try:
        subprocess.run(["ip", "link", "set", "lo", "up"], check=True)
        with open(os.path.join(WORK, "hosts"), "w") as f:
            f.write(hosts)
        subprocess.run(["mount", "--bind", os.path.join(WORK, "hosts"), "/etc/hosts"], check=True)
        for cls in server_classes:
            SERVERS.append(cls())
        SERVER = SERVERS[0]
        suite = unittest.defaultTestLoader.loadTestsFromModule(sys.modules["__main__"])
        result = unittest.TextTestRunner(verbosity=2).run(suite)
        # A test whose subtests fail is listed once per failing subtest.
        failed = len({getattr(test, "test_case", test).id()
                      for test, _ in result.failures + result.errors})
        print(f"{result.testsRun - failed} passed, {failed} failed")
        return 0 if failed == 0 and result.testsRun > 0 else 1
    finally:
        for server in SERVERS:
            server.stop()
        if os.environ.get("VANTORIN_E2E_KEEP"):
            print("kept:", WORK)
        else:
            shutil.rmtree(WORK, ignore_errors=True)
