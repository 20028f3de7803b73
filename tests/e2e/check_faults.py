# Fault tests: the built program against misbehaving servers, hostile pages
# and failing folders (tmpfs and read-only mounts in the test's own mount
# namespace), on 127.0.0.1:80 in a private network namespace (run by
# run_e2e.sh). One table; every case has its own host www.NAME.test and its own
# folders, so the runs go in parallel. Each target folder lies deep in a box of
# planted files, so anything written outside it shows in a snapshot.
import concurrent.futures
import os
import shutil
import socket
import socketserver
import struct
import sys
import threading
import time
import unittest

import harness
from harness import DONE_LINE, STOPPING, changes, read_only, snapshot

BOX = ["box", os.path.join("box", "l1"), os.path.join("box", "l1", "l2")]
TARGET = os.path.join(BOX[-1], "l3", "mirror")
# What a run may add to its program folder: the data folder and the file types list.
PROGRAM_FOLDER_ADDITIONS = {"dldata", "temp", os.path.join("temp", "filetypes.txt")}
RSS_BOUND = 100 * 1024 * 1024
BIG = 40 * 1024 * 1024
RESET_SENT = 5000  # body bytes sent before a reset
RESET_HEAD = b"HTTP/1.0 200 OK\r\nContent-Length: 100000\r\n\r\n"
NO_HEADER_BYTES = b"<html><body>No header at all</body></html>"
LEAF = b"<html><body><p>" + b"Words of a page that fill the disk. " * 600 + b"</p></body></html>\n"
HOLDS = [b"held/hold%d.html" % n for n in range(4)]  # never answered; in a folder the crawl makes


def page(links):
    return b"<html><body>" + b"".join(b'<a href="%s">x</a>\n' % link for link in links) + b"</body></html>\n"


# Hosts ".." and ".", climbing, absolute and backslash paths, a 300-byte name,
# NUL and high bytes, each in double quotes, single quotes and none; a link of
# 100,000 characters and a page of 2,000 links (off-site, unwanted types, 50
# pages of the site repeated).
HOSTILE_LINKS = b"""http://../../escape-a.html http://../escape-b.html http://./escape-c.html
    http://.. http://. http://../../ /../../../../escape-d.html ../../../../../../escape-e.html
    \\..\\..\\..\\escape-f.html ..\\..\\..\\..\\escape-g.html /tmp/escape-h.html \\tmp\\escape-i.html
    C:\\escape-j.html \\\\server\\share\\escape-k.html file:///tmp/escape-l.html
    http://www.hostile.test/../../../escape-m.html http://www.hostile.test/..\\..\\..\\escape-n.html
    http://..www.hostile.test/escape-o.html http://www./escape-p.html http://www.../escape-q.html
    http://www.hostile.test/.././.././escape-r.html sub/../../../../escape-s.html
    nul\x00byte/escape\x00t.html high\xe9\xff\x80/\x81\xfeescape-u.html long.html many.html""".split()
HOSTILE_PAGES = {
    "/": b"<html><body>" + b"\n".join(b'<a href="%s">x</a> <a href=\'%s\'>y</a> <a href=%s>z</a>' % (
        link, link, link) for link in HOSTILE_LINKS + [b"A" * 295 + b".html"]) + b"</body></html>\n",
    "/long.html": page([b"../" * 33_000 + b"x" * 1_000 + b".html"]),
    "/many.html": page((b"http://www.other%d.test/p.html", b"img%d.xyz", b"same%d.html")[i % 3] %
                       (i if i % 3 < 2 else i % 50) for i in range(2_000)),
}


def hold(h):
    h.hold()


def noclose(h):
    # Answers in full and never closes.
    h.send(LEAF, close=False)
    h.hold()


