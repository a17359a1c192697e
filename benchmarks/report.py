#!/usr/bin/env python3
"""Runs the benchmarks; writes docs/performance.md and its picture, or with --check names the jobs that are too slow.

    report.py BUILD MACHINE [--check] [GROUP...]

With --check or groups only the library and the plainest code are measured, and the document stays as it is. Fails when a
job is too slow. BUILD/benchmarks.json gets the results of Google Benchmark; MACHINE is a line about it.
"""
import json
import os
import pathlib
import re
import subprocess
import sys
from statistics import median, quantiles

# The unit of the sizes, and how often all is measured. The last group is long, and who does it has a process of its own.
GROUPS = {
    "paths": ("bytes", 15), "conversions": ("characters", 15), "clock": ("", 15), "listing": ("names", 9),
    "copying": ("", 9), "deleting": ("files", 9), "database": ("records", 9), "trash": ("items there", 9),
    "processes": ("MiB touched", 9), "streams": ("values", 9), "growth": ("", 1)}
LIBRARY, PLAINEST = "FrameworkBase", "plainest code"
LIMIT = 1.1  # times the plainest code's time, beyond the spread of both
DOCUMENT = pathlib.Path(__file__).resolve().parent.parent / "docs/performance.md"


def measure(build, machine, groups, everyone, only=()):
    """Google Benchmark's results, and the processor's times in nanoseconds by group, job and size, and who did it."""
    results, times = {"benchmarks": []}, {}
    for group in groups:
        environment = dict(os.environ, LC_ALL="C.UTF-8")
        if group not in ("processes", "growth"):  # the heap stays in the process
            environment.update(MALLOC_TRIM_THRESHOLD_="1000000000", MALLOC_MMAP_THRESHOLD_="1000000000")
        for program in (f"{build}/benchmarks/BenchmarkExported", f"{build}/benchmarks/BenchmarkInternal"):
            names = subprocess.check_output([program, "--benchmark_list_tests"], text=True)
            jobs = set(re.findall(f"^({group}/.*)/{LIBRARY}/", names, re.M))
            jobs = "|".join(jobs.intersection(only) if only else jobs)
            ways = [".*" if everyone else f"({LIBRARY}|{PLAINEST})"]
            for who in ([LIBRARY, PLAINEST] if group == "growth" else ways) if jobs else []:
                output = json.loads(subprocess.check_output([
                    program, f"--benchmark_filter=^({jobs})/{who}/", f"--benchmark_repetitions={GROUPS[group][1]}",
                    "--benchmark_enable_random_interleaving=true", "--benchmark_min_time=0.01",
                    f"--benchmark_context=machine={machine}", "--benchmark_format=json"], env=environment))
                results = {**output, "benchmarks": results["benchmarks"] + output["benchmarks"]}
    pathlib.Path(build, "again.json" if only else "benchmarks.json").write_text(json.dumps(results, indent=1))
    for result in results["benchmarks"]:
        if result["run_type"] == "iteration":
            group, name, who, size = result["run_name"].split("/")[:4]
            times.setdefault((group, name, int(size)), {}).setdefault(who, []).append(result["cpu_time"])
    return results, dict(sorted(times.items(), key=lambda item: (list(GROUPS).index(item[0][0]), *item[0])))


def spread(times):
    """The range of the middle half."""
    quarters = quantiles(times, n=4) if len(times) > 1 else [0, 0, 0]
    return quarters[2] - quarters[0]


def ratio(ways, who, other):
    return median(ways[who]) / median(ways[other])


def too_slow(times):
    """The jobs whose medians are beyond the limit by more than both spreads."""
    sides = {job: (ways[LIBRARY], ways[PLAINEST]) for job, ways in times.items() if job[0] != "growth"}
    return [job for job, (library, plain) in sides.items()
            if median(library) - LIMIT * median(plain) > max(spread(library), spread(plain))]


def duration(nanoseconds):
    power = 0 if nanoseconds < 999.5 else 1 if nanoseconds < 999.5e3 else 2 if nanoseconds < 999.5e6 else 3
    return f"{nanoseconds / 1000 ** power:.3g} {('ns', 'µs', 'ms', 's')[power]}"


