"""End-to-end tests: the built program crawls fixture sites served on
127.0.0.1:80 inside a private network namespace (run by run_e2e.sh). Each
scenario runs the program once, from its own copy in a fresh program folder
with its own settings folder; the tests then check the mirror byte for byte,
the record files and the exact request bytes the server saw."""
import os
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

HERE = os.path.dirname(os.path.abspath(__file__))
SITE = os.path.join(HERE, "site")
EXPECTED = os.path.join(HERE, "expected")
PROGRAM = None
SERVER = None
WORK = None

sys.path.insert(0, HERE)
import fixture_server  # noqa: E402

HOSTS = "127.0.0.1 localhost www.e2esite.test e2esite.test other.test www.silent.test www.slow.test\n"
DONE_LINE = b"The website has been downloaded.\n"


def request_bytes(path, host):
    return (f"GET {path} HTTP/1.0\r\nHost: {host}\r\nReferrer: {host}\r\n"
            f"User-Agent: Internet Explorer 6.01\r\n\r\n").encode("latin-1")


def enter_private_network():
    subprocess.run(["ip", "link", "set", "lo", "up"], check=True)
    hosts = os.path.join(WORK, "hosts")
    with open(hosts, "w") as f:
        f.write(HOSTS)
    subprocess.run(["mount", "--bind", hosts, "/etc/hosts"], check=True)


class Run:
    """One run of the program from its own program folder."""

    def __init__(self, name, args, files=None, stop_after=None):
        self.folder = os.path.join(WORK, name)
        self.program_folder = os.path.join(self.folder, "program")
        self.out = os.path.join(self.folder, "mirror")
        os.makedirs(self.program_folder)
        program = os.path.join(self.program_folder, "vantorin")
        shutil.copy2(PROGRAM, program)
        for relative, data in (files or {}).items():
            path = os.path.join(self.program_folder, relative)
            os.makedirs(os.path.dirname(path), exist_ok=True)
            with open(path, "wb") as f:
                f.write(data)
        env = dict(os.environ)
        env["XDG_CONFIG_HOME"] = os.path.join(self.folder, "config")
        env["XDG_RUNTIME_DIR"] = os.path.join(self.folder, "runtime")
        os.makedirs(env["XDG_RUNTIME_DIR"], mode=0o700)
        args = [a.replace("{out}", self.out) for a in args]
        SERVER.take_requests()
        started = time.monotonic()
        proc = subprocess.Popen([program] + args, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                env=env)
        if stop_after:
            stop_after(proc)
        self.stdout, self.stderr = proc.communicate(timeout=60)
        self.seconds = time.monotonic() - started
        self.status = proc.returncode
        self.requests = SERVER.take_requests()

    def files(self):
        """Every file under the mirror folder: relative path -> bytes."""
        found = {}
        for root, _, names in os.walk(self.out):
            for name in names:
                path = os.path.join(root, name)
                with open(path, "rb") as f:
                    found[os.path.relpath(path, self.out)] = f.read()
        return found


def expected_files(name):
    return Run.files(type("Tree", (), {"out": os.path.join(EXPECTED, name)})())


def search_records(data):
    """The records of a search data file ("! page" line, text line), sorted."""
    lines = data.split(b"\r\n")
    self_check = lines.pop() == b""
    assert self_check and len(lines) % 2 == 0, data
    return sorted(zip(lines[0::2], lines[1::2]))


def expected_lines(name):
    with open(os.path.join(EXPECTED, name)) as f:
        return f.read().split()


class MirrorChecks:
    """Checks shared by the scenarios that complete a crawl."""
    crawl = None
    expected = None
    host = "www.e2esite.test"

    def test_completes_with_exit_0(self):
        self.assertEqual(self.crawl.status, 0, self.crawl.stderr.decode("latin-1"))
        self.assertEqual(self.crawl.stdout, DONE_LINE)
        self.assertIn(b"Done.: The website has been downloaded.", self.crawl.stderr)

    def test_mirror_matches_byte_for_byte(self):
        actual = self.crawl.files()
        wanted = expected_files(self.expected)
        self.assertEqual(sorted(actual), sorted(wanted))
        for path, data in wanted.items():
            if path.startswith("_SearchData"):
                # Pages finished by parallel connections may be recorded in either order.
                self.assertEqual(search_records(actual[path]), search_records(data), path)
            else:
                self.assertEqual(actual[path], data, path)

    def test_every_request_is_the_exact_http_1_0_get(self):
        self.assertTrue(self.crawl.requests)
        for host, raw in self.crawl.requests:
            path = raw.split(b" ")[1].decode("latin-1")
            self.assertEqual(host.decode(), self.host)
            self.assertEqual(raw, request_bytes(path, self.host))

    def test_requested_paths(self):
        paths = [raw.split(b" ")[1].decode("latin-1") for _, raw in self.crawl.requests]
        self.assertEqual(sorted(paths), sorted(expected_lines(self.expected + ".requests")))


class MainSite(MirrorChecks, unittest.TestCase):
    """Every link spelling, renaming, "../", refresh, skipped schemes, an
    off-site link, an unlisted type, a filter keyword and a 404 page; one
    connection, so the crawl order and the record files are fixed."""
    expected = "main"

    @classmethod
    def setUpClass(cls):
        cls.crawl = Run("main", ["--url", "www.e2esite.test", "--dir", "{out}", "--connections", "1"],
                      files={"filters.txt": b"ads\r\n"})

    def test_crawl_order_is_newest_first(self):
        paths = [raw.split(b" ")[1].decode("latin-1") for _, raw in self.crawl.requests]
        self.assertEqual(paths, expected_lines("main.requests"))

    def test_no_placeholder_left_in_folders_the_crawl_made(self):
        made = [root for root, _, _ in os.walk(self.crawl.out) if root != self.crawl.out]
        for root in made:
            self.assertEqual([n for n in os.listdir(root) if n.endswith(".tmp")], [], root)

    def test_refresh_placeholder_folders_are_made_and_swept(self):
        # The refresh target's placeholder path holds "http:" (kept as designed).
        folder = os.path.join(self.crawl.out, "http:", "e2esite.test")
        self.assertEqual(os.listdir(folder), [])

    def test_settings_store_what_the_wizard_was_given(self):
        with open(os.path.join(self.crawl.folder, "config", "Vantorin", "Vantorin.conf"), "rb") as f:
            stored = f.read()
        self.assertIn(b"LastURL=www.e2esite.test", stored)
        self.assertIn(b"Timeout=15", stored)


