"""The window against the command line on one generated site, side by side in
one run. Run it through window_vs_cli.sh, which enters a private network and
mount namespace (as run.sh does for the crawl benchmark):

    sh bench/crawl/window_vs_cli.sh build-bench/app/vantorin [options]

PROGRAM is the built executable; vantorin-window.so must sit beside it. Needs
Xvfb, openbox, xdotool, g++, pkg-config with Qt 6 Widgets, /usr/bin/time and
python3 (sh scripts/install-deps.sh screenshots adds the X tools).

The site (by default 10,000 pages and the index, no other files) is served
with the crawl benchmark's threaded server at 0 ms. Each run mirrors it:

- the command line: vantorin --url www.bench.test --dir OUT --connections N,
  under /usr/bin/time -v (CPU user + sys, peak RSS, wall);
- the window, under Xvfb with openbox: the settings file holds the address,
  the folder and the timeout, so the New Site Wizard that opens at start is
  filled in, and Return presses its default button "Download Website Now!".
  The connections box keeps its default of 4; with --connections other than 4
  the count is typed into it just after the start (the wizard is modal before
  it), while the start page is the only job. The end is the
  "Done." message box appearing: at that moment the process's CPU time
  (utime + stime from /proc/PID/stat) and the files saved are read; then the
  box is answered No and the program asked to exit (killed if it does not).

The window runs with label_log.so preloaded (built here from label_log.cpp):
it logs every QLabel::setText on the connection rows' status labels, whose
objectName matches --row-pattern. From that log: the longest time one row's
status was empty (the row shows only its number), the most rows empty at the
same moment, and the row-seconds empty, from the start press to "Done.".
"""
import argparse
import collections
import json
import os
import re
import select
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, HERE)
import bench_crawl  # noqa: E402
import gen_site  # noqa: E402

WINDOW_TITLE = "^Vantorin Website Downloader"
TICKS = os.sysconf("SC_CLK_TCK")


def cpu_seconds(pid):
    """utime + stime of a live process, from /proc/PID/stat."""
    with open(f"/proc/{pid}/stat") as f:
        fields = f.read().rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / TICKS


def peak_rss_mb(pid):
    with open(f"/proc/{pid}/status") as f:
        found = re.search(r"VmHWM:\s+(\d+) kB", f.read())
    return int(found.group(1)) / 1024 if found else float("nan")


def find_window(title, wait=30.0):
    """The id of a visible window whose name matches `title`, or None."""
    deadline = time.monotonic() + wait
    while True:
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", title],
                               capture_output=True, text=True).stdout.split()
        if found or time.monotonic() >= deadline:
            return found[0] if found else None
        time.sleep(0.1)


def xdotool(*args):
    subprocess.run(["xdotool"] + list(args), check=False)


def write_settings(env, url, folder, timeout):
    """The per-user settings the wizard starts from."""
    conf = os.path.join(env["XDG_CONFIG_HOME"], "Vantorin")
    os.makedirs(conf, exist_ok=True)
    with open(os.path.join(conf, "Vantorin.conf"), "w") as f:
        f.write(f"[Settings]\nLastURL={url}\nInDir={folder}\nTimeout={timeout}\n")


def build_label_log(work):
    """Compiles label_log.cpp against Qt 6 Widgets; answers the library's path."""
    library = os.path.join(work, "label_log.so")
    flags = subprocess.run(["pkg-config", "--cflags", "--libs", "Qt6Widgets"], check=True,
                           capture_output=True, text=True).stdout.split()
    # The library calls nothing of Qt Widgets by name (it finds QLabel::setText
    # with dlsym), so the linker must be told to keep it as a dependency.
    subprocess.run(["g++", "-std=c++17", "-O2", "-fPIC", "-shared",
                    os.path.join(HERE, "label_log.cpp"), "-o", library, "-Wl,--no-as-needed"]
                   + flags + ["-ldl"], check=True)
    return library


