# End-to-end tests: the built program crawls fixture sites served on
# 127.0.0.1:80 inside a private network namespace (run by run_e2e.sh). Each
# scenario runs the program once, from its own copy in a fresh program folder
# with its own settings folder; the tests then check the mirror byte for byte,
# the record files and the exact request bytes the server saw.
import os
import sys
import time
import unittest

import harness
from harness import DONE_LINE, Run

HERE = os.path.dirname(os.path.abspath(__file__))
SITE = os.path.join(HERE, "site")
EXPECTED = os.path.join(HERE, "expected")
HOSTS = "127.0.0.1 localhost www.e2esite.test e2esite.test other.test www.silent.test www.slow.test\n"
SLOW_PAGE = (b'<html><body>Slow site <a href="one.html">1</a> <a href="two.html">2</a> '
             b'<a href="three.html">3</a></body></html>\n')


class SiteHandler(harness.Handler):
    # Serves tests/e2e/site; www.silent.test never answers, www.slow.test
    # answers only its start page.
    def answer(self, host, path):
        if host == "www.silent.test" or (host == "www.slow.test" and path != "/"):
            return self.hold()
        if host == "www.slow.test":
            return self.send(SLOW_PAGE)
        local = path.split("?", 1)[0].lstrip("/")
        if local == "" or local.endswith("/"):
            local += "index.html"
        full = os.path.normpath(os.path.join(SITE, local))
        if full.startswith(SITE) and os.path.isfile(full):
            with open(full, "rb") as f:
                return self.send(f.read())
        self.send(b"<html><body><h1>Not Found</h1><p>No such page here.</p></body></html>\n",
                  b"404 Not Found")


def read(path):
    with open(path, "rb") as f:
        return f.read()


def search_records(data):
    # The records of a search data file ("! page" line, text line), sorted.
    lines = data.split(b"\r\n")
    assert lines.pop() == b"" and len(lines) % 2 == 0, data
    return sorted(zip(lines[0::2], lines[1::2]))


def expected_paths(name):
    with open(os.path.join(EXPECTED, name + ".requests")) as f:
        return f.read().split()


class MirrorChecks:
    # Checks shared by the scenarios that complete a crawl.
    host = "www.e2esite.test"
    status = 0

    def test_completes_with_its_exit_status(self):
        self.assertEqual(self.crawl.status, self.status, self.crawl.stderr.decode("latin-1"))
        self.assertEqual(self.crawl.stdout, DONE_LINE if self.status == 0 else b"")
        self.assertIn(b"Done.: The website has been downloaded.\n", self.crawl.stderr)

    def test_mirror_matches_byte_for_byte(self):
        actual = self.crawl.files()
        wanted = harness.tree(os.path.join(EXPECTED, self.expected))
        self.assertEqual(sorted(actual), sorted(wanted))
        for path in wanted:
            a, w = read(actual[path]), read(wanted[path])
            if path.startswith("_SearchData"):
                # Pages finished by parallel connections may be recorded in either order.
                a, w = search_records(a), search_records(w)
            self.assertEqual(a, w, path)

    def test_requests_are_exact_http_1_0_gets_for_the_expected_paths(self):
        self.assertTrue(self.crawl.requests)
        for host, path, raw in self.crawl.requests:
            self.assertEqual(host, self.host)
            self.assertEqual(raw, (f"GET {path} HTTP/1.0\r\nHost: {host}\r\nReferrer: {host}\r\n"
                                   f"User-Agent: Internet Explorer 6.01\r\n\r\n").encode("latin-1"))
        paths = [path for _, path, _ in self.crawl.requests]
        self.assertEqual(sorted(paths), sorted(expected_paths(self.expected)))


class MainSite(MirrorChecks, unittest.TestCase):
    # Every link spelling, renaming, "../", refresh, skipped schemes, an
    # off-site link, an unlisted type, a filter keyword and a 404 page; one
    # connection, so the crawl order and the record files are fixed.
    expected = "main"

    @classmethod
    def setUpClass(cls):
        cls.crawl = Run("main", ["--url", "www.e2esite.test", "--dir", "{out}", "--connections", "1"],
                        files={"filters.txt": b"ads\r\n"})

    def test_crawl_order_is_newest_first(self):
        self.assertEqual([path for _, path, _ in self.crawl.requests], expected_paths("main"))

    def test_placeholders(self):
        for root, _, names in os.walk(self.crawl.out):
            if root != self.crawl.out:  # none left in the folders the crawl made
                self.assertEqual([n for n in names if n.endswith(".tmp")], [], root)
        # The refresh target's placeholder path holds "http:" (kept as designed).
        self.assertEqual(os.listdir(os.path.join(self.crawl.out, "http:", "e2esite.test")), [])

    def test_settings_store_what_the_wizard_was_given(self):
        stored = read(os.path.join(self.crawl.config, "Vantorin", "Vantorin.conf"))
        self.assertIn(b"LastURL=www.e2esite.test", stored)
        self.assertIn(b"Timeout=15", stored)


class CustomFileTypes(MirrorChecks, unittest.TestCase):
    # A file types list of ".html" and ".txt" only, the start page given with
    # its scheme and "index.html", four connections; the list is kept as saved.
    expected = "types"

    @classmethod
    def setUpClass(cls):
        cls.crawl = Run("types", ["--url", "http://www.e2esite.test/types/index.html", "--dir", "{out}"],
                        files={"temp/filetypes.txt": b".html\r\n.txt\r\n"})

    def test_the_list_file_is_kept_as_the_wizard_saved_it(self):
        self.assertEqual(read(os.path.join(self.crawl.program_folder, "temp", "filetypes.txt")),
                         b".html\r\n.txt\r\n")


