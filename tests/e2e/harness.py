# What the end-to-end checkers share: the private network namespace with its
# hosts file, a logging server on 127.0.0.1:80, one run of the program from
# its own program folder with its own settings folder, and folder snapshots.
# A checker calls main(hosts, answer).
import collections
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
SANITIZED = "ASAN_OPTIONS" in os.environ


def rss_bound(program_bytes):
    # Under the sanitizers freed blocks wait in a quarantine of up to 256 MiB,
    # blocks that leave it stay with the sanitizer's allocator, and every byte
    # has a shadow of an eighth: the bound allows for all three there.
    if not SANITIZED:
        return program_bytes
    held = 2 * program_bytes + 256 * 1024 * 1024
    return held + held // 8


PROGRAM = WORK = SERVER = None
STOPPING = threading.Event()


class Handler(socketserver.StreamRequestHandler):
    # Reads and logs the request by host, then lets the checker's answer()
    # reply through send() and hold().
    def handle(self):
        self.request.settimeout(10)
        raw = b""
        try:
            while not raw.endswith(b"\r\n\r\n") and (line := self.rfile.readline()):
                raw += line
        except OSError:
            return
        host = next((line[5:].strip() for line in raw.split(b"\r\n") if line.lower().startswith(b"host:")),
                    b"").decode("latin-1")
        path = raw.split(b" ")[1].decode("latin-1") if raw.endswith(b"\r\n\r\n") else None
        with SERVER.lock:
            SERVER.log[host].append((path, raw))
        self.request.settimeout(0.2)
        if path:
            SERVER.answer(self, host, path)

    def hold(self):
        # Never answers, until the client gives up or the test ends.
        while not STOPPING.is_set():
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


class Server(socketserver.ThreadingTCPServer):
    allow_reuse_address = True
    daemon_threads = True

    def __init__(self, answer):
        self.answer, self.lock, self.log = answer, threading.Lock(), collections.defaultdict(list)
        super().__init__(("127.0.0.1", 80), Handler)
        threading.Thread(target=self.serve_forever, daemon=True).start()

    def count(self, host):
        with self.lock:
            return len(self.log[host])


def tree(top):
    # Every file under top: relative path -> full path.
    return {os.path.relpath(os.path.join(root, n), top): os.path.join(root, n)
            for root, _, names in os.walk(top) for n in names}


def snapshot(top, skip=()):
    # Relative path -> "dir" or (size, mtime) for everything under top; a write
    # changes the time.
    found = {}
    for root, dirs, names in os.walk(top):
        dirs[:] = [d for d in dirs if os.path.join(root, d) not in skip]
        for name in dirs + names:
            st = os.lstat(os.path.join(root, name))
            found[os.path.relpath(os.path.join(root, name), top)] = (
                "dir" if name in dirs else (st.st_size, st.st_mtime_ns))
    return found


def changes(before, after):
    return sorted(p for p in set(before) | set(after) if before.get(p) != after.get(p))


def mount(*args):
    subprocess.run(["mount", *args], check=True)


def read_only(path, bind=True):
    # Root ignores permission bits; a read-only mount binds root too. Only the
    # mount's own flag changes: a user namespace may not remount the file system.
    if bind:
        mount("--bind", path, path)
    mount("-o", "remount,bind,ro", path)


