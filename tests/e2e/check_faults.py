"""Fault tests: the built program against misbehaving servers and hostile
pages on 127.0.0.1:80 inside a private network namespace (run by
run_faults.sh). Each run uses its own program folder, settings folder and a
target folder a few levels deep, so that anything written outside the target
folder shows up in the snapshot of the folders around it."""
import hashlib
import os
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

HERE = os.path.dirname(os.path.abspath(__file__))
PROGRAM = None
SERVER = None
EARLY = None
WORK = None

sys.path.insert(0, HERE)
import fault_server  # noqa: E402

FAULT_HOSTS = ["silent", "noclose", "reset", "resetnow", "drip", "big", "nohead", "hostile"]
HOSTS = ("127.0.0.1 localhost " + " ".join(f"www.{h}.test" for h in FAULT_HOSTS) + "\n"
         "127.0.0.2 www.refused.test\n"  # nothing listens there: the connection is refused
         "127.0.0.3 www.early.test\n")   # closes before reading the request
DONE_LINE = b"The website has been downloaded.\n"
TARGET = os.path.join("box", "l1", "l2", "l3", "mirror")
# What a run may add to its program folder: the data folder and the file types list.
PROGRAM_FOLDER_ADDITIONS = {"dldata", "temp", os.path.join("temp", "filetypes.txt")}


def enter_private_network():
    subprocess.run(["ip", "link", "set", "lo", "up"], check=True)
    hosts = os.path.join(WORK, "hosts")
    with open(hosts, "w") as f:
        f.write(HOSTS)
    subprocess.run(["mount", "--bind", hosts, "/etc/hosts"], check=True)


def snapshot(top, skip=()):
    """Relative path -> (kind, size, mtime, digest) for everything under top."""
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


def peak_rss_kib(time_report):
    for line in time_report.splitlines():
        if "Maximum resident set size" in line:
            return int(line.rsplit(":", 1)[1])
    return None


class Run:
    """One run of the program from its own program folder. `during(proc)` runs
    while the program does; `measure` wraps it in /usr/bin/time -v."""

    def __init__(self, name, args, during=None, measure=False):
        self.folder = os.path.join(WORK, name)
        self.program_folder = os.path.join(self.folder, "program")
        self.out = os.path.join(self.folder, TARGET)
        self.cwd = os.path.join(self.folder, "box", "cwd")
        os.makedirs(self.program_folder)
        os.makedirs(self.cwd)
        os.makedirs(os.path.join(self.folder, "box", "l1", "l2"))
        program = os.path.join(self.program_folder, "vantorin")
        shutil.copy2(PROGRAM, program)
        for level in ["box", os.path.join("box", "l1"), os.path.join("box", "l1", "l2")]:
            with open(os.path.join(self.folder, level, "keep.txt"), "wb") as f:
                f.write(b"a file on the way to the target folder\n")
        env = dict(os.environ)
        # The settings store is the one place outside both folders a run writes to.
        self.config = os.path.join(self.folder, "config")
        env["XDG_CONFIG_HOME"] = self.config
        env["XDG_RUNTIME_DIR"] = os.path.join(self.folder, "runtime")
        os.makedirs(env["XDG_RUNTIME_DIR"], mode=0o700)
        self.before = snapshot(self.folder, skip={self.program_folder})
        self.program_before = snapshot(self.program_folder)
        command = [program, "--url", args[0], "--dir", self.out] + list(args[1:])
        time_file = os.path.join(self.folder, "time.txt")
        if measure:
            command = ["/usr/bin/time", "-v", "-o", time_file] + command
        SERVER.take_requests()
        self.started = time.monotonic()
        self.proc = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                     env=env, cwd=self.cwd)
        self.note = {}
        if during:
            during(self)
        self.stdout, self.stderr = self.proc.communicate(timeout=120)
        self.seconds = time.monotonic() - self.started
        self.status = self.proc.returncode
        self.requests = SERVER.take_requests()
        self.peak_rss_kib = None
        if measure:
            with open(time_file) as f:
                self.peak_rss_kib = peak_rss_kib(f.read())
            os.remove(time_file)

    def files(self):
        found = {}
        for root, _, names in os.walk(self.out):
            for name in names:
                path = os.path.join(root, name)
                found[os.path.relpath(path, self.out)] = path
        return found

    def changes_outside_target(self):
        """Paths created, changed or deleted outside the target folder and the program folder."""
        skip = {self.program_folder, self.out, self.config}
        after = snapshot(self.folder, skip=skip)
        # The folders on the way to the target folder are made by the run.
        for p in [TARGET] + [os.path.dirname(TARGET)]:
            after.pop(p, None)
        return sorted(p for p in set(self.before) | set(after)
                      if self.before.get(p) != after.get(p))

    def program_folder_changes(self):
        after = snapshot(self.program_folder)
        return sorted(p for p in set(self.program_before) | set(after)
                      if self.program_before.get(p) != after.get(p))

    def wait_for_requests(self, count, limit=20):
        deadline = time.monotonic() + limit
        while time.monotonic() < deadline and SERVER.request_count() < count:
            time.sleep(0.05)

    def interrupt(self):
        """SIGINT; notes how long the program took to exit."""
        self.note["signalled"] = time.monotonic()
        self.proc.send_signal(signal.SIGINT)
        try:
            self.proc.wait(timeout=10)
        except subprocess.TimeoutExpired:
            pass
        self.note["exit_after"] = time.monotonic() - self.note["signalled"]