def reset(h, pause=0.05):
    # Part of the body, then a reset (SO_LINGER 0); after a pause the client
    # has handled the bytes before the reset comes.
    try:
        h.request.sendall(RESET_HEAD + b"r" * RESET_SENT)
        time.sleep(pause)
        h.request.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
    except OSError:
        pass
    h.request.close()


def drip(h):
    # A byte every 0.05 s after the header, until the client goes away.
    try:
        h.request.sendall(b"HTTP/1.0 200 OK\r\n\r\n")
        while not STOPPING.is_set():
            h.request.sendall(b"d")
            time.sleep(0.05)
    except OSError:
        pass


def big(h, mib=BIG >> 20):
    # A BIG body, or its first mib MiB and then nothing more.
    try:
        h.request.settimeout(30)
        h.request.sendall(b"HTTP/1.0 200 OK\r\nContent-Length: %d\r\n\r\n" % BIG)
        for _ in range(mib):
            h.request.sendall(b"b" * (1 << 20))
        h.request.shutdown(socket.SHUT_WR) if mib == BIG >> 20 else h.hold()
    except OSError:
        pass


def write_in_host_folder(*files):
    def before(run):
        os.makedirs(os.path.join(run.out, run.host[4:]))
        for name, data in files:
            with open(os.path.join(run.out, run.host[4:], name), "wb") as f:
                f.write(data)
    return before


class Case:
    # status None: stopped by SIGINT once `stop_at` requests came (the fault
    # holding). Folder faults: a tmpfs of `tmpfs` at the target's parent,
    # before(run) ahead of the start, at_gate(run) once the start page is saved
    # and four pages wait on the server; `files`: the mirror's files but the log;
    # `saved`: a file and the contents (or sizes) it may have.
    def __init__(self, name, status, says=(), **options):
        self.name, self.status, self.says = name, status, says
        self.address, self.timeout, self.pages, self.fault = f"www.{name}.test", "5", {}, None
        self.links, self.seconds, self.connections, self.saved, self.files = [], (0, 30), None, None, None
        self.stop_at, self.wait, self.rss = None, 0.2, RSS_BOUND
        self.tmpfs = self.before = self.at_gate = self.out = None
        self.deep = self.installed = False
        self.__dict__.update(options)
        if self.links:
            self.pages = {"/": page((HOLDS if status is None else []) + self.links)}
            self.stop_at = self.stop_at or (2 + len(self.links) if status is None else None)


def quick(name, status, connections, **options):
    # A server fault on the start page, --timeout 0.2: three attempts, then completion.
    return Case(name, status, timeout="0.2", connections=connections, seconds=(0.55, 5),
                files=[os.path.join("_SearchData", name + ".test.txt")], **options)


def stop(name, fault, **options):
    # The fault on all six pages linked from the start page: four connections busy.
    return Case(name, None, **{"pages": {"/": page(b"%d.html" % n for n in range(6))}, "fault": fault,
                               "timeout": "1", "stop_at": 5, **options})


def fill(n):
    return [b"p%d.html" % i for i in range(n)]


