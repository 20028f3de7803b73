# Fault tests: the built program against misbehaving servers, hostile pages
# and failing folders (tmpfs and read-only mounts in the test's own mount
# namespace), on 127.0.0.1:80 in a private network namespace (run by
# run_e2e.sh). One table; every case has its own host www.NAME.test and its own
# folders, so the runs go in parallel. Each target folder lies deep in a box of
# planted files, so anything written outside it shows in a snapshot.
import concurrent.futures
import itertools
import os
import shutil
import signal
import socket
import struct
import sys
import threading
import time
import unittest

import harness
from harness import DONE_LINE, LOG, read, read_only, write

MIB, BIG = 1 << 20, 40 << 20
TARGET = "box/l1/l2/l3/mirror"
# What a run may add to its program folder: the data folder and the file types list.
PROGRAM_FOLDER_ADDITIONS = {"program/dldata", "program/temp", "program/temp/filetypes.txt"}
SANITIZED = "ASAN_OPTIONS" in os.environ
RESET_SENT = 5000  # body bytes sent before a reset
RESET_HEAD = b"HTTP/1.0 200 OK\r\nContent-Length: 100000\r\n\r\n"
NO_HEADER_BYTES = b"<html><body>No header at all</body></html>"
LEAF = b"<html><body><p>" + b"Words of a page that fill the disk. " * 600 + b"</p></body></html>\n"
HOLDS = [b"held/hold%d.html" % n for n in range(4)]  # never answered; in a folder the crawl makes
DEMO = harness.tree(os.path.join(harness.HERE, "demo-site"))


def page(links):
    return b"<html><body>" + b"".join(b'<a href="%s">x</a>\n' % link for link in links) + b"</body></html>\n"


# hostile.html: hosts ".." and ".", climbing, absolute and backslash paths, a
# 300-byte name, NUL and high bytes, each in double quotes, single quotes and
# none. Its last links: one of 100,000 characters and a page of 2,000 links
# (off-site, unwanted types, 50 pages of the site repeated).
HOSTILE_PAGES = {
    "/": read(os.path.join(harness.HERE, "hostile.html")),
    "/long.html": page([b"../" * 33_000 + b"x" * 1_000 + b".html"]),
    "/many.html": page((b"http://www.other%d.test/p.html", b"img%d.xyz", b"same%d.html")[i % 3] %
                       (i if i % 3 < 2 else i % 50) for i in range(2_000)),
}


def stream(h, chunks, end="close", pause=0.0):
    # Sends each chunk, pausing after it, until the client goes away; then
    # closes its side, holds, or resets (SO_LINGER 0, set first so that the
    # reset follows the bytes closely; after a pause the client has handled
    # them before it comes). Only a close at once keeps the bytes corked: a
    # reset would drop them, a drip would come in clumps.
    h.request.setsockopt(socket.IPPROTO_TCP, socket.TCP_CORK, end == "close" and not pause)
    if end == "reset":
        h.request.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
    for chunk in chunks:
        h.request.sendall(chunk)
        time.sleep(pause)
    h.request.close() if end == "reset" else h.hold() if end == "hold" else h.request.shutdown(socket.SHUT_WR)


HOLD = harness.Handler.hold
# A BIG body, or its first mib MiB and then nothing more.
BIG_ANSWER = lambda h, mib=BIG // MIB: stream(h, [b"HTTP/1.0 200 OK\r\nContent-Length: %d\r\n\r\n" % BIG] +
                                              [b"b" * MIB] * mib, "close" if mib == BIG // MIB else "hold")
LEAF_HEAD = b"HTTP/1.0 200 OK\r\nContent-Length: %d\r\n\r\n" % len(LEAF)
# Answers in full and never closes.
NOCLOSE = lambda h: stream(h, [LEAF_HEAD + LEAF], "hold")
RESET = lambda h, pause: stream(h, [RESET_HEAD + b"r" * RESET_SENT], "reset", pause)
# A byte every 0.05 s after the header, until the client goes away.
DRIP = lambda h: stream(h, itertools.chain([b"HTTP/1.0 200 OK\r\n\r\n"], itertools.repeat(b"d")), pause=0.05)
DEFAULTS = dict(timeout="5", pages={}, links=[], fault=lambda h: h.send(LEAF), seconds=(0, 30), connections=None,
                most=None, saved=None, files=None, stop_at=None, wait=0.2, rss=100 * MIB, tmpfs=None, plant={},
                before=None, at_gate=None, out=TARGET, installed=False, fetched=set(), late=0)