def tmp_files(run):
    return [p for p in run.files() if p.endswith(".tmp")]


class ServerFaults(unittest.TestCase):
    """Each fault runs a crawl to its end with --timeout 1."""

    def test_each_fault_ends_in_completion(self):
        cases = [
            # name, start address, fewest and most seconds, connections the
            # servers saw (every fault but the last ends through three timeouts)
            ("refused", "www.refused.test", 2.5, 10, 0),
            ("silent", "www.silent.test", 2.5, 10, 3),
            ("noclose", "www.noclose.test", 2.5, 10, 3),
            ("early", "www.early.test", 2.5, 10, 3),
            ("reset", "www.reset.test", 2.5, 10, 3),
            # A reset that comes in with the bytes is a close: the part is saved.
            ("resetnow", "www.resetnow.test", 0, 5, 1),
            ("nohead", "www.nohead.test/page.html", 0, 5, 1),
        ]
        for name, address, fewest, most, connections in cases:
            with self.subTest(name):
                accepted_before = EARLY.accepted
                run = Run("done-" + name, [address, "--timeout", "1"])
                run.requests += [None] * (EARLY.accepted - accepted_before)
                print(f"\n  {name}: exit {run.status} after {run.seconds:.1f} s, "
                      f"{len(run.requests)} requests, files {sorted(run.files())}", end="")
                self.assertEqual(run.status, 0, run.stderr[-2000:])
                self.assertEqual(run.stdout, DONE_LINE)
                self.assertGreaterEqual(run.seconds, fewest)
                self.assertLess(run.seconds, most)
                self.assertEqual(len(run.requests), connections)
                self.assertEqual(tmp_files(run), [])
                self.assertEqual(run.changes_outside_target(), [])

    def test_what_is_saved_from_a_partial_or_headless_answer(self):
        cases = [
            # start address, saved file, its bytes
            ("www.nohead.test/page.html", os.path.join("nohead.test", "page.html"),
             fault_server.NO_HEADER_BYTES[3:] + b"\r\n"),  # first three characters lost
            ("www.resetnow.test", os.path.join("resetnow.test", "index.html"),
             b"r" * fault_server.RESET_SENT + b"\r\n"),
        ]
        for address, saved, data in cases:
            with self.subTest(address):
                run = Run("saved-" + address.split(".")[1], [address, "--timeout", "1"])
                with open(run.files()[saved], "rb") as f:
                    self.assertEqual(f.read(), data)

    def test_100_mib_response_is_saved_whole(self):
        # As a page (line ends, page text and scan run over it) and as a file.
        # The timeout outlasts the save and the scan: a slot's timer keeps
        # running after its job, so a shorter one fetches the file again and
        # the next attempt's bytes are appended to the first's, as designed.
        for name in ["big.html", "big.zip"]:
            with self.subTest(name):
                run = Run(name, ["www.big.test/" + name, "--timeout", "10"], measure=True)
                print(f"\n  {name}: exit {run.status} after {run.seconds:.1f} s, "
                      f"peak RSS {run.peak_rss_kib} KiB", end="")
                self.assertEqual(run.status, 0, run.stderr[-2000:])
                saved = run.files()[os.path.join("big.test", name)]
                self.assertEqual(os.path.getsize(saved), fault_server.BIG_SIZE + 2)
                # The response, its saved copy and the text handed to the scanner
                # are held at once: 3.5 to 3.8 times the body in most runs, 6.6
                # times once on a loaded machine. Eight times is the bound.
                self.assertLess(run.peak_rss_kib * 1024, 8 * fault_server.BIG_SIZE)
                self.assertLess(run.seconds, 60)


