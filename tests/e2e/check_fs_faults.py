# File-system faults: the built program crawls small sites on 127.0.0.1:80
# inside a private network and mount namespace (run by run_e2e.sh) while its
# target, program or settings folder misbehaves. Each case runs to the end,
# and again with SIGINT while the fault holds (its site then also links pages
# that are never answered, fetched last, so the crawl is busy when the signal
# comes). Cases run in parallel: each has its own host, gate and folders.
import concurrent.futures
import os
import shutil
import signal
import subprocess
import sys
import threading
import time
import unittest

import check_faults
import harness
from harness import DONE_LINE, changes, snapshot

HERE = os.path.dirname(os.path.abspath(__file__))
RSS_BOUND_KIB = (100 * 1024 * 1024 + harness.SANITIZER_RSS_BYTES) // 1024
PAGE_TEXT = b"Words of a page that fill the disk. " * 600  # 21,600 bytes
# In a folder the crawl makes, so their placeholders are swept wherever the site is.
HOLDS = [b"held/hold%d.html" % n for n in range(4)]
LONG_NAME = b"A" * 260 + b".html"  # a name over 255 bytes (a link is cut at 300)
DEEP_PAGE = b"path-over-4096-bytes.html"
TYPES = {"temp/filetypes.txt": b".html\r\n"}  # the benchmark site's images are not taken
MOUNTS = []


def mount(*args):
    subprocess.run(["mount", *args], check=True)
    MOUNTS.append(args[-1])


def read_only(path, bind=True):
    # Root ignores permission bits; a read-only mount binds root too. Only the
    # mount's own flag changes: a user namespace may not remount the file system.
    if bind:
        mount("--bind", path, path)
    subprocess.run(["mount", "-o", "remount,bind,ro", path], check=True)


class Case:
    # A site (links of its start page: leaf pages of PAGE_TEXT), what to do
    # to the folders before the start and at the gate (when the start page is
    # saved and four gated pages wait on the server), the exit at the end and
    # what stderr then says.
    def __init__(self, name, links, status, says=(), tmpfs=None, before=None, at_gate=None,
                 deep=False, out=None, installed=False):
        self.name, self.links, self.status, self.says = name, links, status, says
        self.tmpfs, self.before, self.at_gate, self.deep = tmpfs, before, at_gate, deep
        self.out, self.installed = out, installed


def fill_pages(n):
    return [b"p%d.html" % i for i in range(n)]


def fill_up(run):
    with open(os.path.join(run.mount_point, "filler"), "wb") as f:
        try:
            f.write(b"f" * (1 << 20))
        except OSError:
            pass


def plain_file_for_folder(run):
    host_folder = os.path.join(run.out, run.host[len("www."):])
    os.makedirs(host_folder)
    with open(os.path.join(host_folder, "sub"), "wb") as f:
        f.write(b"a plain file where the mirror needs a folder\n")


def leave_placeholder(run):
    # What a run stopped mid-crawl by a crash or a power cut leaves.
    os.makedirs(os.path.join(run.out, run.host[len("www."):]))
    with open(os.path.join(run.out, run.host[len("www."):], "p0.html.tmp"), "wb") as f:
        f.write(b"This file is queued to be downloaded, or did not download correctly.\r\n")


def read_only_program(run):
    # An installed program (its executable's folder is read-only) whose own
    # files, in the user's data folder, cannot be written either.
    read_only(run.files_folder)


def read_only_settings(run):
    os.makedirs(run.config)
    read_only(run.config)


def delete_target(run):
    shutil.rmtree(run.out)


def read_only_target(run):
    read_only(run.mount_point, bind=False)


SUB = [b"sub/a.html", b"sub/b.html", b"ok.html"]
CASES = [
    Case("full256", fill_pages(40), 3, (b"files could not be written:", b"No space left on device"),
         tmpfs="256k"),
    Case("full2m", fill_pages(70), 3, (b"files could not be written:", b"No space left on device"),
         tmpfs="2m"),
    Case("fullbefore", fill_pages(2), 2, (b"Eror: That is an invalid directory. Check it has no "
                                          b"invalid characters.\n",), tmpfs="256k", before=fill_up),
    Case("deleted", fill_pages(8), 0, (), at_gate=delete_target),
    Case("readonly", fill_pages(8), 3, (b"8 files could not be written:", b"Read-only file system"),
         tmpfs="2m", at_gate=read_only_target),
    Case("file", SUB, 3, (b"2 files could not be written:", b"file.test/sub/a.html: Not a directory"),
         before=plain_file_for_folder),
    Case("longname", [LONG_NAME, b"ok.html"], 3, (b"1 file could not be written:",
                                                  b".html: File name too long")),
    Case("deep", [DEEP_PAGE], 3, (b"1 file could not be written:", b"bytes.html: File name too long"),
         deep=True),
    Case("progro", [b"ok.html"], 3, (b"1 file could not be written:",
                                     b"Vantorin/temp/filetypes.txt: Read-only file system"),
         before=read_only_program, installed=True),
    Case("settings", [b"ok.html"], 0, (), before=read_only_settings),
    Case("leftover", fill_pages(3), 0, (b"Hint: the folder holds 1 placeholder (\".tmp\")",),
         before=leave_placeholder),
    # "www." is cut from the mirror's paths, so they fall outside the folder.
    Case("wwwdir", [b"ok.html"], 3, (b"writes were refused: outside the target folder\n",),
         out=os.path.join(check_faults.BOX[-1], "l3", "www.mirror")),
]
GATED = {c.name for c in CASES if c.at_gate}
BENCH = Case("bench", [], 3, (b"files could not be written:", b"No space left on device"),
             tmpfs="1m")