class Display:
    """Xvfb on a display number of its own, with openbox on it."""

    def __init__(self):
        self.processes = []
        readable, writable = os.pipe()
        self.processes.append(subprocess.Popen(
            ["Xvfb", "-displayfd", str(writable), "-screen", "0", "1280x1024x24", "-nolisten",
             "tcp"], pass_fds=(writable,), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL))
        os.close(writable)
        # The number and its line end come in two writes; the pipe stays open
        # until both are in, or Xvfb would fail on the second.
        said = b""
        while not said.endswith(b"\n") and select.select([readable], [], [], 10)[0]:
            chunk = os.read(readable, 64)
            if not chunk:
                break
            said += chunk
        os.close(readable)
        number = said.decode().strip() if said.endswith(b"\n") else ""
        if not number:
            self.close()
            raise RuntimeError("Xvfb did not start")
        os.environ["DISPLAY"] = ":" + number
        self.processes.append(subprocess.Popen(["openbox"], stdout=subprocess.DEVNULL,
                                               stderr=subprocess.DEVNULL))
        time.sleep(1)

    def x_server_cpu(self):
        return cpu_seconds(self.processes[0].pid)

    def close(self):
        for process in reversed(self.processes):
            process.terminate()
            process.wait()


def run_cli(program, env, out, connections, server):
    server.count = 0
    run = bench_crawl.timed([program, "--url", "www.bench.test", "--dir", out,
                             "--connections", str(connections)], env)
    saved = bench_crawl.count_files(out, skip=("_SearchData",))
    return {"wall": run.wall, "cpu": run.cpu, "rss": run.rss, "saved": saved,
            "requests": server.count, "status": run.status}


def end_window(program):
    """Answers "Done." with No, then asks to exit with Ctrl+Q and answers Yes,
    as often as the exit question comes (it may come twice); kills the
    program when it has not ended after that."""
    done = find_window(r"^Done\.$", 2)
    if done:
        xdotool("windowactivate", "--sync", done, "key", "Escape")
        # A key sent while the box is still going away is lost.
        time.sleep(1)
    for _ in range(4):
        if program.poll() is not None:
            break
        asked = find_window("^Exit Vantorin$", 1)
        if asked:
            time.sleep(0.5)
            xdotool("windowactivate", "--sync", asked, "key", "Return")
        else:
            main = find_window(WINDOW_TITLE, 1)
            if main:
                xdotool("windowactivate", "--sync", main, "key", "ctrl+q")
        try:
            program.wait(2)
        except subprocess.TimeoutExpired:
            pass
    try:
        program.wait(10)
        return "exited"
    except subprocess.TimeoutExpired:
        program.kill()
        program.wait()
        return "killed"


def run_window(program, env, out, connections, server, display, label_library, pattern, log,
               limit):
    env = dict(env, QT_QPA_PLATFORM="xcb", DISPLAY=os.environ["DISPLAY"],
               LD_PRELOAD=label_library, LABEL_LOG_FILE=log, LABEL_LOG_PATTERN=pattern)
    server.count = 0
    x_before = display.x_server_cpu()
    started = time.monotonic()
    with open(log + ".out", "w") as output:
        process = subprocess.Popen([program], env=env, stdout=output, stderr=output)
    wizard = find_window("^New Site Wizard$")
    if not wizard:
        end_window(process)
        with open(log + ".out") as output:
            raise RuntimeError("the New Site Wizard did not open; the program said:\n" +
                               output.read()[-2000:])
    time.sleep(1)
    startup_cpu = cpu_seconds(process.pid)
    t0 = time.monotonic()
    xdotool("windowactivate", "--sync", wizard, "key", "Return")
    if connections != 4:
        # The wizard is modal, so the connections box takes typing only once
        # the crawl has started; the scheduler reads the count afresh at each
        # tick. The box, in the main window's pixels at 96 dpi.
        main = find_window(WINDOW_TITLE)
        while find_window("^New Site Wizard$", 0):
            time.sleep(0.05)
        xdotool("mousemove", "--window", main, "575", "434", "click", "1", "key", "ctrl+a",
                "type", str(connections))
    done = None
    while done is None and process.poll() is None and time.monotonic() - t0 < limit:
        time.sleep(0.2)
        done = find_window(r"^Done\.$", 0)
    t1 = time.monotonic()
    if done is None:
        ending = end_window(process)
        raise RuntimeError(f"no \"Done.\" box within {limit} s (program {ending})")
    cpu = cpu_seconds(process.pid)
    rss = peak_rss_mb(process.pid)
    saved = bench_crawl.count_files(out, skip=("_SearchData",))
    requests = server.count
    x_cpu = display.x_server_cpu() - x_before
    ending = end_window(process)
    return {"wall": t1 - t0, "cpu": cpu, "startup_cpu": startup_cpu, "rss": rss,
            "saved": saved, "requests": requests, "status": ending, "x_cpu": x_cpu,
            "t0": t0, "t1": t1, "since_launch": t1 - started}