class Run:
    # One run of the program from a copy in its own program folder, "{out}" in
    # the arguments standing for the target folder (out_folder below the run's
    # folder), the requests of host logged. prepare() runs before the start,
    # during() while the program runs; every run goes under /usr/bin/time -v
    # for its peak resident set size. With installed, the copy's folder is
    # mounted read-only, as /usr/bin is to a user, so the program keeps its
    # files (given in files) in $XDG_DATA_HOME/Vantorin instead. `unset`: the
    # environment variables the program must not see.
    out_folder = "mirror"
    cwd = None

    def __init__(self, name, host, args, files=None, installed=False, unset=()):
        self.folder = os.path.join(WORK, name)
        self.host, self.program_folder = host, os.path.join(self.folder, "program")
        self.out = os.path.join(self.folder, self.out_folder)
        self.config = os.path.join(self.folder, "config")
        data_home = os.path.join(self.folder, "data", "share")
        self.files_folder = os.path.join(data_home, "Vantorin") if installed else self.program_folder
        program = os.path.join(self.program_folder, "vantorin")
        os.makedirs(self.program_folder)
        for built in (PROGRAM, os.path.join(os.path.dirname(PROGRAM), "vantorin-window.so")):
            copy = os.path.join(self.program_folder, os.path.basename(built))
            try:
                os.link(built, copy)
            except OSError:  # another file system
                shutil.copy2(built, copy)
        for relative, data in (files or {}).items():
            os.makedirs(os.path.dirname(os.path.join(self.files_folder, relative)), exist_ok=True)
            with open(os.path.join(self.files_folder, relative), "wb") as f:
                f.write(data)
        if installed:
            read_only(self.program_folder)
        os.makedirs(os.path.join(self.folder, "runtime"), mode=0o700)
        env = dict(os.environ, XDG_CONFIG_HOME=self.config, XDG_DATA_HOME=data_home,
                   XDG_RUNTIME_DIR=os.path.join(self.folder, "runtime"))
        for variable in unset:
            env.pop(variable, None)
        self.prepare()
        time_file = os.path.join(self.folder, "time.txt")
        command = ["/usr/bin/time", "-v", "-o", time_file, program] + [
            a.replace("{out}", self.out) for a in args]
        started, self.note = time.monotonic(), {}
        self.proc = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, env=env,
                                     cwd=self.cwd and os.path.join(self.folder, self.cwd))
        self.during()
        self.stdout, self.stderr = self.proc.communicate(timeout=120)
        self.seconds, self.status = time.monotonic() - started, self.proc.returncode
        with SERVER.lock:
            self.requests = SERVER.log.pop(host, [])
        if installed:
            subprocess.run(["umount", self.program_folder], check=True)
        with open(time_file) as f:
            self.peak_rss_kib = int(next(line for line in f if "Maximum resident" in line)
                                    .rsplit(":", 1)[1])
        os.remove(time_file)

    def prepare(self):
        pass

    def during(self):
        pass

    def files(self):
        return tree(self.out)

    def tmp_files(self):
        return [p for p in self.files() if p.endswith(".tmp")]

    def wait_for_requests(self, count, limit=20):
        deadline = time.monotonic() + limit
        while SERVER.count(self.host) < count and time.monotonic() < deadline and self.proc.poll() is None:
            time.sleep(0.01)

    def interrupt(self):
        # SIGINT to the program (/usr/bin/time ignores it while it waits);
        # notes how long the program took to exit.
        try:
            with open(f"/proc/{self.proc.pid}/task/{self.proc.pid}/children") as f:
                os.kill(int(f.read().split()[0]), signal.SIGINT)
        except (OSError, IndexError):
            pass  # already ended: the test sees it was not running
        signalled = time.monotonic()
        try:
            self.proc.wait(timeout=10)
        except subprocess.TimeoutExpired:
            pass
        self.note["exit_after"] = time.monotonic() - signalled


def main(hosts, answer):
    global PROGRAM, WORK, SERVER
    if not shutil.which("/usr/bin/time"):
        print("skipped: /usr/bin/time is missing")
        return 77
    PROGRAM = os.path.abspath(sys.argv[1])
    WORK = tempfile.mkdtemp(prefix="vantorin-e2e-")
    try:
        subprocess.run(["ip", "link", "set", "lo", "up"], check=True)
        with open(os.path.join(WORK, "hosts"), "w") as f:
            f.write(hosts)
        mount("--bind", os.path.join(WORK, "hosts"), "/etc/hosts")
        SERVER = Server(answer)
        suite = unittest.defaultTestLoader.loadTestsFromModule(sys.modules["__main__"])
        result = unittest.TextTestRunner(verbosity=2).run(suite)
        return 0 if result.wasSuccessful() and result.testsRun > 0 else 1
    finally:
        STOPPING.set()
        SERVER and SERVER.shutdown()
        with open("/proc/self/mounts") as f:  # the tmpfs and read-only mounts a run made
            points = [line.split()[1] for line in f if line.split()[1].startswith(WORK + "/")]
        for point in reversed(points):
            subprocess.run(["umount", "-l", point], check=False)
        if os.environ.get("VANTORIN_E2E_KEEP"):
            print("kept:", WORK)
        else:
            shutil.rmtree(WORK, ignore_errors=True)
