#!/usr/bin/env python3
"""Runs the benchmarks, compares them with the bars, and writes the figures of docs/performance.md.

    report.py BUILD WORK [--check] [GROUP...]

BUILD is the build folder and WORK the folder for what is measured on disk. With --check the document stays as it is,
and the exit status is 1 when a bar is missed by more than the noise of this run. With groups only those are measured.

A round is one process for each group, in which all who do a job are measured one after the other, in an order shuffled
anew, several times; the fastest time counts. A ratio is that of two times of one round, and the figures are medians
over the rounds. The noise of a job is how far the ratio of the limit to itself, measured twice, is from 1: the median
over the rounds.
"""
import collections
import ctypes
import datetime
import itertools
import json
import math
import os
import pathlib
import platform
import re
import statistics
import subprocess
import sys

Group = collections.namedtuple("Group", "title unit size rounds passes seconds")
GROUPS = {
    "paths": Group("Paths", "bytes", 80, 9, 5, 0.002),
    "conversions": Group("Conversions", "characters", 200, 9, 4, 0.002),
    "clock": Group("Clock", "", 1, 9, 9, 0.005),
    "listing": Group("Listing", "names", 100_000, 5, 3, 0.02),
    "copying": Group("Copying", "MiB or files", 0, 5, 2, 0.02),
    "deleting": Group("Deleting", "files", 20_000, 5, 2, 0.02),
    "database": Group("Trash database", "records", 100_000, 5, 2, 0.02),
    "trash": Group("Trash", "items there", 10_000, 7, 3, 0.02),
    "processes": Group("Processes", "MiB touched", 4096, 5, 3, 0.01),
    "streams": Group("Typed streams", "values", 1_000_000, 5, 2, 0.02),
}

# group/job, sizes, against whom, and by which factor the library's time may differ at most.
LEVEL = 1.1
Bar = collections.namedtuple("Bar", "job sizes against factor")
BARS = []


def bar(job, sizes, **factors):
    names = {"std": "std::filesystem", "fstream": "std::fstream", "same_at": "same at", "fastest": "fastest peer"}
    for against, factor in factors.items():
        BARS.append(Bar(job, sizes, names.get(against, against), factor))


for name in ("compose", "last component", "folder part", "extension", "change extension", "is below"):
    bar("paths/" + name, (20, 80), limit=1.15, std=1 / 3, Qt=1 / 3, fastest=LEVEL)
bar("paths/relative path", (20, 80), limit=1.5, std=1 / 4)
bar("listing/list", (10_000, 100_000), limit=1.1, std=1 / 1.7, Qt=1 / 3)
bar("copying/copy a file", (100,), limit=1.05)
bar("copying/copy small files", (2_000,), limit=1.1, std=1.25)
bar("deleting/delete files in folders", (20_000,), limit=1.15, std=LEVEL)
bar("deleting/purge expired files", (20_000,), limit=1.3)
bar("database/load", (100_000,), limit=1.3, QDataStream=1 / 2, fstream=1 / 2)
bar("database/save", (100_000,), limit=1.5, QDataStream=1 / 2, fstream=1 / 2)
bar("trash/move to the trash", (0, 1_000, 10_000), limit=1.5)
bar("trash/move to the trash", (0,), Qt=LEVEL)
bar("trash/put back", (0, 1_000, 10_000), limit=1.5)
bar("processes/start and reap a child", (50, 4096), limit=1.15)
bar("processes/start and reap a child", (4096,), fork=1 / 20, QProcess=1 / 20, same_at=1.15)
bar("clock/time now", (1,), limit=1.1)
for direction in ("UTF-8 to wide, ", "wide to UTF-8, "):
    for kind, factor in (("ASCII", 1 / 2.5), ("Latin", 1 / 1.5), ("CJK with emoji", 1 / 1.5)):
        bar("conversions/" + direction + kind, (20, 200, 1500), limit=1.2, iconv=factor, ICU=factor, GLib=factor)
for name in ("write int", "write long long", "read int", "read long long"):
    bar("streams/" + name, (1_000_000,), limit=1.3, fstream=1.0)