def read_label_log(path):
    """(loaded, {objectName: [(time, text), ...]}, summary line)."""
    rows = collections.defaultdict(list)
    loaded, summary = False, ""
    with open(path, encoding="utf-8", errors="replace") as f:
        for line in f:
            line = line.rstrip("\n")
            if line == "# loaded":
                loaded = True
            elif line.startswith("# calls"):
                summary = line[2:]
            elif line:
                stamp, name, text = (line.split("\t", 2) + [""])[:3]
                rows[name].append((float(stamp), text))
    return loaded, rows, summary


def blank_intervals(rows, t0, t1):
    """The intervals, within [t0, t1], in which a row's last text was ""."""
    intervals = []
    for name, changes in rows.items():
        blank_since = None
        for stamp, text in changes:
            if text == "" and blank_since is None:
                blank_since = stamp
            elif text != "" and blank_since is not None:
                intervals.append((name, blank_since, stamp))
                blank_since = None
        if blank_since is not None:
            intervals.append((name, blank_since, t1))
    clipped = [(n, max(a, t0), min(b, t1)) for n, a, b in intervals]
    return [(n, a, b) for n, a, b in clipped if b > a]


def analyse(rows, t0, t1):
    intervals = blank_intervals(rows, t0, t1)
    if not intervals:
        return {"intervals": 0, "longest": 0.0, "longest_at": 0.0, "longest_row": "-",
                "most_at_once": 0, "seconds_by_count": {0: t1 - t0}, "row_seconds": 0.0,
                "median": 0.0}
    name, a, b = max(intervals, key=lambda i: i[2] - i[1])
    events = sorted([(s, 1) for _, s, _ in intervals] + [(e, -1) for _, _, e in intervals],
                    key=lambda e: (e[0], e[1]))
    at_once = most = 0
    # Seconds of the crawl during which exactly k rows were empty, by k.
    seconds_by_count = collections.Counter()
    last = t0
    for stamp, step in events:
        seconds_by_count[at_once] += stamp - last
        last = stamp
        at_once += step
        most = max(most, at_once)
    seconds_by_count[at_once] += t1 - last
    return {"intervals": len(intervals), "longest": b - a, "longest_at": a - t0,
            "longest_row": name, "most_at_once": most,
            "seconds_by_count": dict(sorted(seconds_by_count.items())),
            "row_seconds": sum(e - s for _, s, e in intervals),
            "median": statistics.median(e - s for _, s, e in intervals)}


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    parser.add_argument("program")
    parser.add_argument("--pages", type=int, default=10000)
    parser.add_argument("--images", type=int, default=0)
    parser.add_argument("--sheets", type=int, default=0)
    parser.add_argument("--connections", type=int, default=4)
    parser.add_argument("--timeout", default="15", help="the wizard's timeout, seconds")
    parser.add_argument("--runs", type=int, default=1, help="command line and window, each")
    parser.add_argument("--row-pattern", default=r"l([1-9]|1[0-9]|2[0-4])",
                        help="objectName of the rows' status labels (a full match)")
    parser.add_argument("--limit", type=float, default=3600, help="seconds a window run may take")
    parser.add_argument("--keep", help="copy the label logs into this folder")
    args = parser.parse_args()
    program_source = os.path.abspath(args.program)

    work = tempfile.mkdtemp(prefix="vantorin-wvc-")
    display = None
    try:
        # The site and the mirrors on a file system of their own in memory: on
        # a disk, the files one run made and deleted (its placeholders) slow
        # down making files in the next, which would tax whichever runs second.
        subprocess.run(["mount", "-t", "tmpfs", "-o", "size=4g", "tmpfs", work], check=True)
        bench_crawl.enter_test_network(work)
        site = os.path.join(work, "site")
        gen_site.main(site, args.pages, args.images, args.sheets)
        files = bench_crawl.count_files(site)
        server = bench_crawl.Server(os.path.realpath(site))
        program_folder = os.path.join(work, "program")
        os.makedirs(program_folder)
        for name in ("vantorin", "vantorin-window.so"):
            shutil.copy2(os.path.join(os.path.dirname(program_source), name), program_folder)
        program = os.path.join(program_folder, "vantorin")
        label_library = build_label_log(work)
        env = bench_crawl.program_env(work)
        display = Display()

        print(f"Site: {files} files ({args.pages} pages, {args.images} images, {args.sheets} "
              f"style sheets, the index); {args.connections} connections, 0 ms, "
              f"timeout {args.timeout} s", flush=True)
        results = []
        for n in range(args.runs):
            out = os.path.join(work, f"cli-{n}")
            write_settings(env, "www.bench.test", out + "/", args.timeout)
            cli = run_cli(program, env, out, args.connections, server)
            print(f"run {n + 1} command line: {cli}", flush=True)
            shutil.rmtree(out, ignore_errors=True)

            out = os.path.join(work, f"window-{n}")
            os.makedirs(out)
            write_settings(env, "www.bench.test", out + "/", args.timeout)
            log = os.path.join(work, f"labels-{n}.log")
            window = run_window(program, env, out, args.connections, server, display,
                                label_library, args.row_pattern, log, args.limit)
            loaded, rows, summary = read_label_log(log)
            blanks = analyse(rows, window["t0"], window["t1"])
            printable = {k: v for k, v in window.items() if k not in ("t0", "t1")}
            print(f"run {n + 1} window: {printable}", flush=True)
            print(f"run {n + 1} label log: loaded={loaded}, {summary or 'no summary'}, "
                  f"rows seen {sorted(rows)}", flush=True)
            if args.keep:
                os.makedirs(args.keep, exist_ok=True)
                shutil.copy2(log, os.path.join(args.keep, os.path.basename(log)))
                # The crawl's start press and "Done." on the log's clock, and the figures.
                with open(os.path.join(args.keep, f"run-{n}.json"), "w") as f:
                    json.dump({"command line": cli, "window": window, "blanks": blanks}, f)
            shutil.rmtree(out, ignore_errors=True)
            results.append((cli, window, loaded, blanks))

        print("\n| run | crawler | wall s | files saved | requests | CPU s | CPU ms/file "
              "| peak RSS MB | end |")
        print("|---|---|---|---|---|---|---|---|---|")
        for n, (cli, window, _, _) in enumerate(results, 1):
            for name, r in (("command line", cli), ("window", window)):
                per_file = 1000 * r["cpu"] / r["saved"] if r["saved"] else float("nan")
                print(f"| {n} | {name} | {r['wall']:.1f} | {r['saved']} | {r['requests']} "
                      f"| {r['cpu']:.2f} | {per_file:.2f} | {r['rss']:.1f} | {r['status']} |")
        print("\n| run | window/CLI CPU per file | window CPU at start press s "
              "| X server CPU s | longest blank row s (row, s after start) "
              "| most rows blank at once | row-seconds blank | blank intervals | median s |")
        print("|---|---|---|---|---|---|---|---|---|")
        for n, (cli, window, loaded, b) in enumerate(results, 1):
            ratio = ((window["cpu"] / window["saved"]) / (cli["cpu"] / cli["saved"])
                     if window["saved"] and cli["saved"] and cli["cpu"] else float("nan"))
            blank = (f"{b['longest']:.3f} ({b['longest_row']}, {b['longest_at']:.1f})"
                     if loaded else "log not loaded")
            print(f"| {n} | {ratio:.2f} | {window['startup_cpu']:.2f} | {window['x_cpu']:.2f} "
                  f"| {blank} | {b['most_at_once']} | {b['row_seconds']:.1f} "
                  f"| {b['intervals']} | {b['median']:.4f} |")
        print("\n| run | seconds of the crawl with k rows empty, k: seconds |")
        print("|---|---|")
        for n, (_, _, _, b) in enumerate(results, 1):
            spread = ", ".join(f"{k}: {v:.1f}" for k, v in b["seconds_by_count"].items())
            print(f"| {n} | {spread} |")
        server.shutdown()
    finally:
        if display:
            display.close()
        subprocess.run(["umount", "-l", work], check=False)
        shutil.rmtree(work, ignore_errors=True)


if __name__ == "__main__":
    main()