FULL = (b"files could not be written:", b"No space left on device")
SITE = {"links": [b"ok.html"]}
FOLDER_FAULTS = [
    Case("full256", 3, FULL, links=fill(40), tmpfs="256k"),
    Case("full2m", 3, FULL, links=fill(70), tmpfs="2m"),
    Case("deleted", 0, links=fill(8), at_gate=lambda run: shutil.rmtree(run.out),
         files=[os.path.join("_SearchData", "deleted.test.txt")] + [
             os.path.join("deleted.test", p.decode()) for p in fill(8)]),
    Case("readonly", 3, (b"8 files could not be written:", b"Read-only file system"), links=fill(8),
         tmpfs="2m", at_gate=lambda run: read_only(run.mount_point, bind=False)),
    Case("file", 3, (b"2 files could not be written:", b"file.test/sub/a.html: Not a directory"),
         links=[b"sub/a.html", b"sub/b.html", b"ok.html"], before=write_in_host_folder(("sub", b"f"))),
    Case("longname", 3, (b"1 file could not be written:", b".html: File name too long"),
         links=[b"A" * 260 + b".html", b"ok.html"]),
    Case("deep", 3, (b"1 file could not be written:", b"bytes.html: File name too long"),
         links=[b"path-over-4096-bytes.html"], deep=True),
    # An installed program whose data folder is read-only as well.
    Case("progro", 3, (b"1 file could not be written:", b"Vantorin/temp/filetypes.txt: Read-only file system"),
         before=lambda run: read_only(run.files_folder), installed=True, **SITE),
    Case("settings", 0, before=lambda run: (os.makedirs(run.config), read_only(run.config)), **SITE),
    # What a run ended by a crash leaves; its page is then not fetched. Only
    # placeholders are counted, not the other files there.
    Case("leftover", 0, (b"Hint: the folder holds 1 placeholder (\".tmp\")",), links=fill(3),
         before=write_in_host_folder(("p0.html.tmp", b"queued\r\n"), ("old.txt", b"x")),
         files=[os.path.join("_SearchData", "leftover.test.txt")] + [
             os.path.join("leftover.test", n)
             for n in ["index.html", "old.txt", "p0.html.tmp", "p1.html", "p2.html"]]),
    # "www." is cut from the mirror's paths, so they fall outside the folder.
    Case("wwwdir", 3, (b"writes were refused: outside the target folder\n",),
         out=os.path.join(BOX[-1], "l3", "www.mirror"), **SITE),
]
CASES = [
    # Heavy ones first. A 40 MiB answer as a page and as a file: the response
    # and one copy at most are held (2.1-2.9 times the body measured).
    *[Case("big" + kind, 0, address=f"www.big{kind}.test/big.{kind}", timeout="10", seconds=(0, 60), fault=big,
           saved=(os.path.join(f"big{kind}.test", "big." + kind), (BIG + 2,)), rss=16 * 1024 * 1024 + 3 * BIG) for kind in ["html", "zip"]],
    Case("hostile", 3, (b"A.html: File name too long\n", b"writes were refused: outside the target folder\n"),
         timeout="3" if harness.SANITIZED else "1", pages=HOSTILE_PAGES, fault=lambda h: h.send(LEAF), seconds=(0, 60)),
    # Four at once, 8 MiB each on the way (a whole one would be scanned first).
    stop("big-stop", lambda h: big(h, 8), rss=RSS_BOUND),
    # A disk full before the start fails the start itself.
    Case("fullbefore", 2, (b"Eror: That is an invalid directory. Check it has no invalid characters.\n",),
         links=fill(2), tmpfs="256k", before=lambda run: os.system(f"cat /dev/zero >{run.mount_point}/f 2>&-")),
    *FOLDER_FAULTS,
    *[Case(c.name + "-stop", None, **{k: v for k, v in vars(c).items() if k not in (
        "name", "status", "says", "pages", "files", "address", "stop_at")}) for c in FOLDER_FAULTS],
    quick("refused", 4, 0, address="www.refused.test"),  # nothing listens on 127.0.0.2
    quick("early", 4, 3),  # 127.0.0.3 closes before reading the request
    quick("silent", 4, 3, fault=hold),
    quick("noclose", 0, 3, fault=noclose),
    quick("reset", 0, 3, fault=reset),
    # A reset behind the bytes is a close: the part is saved; so is a headless answer.
    # At load the bytes may be handled before the reset comes: the job then times
    # out (the default 5 s) and the retry's answer is saved behind the first one,
    # header and all, with its line ends doubled, as designed.
    Case("resetnow", 0, fault=lambda h: reset(h, 0),
         saved=(os.path.join("resetnow.test", "index.html"),
                (b"r" * RESET_SENT + b"\r\n",
                 b"r" * RESET_SENT + RESET_HEAD.replace(b"\r\n", b"\r\n\r\n\n") + b"r" * RESET_SENT + b"\r\n"))),
    Case("nohead", 0, address="www.nohead.test/page.html", connections=1,
         fault=lambda h: h.send(NO_HEADER_BYTES, head=False),
         saved=(os.path.join("nohead.test", "page.html"), (NO_HEADER_BYTES[3:] + b"\r\n",))),
    stop("silent-stop", hold),
    stop("noclose-stop", noclose),
    stop("drip-stop", drip),
    # A byte every 0.05 s keeps a 2 s timeout from firing: no retry in 2.5 s.
    stop("drip-long", drip, timeout="2", wait=2.5, connections=5),
]
CASES = [c for c in CASES if c.name in os.environ.get("ONLY", c.name).split(",")]
BY_HOST = {c.address.split("/")[0]: c for c in CASES}
GATES = {host: threading.Event() for host in BY_HOST}