LIBRARY = "FrameworkBase"
# The limit with the steps added that the library promises to callers, for jobs where those cost much.
LIMIT_WITH_STEPS = "limit with promised steps"
NOT_PEERS = (LIBRARY, "limit", "limit again", LIMIT_WITH_STEPS, "copy_file_range", "fork")
PEERS = {"std::filesystem": "the standard library", "Boost": "Boost.Filesystem", "Qt": "Qt 5 Core", "GLib": "GLib",
         "ICU": "ICU"}


# ---------------------------------------------------------------------------------------------------------- measuring

def stay_on_ordinary_pages():
    PR_SET_THP_DISABLE = 41
    getattr(ctypes.CDLL(None), "prctl", lambda *_: 0)(PR_SET_THP_DISABLE, 1, 0, 0, 0)


def wall_clock_counts(group, work):
    """A child's time is not this process's, and a real disk is waited for; elsewhere the processor's time counts, which
    other programs disturb less."""
    on_disk = group in ("listing", "copying", "deleting", "database", "trash", "streams")
    return group == "processes" or (on_disk and file_system(work) != "tmpfs")


def measure(build, work, group, seed):
    """The times of one round in nanoseconds, by job with its size and by who did it."""
    settings = GROUPS[group]
    environment = dict(os.environ, LC_ALL="C.UTF-8")
    heap = 0
    sizes = ".*"
    if group == "processes":
        sizes = "(" + "|".join(str(size) for size in (50, 1024, 4096) if size + 1024 < available_mebibytes()) + ")/"
    else:
        heap = 128
        thresholds = {"MALLOC_TRIM_THRESHOLD_": 1 << 30, "MALLOC_MMAP_THRESHOLD_": 1 << 30, "MALLOC_TOP_PAD_": 1 << 26}
        environment.update({name: str(value) for name, value in thresholds.items()})
    times = collections.defaultdict(lambda: collections.defaultdict(list))
    for program in ("BenchmarkExported", "BenchmarkInternal"):
        run = subprocess.run(
            [f"{build}/benchmarks/{program}", work, str(seed), str(settings.passes), str(heap),
             f"--benchmark_filter=^{group}/.*/{sizes}", f"--benchmark_min_time={settings.seconds}",
             "--benchmark_format=json"],
            env=environment, preexec_fn=stay_on_ordinary_pages, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        if run.returncode != 0:
            sys.exit(f"{program} failed: {run.stderr[-1000:]}")
        clock = "real_time" if wall_clock_counts(group, work) else "cpu_time"
        for result in json.loads(run.stdout or '{"benchmarks": []}')["benchmarks"]:
            job, size, who = result["name"].rsplit("/", 2)
            times[job, int(size)][who].append(result[clock])
    return {job: {who: min(all_times) for who, all_times in ways.items()} for job, ways in times.items()}


def measure_all(build, work, groups):
    """For each job with its size and each who the times of all rounds. The groups take turns."""
    data = collections.defaultdict(lambda: collections.defaultdict(list))
    for number in range(max(GROUPS[group].rounds for group in groups)):
        for group in groups:
            if number < GROUPS[group].rounds:
                for job, ways in measure(build, work, group, number).items():
                    for who, time in ways.items():
                        data[job][who].append(time)
    return data


def available_mebibytes():
    try:
        return int(re.search(r"MemAvailable:\s*(\d+)", pathlib.Path("/proc/meminfo").read_text()).group(1)) // 1024
    except OSError:
        return 1 << 30


def file_system(folder):
    try:
        return subprocess.run(["stat", "-f", "-c", "%T", folder], capture_output=True, text=True).stdout.strip()
    except OSError:
        return ""


# ---------------------------------------------------------------------------------------------------------- comparing

def ratio(ways, one, other):
    """The median over the rounds; nothing when one of the two was not measured."""
    if one not in ways or other not in ways:
        return None
    return statistics.median(a / b for a, b in zip(ways[one], ways[other]))


def noise(ways):
    return statistics.median(abs(again / first - 1) for again, first in zip(ways["limit again"], ways["limit"]))


def peers_of(ways):
    return sorted(who for who in ways if who not in NOT_PEERS)


Verdict = collections.namedtuple("Verdict", "bar size measured word missed")


def judge(data, one, size):
    """The library against one bar at one size; nothing when the other is not there."""
    ways = data.get((one.job, size))
    if not ways:
        return None
    against = one.against
    if against == "same at":
        ways = dict(ways, **{against: data[one.job, 50][LIBRARY]})
    if against == "fastest peer":
        against = min(peers_of(ways), key=lambda who: statistics.median(ways[who]), default="")
    measured = ratio(ways, LIBRARY, against)
    if measured is None:
        return None
    if measured <= one.factor:
        return Verdict(one, size, measured, "met", False)
    if measured <= one.factor * (1 + noise(ways)):
        return Verdict(one, size, measured, "met within the noise", False)
    if against == "limit":
        with_steps = ratio(ways, LIBRARY, LIMIT_WITH_STEPS)
        if with_steps is not None and with_steps <= one.factor * (1 + noise(ways)):
            return Verdict(one, size, measured, f"out of reach; {with_steps:.2f} × the {LIMIT_WITH_STEPS}", False)
    elif against != "same at":
        barest = LIMIT_WITH_STEPS if LIMIT_WITH_STEPS in ways else "limit"
        reachable = ratio(ways, barest, against)
        if reachable * (1 + noise(ways)) > one.factor:  # the limit itself does not pass by more than the noise
            return Verdict(one, size, measured, f"out of reach; the {barest} is at {times_as(reachable)}", False)
    return Verdict(one, size, measured, "**missed**", True)


def judge_all(data):
    verdicts = (judge(data, one, size) for one in BARS for size in one.sizes)
    return [verdict for verdict in verdicts if verdict is not None]


# ------------------------------------------------------------------------------------------------------------ writing

def duration(nanoseconds):
    for unit, factor in (("ns", 1), ("µs", 1e3), ("ms", 1e6), ("s", 1e9)):
        value = nanoseconds / factor
        if value < 999.5:
            break
    return f"{value:.3g} {unit}"


def times_as(factor):
    """A factor below 1 as the other's time in the library's."""
    return f"{factor:.2f}" if factor >= 0.1 else f"{factor:.3f}"


def table(header, rows):
    lines = ["| " + " | ".join(header) + " |", "|" + "---|" * len(header)]
    return "\n".join(lines + ["| " + " | ".join(row) + " |" for row in rows])


def jobs_of(data, group):
    names = list(dict.fromkeys(one.job for one in BARS if one.job.startswith(group + "/")))
    return sorted((key for key in data if key[0] in names), key=lambda key: (names.index(key[0]), key[1]))


def unit_of(job):
    if job == "copying/copy a file":
        return "MiB"
    return "files" if job.startswith("copying/") else GROUPS[job.split("/")[0]].unit


def group_table(data, group):
    keys = jobs_of(data, group)
    others = sorted({who for key in keys for who in data[key]} - {LIBRARY, "limit", "limit again"})
    header = ["Job", "Size", LIBRARY, "limit", "noise", "ratio to the limit"] + [f"{who}, × slower" for who in others]
    rows = []
    for key in keys:
        ways = data[key]
        row = [key[0].split("/")[1], f"{key[1]:,} {unit_of(key[0])}".strip() if unit_of(key[0]) else "",
               duration(statistics.median(ways[LIBRARY])), duration(statistics.median(ways["limit"])),
               f"{100 * noise(ways):.0f} %", f"{ratio(ways, LIBRARY, 'limit'):.2f}"]
        for who in others:
            slower = ratio(ways, who, LIBRARY)
            row.append("" if slower is None else f"{slower:.2f}" if slower < 9.95 else f"{slower:.0f}")
        rows.append(row)
    return table(header, rows)


def bar_words(one):
    if one.against == "same at":
        return f"at most {one.factor:g} × itself at 50 MiB"
    if one.factor < 1:
        return f"at least {1 / one.factor:g} × faster than {one.against}"
    if one.factor == 1:
        return f"faster than {one.against}"
    if one.factor == LEVEL and one.against not in ("limit",):
        return f"level with {one.against} (at most {LEVEL:g} ×)"
    return f"at most {one.factor:g} × {one.against}"


def bars_table(data):
    """A row for each bar, with the figures of its sizes side by side."""
    rows = []
    for one, verdicts in itertools.groupby(judge_all(data), key=lambda verdict: verdict.bar):
        verdicts = list(verdicts)
        words = [verdict.word for verdict in verdicts]
        word = words[0] if len(set(words)) == 1 else "; ".join(
            f"{verdict.size:,}: {verdict.word}" for verdict in verdicts)
        sizes = "; ".join(f"{verdict.size:,}" for verdict in verdicts) + " " + unit_of(one.job)
        rows.append([one.job.split("/")[1], sizes if unit_of(one.job) else "", bar_words(one),
                     "; ".join(times_as(verdict.measured) for verdict in verdicts),
                     "; ".join(f"{100 * noise(data[one.job, verdict.size]):.0f} %" for verdict in verdicts), word])
    return table(["Job", "Sizes", "Bar", "Library's time ÷ the other's", "noise", ""], rows)


def growth_table(data, groups):
    felt = 1e8  # a tenth of a second
    rows = []
    for group in groups:
        for job in dict.fromkeys(key[0] for key in jobs_of(data, group)):
            points = [(size, statistics.median(data[job, size][LIBRARY])) for name, size in jobs_of(data, group)
                      if name == job and size > 0]
            if len(points) < 2:
                continue
            (small, small_time), (large, large_time) = points[0], points[-1]
            exponent = math.log(large_time / small_time) / math.log(large / small)
            word = ("flat" if exponent < 0.15 else "less than linear" if exponent < 0.85 else
                    "linear" if exponent < 1.15 else "more than linear")
            at = large * (felt / large_time) ** (1 / exponent) if exponent >= 0.15 else math.inf
            at_words = f"{float(f'{at:.1g}'):,.0f} {unit_of(job)}" if at < 1e9 else "never"
            if group in ("paths", "conversions"):
                at_words = "never: texts are shorter"
            rows.append([job.split("/")[1], f"{small:,} to {large:,} {unit_of(job)}",
                         f"{duration(small_time)} to {duration(large_time)}", word, at_words])
    return table(["Job", "Size", "FrameworkBase", "Growth", "0.1 s at about"], rows)


def machine(build, work, started):
    cache = (pathlib.Path(build) / "CMakeCache.txt").read_text()
    compiler = re.search(r"^CMAKE_CXX_COMPILER:[A-Z]+=(.*)$", cache, re.M).group(1)
    version = subprocess.run([compiler, "--version"], capture_output=True, text=True).stdout.splitlines()[0]
    model = platform.processor() or platform.machine()
    try:
        model = re.search(r"model name\s*: (.*)", pathlib.Path("/proc/cpuinfo").read_text()).group(1)
    except (OSError, AttributeError):
        pass
    try:
        system = re.search(r'PRETTY_NAME="(.*)"', pathlib.Path("/etc/os-release").read_text()).group(1)
    except (OSError, AttributeError):
        system = platform.platform()
    minutes = (datetime.datetime.now() - started).total_seconds() / 60
    load = " then ".join(f"{value:.1f}" for value in (LOAD_BEFORE, os.getloadavg()[0]))
    return table(["", ""], [
        ["Machine", f"{model}, {os.cpu_count()} processors, {platform.system()} {platform.release()}, {system}"],
        ["Compiler", f"{version}, RelWithDebInfo (-O2)"],
        ["Files", f"on {file_system(work) or 'the temporary folder'}"],
        ["Measured", f"{started:%Y-%m-%d %H:%M}, {minutes:.1f} minutes; load {load}"],
        ["Command", "`scripts/bench`"]])


def replace_blocks(document, blocks):
    """Puts each text between the two comments that carry its name."""
    text = document.read_text()
    for name, block in blocks.items():
        begin, end = f"<!-- begin {name} -->", f"<!-- end {name} -->"
        if begin not in text or end not in text:
            sys.exit(f"{document} has no place for {name}")
        before, rest = text.split(begin, 1)
        text = before + begin + "\n" + block + "\n" + end + rest.split(end, 1)[1]
    document.write_text(text)


# ----------------------------------------------------------------------------------------------------------- pictures

COLOURS = {LIBRARY: "#1f77b4", "limit": "#7f7f7f", LIMIT_WITH_STEPS: "#a9a9a9"}
LONGEST = 12  # times the limit; longer bars are cut


def escape(text):
    return text.replace("&", "&amp;").replace("<", "&lt;")


def picture(data, group):
    """The time of each way of doing a job divided by the limit's, as bars."""
    settings = GROUPS[group]
    keys = [key for key in jobs_of(data, group)
            if key[1] == (settings.size or max(size for job, size in data if job == key[0]))]
    scale, left, line = 40, 190, 16
    width = left + LONGEST * scale + 70
    parts, y = [], 44
    for key in keys:
        ways = data[key]
        parts.append(f'<text x="8" y="{y}" font-weight="bold">{escape(key[0].split("/")[1])}, '
                     f'{key[1]:,} {unit_of(key[0])}</text>')
        y += 6
        order = [who for who in ("limit", LIMIT_WITH_STEPS, LIBRARY) if who in ways]
        order += sorted(set(ways) - set(order) - {"limit again"})
        for who in order:
            value = ratio(ways, who, "limit")
            length = min(value, LONGEST) * scale
            colour = COLOURS.get(who, "#d9a441")
            cut = " …" if value > LONGEST else ""
            parts.append(f'<text x="{left - 6}" y="{y + 11}" text-anchor="end">{escape(who)}</text>'
                         f'<rect x="{left}" y="{y + 2}" width="{length:.0f}" height="11" fill="{colour}"/>'
                         f'<text x="{left + length + 4:.0f}" y="{y + 11}">{value:.3g}{cut}</text>')
            y += line
        y += 22
    title = f"{settings.title}: time divided by the limit's"
    return (f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{y}" '
            f'font-family="sans-serif" font-size="11">\n<rect width="100%" height="100%" fill="white"/>\n'
            f'<text x="8" y="20" font-size="14">{title}</text>\n'
            f'<line x1="{left + scale}" x2="{left + scale}" y1="34" y2="{y - 16}" stroke="#bbbbbb"/>\n'
            + "\n".join(parts) + "\n</svg>\n")


# --------------------------------------------------------------------------------------------------------------- main

LOAD_BEFORE = os.getloadavg()[0]


def main():
    arguments = [argument for argument in sys.argv[1:] if argument != "--check"]
    build, work, groups = arguments[0], arguments[1], arguments[2:] or list(GROUPS)
    for group in groups:
        if group not in GROUPS:
            sys.exit(f"no group {group}; there are {', '.join(GROUPS)}")
    started = datetime.datetime.now()
    data = measure_all(build, work, groups)
    missing = [PEERS[peer] for peer in PEERS if not any(peer in ways for ways in data.values())]
    if missing and len(groups) == len(GROUPS):
        print("not installed, so not compared:", ", ".join(missing))
    verdicts = judge_all(data)
    missed = [verdict for verdict in verdicts if verdict.missed]
    for verdict in missed:
        print(f"missed: {verdict.bar.job}, {verdict.size:,} {unit_of(verdict.bar.job)}: {bar_words(verdict.bar)}, "
              f"but {times_as(verdict.measured)} ± {100 * noise(data[verdict.bar.job, verdict.size]):.0f} %")
    print(f"{len(verdicts) - len(missed)} of {len(verdicts)} comparisons pass")
    if "--check" in sys.argv:
        sys.exit(1 if missed else 0)

    docs = pathlib.Path(__file__).resolve().parent.parent / "docs"
    (docs / "performance").mkdir(exist_ok=True)
    blocks = {group: group_table(data, group) + f"\n\n![{GROUPS[group].title}](performance/{group}.svg)"
              for group in groups}
    if len(groups) == len(GROUPS):
        absent = f"\n\nNot installed, so not compared: {', '.join(missing)}." if missing else ""
        blocks.update({"machine": machine(build, work, started) + absent, "bars": bars_table(data),
                       "growth": growth_table(data, groups)})
    replace_blocks(docs / "performance.md", blocks)
    for group in groups:
        (docs / "performance" / f"{group}.svg").write_text(picture(data, group))


if __name__ == "__main__":
    main()
