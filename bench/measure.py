#!/usr/bin/env python3
"""Measures whole runs of tessaly-cli against copying the same files, and the cost of hostile pages."""

import argparse
import os
import platform
import shutil
import statistics
import subprocess
import sys
import tempfile
import time
from collections import namedtuple
from datetime import date
from pathlib import Path

from generate_board import ADMIN_FOLDER, WEBSITE
from hostile_boards import SHAPES, generate_hostile

# In memory where there is such a folder, so that the disk does not decide.
FOLDER = Path("/dev/shm") if Path("/dev/shm").is_dir() else Path(tempfile.gettempdir())
BENCH = Path(__file__).resolve().parent
SOURCE_TREE = BENCH.parent

Cost = namedtuple("Cost", "wall cpu peak")
Board = namedtuple("Board", "name folder megabytes pages posts")


def run(command, allowed=(0,)):
    """The cost of one process and its children; what it prints is read through a pipe."""
    started = time.perf_counter()
    process = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    printed = process.stdout.read()
    _, status, usage = os.wait4(process.pid, 0)
    wall = time.perf_counter() - started
    process.stdout.close()
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode not in allowed:
        sys.exit(f"{' '.join(map(str, command))} gave {process.returncode}:\n{printed.decode()}")
    return Cost(wall, usage.ru_utime + usage.ru_stime, usage.ru_maxrss / 1024)


def median(costs):
    return Cost(*(statistics.median(column) for column in zip(*costs)))


class Bench:
    def __init__(self, options, folder):
        self.program = options.program
        self.runs = options.runs
        self.folder = folder
        self.output = folder / "output"

    def convert(self, root, *more, allowed=(0,)):
        shutil.rmtree(self.output, ignore_errors=True)
        settings = self.folder / "settings.ini"
        settings.unlink(missing_ok=True)
        return run(
            [self.program, "convert", "--root", root, "--output", self.output, "--website", WEBSITE,
             "--forum", "http://forum.example/", "--admin", "admin", "--program-folder", SOURCE_TREE,
             "--ini", settings, *more],
            allowed,
        )  # fmt: skip

    def read(self, root):
        return run(["sh", "-c", 'find "$0" -type f -print0 | xargs -0 cat > /dev/null', root])

    def copy(self, root):
        """The source and the output of the last run, copied to where nothing lies."""
        target = self.folder / "copy"
        shutil.rmtree(target, ignore_errors=True)
        return run(["sh", "-c", 'mkdir "$2" && cp -r "$0" "$1" "$2"', root, self.output, target])

    def board(self, name, pages, posts, members, attachments, message_length=1600):
        folder = self.folder / name.replace(" ", "-")
        sizes = {"pages": pages, "posts": posts, "members": members, "attachments": attachments,
                 "message-length": message_length}  # fmt: skip
        run([sys.executable, BENCH / "generate_board.py", folder, *(f"--{n}={v}" for n, v in sizes.items())])
        size = sum(file.stat().st_size for file in folder.rglob("*.html"))
        return Board(name, folder, size / 1e6, pages, posts)

    def healthy(self, name, size):
        return self.board(name, *(round(size * number) for number in (3000, 60000, 5000, 2000)))

    def measure(self, board, variants):
        """Turn by turn, so that a busy moment of the machine meets all of them."""
        own = {name: [] for name in variants}
        reads, copies = [], []
        self.convert(board.folder)
        for _ in range(self.runs):
            for name, options in variants.items():
                own[name].append(self.convert(board.folder, *options))
            self.convert(board.folder)
            reads.append(self.read(board.folder))
            copies.append(self.copy(board.folder))
        read, copy = median(reads), median(copies)
        for name, costs in own.items():
            self.row(board._replace(name=name), median(costs), read, copy)
        return {name: median(costs) for name, costs in own.items()}

    def row(self, board, own, read, copy):
        print(
            f"| {board.name} | {board.megabytes:.1f} | {board.pages} | {board.posts} | {own.wall:.2f} "
            f"| {own.cpu:.2f} | {board.megabytes / own.wall:.0f} | {own.peak:.0f} | {read.wall:.2f} "
            f"| {copy.wall:.2f} | {copy.cpu:.2f} | {own.wall / read.wall:.1f} | {own.wall / copy.wall:.1f} "
            f"| {own.cpu / copy.cpu:.1f} |",
            flush=True,
        )


def table_head(*names):
    print("| " + " | ".join(names) + " |")
    print("|---|" + "---:|" * (len(names) - 1), flush=True)