def answer(h, host, path):
    case = BY_HOST[host]
    if path in case.pages:
        return h.send(case.pages[path])
    if path.lstrip("/").encode("latin-1") in HOLDS:
        return h.hold()
    if case.fault:
        return case.fault(h)
    if case.at_gate:
        GATES[host].wait(20)
    h.send(LEAF)


class EarlyCloser(socketserver.BaseRequestHandler):
    def handle(self):
        with harness.SERVER.lock:
            harness.SERVER.log["www.early.test"].append(("", b""))


class Run(harness.Run):
    def __init__(self, case):
        self.case, self.cwd = case, os.path.join("box", "cwd")
        self.folder = os.path.join(harness.WORK, case.name)
        self.mount_point = os.path.join(self.folder, BOX[-1], "l3")
        self.out_folder = case.out or TARGET
        if case.deep:
            # A target folder whose paths pass 4,096 bytes one level below it.
            deep = os.path.join(*["d" * 100] * ((3990 - len(self.mount_point)) // 101))
            rest = 4070 - len(os.path.join(self.mount_point, deep, "mirror")) - 1
            self.out_folder = os.path.join(BOX[-1], "l3", deep, "x" * rest, "mirror")
        files = {"temp/filetypes.txt": b".html\r\n"} if case.links else None
        super().__init__(case.name, case.address.split("/")[0], [
            "--url", case.address, "--dir", "{out}", "--timeout", case.timeout], files, case.installed)

    def prepare(self):
        os.makedirs(os.path.join(self.folder, self.cwd))
        for level in BOX:
            os.makedirs(os.path.join(self.folder, level), exist_ok=True)
            with open(os.path.join(self.folder, level, "keep.txt"), "wb") as f:
                f.write(b"a file on the way to the target folder\n")
        if self.case.tmpfs:
            os.makedirs(self.mount_point)
            harness.mount("-t", "tmpfs", "-o", "size=" + self.case.tmpfs, "tmpfs", self.mount_point)
        if self.case.before:
            self.case.before(self)
        self.program_before = snapshot(self.program_folder)
        self.before = snapshot(self.folder, skip=self.not_watched())
        self.tmp_kept, self.old_folders = set(self.tmp_files()), {os.path.dirname(p) for p in self.files()}

    def not_watched(self):
        # The settings store is the one place outside both folders a run writes to.
        return {self.program_folder, self.out, self.config}

    def during(self):
        if self.case.at_gate:
            self.wait_for_requests(5)  # the start page and four gated pages
            self.case.at_gate(self)
            if self.case.tmpfs:  # nothing can be deleted from a read-only folder
                self.tmp_kept |= set(self.tmp_files())
            GATES[self.host].set()
        if self.case.stop_at:
            self.wait_for_requests(self.case.stop_at)
            time.sleep(self.case.wait)
            self.note["running"] = self.proc.poll() is None
            self.interrupt()

    def changes_outside(self):
        after = snapshot(self.folder, skip=self.not_watched())
        for p in [p for p in after if p not in self.before
                  and self.out.startswith(os.path.join(self.folder, p) + os.sep)]:
            after.pop(p)  # the folders on the way to the target are made by the run
        return changes(self.before, after)


class Faults(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        early = socketserver.ThreadingTCPServer(("127.0.0.3", 80), EarlyCloser)
        threading.Thread(target=early.serve_forever, daemon=True).start()
        started = time.monotonic()
        with concurrent.futures.ThreadPoolExecutor(max_workers=8) as pool:
            cls.runs = list(pool.map(Run, CASES))
        early.shutdown()
        print(f"\n  {len(cls.runs)} runs in {time.monotonic() - started:.1f} s" + "".join(
            f"\n  {r.case.name}: exit {r.status} after {r.seconds:.1f} s, {len(r.requests)} requests, "
            f"{len(r.files())} files, {r.peak_rss_kib} KiB" for r in cls.runs), end="")

    def test_each_run_ends_as_designed_and_touches_nothing_else(self):
        for run in self.runs:
            case, err = run.case, run.stderr[-3000:]
            with self.subTest(case.name):
                self.assertGreaterEqual(run.status, 0, err)  # not killed by a signal
                for word in [b"Sanitizer", b"runtime error", b"etting"]:  # nor a word on settings
                    self.assertNotIn(word, err)
                self.assertLess(run.peak_rss_kib * 1024, harness.rss_bound(case.rss))
                self.assertEqual(run.changes_outside(), [])
                self.assertLessEqual(set(changes(run.program_before, snapshot(run.program_folder))),
                                     PROGRAM_FOLDER_ADDITIONS)
                # Placeholders in folders the crawl did not make stay, as designed.
                self.assertEqual([p for p in run.tmp_files() if p not in run.tmp_kept
                                  and os.path.dirname(p) not in run.old_folders], [])
                real_out = os.path.realpath(run.out)
                for path in run.files().values():
                    self.assertTrue(os.path.realpath(path).startswith(real_out + os.sep), path)
                if case.connections is not None:
                    self.assertEqual(len(run.requests), case.connections)
                self.assertEqual(run.status, 130 if case.stop_at else case.status, err)
                if case.stop_at:
                    self.assertTrue(run.note["running"])
                    self.assertIn(b"Interrupted: stopping the crawl.\n", run.stderr)
                    self.assertLess(run.note["exit_after"], 2)
                    continue
                self.assertEqual(run.stdout, DONE_LINE if run.status == 0 else b"")
                for text in case.says:
                    self.assertIn(text, run.stderr)
                self.assertGreaterEqual(run.seconds, case.seconds[0])
                self.assertLess(run.seconds, case.seconds[1])
                if case.files is not None:
                    # The log is written at times that race a folder's deletion.
                    self.assertEqual(sorted(set(run.files()) - {"log.txt"}), sorted(case.files))
                if case.saved:
                    path, wanted = run.files()[case.saved[0]], case.saved[1]
                    self.assertIn(os.path.getsize(path) if isinstance(wanted[0], int) else
                                  open(path, "rb").read(), wanted)

    def test_hostile_links_are_fetched_inside_the_site_and_nothing_escapes(self):
        run = next((r for r in self.runs if r.case.name == "hostile"), None)
        if not run:
            self.skipTest("hostile not run")
        self.assertLessEqual({"/long.html", "/many.html", "/same49.html"}, {p for p, _ in run.requests})
        for top in ["/", "/tmp", "/etc", harness.WORK]:
            self.assertEqual([n for n in os.listdir(top) if "escape" in n], [], top)


if __name__ == "__main__":
    sys.exit(harness.main("127.0.0.1 localhost " + " ".join(h for h in BY_HOST if "www.early" not in h and
                          "www.refused" not in h) + "\n127.0.0.2 www.refused.test\n127.0.0.3 www.early.test\n",
                          answer))