class FsSiteHandler(harness.Handler):
    # www.NAME.test serves case NAME; www.NAME-stop.test the same site with
    # the never-answered pages in front of its links. www.bench.test serves
    # the benchmark site.
    def answer(self, host, path):
        name = host[len("www."):-len(".test")]
        with self.server.lock:
            self.server.seen[host] = self.server.seen.get(host, 0) + 1
        if name == "bench":
            local = os.path.join(BENCH_SITE, path.lstrip("/") or "index.html")
            if os.path.isfile(local):
                with open(local, "rb") as f:
                    return self.send(f.read())
            return self.send(b"no such page", b"404 Not Found")
        site = next(c for c in CASES if c.name == name.removesuffix("-stop"))
        if path == "/":
            links = (HOLDS if name.endswith("-stop") else []) + site.links
            return self.send(b"<html><body>" + b"".join(
                b'<a href="%s">x</a>\n' % link for link in links) + b"</body></html>\n")
        if path.lstrip("/").encode("latin-1") in HOLDS:
            return self.hold()
        if site.name in GATED:
            GATES[host].wait(20)
        self.send(b"<html><body><p>" + PAGE_TEXT + b"</p></body></html>\n")


class Run(check_faults.Run):
    # One case, run to the end or (stop) interrupted once the pages that are
    # never answered are asked for.
    def __init__(self, case, stop=False):
        self.case, self.stop = case, stop
        name = case.name + ("-stop" if stop else "")
        self.host = f"www.{name}.test"
        self.folder = os.path.join(harness.WORK, name)
        if case.deep:
            # A target folder whose paths pass 4,096 bytes one level below it.
            top = os.path.join(self.folder, check_faults.BOX[-1], "l3")
            deep = os.path.join(*["d" * 100] * ((3990 - len(top)) // 101))
            rest = 4070 - len(os.path.join(top, deep, "mirror")) - 1
            self.out_folder = os.path.join(check_faults.BOX[-1], "l3", deep, "x" * rest, "mirror")
        if case.out:
            self.out_folder = case.out
        self.mount_point = os.path.join(self.folder, check_faults.BOX[-1], "l3")
        super().__init__(name, self.host, "--timeout", "5", files=TYPES,
                         during=self.fault_then_stop, measure=True, installed=case.installed)

    def prepare(self):
        super().prepare()
        if self.case.tmpfs:
            os.makedirs(self.mount_point)
            mount("-t", "tmpfs", "-o", "size=" + self.case.tmpfs, "tmpfs", self.mount_point)
        if self.case.before:
            self.case.before(self)
        self.before = snapshot(self.folder, skip=self.not_watched())
        self.tmp_before = set(self.tmp_files())

    def not_watched(self):
        return {self.program_folder, self.out, self.config}

    def interrupt(self):
        # /usr/bin/time ignores SIGINT while it waits: the signal goes to the program.
        with open(f"/proc/{self.proc.pid}/task/{self.proc.pid}/children") as f:
            program_pid = int(f.read().split()[0])
        os.kill(program_pid, signal.SIGINT)
        started = time.monotonic()
        try:
            self.proc.wait(timeout=10)
        except subprocess.TimeoutExpired:
            pass
        self.note["exit_after"] = time.monotonic() - started

    def seen(self):
        with harness.SERVER.lock:
            return harness.SERVER.seen.get(self.host, 0)

    def wait_until(self, requests):
        deadline = time.monotonic() + 20
        while self.seen() < requests and time.monotonic() < deadline and self.proc.poll() is None:
            time.sleep(0.02)

    def fault_then_stop(self, run):
        self.tmp_at_fault = None
        if self.case.at_gate:
            self.wait_until(5)  # the start page and four gated pages
            self.case.at_gate(self)
            self.tmp_at_fault = set(self.tmp_files())
            GATES[self.host].set()
        if self.stop:
            self.wait_until(1 + len(self.case.links) + 1)  # a page that is never answered
            time.sleep(0.3)
            self.note["running"] = self.proc.poll() is None
            self.interrupt()

    def changes_outside(self):
        after = snapshot(self.folder, skip=self.not_watched())
        on_the_way = [p for p in after if p not in self.before
                      and self.out.startswith(os.path.join(self.folder, p) + os.sep)]
        for p in on_the_way:
            after.pop(p)
        return changes(self.before, after)


def summary(run):
    files = run.files().values()
    said = [line.split(b":")[0].decode() for line in run.stderr.splitlines()
            if line[:1].isdigit() or line.startswith(b"No server")]
    return (f"exit {run.status} after {run.seconds:.1f} s, {len(files)} files "
            f"({sum(os.path.getsize(f) == 0 for f in files)} empty), "
            f"{len(run.tmp_files())} .tmp left, peak RSS {run.peak_rss_kib} KiB; {'; '.join(said)}")


def run_all(runs):
    with concurrent.futures.ThreadPoolExecutor(max_workers=4) as pool:
        return list(pool.map(lambda args: Run(*args), runs))


class FileSystemFaults(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        started = time.monotonic()
        cls.runs = run_all([(c, stop) for stop in (False, True) for c in CASES
                            if not (stop and c.status == 2)])
        print(f"\n  {len(cls.runs)} runs in {time.monotonic() - started:.1f} s", end="")
        for run in cls.runs:
            print(f"\n  {run.case.name}{' SIGINT' if run.stop else ''}: {summary(run)}", end="")

    def test_each_run_ends_as_designed_and_touches_nothing_else(self):
        for run in self.runs:
            with self.subTest(run.case.name, stop=run.stop):
                err = run.stderr
                self.assertGreaterEqual(run.status, 0, err[-3000:])  # not killed by a signal
                self.assertNotIn(b"Sanitizer", err)
                self.assertNotIn(b"runtime error", err)
                self.assertLess(run.peak_rss_kib, RSS_BOUND_KIB)
                self.assertEqual(run.changes_outside(), [])
                program = changes(run.program_before, snapshot(run.program_folder))
                self.assertLessEqual(set(program), check_faults.PROGRAM_FOLDER_ADDITIONS)
                self.assertNotIn(b"etting", err)  # nothing said about settings
                # Placeholders in folders the crawl did not make stay, as
                # designed; nothing can be deleted from a read-only folder.
                kept = run.tmp_before
                if run.case.at_gate == read_only_target:
                    kept = kept | run.tmp_at_fault
                self.assertLessEqual(set(run.tmp_files()), kept)
                if run.stop:
                    self.assertTrue(run.note["running"])
                    self.assertEqual(run.status, 130, err[-3000:])
                    self.assertLess(run.note["exit_after"], 2)
                    continue
                self.assertEqual(run.status, run.case.status, err[-3000:])
                self.assertEqual(run.stdout, DONE_LINE if run.status == 0 else b"")
                for text in run.case.says:
                    self.assertIn(text, err)

    def test_deleted_target_is_made_again_by_the_next_save(self):
        run = next(r for r in self.runs if r.case.name == "deleted" and not r.stop)
        wanted = [os.path.join("deleted.test", p.decode()) for p in run.case.links]
        self.assertEqual(sorted(run.files()),
                         sorted(wanted + [os.path.join("_SearchData", "deleted.test.txt")]))

    def test_leftover_placeholder_keeps_its_page_from_being_fetched(self):
        run = next(r for r in self.runs if r.case.name == "leftover" and not r.stop)
        self.assertEqual(sorted(p for p in run.files() if p.startswith("leftover.test")),
                         [os.path.join("leftover.test", n)
                          for n in ["index.html", "p0.html.tmp", "p1.html", "p2.html"]])

    def test_real_sized_site_on_a_full_disk(self):
        # The benchmark site's 400 pages (its images and sheets not taken) onto 1 MiB.
        run = Run(BENCH)
        print(f"\n  bench: {summary(run)}", end="")
        self.assertEqual(run.status, 3, run.stderr[-3000:])
        counted = next(line for line in run.stderr.splitlines() if b"could not be written" in line)
        self.assertGreater(int(counted.split()[0].replace(b",", b"")), 100)
        self.assertEqual(run.tmp_files(), [])
        self.assertLess(run.peak_rss_kib, RSS_BOUND_KIB)


def tearDownModule():
    for point in reversed(MOUNTS):
        subprocess.run(["umount", "-l", point], check=False)


GATES = {}
BENCH_SITE = None

if __name__ == "__main__":
    if not shutil.which("/usr/bin/time"):
        print("skipped: /usr/bin/time is missing")
        sys.exit(77)
    hosts = [f"www.{c.name}{s}.test" for c in CASES for s in ("", "-stop")] + ["www.bench.test"]
    GATES.update({h: threading.Event() for h in hosts})

    def server():
        s = harness.LoggingServer(FsSiteHandler)
        s.seen = {}
        return s

    def with_bench_site():
        global BENCH_SITE
        BENCH_SITE = os.path.join(harness.WORK, "bench-site")
        subprocess.run([sys.executable, os.path.join(HERE, "..", "..", "bench", "crawl", "gen_site.py"),
                        BENCH_SITE], check=True)
        return server()

    sys.exit(harness.main("127.0.0.1 localhost " + " ".join(hosts) + "\n", with_bench_site))