class Case:
    # status None: stopped by SIGINT once `stop_at` requests came (the fault
    # holding). Folder faults: a tmpfs of `tmpfs` at the target's parent,
    # `plant` (files in the host folder) and before(run) ahead of the start,
    # at_gate(run) once the start page is saved and four pages wait on the
    # server; `files`: the mirror's files but the log; `saved`: a file and the
    # contents (or sizes) it may have; `fetched`: paths that must be asked for;
    # `most`: the most requests the run may make; `late`: the pages' close that
    # many seconds after their bytes.
    def __init__(self, name, status, says=(), **options):
        self.__dict__.update({**DEFAULTS, "address": f"www.{name}.test", **options}, name=name, status=status, says=says)
        if self.links:
            self.pages = {"/": page((HOLDS if status is None else []) + self.links)}
            self.stop_at = self.stop_at or (2 + len(self.links) if status is None else None)


def quick(name, status, connections, **options):
    # A server fault on the start page, --timeout 0.2: three attempts, then completion.
    return Case(name, status, timeout="0.2", connections=connections, seconds=(0.55, 5),
                files=listed(name), **options)


def stop(name, fault, **options):
    # The fault on all six pages linked from the start page: four connections busy.
    return Case(name, None, **{"pages": {"/": page(b"%d.html" % n for n in range(6))}, "fault": fault,
                               "timeout": "1", "stop_at": 5, **options})


fill = lambda n: [b"p%d.html" % i for i in range(n)]
# The files of a run that ends in its search record and these pages.
listed = lambda name, *pages: [f"_SearchData/{name}.test.txt"] + [f"{name}.test/{p}" for p in pages]


