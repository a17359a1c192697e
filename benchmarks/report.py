#!/usr/bin/env python3
"""Runs the benchmarks, and writes docs/performance.md and its plot or checks the list "Where others are faster".

    report.py PROGRAM MACHINE [--check]

A job is in that list if a peer takes less than FASTER times the library's time at some size, and its reason is in
faster-peers.json. Fails if such a job has no reason, or if a job with a reason is not slower than any peer.
"""
import collections
import json
import os
import pathlib
import statistics
import subprocess
import sys

HERE = pathlib.Path(__file__).resolve().parent
PAGE = HERE.parent / "docs/performance.md"
LIBRARY, FLOOR = "FrameworkBase", "floor"
FASTER = 0.9
JOBS = ["LastComponent", "FolderPart", "Extension", "ChangeExtension", "IsBelow", "RelativePath", "WideFromUtf8",
        "Utf8FromWide", "ListFiles", "CopyOneFile", "CopySmallFiles", "DeleteFolder", "WriteInts", "ReadInts",
        "LoadAndSave", "MoveToTrash", "Purge", "StartChild"]
GROWING = ["ListFiles", "CopySmallFiles", "DeleteFolder", "LoadAndSave", "MoveToTrash", "Purge"]


def measure(program, wanted="."):
    """Returns the median times in nanoseconds: by job and size, and then by who does it."""
    # So that memory once taken is kept, and no job pays for the system's zeroing of it.
    environment = dict(os.environ, LC_ALL="C.UTF-8", MALLOC_TRIM_THRESHOLD_="1000000000",
                       MALLOC_MMAP_THRESHOLD_="1000000000")
    output = subprocess.check_output(
        [program, f"--benchmark_filter={wanted}", "--benchmark_repetitions=9", "--benchmark_min_time=0.01",
         "--benchmark_enable_random_interleaving=true", "--benchmark_format=json"], env=environment)
    runs = collections.defaultdict(lambda: collections.defaultdict(list))
    for run in json.loads(output)["benchmarks"]:
        if run["run_type"] == "iteration":
            job, who, *size = run["run_name"].split("/")
            size = [part for part in size if not part.startswith(("process_time", "real_time"))]
            if "label" in run:
                size[0] = run["label"]
            runs[job, " ".join(size)][who].append(run["cpu_time"])
    return {key: {who: statistics.median(times) for who, times in ways.items()} for key, ways in runs.items()}


def best_peer(ways):
    return min((time, who) for who, time in ways.items() if who not in (LIBRARY, FLOOR))


def slower_jobs(times, limit):
    """Returns the jobs in which a peer takes less than `limit` times the library's time: with the ratio, the peer and
    the size where it is smallest."""
    slower = {}
    for (job, size), ways in times.items():
        if set(ways) - {LIBRARY, FLOOR}:
            time, who = best_peer(ways)
            ratio = time / ways[LIBRARY]
            if ratio < min(limit, slower.get(job, (limit,))[0]):
                slower[job] = (ratio, who, size)
    return slower


def check(program, times, reasons):
    """Returns the complaints. A job has to be slower twice, as something else may have slowed it down."""
    slower = slower_jobs(times, FASTER)
    unexplained = sorted(set(slower) - set(reasons))
    if unexplained:
        again = slower_jobs(measure(program, f"^({'|'.join(unexplained)})/"), FASTER)
        unexplained = [job for job in unexplained if job in again]
    complaints = [f"{job}, {slower[job][2]}: {slower[job][1]} takes {slower[job][0]:.2f} times the library's time, "
                  "and no reason is given" for job in unexplained]
    gone = sorted(set(reasons) - set(slower_jobs(times, 1)))
    return complaints + [f"{job}: a reason is given, but no peer is faster" for job in gone]


def duration(nanoseconds):
    for unit, limit in (("ns", 1e3), ("µs", 1e6), ("ms", 1e9)):
        if nanoseconds < limit:
            return f"{nanoseconds / limit * 1e3:.3g} {unit}"
    return f"{nanoseconds / 1e9:.3g} s"


def table(times):
    """Returns one row a job, at its middle size."""
    rows = ["| Job | Size | Library | Floor | ÷ floor | Best peer | ÷ library |", "|---|---|---|---|---|---|---|"]
    for job in JOBS:
        sizes = sorted((size for name, size in times if name == job), key=lambda size: (len(size), size))
        size = sizes[len(sizes) // 2]
        ways = times[job, size]
        peer = "– | –"
        if set(ways) - {LIBRARY, FLOOR}:
            time, who = best_peer(ways)
            peer = f"{who}, {duration(time)} | {time / ways[LIBRARY]:.2g}"
        rows.append(f"| {job} | {size} | {duration(ways[LIBRARY])} | {duration(ways[FLOOR])} | "
                    f"{ways[LIBRARY] / ways[FLOOR]:.2g} | {peer} |")
    return "\n".join(rows)


def exceptions(times, reasons):
    slower = {**slower_jobs(times, FASTER), **{job: ways for job, ways in slower_jobs(times, 1).items() if job in reasons}}
    return "\n".join(f"- **{job}**: {who} takes {ratio:.2f} of the library's time at {size}. {reasons.get(job, '')}"
                     for job, (ratio, who, size) in sorted(slower.items()))


def plot(times, path):
    """Draws the library's time for each growing job over its sizes."""
    import matplotlib.pyplot as pyplot
    pyplot.rcParams.update({"svg.hashsalt": "", "svg.fonttype": "none", "font.size": 8})
    figure, axes = pyplot.subplots(figsize=(6, 3.5))
    for job in GROWING:
        points = [(float(size.split(":")[1]), ways[LIBRARY] / 1e6)
                  for (name, size), ways in times.items() if name == job]
        axes.plot(*zip(*sorted(points)), "o-", label=job, markersize=4)
    axes.set(xscale="log", yscale="log", xlabel="files, names, records or items", ylabel="milliseconds")
    axes.legend()
    figure.savefig(path, bbox_inches="tight", metadata={"Date": None})


def main():
    program, machine = sys.argv[1:3]
    reasons = json.loads((HERE / "faster-peers.json").read_text())
    times = measure(program)
    if "--check" not in sys.argv:
        text = PAGE.read_text()
        blocks = {"machine": machine, "table": table(times), "exceptions": exceptions(times, reasons)}
        for name, block in blocks.items():
            begin, end = f"<!-- {name} -->\n", f"\n<!-- end of {name} -->"
            text = text[:text.index(begin)] + begin + block + text[text.index(end):]
        PAGE.write_text(text)
        plot(times, PAGE.with_suffix(".svg"))
    print(table(times))
    print(exceptions(times, reasons))
    complaints = check(program, times, reasons)
    print("\n".join(complaints) or "No peer is faster by a tenth but in the jobs of the list.")
    sys.exit(1 if complaints else 0)


if __name__ == "__main__":
    main()