def machine():
    model = platform.processor()
    for line in Path("/proc/cpuinfo").read_text().splitlines():
        if line.startswith("model name"):
            model = line.split(":", 1)[1].strip()
    memory = os.sysconf("SC_PAGE_SIZE") * os.sysconf("SC_PHYS_PAGES") / 2**30
    size = f"{os.cpu_count()} processors, {memory:.0f} GB"
    return f"{date.today()}, {model}, {size}, {platform.system()}, load {os.getloadavg()[0]:.1f}"


def whole_runs(bench, size):
    print("\nWhole runs, warm, medians; `copies` is `cp -r` of the source and of the output.\n")
    table_head(
        "board", "MB of HTML", "pages", "posts", "wall s", "CPU s", "MB/s", "peak MB", "cat s", "copies s",
        "copies CPU s", "wall/cat", "wall/copies", "CPU/copies CPU",
    )  # fmt: skip
    board = bench.healthy("healthy", size)
    costs = bench.measure(board, {
        "healthy": (),
        "healthy, nothing shown or logged": ("--no-show-progress", "--no-log"),
        "healthy, no uploads or redirects": ("--no-attachments", "--no-redirects"),
    })  # fmt: skip
    tiny = bench.board("tiny pages", round(10000 * size), round(10000 * size), 50, 0, message_length=40)
    bench.measure(tiny, {"tiny pages": ()})
    shown, silent = costs["healthy"], costs["healthy, nothing shown or logged"]
    wall, cpu = shown.wall / silent.wall - 1, shown.cpu / silent.cpu - 1
    print(f"\nShowing and logging: {wall:+.0%} wall, {cpu:+.0%} CPU.")
    return board, shown


def sixteen_times(bench, size, once):
    print("\nSixteen times the board.\n")
    table_head("board", "MB of HTML", "wall s", "CPU s", "peak MB")
    large = bench.healthy("sixteenfold", 16 * size)
    sixteen = median([bench.convert(large.folder) for _ in range(min(3, bench.runs))])
    shutil.rmtree(large.folder)
    board, cost = once
    for this, its in ((board, cost), (large, sixteen)):
        print(f"| {this.name} | {this.megabytes:.1f} | {its.wall:.2f} | {its.cpu:.2f} | {its.peak:.0f} |")
    print(f"\nTimes as long: {sixteen.wall / cost.wall:.1f} wall, {sixteen.cpu / cost.cpu:.1f} CPU.")


def hostile(bench, megabytes, chosen):
    print("\nHostile pages: CPU seconds beyond those of an empty page, and the ratio of a doubling.\n")
    table_head("page", f"{megabytes} MB", f"{2 * megabytes} MB", "ratio")
    size = round(megabytes * 1_000_000)

    def cpu(shape, size):
        folder = bench.folder / "hostile"
        shutil.rmtree(folder, ignore_errors=True)
        generate_hostile(folder, shape, size)
        return median([bench.convert(folder, allowed=(0, 1)) for _ in range(bench.runs)]).cpu

    nothing = cpu(next(iter(SHAPES)), 0)
    for shape in chosen or SHAPES:
        once, twice = (max(cpu(shape, n) - nothing, 0.0001) for n in (size, 2 * size))
        print(f"| {shape} | {once:.3f} | {twice:.3f} | {twice / once:.2f} |", flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("program", type=Path, help="path of tessaly-cli")
    parser.add_argument("--only", choices=["whole", "sixteen", "hostile"], action="append",
                        help="only these measurements")  # fmt: skip
    parser.add_argument("--size", type=float, default=0.2, help="1 is 150 MB of HTML in 3,000 pages")
    parser.add_argument("--runs", type=int, default=5)
    parser.add_argument("--hostile-megabytes", type=float, default=1)
    parser.add_argument("--shape", choices=list(SHAPES), action="append", help="only these hostile pages")
    parser.add_argument("--folder", type=Path, default=FOLDER)
    options = parser.parse_args()
    wanted = options.only or ["whole", "sixteen", "hostile"]
    print(f"{machine()}; {options.runs} runs each, in {options.folder}.")
    with tempfile.TemporaryDirectory(prefix="tessaly-bench-", dir=options.folder) as folder:
        bench = Bench(options, Path(folder))
        if "whole" in wanted or "sixteen" in wanted:
            once = whole_runs(bench, options.size)
        if "sixteen" in wanted:
            sixteen_times(bench, options.size, once)
        if "hostile" in wanted:
            hostile(bench, options.hostile_megabytes, options.shape)


if __name__ == "__main__":
    main()
