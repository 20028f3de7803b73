"""The crawl benchmark, run inside a private network namespace by run.sh:
serves the generated site on 127.0.0.1:80 with a per-request delay of 0 and
50 ms, mirrors it with the program at 4 and 23 connections and with wget -r,
and prints a Markdown table (wall time, files saved, files/s, peak RSS, CPU
seconds (user + sys) and CPU ms per file saved, and the program's wall time
over the tick bound of (files - 1) x 20 ms)."""
import collections
import os
import re
import shutil
import socket
import socketserver
import subprocess
import sys
import tempfile
import threading
import time

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, HERE)
import gen_site  # noqa: E402

TICK_SECONDS = 0.020


class Server(socketserver.ThreadingTCPServer):
    allow_reuse_address = True
    daemon_threads = True
    request_queue_size = 128

    def __init__(self, root):
        self.root = root
        self.delay = 0.0
        self.count = 0
        self.lock = threading.Lock()
        super().__init__(("127.0.0.1", 80), Handler)
        threading.Thread(target=self.serve_forever, daemon=True).start()


class Handler(socketserver.BaseRequestHandler):
    def handle(self):
        sock = self.request
        raw = b""
        while b"\r\n\r\n" not in raw:
            chunk = sock.recv(65536)
            if not chunk:
                return
            raw += chunk
        with self.server.lock:
            self.server.count += 1
        if self.server.delay:
            time.sleep(self.server.delay)
        path = raw.split(b" ")[1].decode("latin-1").split("?")[0].lstrip("/")
        if path == "" or path.endswith("/"):
            path += "index.html"
        full = os.path.normpath(os.path.join(self.server.root, path))
        if full.startswith(self.server.root) and os.path.isfile(full):
            with open(full, "rb") as f:
                body, status = f.read(), b"200 OK"
        else:
            body, status = b"not found\n", b"404 Not Found"
        head = b"HTTP/1.0 " + status + b"\r\nContent-Length: " + str(len(body)).encode() + b"\r\n\r\n"
        try:
            sock.sendall(head + body)
            sock.shutdown(socket.SHUT_WR)
        except OSError:
            pass


def count_files(folder, skip=()):
    total = 0
    for root, _, names in os.walk(folder):
        if os.path.basename(root) in skip:
            continue
        total += sum(1 for n in names if n not in ("log.txt", "transdd.txt") and not n.endswith(".tmp"))
    return total


Timed = collections.namedtuple("Timed", "wall rss cpu status")


def timed(command, env=None):
    """Runs under /usr/bin/time -v: wall seconds, peak RSS in MB, CPU seconds
    (user + sys) and the exit status."""
    with tempfile.NamedTemporaryFile("r", suffix=".time") as report:
        started = time.monotonic()
        done = subprocess.run(["/usr/bin/time", "-v", "-o", report.name] + command, env=env,
                              stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)
        wall = time.monotonic() - started
        text = report.read()

    def figure(label):
        found = re.search(label + r": ([0-9.]+)", text)
        return float(found.group(1)) if found else float("nan")

    cpu = figure(r"User time \(seconds\)") + figure(r"System time \(seconds\)")
    return Timed(wall, figure(r"Maximum resident set size \(kbytes\)") / 1024, cpu,
                 done.returncode)


def enter_test_network(work):
    """Loopback up and the bench host names on it; to be called inside a
    private network and mount namespace."""
    subprocess.run(["ip", "link", "set", "lo", "up"], check=True)
    with open(os.path.join(work, "hosts"), "w") as f:
        f.write("127.0.0.1 localhost www.bench.test bench.test\n")
    subprocess.run(["mount", "--bind", os.path.join(work, "hosts"), "/etc/hosts"], check=True)


def program_env(work):
    """The environment the program runs in: its settings and runtime folders
    inside `work`."""
    env = dict(os.environ, XDG_CONFIG_HOME=os.path.join(work, "config"),
               XDG_RUNTIME_DIR=os.path.join(work, "runtime"))
    os.makedirs(env["XDG_RUNTIME_DIR"], mode=0o700, exist_ok=True)
    return env


def main(program):
    work = tempfile.mkdtemp(prefix="vantorin-bench-")
    enter_test_network(work)
    site = os.path.join(work, "site")
    gen_site.main(site)
    files = count_files(site)
    bound = (files - 1) * TICK_SECONDS
    server = Server(os.path.realpath(site))

    program_folder = os.path.join(work, "program")
    os.makedirs(program_folder)
    shutil.copy2(program, program_folder)
    env = program_env(work)

    rows = []
    for delay in (0.0, 0.050):
        server.delay = delay
        for connections in (4, 23):
            out = os.path.join(work, f"mirror-{int(delay * 1000)}-{connections}")
            server.count = 0
            run = timed([os.path.join(program_folder, "vantorin"),
                         "--url", "www.bench.test", "--dir", out,
                         "--connections", str(connections)], env)
            saved = count_files(out, skip=("_SearchData",))
            rows.append((delay, f"vantorin, {connections} connections", run, saved,
                         run.wall / bound, server.count))
        out = os.path.join(work, f"wget-{int(delay * 1000)}")
        server.count = 0
        run = timed(["wget", "-r", "-l", "inf", "-q", "-e", "robots=off",
                     "-P", out, "http://www.bench.test/"])
        rows.append((delay, "wget -r -l inf", run, count_files(out), None, server.count))
    server.shutdown()
    shutil.rmtree(work, ignore_errors=True)

    print(f"Site: {files} files; tick bound (files - 1) x 20 ms = {bound:.2f} s\n")
    print("| delay | crawler | wall s | files saved | files/s | peak RSS MB | wall / tick bound "
          "| requests | exit | CPU s | CPU ms/file |")
    print("|---|---|---|---|---|---|---|---|---|---|---|")
    for delay, name, run, saved, ratio, requests in rows:
        ratio_text = f"{ratio:.3f}" if ratio is not None else "-"
        per_file = f"{1000 * run.cpu / saved:.2f}" if saved else "-"
        print(f"| {int(delay * 1000)} ms | {name} | {run.wall:.2f} | {saved} "
              f"| {saved / run.wall:.1f} | {run.rss:.1f} | {ratio_text} | {requests} "
              f"| {run.status} | {run.cpu:.2f} | {per_file} |")


if __name__ == "__main__":
    main(os.path.abspath(sys.argv[1]))
