"""Runs brimvale_bench and its peers in turn, several pairs a job, and prints medians and ratios with the limit that the
machine itself sets beside them. Called by script/bench."""

import argparse
import json
import os
import shutil
import statistics
import subprocess
import tempfile
import time
from pathlib import Path


class Workplace:
    """Input on a disk, and the same files in memory; removed in the end."""

    def __init__(self, build, disk):
        self.build = build
        self.disk = Path(tempfile.mkdtemp(prefix="brimvale-bench-", dir=disk))
        self.memory = Path(tempfile.mkdtemp(prefix="brimvale-bench-", dir="/dev/shm"))
        self.run([build / "brimvale_bench", "--make-input", self.disk])
        shutil.copytree(self.disk / "files", self.memory / "files")
        for each in (self.disk, self.memory):
            (each / "out").mkdir(exist_ok=True)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        shutil.rmtree(self.disk)
        shutil.rmtree(self.memory)

    def environment(self, folder):
        return os.environ | {"BRIMVALE_BENCH_DIR": str(folder), "BRIMVALE_BENCH_DIR2": str(self.memory),
                             "HOME": str(folder), "XDG_CONFIG_HOME": str(folder / ".config")}

    def run(self, command, folder=None):
        """Seconds and peak memory in bytes of a whole process, and what it printed."""
        started = time.perf_counter()
        process = subprocess.Popen([str(part) for part in command], env=self.environment(folder or self.disk),
                                   stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        output = process.stdout.read()
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
        if process.returncode != 0:
            raise SystemExit(f"{' '.join(map(str, command))} ended with {process.returncode}")
        return time.perf_counter() - started, usage.ru_maxrss * 1024, output

    def benchmark(self, program, name, folder=None, minimum=0.1):
        """Seconds that one iteration takes."""
        _, _, output = self.run([self.build / program, f"--benchmark_filter=^{name}(/|$)", "--benchmark_format=json",
                                 f"--benchmark_min_time={minimum}"], folder)
        result = json.loads(output)["benchmarks"][0]
        if result.get("error_occurred"):
            raise SystemExit(f"{name}: {result['error_message']}")
        return result["real_time"] * {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1}[result["time_unit"]]


def pairs(count, ours, peer):
    """Both in turn, as often: medians of ours, of the peer, and of the ratio within a pair."""
    measured = []
    for number in range(count):
        first, second = (ours, peer) if number % 2 == 0 else (peer, ours)
        one, two = first(), second()
        measured.append((one, two) if first is ours else (two, one))
    return (statistics.median(a for a, _ in measured), statistics.median(b for _, b in measured),
            statistics.median(a / b for a, b in measured))


def seconds(value):
    if value is None:
        return ""
    for unit, size in (("s", 1), ("ms", 1e-3)):
        if value >= size:
            return f"{value / size:.3g} {unit}"
    return f"{value * 1e6:.3g} µs"


def row(job, against, result, limit, aim=""):
    ours, peer, ratio = result
    print(f"| {job} | {against} | {seconds(ours)} | {seconds(peer)} | {ratio:.2f} | {aim} | {seconds(limit)} |", flush=True)


def compare_editor(place, count):
    ours, peer = "brimvale_bench", "bench_peers"
    for size, aim in (("12K", 1), ("128K", ""), ("1M", 0.4), ("8M", ""), ("64M", 0.4)):
        job = f"inspect/{size}"
        result = pairs(count, lambda: place.benchmark(ours, job), lambda: place.benchmark(peer, job))
        row(f"inspect {size}", "libxml2, XPath", result, place.benchmark(peer, f"limit_read/{size}"), aim)
    _, memory, _ = place.run([place.build / ours, "--benchmark_filter=^inspect/64M$", "--benchmark_min_time=0"])
    factor = memory / (place.disk / "files/64M.motn").stat().st_size
    print(f"| inspect 64M, peak memory | the file | {memory / 1e6:.0f} MB | | {factor:.2f} | 4.6 | |", flush=True)

    for where, folder in (("in memory", place.memory), ("on the disk", place.disk)):
        for size, aim in (("12K", ""), ("1M", 0.4), ("64M", "")):
            file = folder / f"files/{size}.motn"
            edit = ["xmlstarlet", "ed", "-P", "-L", "-u", "(//frameRate)[1]", "-v", "25", "-u", "(//duration)[1]", "-v", "250",
                    "-u", "(//NTSC)[1]", "-v", "0", file]
            result = pairs(count, lambda: place.benchmark(ours, f"conform/{size}", folder), lambda: place.run(edit)[0])
            limit = place.benchmark(peer, f"limit_write/{size}", folder)
            row(f"conform {size}, {where}", "`xmlstarlet ed`", result, limit, aim)


def compare_trees(place, count):
    for shape, aim in (("20x4K", ""), ("200x4K", ""), ("2000x4K", ""), ("20000x4K", 0.6), ("1000x200K", 0.75),
                       ("4x128M", 0.75)):
        tree, copy = place.disk / "trees" / shape, place.disk / "out" / shape

        def alone(measure):
            shutil.rmtree(copy, ignore_errors=True)
            os.sync()  # what the last one left to write is not this one's
            return measure()
        result = pairs(count, lambda: alone(lambda: place.benchmark("brimvale_bench", f"copy_tree/{shape}")),
                       lambda: alone(lambda: place.run(["cp", "-a", tree, copy])[0]))
        limit = alone(lambda: place.benchmark("bench_peers", f"limit_copy/{shape}"))
        row(f"copy {shape}", "`cp -a`", result, limit, aim)

    for shape, aim in (("20000x4K", 0.85), ("1000x200K", 0.85), ("4x128M", 0.85)):
        tree, moved = place.disk / "trees" / shape, place.memory / "out" / shape

        def back(measure):
            measured = measure()
            shutil.move(moved, tree)
            os.sync()
            return measured
        result = pairs(count, lambda: back(lambda: place.benchmark("brimvale_bench", f"move_tree_cross_fs/{shape}")),
                       lambda: back(lambda: place.run(["mv", tree, moved])[0]))
        row(f"move {shape} to another file system", "`mv`", result, None, aim)


def compare_history(place, count):
    def load(program, records):
        place.benchmark(program, f"history_append/{records}", minimum=0)
        return lambda: place.benchmark(program, f"history_load/{records}")
    for records in (100, 10000, 100000):
        job = f"history_append/{records}"
        result = pairs(count, lambda: place.benchmark("brimvale_bench", job), lambda: place.benchmark("bench_peers", job))
        row(f"append to {records} records", "QSettings", result, None, 1.2)
        result = pairs(count, load("brimvale_bench", records), load("bench_peers", records))
        row(f"load {records} records", "QSettings", result, None, 1.2)


def compare_start(place, count, program):
    """From the start of the process to the first picture that goes to the display."""
    ours, theirs = os.pipe()
    display = subprocess.Popen(["Xvfb", "-displayfd", str(theirs), "-screen", "0", "1280x1024x24"], pass_fds=(theirs,),
                               stderr=subprocess.DEVNULL)
    os.close(theirs)
    with open(ours) as number:
        os.environ["DISPLAY"] = ":" + number.readline().strip()

    def started(command):
        paint = f"LD_PRELOAD={place.build / 'libbench_first_paint.so'}"
        return lambda: place.run(["env", "QT_QPA_PLATFORM=xcb", paint, command])[0]
    for name, records, aim in (("start", 0, 1.35), ("start with 10000 records", 10000, 2.4)):
        if records:
            place.benchmark("bench_peers", f"history_append/{records}", minimum=0)
        result = pairs(4 * count, started(program), started(place.build / "bench_plain_window"))
        row(name, "a plain Qt window", result, None, aim)
    display.terminate()
    display.wait()


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--build", type=Path, required=True, help="the folder of brimvale_bench and its peers")
    parser.add_argument("--program", type=Path, required=True, help="the program whose start is measured")
    parser.add_argument("--disk", type=Path, default=Path(tempfile.gettempdir()), help="a folder on a disk, for 2 GB")
    parser.add_argument("--pairs", type=int, default=5)
    parser.add_argument("--only", choices=("editor", "trees", "history", "start"))
    arguments = parser.parse_args()
    with Workplace(arguments.build.resolve(), arguments.disk) as place:
        print("| job | against | ours | peer | ratio | aim | limit |\n|---|---|---|---|---|---|---|")
        jobs = {"editor": compare_editor, "history": compare_history, "trees": compare_trees,
                "start": lambda *these: compare_start(*these, arguments.program.resolve())}
        for name, compare in jobs.items():
            if arguments.only in (None, name):
                compare(place, arguments.pairs)


main()