def jobs_table(times):
    rows = [["Job", "Size", "Time", "÷ plainest code", "Spread", "Others' time ÷ FrameworkBase's"], ["---"] * 6]
    for (group, name, size), ways in times.items():
        others = sorted((ratio(ways, who, LIBRARY), who) for who in ways if who not in (LIBRARY, PLAINEST))
        widest = max(spread(ways[who]) / median(ways[who]) for who in (LIBRARY, PLAINEST))
        if group != "growth":
            rows.append([name, f"{size:,} {GROUPS[group][0]}", duration(median(ways[LIBRARY])),
                         f"{ratio(ways, LIBRARY, PLAINEST):.2f}", f"{100 * widest:.0f} %",
                         ", ".join(f"{who} {factor:.3g}" for factor, who in others)])
    return "\n".join(f"|{'|'.join(row)}|" for row in rows)


def growth_table(times, results):
    figures = {(*result["run_name"].split("/")[1:-1], key): result[key]
               for result in results["benchmarks"] for key in ("big_o", "MiB") if key in result}
    rows = [["Job", "n", "Time", "÷ plainest code", "Peak memory", "plainest code's", "Grows as"], ["---"] * 7]
    for (group, name, size), ways in times.items():
        if group == "growth":
            peaks = [figures[name, who, str(size), "MiB"] for who in (LIBRARY, PLAINEST)]
            rows.append([name, f"{size:,}", duration(median(ways[LIBRARY])), f"{ratio(ways, LIBRARY, PLAINEST):.2f}",
                         *(f"{peak:,.0f} MiB" for peak in peaks), figures[name, LIBRARY, "big_o"]])
    return "\n".join(f"|{'|'.join(row)}|" for row in rows)


def write_picture(times, path):
    """For each job at its middle size how many times as long as the library everybody else takes."""
    import matplotlib.pyplot as pyplot
    pyplot.rcParams.update({"svg.hashsalt": "", "svg.fonttype": "none", "font.size": 8})
    rows = {}
    for group, name, size in reversed(times):
        sizes = [key[2] for key in times if key[:2] == (group, name)]
        if group != "growth" and size == sizes[len(sizes) // 2]:
            rows[f"{name}, {size:,} {GROUPS[group][0]}"] = times[group, name, size]
    everybody = sorted({who for ways in rows.values() for who in ways} - {LIBRARY, PLAINEST}) + [PLAINEST]
    figure, axes = pyplot.subplots(figsize=(8, 0.22 * len(rows) + 1))
    for who, marker in zip(everybody, "osD^vPX*<>dphH8|"[-len(everybody):]):
        points = [(ratio(ways, who, LIBRARY), row) for row, ways in enumerate(rows.values()) if who in ways]
        axes.plot(*zip(*points), marker, label=who, markersize=5)
    axes.axvline(1, color="black", linewidth=0.8)
    axes.set(xscale="log", xlabel=f"time ÷ {LIBRARY}'s; to the right of the line {LIBRARY} is faster",
             yticks=range(len(rows)), yticklabels=rows)
    axes.legend(loc="center left", bbox_to_anchor=(1, 0.5))
    figure.savefig(path, bbox_inches="tight", metadata={"Date": None})


def main():
    build, machine, *groups = [argument for argument in sys.argv[1:] if argument != "--check"]
    writes = not groups and "--check" not in sys.argv
    results, times = measure(build, machine, groups or list(GROUPS)[:None if writes else -1], writes)
    if writes:
        about = "{machine}; g++ {compiler} -O2; {date:.10}".format(**results["context"])
        blocks = {"machine": about, "jobs": jobs_table(times), "growth": growth_table(times, results)}
        text = DOCUMENT.read_text()
        for name, block in blocks.items():
            begin, end = f"<!-- {name} -->\n", f"\n<!-- end of {name} -->"
            text = text[:text.index(begin)] + begin + block + text[text.index(end):]
        DOCUMENT.write_text(text)
        write_picture(times, DOCUMENT.with_suffix(".svg"))
    print(jobs_table(times))
    slow = too_slow(times)
    if slow:  # something else may have slowed one side down: what is not so again does not count
        again = measure(build, machine, GROUPS, False, {f"{group}/{name}" for group, name, _ in slow})[1]
        slow = [job for job in too_slow(again) if job in slow]
    for job in slow:
        print("too slow:", *job, f"{ratio(again[job], LIBRARY, PLAINEST):.2f} times the plainest code")
    print(f"{len(times) - len(slow)} of {len(times)} jobs take at most {LIMIT} times the plainest code's time")
    sys.exit(bool(slow))


if __name__ == "__main__":
    main()