FULL = (b"files could not be written:", b"No space left on device")
SITE = {"links": [b"ok.html"]}
# 38 pages that all link each other. A link whose placeholder cannot be written
# is not known, so it is queued again each time a page links it: the command
# line gives up once 200 pages in a row, or 200 more than were saved, could
# not be saved: a page can be saved once at most, so the requests stay within
# twice the site's pages and that margin (and the connections still busy).
LOOP = fill(38)
LOOPING = dict(links=LOOP, fault=lambda h: h.send(page(LOOP)), seconds=(0, 20), most=2 * 39 + 200 + 24)
GAVE_UP = b" that could not be saved ("
FOLDER_FAULTS = [
    Case("full256", 3, FULL, links=fill(40), tmpfs="256k"),
    Case("full2m", 3, FULL, links=fill(70), tmpfs="2m"),
    Case("deleted", 0, links=fill(8), at_gate=lambda run: shutil.rmtree(run.out),
         files=listed("deleted", *(p.decode() for p in fill(8)))),
    # A job that times out (its close unseen: a server that keeps the line open) fails again on
    # its retry, so the count is not pinned.
    Case("readonly", 3, (b"files could not be written:", b"Read-only file system"), links=fill(8),
         tmpfs="2m", at_gate=lambda run: read_only(run.mount_point, bind=False)),
    Case("roloop", 3, (b"Gave up after 200 pages that could not be saved (0 saved); the folder refuses writes.\n",
                       b"roloop.test/p", b"Read-only file system"), plant={"keep.txt": b"x"},
         before=lambda run: read_only(os.path.join(run.out, run.host[4:])), **LOOPING),
    # Full to its last block and its last file: not even an empty file can be made.
    # Filled only inside the target (a run that ended early made none).
    Case("fullloop", 3, (GAVE_UP, *FULL), tmpfs="256k,nr_inodes=200", at_gate=lambda run: os.system(
        f"cd {run.out} || exit; cat /dev/zero >fill 2>&-; i=0; while : >i$i 2>&-; do i=$((i+1)); done"), **LOOPING),
    Case("file", 3, (b"2 files could not be written:", b"file.test/sub/a.html: Not a directory"),
         links=[b"sub/a.html", b"sub/b.html", b"ok.html"], plant={"sub": b"f"}),
    Case("longname", 3, (b"1 file could not be written:", b".html: File name too long"),
         links=[b"A" * 260 + b".html", b"ok.html"]),
    # A target folder whose paths pass 4,096 bytes one level below it.
    Case("deep", 3, (b"1 file could not be written:", b"bytes.html: File name too long"),
         links=[b"path-over-4096-bytes.html"], out=None),
    # An installed program, its bin folder writable, whose data folder is read-only.
    Case("progro", 3, (b"1 file could not be written:", b"Vantorin/temp/filetypes.txt: Read-only file system"),
         before=lambda run: read_only(run.files_folder), installed=True, **SITE),
    Case("settings", 0, before=lambda run: (os.makedirs(run.config), read_only(run.config)), **SITE),
    # What a run ended by a crash leaves; its page is then not fetched. Only
    # placeholders are counted, not the other files there.
    Case("leftover", 0, (b"Hint: the folder holds 1 placeholder (\".tmp\")",), links=fill(3),
         plant={"p0.html.tmp": b"queued\r\n", "old.txt": b"x"},
         files=listed("leftover", "index.html", "old.txt", "p0.html.tmp", "p1.html", "p2.html")),
    # "www." is cut from the mirror's paths, so they fall outside the folder.
    Case("wwwdir", 3, (b"writes were refused: outside the target folder\n",), out="box/l1/l2/l3/www.mirror",
         **SITE),
]
CASES = [
    # Heavy ones first. A 40 MiB answer as a page and as a file: the response
    # and one copy at most are held (2.1-2.9 times the body measured).
    *[Case("big" + kind, 0, address=f"www.big{kind}.test/big.{kind}", timeout="10", seconds=(0, 60), fault=BIG_ANSWER,
           saved=(f"big{kind}.test/big.{kind}", (BIG + 2,)), rss=16 * MIB + 3 * BIG) for kind in ["html", "zip"]],
    Case("hostile", 3, (b"A.html: File name too long\n", b"writes were refused: outside the target folder\n"),
         timeout="3" if SANITIZED else "1", pages=HOSTILE_PAGES, seconds=(0, 60),
         fetched={"/long.html", "/many.html", "/same49.html"}),
    # Four at once, 8 MiB each on the way (a whole one would be scanned first).
    stop("big-stop", lambda h: BIG_ANSWER(h, 8)),
    # A disk full before the start fails the start itself.
    Case("fullbefore", 2, (b"Eror: That is an invalid directory. Check it has no invalid characters.\n",),
         links=fill(2), tmpfs="256k", before=lambda run: os.system(f"cat /dev/zero >{run.mount_point}/f 2>&-")),
    *FOLDER_FAULTS,
    *[Case(c.name + "-stop", None, **{k: v for k, v in vars(c).items() if k not in (
        "name", "status", "says", "pages", "files", "address", "stop_at")}) for c in FOLDER_FAULTS],
    quick("refused", 4, 0, address="www.refused.test"),  # nothing listens on 127.0.0.2
    quick("early", 4, 3),  # 127.0.0.3 closes before reading the request
    quick("silent", 4, 3, fault=HOLD),
    quick("noclose", 0, 3, fault=NOCLOSE),
    # The line kept open on the first request only: what came before the
    # timeout, every byte, is saved in front of the retry's answer (docs/crawl.md).
    Case("openonce", 0, timeout="1", connections=2,
         fault=lambda h, n=itertools.count(): NOCLOSE(h) if next(n) == 0 else h.send(LEAF),
         saved=("openonce.test/index.html", (LEAF.replace(b"\n", b"\r\n\n") + LEAF_HEAD.replace(
             b"\r\n", b"\r\n\r\n\n") + LEAF.replace(b"\n", b"\r\n\n") + b"\r\n",))),
    # A close a little after the bytes ends the job as one at once would: one
    # request, the page saved once (its line ends doubled, as every page's are); so does
    # every close of the demo site.
    *[Case(f"late{ms}", 0, pages={"/": LEAF}, late=ms / 1000, connections=1,
           saved=(f"late{ms}.test/index.html", (LEAF.replace(b"\n", b"\r\n\n") + b"\r\n",))) for ms in (20, 200)],
    Case("late50", 0, pages={"/" + p.removesuffix("index.html"): read(f) for p, f in DEMO.items()}, late=0.05,
         connections=len(DEMO), files=listed("late50", *DEMO)),
    # A reset behind the bytes, at once or a little later, is a close: the part
    # is saved; so is a headless answer. Should the program be held up for a
    # quarter second between the bytes and the reset, the job times out (the
    # default 5 s) and the retry's answer is saved behind the first one, header
    # and all, with its line ends doubled.
    *[Case(name, 0, fault=lambda h, p=pause: RESET(h, p), saved=(f"{name}.test/index.html", (
        b"r" * RESET_SENT + b"\r\n",
        b"r" * RESET_SENT + RESET_HEAD.replace(b"\r\n", b"\r\n\r\n\n") + b"r" * RESET_SENT + b"\r\n")))
      for name, pause in (("resetnow", 0), ("reset", 0.05))],
    Case("nohead", 0, address="www.nohead.test/page.html", connections=1,
         fault=lambda h: stream(h, [NO_HEADER_BYTES]),
         saved=("nohead.test/page.html", (NO_HEADER_BYTES[3:] + b"\r\n",))),
    stop("silent-stop", HOLD),
    stop("noclose-stop", NOCLOSE),
    stop("drip-stop", DRIP),
    # A byte every 0.05 s keeps a 2 s timeout from firing: no retry in 2.5 s.
    stop("drip-long", DRIP, timeout="2", wait=2.5, connections=5),
]
CASES = [c for c in CASES if c.name in os.environ.get("ONLY", c.name).split(",")]
BY_HOST = {c.address.split("/")[0]: c for c in CASES}


