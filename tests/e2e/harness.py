# What the end-to-end checkers share: the private network namespace with its
# hosts file, a logging server on 127.0.0.1:80, one run of the program from
# its own program folder with its own settings folder, and folder listings.
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
HERE = os.path.dirname(os.path.abspath(__file__))  # the checkers and their sites
PROGRAM = WORK = ANSWER = None
LOG = collections.defaultdict(list)  # host -> [(path, request bytes)]


class Handler(socketserver.StreamRequestHandler):
    # Reads and logs the request by host, then lets the checker's answer()
    # reply through send() and hold(); a client gone ends the answer.
    def handle(self):
        try:
            # Corked, the last bytes leave with the close in one segment. A close
            # that came over a quarter second after the program had them would
            # time the job out and retry it (as for a server that keeps the line open), so runs at load
            # would vary.
            self.request.setsockopt(socket.IPPROTO_TCP, socket.TCP_CORK, 1)
            self.request.settimeout(10)
            raw = b""
            while not raw.endswith(b"\r\n\r\n") and (line := self.rfile.readline()):
                raw += line
            host = raw.partition(b"\r\nHost: ")[2].split(b"\r\n")[0].decode("latin-1")
            path = raw.split(b" ")[1].decode("latin-1") if raw.endswith(b"\r\n\r\n") else None
            LOG[host].append((path, raw))
            if path:
                ANSWER(self, host, path)
        except OSError:
            pass

    def hold(self):
        # Never answers; returns once the client gives up.
        self.request.settimeout(None)
        while self.request.recv(1024):
            pass

    def send(self, body, status=b"200 OK", late=0):
        # With late, the bytes leave at once and the close that many seconds after them.
        self.request.sendall(b"HTTP/1.0 %s\r\nContent-Length: %d\r\n\r\n%s" % (status, len(body), body))
        if late:
            self.request.setsockopt(socket.IPPROTO_TCP, socket.TCP_CORK, 0)
            time.sleep(late)
        self.request.shutdown(socket.SHUT_WR)


def tree(top):
    # Every file under top: relative path -> full path.
    return {os.path.relpath(os.path.join(root, n), top): os.path.join(root, n)
            for root, _, names in os.walk(top) for n in names}


def read(path):
    with open(path, "rb") as f:
        return f.read()


def write(path, data):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as f:
        f.write(data)


def mount(*args):
    subprocess.run(["mount", *args], check=True)


def read_only(path, bind=True):
    # Root ignores permission bits; a read-only mount binds root too. Only the
    # mount's own flag changes: a user namespace may not remount the file system.
    if bind:
        mount("--bind", path, path)
    mount("-o", "remount,bind,ro", path)


class Run:
    # One run of the program from its own program folder, "{out}" in the
    # arguments standing for the target folder (out_folder below the run's
    # folder), the requests of host logged, its peak resident set size noted.
    # prepare() runs before the start, during() while the program runs (in a
    # process group of its own, so that a signal reaches it past time). With
    # installed, the program is laid out as an installation lays it out under
    # its prefix "program" (bin/, libexec/vantorin/), writable as /usr/bin is
    # to root, and keeps its files (given in files) in $XDG_DATA_HOME/Vantorin.
    # `unset`: the environment variables the program must not see; `settings`:
    # the settings file the window left.
    out_folder, cwd, limit = "mirror", None, 90

    def __init__(self, name, host, args, files=None, installed=False, unset=(), settings=None):
        self.folder, self.host = os.path.join(WORK, name), host
        self.prefix, self.config = (os.path.join(self.folder, n) for n in ("program", "config"))
        self.program_folder = os.path.join(self.prefix, "bin") if installed else self.prefix
        self.out, data_home = os.path.join(self.folder, self.out_folder), os.path.join(self.folder, "data")
        self.files_folder = os.path.join(data_home, "Vantorin") if installed else self.program_folder
        for built, folder in ((PROGRAM, self.program_folder), (PROGRAM + "-window.so", os.path.join(
                self.prefix, "libexec", "vantorin") if installed else self.program_folder)):
            os.makedirs(folder, exist_ok=True)
            os.link(built, os.path.join(folder, os.path.basename(built)))
        for relative, data in (files or {}).items():
            write(os.path.join(self.files_folder, relative), data)
        if settings is not None:
            write(os.path.join(self.config, "Vantorin", "Vantorin.conf"), settings)
        os.makedirs(os.path.join(self.folder, "runtime"), mode=0o700)
        env = {k: v for k, v in os.environ.items() if k not in unset}
        env.update(XDG_CONFIG_HOME=self.config, XDG_DATA_HOME=data_home, XDG_RUNTIME_DIR=self.folder + "/runtime")
        self.prepare()
        # /usr/bin/time forks the program itself: a child of this process would
        # inherit its peak resident set size.
        started, rss_file = time.monotonic(), os.path.join(WORK, name + ".rss")
        self.proc = subprocess.Popen(["/usr/bin/time", "-f", "%M", "-o", rss_file, self.program_folder + "/vantorin"]
                                     + [a.replace("{out}", self.out) for a in args], stdout=subprocess.PIPE,
                                     stderr=subprocess.PIPE, env=env, process_group=0,
                                     cwd=self.cwd and os.path.join(self.folder, self.cwd))
        self.during()
        try:
            self.stdout, self.stderr = self.proc.communicate(timeout=self.limit)
        except subprocess.TimeoutExpired:  # a run that would never end fails its checks instead
            os.killpg(self.proc.pid, signal.SIGKILL)
            self.stdout, self.stderr = self.proc.communicate()
        self.ended, self.status, self.requests = time.monotonic(), self.proc.returncode, LOG.pop(host, [])
        self.seconds = self.ended - started
        with open(rss_file) as f:  # after a line on an exit status that is not 0; none when killed
            self.peak_rss_kib = int((f.read().split() or [0])[-1])

    prepare = during = lambda self: None
    files = lambda self: tree(self.out)


def main(hosts, answer):
    global PROGRAM, WORK, ANSWER
    WORK, ANSWER = tempfile.mkdtemp(prefix="vantorin-e2e-"), answer
    try:
        # The program and its window module once in the work folder, then
        # linked from there into each run's program folder.
        for built in (sys.argv[1], sys.argv[1] + "-window.so"):
            try:
                os.link(built, os.path.join(WORK, os.path.basename(built)))
            except OSError:  # another file system
                shutil.copy2(built, WORK)
        PROGRAM = os.path.join(WORK, os.path.basename(sys.argv[1]))
        # A mount of its own, so that one recursive unmount ends the mounts the runs made.
        mount("--bind", WORK, WORK)
        subprocess.run(["ip", "link", "set", "lo", "up"], check=True)
        write(os.path.join(WORK, "hosts"), hosts.encode())
        mount("--bind", os.path.join(WORK, "hosts"), "/etc/hosts")
        server = socketserver.ThreadingTCPServer(("127.0.0.1", 80), Handler)
        server.daemon_threads = True
        threading.Thread(target=server.serve_forever, daemon=True).start()
        result = unittest.main(argv=sys.argv[:1], exit=False, verbosity=2).result
        return 0 if result.wasSuccessful() and result.testsRun > 0 else 1
    finally:
        subprocess.run(["umount", "-R", "-l", WORK], check=False)
        if os.environ.get("VANTORIN_E2E_KEEP"):
            print("kept:", WORK)
        else:
            shutil.rmtree(WORK, ignore_errors=True)