class Stops(unittest.TestCase):
    """SIGINT while each fault holds the connections: exit 130 within two
    seconds, and no placeholder left in the folders the crawl made."""

    def test_sigint_mid_fault(self):
        for name in ["silent", "noclose", "drip", "big"]:
            with self.subTest(name):
                def stop_when_busy(run):
                    # The links page and four connections' first pages.
                    run.wait_for_requests(5)
                    time.sleep(0.5)
                    run.note["running"] = run.proc.poll() is None
                    run.interrupt()

                run = Run("stop-" + name, [f"www.{name}.test/links.html", "--timeout", "2"],
                          during=stop_when_busy)
                print(f"\n  {name}: exit {run.status} {run.note['exit_after']:.2f} s after SIGINT",
                      end="")
                self.assertTrue(run.note["running"])
                self.assertEqual(run.status, 130, run.stderr[-2000:])
                self.assertLess(run.note["exit_after"], 2)
                self.assertEqual(tmp_files(run), [])
                self.assertEqual(run.changes_outside_target(), [])

    def test_one_byte_a_second_keeps_a_two_second_timeout_from_firing(self):
        def wait_then_stop(run):
            run.wait_for_requests(5)
            time.sleep(5)
            run.note["running"] = run.proc.poll() is None
            run.note["requests"] = SERVER.request_count()
            run.interrupt()

        run = Run("drip-long", ["www.drip.test/links.html", "--timeout", "2"],
                  during=wait_then_stop)
        self.assertTrue(run.note["running"])
        # No retry was made: each byte restarted the timeout.
        self.assertEqual(run.note["requests"], 5)
        self.assertEqual(run.status, 130)
        self.assertLess(run.note["exit_after"], 2)
        self.assertEqual(tmp_files(run), [])


class HostilePages(unittest.TestCase):
    """Hosts ".." and ".", climbing, absolute and backslash paths, a 300- and a
    100,000-character link, 100,000 links on one page, NUL and high bytes."""

    @classmethod
    def setUpClass(cls):
        cls.crawl = Run("hostile", ["www.hostile.test", "--timeout", "1"], measure=True)
        print(f"\n  hostile: exit {cls.crawl.status} after {cls.crawl.seconds:.1f} s, "
              f"{len(cls.crawl.requests)} requests, {len(cls.crawl.files())} files, "
              f"peak RSS {cls.crawl.peak_rss_kib} KiB", end="")

    def test_completes_in_bounded_time(self):
        self.assertEqual(self.crawl.status, 0, self.crawl.stderr[-2000:])
        self.assertEqual(self.crawl.stdout, DONE_LINE)
        self.assertLess(self.crawl.seconds, 90)

    def test_nothing_changes_outside_the_target_and_program_folders(self):
        self.assertEqual(self.crawl.changes_outside_target(), [])
        self.assertLessEqual(set(self.crawl.program_folder_changes()), PROGRAM_FOLDER_ADDITIONS)
        for top in ["/", "/tmp", "/etc", WORK]:
            self.assertEqual([n for n in os.listdir(top) if "escape" in n], [], top)

    def test_every_file_lies_inside_the_target_folder(self):
        real_out = os.path.realpath(self.crawl.out)
        for path in self.crawl.files().values():
            self.assertTrue(os.path.realpath(path).startswith(real_out + os.sep), path)
        self.assertEqual(tmp_files(self.crawl), [])

    def test_the_pages_were_fetched(self):
        paths = {path for _, path, _ in self.crawl.requests}
        self.assertIn("/long.html", paths)
        self.assertIn("/many.html", paths)
        self.assertIn("/same49.html", paths)


def main():
    global PROGRAM, SERVER, EARLY, WORK
    PROGRAM = os.path.abspath(sys.argv[1])
    WORK = tempfile.mkdtemp(prefix="vantorin-faults-")
    try:
        enter_private_network()
        SERVER = fault_server.Server()
        EARLY = fault_server.EarlyCloser()
        suite = unittest.defaultTestLoader.loadTestsFromModule(sys.modules[__name__])
        result = unittest.TextTestRunner(verbosity=2).run(suite)
        # A test whose subtests fail is listed once per failing subtest.
        failed = len({getattr(test, "test_case", test).id()
                      for test, _ in result.failures + result.errors})
        print(f"{result.testsRun - failed} passed, {failed} failed")
        return 0 if failed == 0 and result.testsRun > 0 else 1
    finally:
        for server in (SERVER, EARLY):
            if server:
                server.stop()
        if os.environ.get("VANTORIN_E2E_KEEP"):
            print("kept:", WORK)
        else:
            shutil.rmtree(WORK, ignore_errors=True)


if __name__ == "__main__":
    sys.exit(main())