def answer(h, host, path):
    case = BY_HOST[host]
    if path in case.pages:
        return h.send(case.pages[path], late=case.late)
    if case.at_gate:
        case.gate.wait(20)
    (HOLD if path[1:].encode("latin-1") in HOLDS else case.fault)(h)


def close_early():
    # 127.0.0.3 takes each connection and closes it before reading anything.
    with socket.create_server(("127.0.0.3", 80)) as listener:
        while True:
            listener.accept()[0].close()
            LOG["www.early.test"].append(("", b""))


def snapshot(top):
    # Relative path -> "dir" or (size, mtime) for everything under top; a write
    # changes the time.
    paths = [os.path.join(root, n) for root, dirs, names in os.walk(top) for n in dirs + names]
    return {os.path.relpath(p, top): "dir" if os.path.isdir(p) else (os.lstat(p).st_size, os.lstat(p).st_mtime_ns)
            for p in paths}


class Run(harness.Run):
    def __init__(self, case):
        self.case, self.cwd, case.gate = case, "box/cwd", threading.Event()
        self.limit = case.seconds[1] + 10
        self.mount_point = os.path.join(harness.WORK, case.name, "box/l1/l2/l3")
        deep = 4062 - len(self.mount_point)
        self.out_folder = case.out or os.path.join("box/l1/l2/l3", *["d" * 100] * (deep // 101),
                                                   "x" * (deep % 101), "mirror")
        super().__init__(case.name, case.address.split("/")[0], ["--url", case.address, "--dir", "{out}", "--timeout",
                         case.timeout], {"temp/filetypes.txt": b".html\r\n"} if case.links else None, case.installed)

    def prepare(self):
        for level in ["box", "box/l1", "box/l1/l2", self.cwd]:
            write(os.path.join(self.folder, level, "keep.txt"), b"a file on the way to the target folder\n")
        if self.case.tmpfs:
            os.makedirs(self.mount_point)
            harness.mount("-t", "tmpfs", "-o", "size=" + self.case.tmpfs, "tmpfs", self.mount_point)
        for name, data in self.case.plant.items():
            write(os.path.join(self.out, self.host[4:], name), data)
        if self.case.before:
            self.case.before(self)
        self.before = snapshot(self.folder)
        self.tmp_kept, self.old_folders = set(self.tmp_files()), {os.path.dirname(p) for p in self.files()}

    tmp_files = lambda self: [p for p in self.files() if p.endswith(".tmp")]

    def during(self):
        if self.case.at_gate:
            self.wait_for_requests(5)  # the start page and four gated pages
            self.case.at_gate(self)
            if self.case.tmpfs:  # nothing can be deleted from a read-only folder
                self.tmp_kept |= set(self.tmp_files())
            self.case.gate.set()
        if self.case.stop_at:
            self.wait_for_requests(self.case.stop_at)
            time.sleep(self.case.wait)
            self.running_at_stop, self.signalled = self.proc.poll() is None, time.monotonic()
            os.killpg(self.proc.pid, signal.SIGINT)  # /usr/bin/time ignores it while it waits

    def wait_for_requests(self, count):
        deadline = time.monotonic() + 20
        while len(LOG[self.host]) < count and time.monotonic() < deadline and self.proc.poll() is None:
            time.sleep(0.01)

    def changes_outside(self):
        # But in the mirror, in the settings (the one place outside both folders
        # a run writes to), the program folder's additions and the folders made
        # on the way to the target.
        after, out = snapshot(self.folder), os.path.relpath(self.out, self.folder) + "/"
        return sorted(p for p in set(self.before) | set(after) if self.before.get(p) != after.get(p)
                      and not (p + "/").startswith((out, "config/")) and p not in PROGRAM_FOLDER_ADDITIONS
                      and not (p not in self.before and out.startswith(p + "/")))


class Faults(unittest.TestCase):
    def test_each_run_ends_as_designed_and_touches_nothing_else(self):
        threading.Thread(target=close_early, daemon=True).start()
        started = time.monotonic()
        with concurrent.futures.ThreadPoolExecutor(max_workers=8) as pool:
            runs = list(pool.map(Run, CASES))
        print(f"\n  {len(runs)} runs in {time.monotonic() - started:.1f} s" + "".join(
            f"\n  {r.case.name}: exit {r.status} after {r.seconds:.1f} s, {len(r.requests)} requests, "
            f"{len(r.files())} files, {r.peak_rss_kib} KiB" for r in runs))
        for run in runs:
            case, err = run.case, run.stderr[-3000:]
            with self.subTest(case.name):
                # Not killed by a signal, no sanitizer report, nor a word on settings.
                self.assertGreaterEqual(run.status, 0, err)
                self.assertEqual([w for w in [b"Sanitizer", b"runtime error", b"etting"] if w in run.stderr], [], err)
                # Under the sanitizers freed blocks wait in a quarantine of up to
                # 256 MiB, blocks that leave it stay with the sanitizer's
                # allocator, and every byte has a shadow of an eighth.
                bound = (2 * case.rss + 256 * MIB) * 9 // 8 if SANITIZED else case.rss
                self.assertLess(run.peak_rss_kib * 1024, bound)
                self.assertEqual(run.changes_outside(), [])
                # Placeholders in folders the crawl did not make stay: the sweep leaves
                # folders that were there before alone.
                self.assertEqual([p for p in run.tmp_files() if p not in run.tmp_kept
                                  and os.path.dirname(p) not in run.old_folders], [])
                real_out = os.path.realpath(run.out) + os.sep
                self.assertEqual([p for p in run.files().values() if not os.path.realpath(p).startswith(real_out)], [])
                self.assertLessEqual(case.fetched, {p for p, _ in run.requests})
                # Exactly `connections` requests when given, else at most `most`.
                least, most = case.connections or 0, case.most if case.connections is None else case.connections
                self.assertTrue(least <= len(run.requests) <= (most if most is not None else 1e9), len(run.requests))
                # The closing lines agree with the exit status: the done line
                # only on standard output, and only with 0.
                self.assertNotIn(b"The website has been downloaded.", run.stderr)
                self.assertEqual(run.status, 130 if case.stop_at else case.status, err)
                if case.stop_at:
                    self.assertEqual((run.running_at_stop, b"Interrupted: stopping the crawl.\n" in run.stderr,
                                      run.ended - run.signalled < 2), (True, True, True))
                    continue
                self.assertEqual(run.stdout, DONE_LINE if run.status == 0 else b"")
                self.assertEqual([t for t in case.says if t not in run.stderr], [], err)
                self.assertTrue(case.seconds[0] <= run.seconds < case.seconds[1], run.seconds)
                if case.files is not None:
                    # The log is written at times that race a folder's deletion.
                    self.assertEqual(sorted(set(run.files()) - {"log.txt"}), sorted(case.files))
                if case.saved:
                    path, wanted = run.files()[case.saved[0]], case.saved[1]
                    self.assertIn(os.path.getsize(path) if isinstance(wanted[0], int) else read(path), wanted)
        for top in ["/", "/tmp", "/etc", harness.WORK]:
            self.assertEqual([n for n in os.listdir(top) if "escape" in n], [], top)


if __name__ == "__main__":
    hosts = " ".join(h for h in BY_HOST if h not in ("www.early.test", "www.refused.test"))
    sys.exit(harness.main(f"127.0.0.1 localhost {hosts}\n127.0.0.2 www.refused.test\n127.0.0.3 www.early.test\n", answer))