class InstalledProgram(MirrorChecks, unittest.TestCase):
    # The executable's folder read-only, as under /usr/bin: the same crawl as
    # CustomFileTypes, its list read from $XDG_DATA_HOME/Vantorin.
    expected = "types"

    @classmethod
    def setUpClass(cls):
        cls.crawl = Run("installed", ["--url", "http://www.e2esite.test/types/index.html", "--dir", "{out}"],
                        files={"temp/filetypes.txt": b".html\r\n.txt\r\n"}, installed=True)

    def test_nothing_is_written_beside_the_program(self):
        self.assertEqual(os.listdir(self.crawl.program_folder), ["vantorin"])
        self.assertTrue(os.path.isdir(os.path.join(self.crawl.files_folder, "dldata")))

    def test_first_start_makes_the_data_folder(self):
        run = Run("installed-first", ["--url", "www.e2esite.test", "--dir", "/proc/version/site"],
                  installed=True)
        self.assertEqual(run.status, 2, run.stderr)
        self.assertTrue(os.path.isdir(os.path.join(run.files_folder, "dldata")))


class SilentServer(MirrorChecks, unittest.TestCase):
    # A server that accepts and never answers: three attempts of one second,
    # the timeout text saved each time, then completion; nothing was received.
    expected = "silent"
    host = "www.silent.test"
    status = 4

    @classmethod
    def setUpClass(cls):
        cls.crawl = Run("silent", ["--url", "www.silent.test", "--dir", "{out}", "--timeout", "1"])

    def test_timeout_text_lands_nowhere_after_three_timeouts(self):
        # The timeout's name " \\ host/path" leaves a blank before the host
        # folder: the folder made is "silent.test", the file would go to
        # " silent.test", so only the search record and the empty folder remain.
        self.assertEqual(os.listdir(os.path.join(self.crawl.out, "silent.test")), [])
        self.assertFalse(os.path.exists(os.path.join(self.crawl.out, " silent.test")))
        self.assertEqual(len(self.crawl.requests), 3)
        self.assertGreater(self.crawl.seconds, 2.5)
        self.assertLess(self.crawl.seconds, 10)


class Refusals(unittest.TestCase):
    def test_exit_codes_and_messages(self):
        quick = ["--dir", "{out}", "--timeout", "0.3"]
        cases = [
            # name, arguments, exit status, text expected on stdout or stderr
            ("unwritable", ["--url", "www.e2esite.test", "--dir", "/proc/version/site"], 2,
             b"Eror: That is an invalid directory. Check it has no invalid characters.\n"),
            ("no-dir", ["--url", "www.e2esite.test"], 64, b"--dir FOLDER is required"),
            ("unknown", ["--url", "x", "--dir", "y", "--depth", "3"], 64, b"unknown argument: --depth"),
            ("connections-0", ["--url", "x", "--dir", "y", "--connections", "0"], 64,
             b"--connections takes a whole number from 1 to 24: 0"),
            ("connections-99", ["--url", "x", "--dir", "y", "--connections", "99"], 64,
             b"--connections takes a whole number from 1 to 24: 99"),
            ("timeout-negative", ["--url", "x", "--dir", "y", "--timeout", "-1"], 64,
             b"--timeout takes a number of seconds from 0.001 to 2147483: -1"),
            ("version", ["--version"], 0, b"Vantorin Website Downloader 1.9\n"),
            ("help", ["--help"], 0, b"--connections N    connections at once, 1 to 24"),
            # Chosen from the list, 24 is taken, as the window takes it.
            ("connections-24", ["--url", "www.e2esite.test/a.html", "--connections", "24", *quick],
             0, DONE_LINE),
            # Nothing received: the hint at start says why where it can.
            ("unknown-host", ["--url", "www.nowhere.test", *quick], 4,
             b"No server answered: nothing was received.\n"),
            ("https", ["--url", "https://www.e2esite.test/", *quick], 4,
             b'Hint: the address starts with "https://"'),
            ("port", ["--url", "www.e2esite.test:8080", *quick], 4,
             b'Hint: the address names a port (":8080")'),
            ("empty", ["--url", "", *quick], 4, b"Hint: the address is empty"),
        ]
        for name, args, status, text in cases:
            with self.subTest(name):
                run = Run("refusal-" + name, args)
                self.assertEqual(run.status, status, run.stderr)
                self.assertIn(text, run.stdout + run.stderr)
                if status != 0:
                    self.assertEqual(run.requests, [])
                    self.assertEqual(run.stdout.count(DONE_LINE), 0)


class Interrupt(unittest.TestCase):
    def test_sigint_while_pages_are_coming_stops_and_sweeps(self):
        def interrupt_when_busy(run):
            run.wait_for_requests(4)
            time.sleep(0.2)
            run.interrupt()

        run = Run("interrupt", ["--url", "www.slow.test", "--dir", "{out}"], during=interrupt_when_busy)
        self.assertEqual(run.status, 130, run.stderr)
        self.assertIn(b"Interrupted", run.stderr)
        self.assertEqual(len(run.requests), 4)
        self.assertIn(os.path.join("slow.test", "index.html"), run.files())
        self.assertEqual(run.tmp_files(), [])


if __name__ == "__main__":
    sys.exit(harness.main(HOSTS, lambda: harness.LoggingServer(SiteHandler)))
