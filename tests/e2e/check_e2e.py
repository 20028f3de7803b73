# End-to-end tests: the built program crawls the fixture site in
# tests/e2e/site on 127.0.0.1:80 inside a private network namespace (run by
# run_e2e.sh); the mirror, the record files and the exact request bytes are
# checked against tests/e2e/expected.
import os
import sys
import unittest

import harness
from harness import DONE_LINE, Run, read

SITE, EXPECTED = os.path.join(harness.HERE, "site"), os.path.join(harness.HERE, "expected")
HOST = "www.e2esite.test"
# The list as a user may write it: kept trimmed and without blank lines, matched in any case.
TYPES = {"temp/filetypes.txt": b"  .HTML \r\n\r\n.txt\r\n"}
# What the window stored; the command line neither reads nor changes it.
STORED = b"[Settings]\nInDir=/nowhere/\nLastURL=http://www.other.test/\nTimeout=0.001\n"
OFFLINE = {"main": (b"25 of 40", b"4"), "types": (b"2 of 4", b"0")}


def answer(handler, host, path):
    full = os.path.normpath(os.path.join(SITE, path.split("?", 1)[0].lstrip("/")))
    full = os.path.join(full, "index.html") if os.path.isdir(full) else full
    if full.startswith(SITE) and os.path.isfile(full):
        return handler.send(read(full))
    handler.send(b"<html><body><h1>Not Found</h1><p>No such page here.</p></body></html>\n",
                 b"404 Not Found")


def contents(top):
    # Every file under top and its bytes; a search data file as its records
    # ("! page" line, text line), sorted: parallel jobs finish in any order.
    return {p: sorted(read(f).replace(b"\r\n!", b"\r\n\0!").split(b"\0")) if p.startswith("_SearchData") else read(f)
            for p, f in harness.tree(top).items()}


class EndToEnd(unittest.TestCase):
    # The main site (every link spelling, renaming, "../", refresh, skipped
    # schemes, an off-site link, an unlisted type, a filter keyword, a 404) on
    # one connection, so the crawl order and records are fixed; and the types
    # site with a list of ".html" and ".txt", four connections, the program
    # installed (its bin folder writable) so its files go to $XDG_DATA_HOME.
    def test_mirrors_match_byte_for_byte(self):
        for expected, url, args, kwargs in [
            ("main", HOST, ["--connections", "1"], {"files": {"filters.txt": b"ads\r\n"}}),
            ("types", "http://www.e2esite.test/types/index.html", [],
             {"files": TYPES, "installed": True, "settings": STORED}),
        ]:
            with self.subTest(expected):
                run = Run(expected, HOST, ["--url", url, "--dir", "{out}", *args], **kwargs)
                self.assertEqual((run.status, run.stdout), (0, DONE_LINE), run.stderr)
                # The offline check over the pages saved, last on stderr: the
                # mirror keeps "list.php_id=3" links and root-relative ones.
                self.assertTrue(run.stderr.endswith(b"\nOffline check: %s links between saved pages lead to a "
                                                    b"saved file; %s lead online.\n" % OFFLINE[expected]),
                                run.stderr[-300:])
                self.assertNotIn(b"\033[K", run.stderr)  # progress as lines: stderr is no terminal
                self.assertEqual(contents(run.out), contents(os.path.join(EXPECTED, expected)), run.stderr[-2000:])
                # Every request in full; on one connection in the order of the list (newest first).
                order = list if expected == "main" else sorted
                self.assertEqual(order(raw for _, raw in run.requests), order(
                    f"GET {p} HTTP/1.0\r\nHost: {HOST}\r\nReferrer: {HOST}\r\nUser-Agent: Internet Explorer 6.01"
                    f"\r\n\r\n".encode() for p in read(os.path.join(EXPECTED, expected + ".requests")).decode().split()))
                # Nothing read from the stored settings (a 1 ms timeout would fail every
                # file), nothing written to them.
                self.assertEqual({p: read(f) for p, f in harness.tree(run.config).items()},
                                 {"Vantorin/Vantorin.conf": STORED} if "settings" in kwargs else {})
                if expected == "types":  # the program's files in $XDG_DATA_HOME, none beside it
                    self.assertEqual((sorted(harness.tree(run.prefix)), sorted(os.listdir(run.files_folder)),
                                      read(os.path.join(run.files_folder, "temp", "filetypes.txt"))),
                                     (["bin/vantorin", "libexec/vantorin/vantorin-window.so"], ["dldata", "temp"],
                                      b".HTML\r\n.txt\r\n"))

    # How main() maps what happened to its exit status and words; the parsing
    # and the hints are unit-tested, exits 2 and 4 are rows of check_faults.py.
    def test_exit_statuses(self):
        quick = ["--dir", "{out}", "--timeout", "0.2"]
        for name, args, status, text in [
            ("usage", ["--url", HOST, "--dir", " "], 64, b"--dir FOLDER is required"),  # a blank one too
            ("version", ["--version"], 0, b"Vantorin Website Downloader 1.9\n"),
            ("connections-24", ["--url", HOST + "/a.html", "--connections", "24", *quick], 0, DONE_LINE),
            ("hint", ["--url", "https://" + HOST + "/", *quick], 4, b'Hint: the address starts with "https://"'),
            ("check", ["--check", os.path.join(EXPECTED, "main")], 1,
             b"saved file; 4 lead online.\ne2esite.test/index.html -> list.php_id=3 (looked for: "),
            ("check-missing", ["--check", "{out}"], 2, b"cannot be read: No such file or directory\n"),
            ("no-display", [], 1, b"no graphical session (neither DISPLAY nor WAYLAND_DISPLAY is set): "
                                  b"use the command line instead: vantorin --url ADDRESS --dir FOLDER (see vantorin --help)\n"),
        ]:
            with self.subTest(name):
                run = Run(name, HOST, args, unset=("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"))
                self.assertEqual(run.status, status, run.stderr)
                self.assertIn(text, run.stdout + run.stderr)
                self.assertEqual(run.stdout.count(DONE_LINE), status == 0 and name != "version")
                self.assertEqual(run.requests != [], name == "connections-24")


if __name__ == "__main__":
    sys.exit(harness.main("127.0.0.1 localhost www.e2esite.test e2esite.test other.test\n", answer))