class CustomFileTypes(MirrorChecks, unittest.TestCase):
    """A file types list of ".html" and ".txt" only, the start page given with
    its scheme and "index.html", four connections."""
    expected = "types"

    @classmethod
    def setUpClass(cls):
        cls.crawl = Run("types", ["--url", "http://www.e2esite.test/types/index.html", "--dir", "{out}"],
                      files={"temp/filetypes.txt": b".html\r\n.txt\r\n"})

    def test_the_list_file_is_kept_as_the_wizard_saved_it(self):
        with open(os.path.join(self.crawl.program_folder, "temp", "filetypes.txt"), "rb") as f:
            self.assertEqual(f.read(), b".html\r\n.txt\r\n")


class SilentServer(MirrorChecks, unittest.TestCase):
    """A server that accepts and never answers: three attempts of one second,
    the timeout text saved each time, then completion."""
    expected = "silent"
    host = "www.silent.test"

    @classmethod
    def setUpClass(cls):
        cls.crawl = Run("silent", ["--url", "www.silent.test", "--dir", "{out}", "--timeout", "1"])

    def test_timeout_text_lands_nowhere(self):
        # The timeout's name " \\ host/path" leaves a blank before the host
        # folder: the folder made is "silent.test", the file would go to
        # " silent.test", so only the search record and the empty folder remain.
        self.assertEqual(os.listdir(os.path.join(self.crawl.out, "silent.test")), [])
        self.assertFalse(os.path.exists(os.path.join(self.crawl.out, " silent.test")))

    def test_three_attempts_take_about_three_timeouts(self):
        self.assertEqual(len(self.crawl.requests), 3)
        self.assertGreater(self.crawl.seconds, 2.5)
        self.assertLess(self.crawl.seconds, 10)


class Refusals(unittest.TestCase):
    """Runs that end before or without a crawl, as a table."""

    def test_exit_codes_and_messages(self):
        cases = [
            # name, arguments, exit status, text expected on stdout or stderr
            ("unwritable", ["--url", "www.e2esite.test", "--dir", "/proc/version/site"], 2,
             b"Eror: That is an invalid directory. Check it has no invalid characters."),
            ("no-dir", ["--url", "www.e2esite.test"], 64, b"--dir FOLDER is required"),
            ("unknown", ["--url", "x", "--dir", "y", "--depth", "3"], 64, b"unknown argument: --depth"),
            ("version", ["--version"], 0, b"Vantorin Website Downloader 1.9\n"),
            ("help", ["--help"], 0, b"Usage: vantorin --url ADDRESS --dir FOLDER"),
        ]
        for name, args, status, text in cases:
            with self.subTest(name):
                run = Run("refusal-" + name, args)
                self.assertEqual(run.status, status, run.stderr)
                self.assertIn(text, run.stdout + run.stderr)
                self.assertEqual(run.requests, [])

    def test_connections_typed_out_of_range_fall_back_to_4(self):
        run = Run("connections", ["--url", "www.e2esite.test/a.html", "--dir", "{out}",
                                  "--connections", "24"])
        self.assertEqual(run.status, 0)
        self.assertIn(b"Try Again: Must be a number of connections from 1 to 24", run.stderr)


class Interrupt(unittest.TestCase):
    """SIGINT while pages are still coming: the stop path runs, the
    placeholders are swept and the program exits 130."""

    def test_sigint_stops_and_sweeps(self):
        def interrupt_when_busy(proc):
            deadline = time.monotonic() + 20
            while time.monotonic() < deadline and len(SERVER.requests) < 4:
                time.sleep(0.05)
            time.sleep(0.2)
            proc.send_signal(signal.SIGINT)

        run = Run("interrupt", ["--url", "www.slow.test", "--dir", "{out}"],
                  stop_after=interrupt_when_busy)
        self.assertEqual(run.status, 130, run.stderr)
        self.assertIn(b"Interrupted", run.stderr)
        self.assertEqual(len(run.requests), 4)
        files = run.files()
        self.assertIn(os.path.join("slow.test", "index.html"), files)
        self.assertEqual([p for p in files if p.endswith(".tmp")], [])


def main():
    global PROGRAM, SERVER, WORK
    PROGRAM = os.path.abspath(sys.argv[1])
    WORK = tempfile.mkdtemp(prefix="vantorin-e2e-")
    try:
        enter_private_network()
        SERVER = fixture_server.Server(SITE)
        suite = unittest.defaultTestLoader.loadTestsFromModule(sys.modules[__name__])
        result = unittest.TextTestRunner(verbosity=2).run(suite)
        failed = len(result.failures) + len(result.errors)
        print(f"{result.testsRun - failed} passed, {failed} failed")
        return 0 if failed == 0 and result.testsRun > 0 else 1
    finally:
        if SERVER:
            SERVER.stop()
        if os.environ.get("VANTORIN_E2E_KEEP"):
            print("kept:", WORK)
        else:
            shutil.rmtree(WORK, ignore_errors=True)


if __name__ == "__main__":
    sys.exit(main())
