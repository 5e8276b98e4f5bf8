"""Turns Google Benchmark JSON results into the benchmark report.

Cases are named "<case>/gvlib[/args]", "<case>/peer[/args]" and, where the
least work the contract forces is measured, "<case>/limit[/args]"; each library
median is set against the peer's and the limit's medians from the same run.
Cases run at several sizes also get a scaling table that shows their growth.
"""
import json
import os
import re
import sys


def counters(path):
    """{run: (bytes per item, beyond the text)} of the cases that measure memory."""
    with open(path) as f:
        data = json.load(f)
    return {b["run_name"]: (b["bytes_per_item"], b.get("beyond_text"))
            for b in data["benchmarks"]
            if b.get("aggregate_name", "median") == "median" and "bytes_per_item" in b}


def write_memory(f, results):
    rows = []
    for name in sorted(os.listdir(results)):
        if name.endswith(".json"):
            m = counters(os.path.join(results, name))
            for run, (each, beyond) in m.items():
                if "/gvlib" in run:
                    peer = m.get(run.replace("/gvlib", "/peer"), (None, None))
                    rows.append((run.replace("/gvlib", "").split("/iterations")[0], each, beyond, *peer))
    if not rows:
        return
    f.write("\n## Memory\n\nHeap bytes per item after loading, the items' own text included, and what is "
            "left beyond the text.\n\n")
    f.write("| case | gvlib bytes / item | beyond the text | peer bytes / item | beyond the text |\n"
            "|---|---|---|---|---|\n")
    num = lambda v: "–" if v is None else f"{v:.1f}"
    for case, each, beyond, peer_each, peer_beyond in rows:
        f.write(f"| {case} | {num(each)} | {num(beyond)} | {num(peer_each)} | {num(peer_beyond)} |\n")


def medians(path):
    with open(path) as f:
        data = json.load(f)
    out = {}
    for b in data["benchmarks"]:
        if b.get("aggregate_name") == "median":
            # CPU time: on a machine shared with builds the wall clock of a
            # single-threaded case mostly measures the waiting for a core.
            out[b["run_name"]] = b["cpu_time"] * {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}[b["time_unit"]]
    return out, data["context"]


def pretty(ns):
    if ns is None:
        return "–"
    for unit, scale in (("s", 1e9), ("ms", 1e6), ("µs", 1e3)):
        if ns >= scale:
            return f"{ns / scale:.3g} {unit}"
    return f"{ns:.3g} ns"


def ratio(a, b):
    return a / b if a is not None and b else None


def fmt(r, flag_above=None):
    if r is None:
        return "–"
    return f"{r:.2f}" + (" ⚠" if flag_above is not None and r > flag_above else "")


def collect(results):
    """Rows of (suite, case, gvlib, peer, limit) for every case with a library side."""
    rows, context = [], None
    for name in sorted(os.listdir(results)):
        if not name.endswith(".json"):
            continue
        suite = name[:-5]
        m, context = medians(os.path.join(results, name))
        for run, ns in m.items():
            if "/gvlib" not in run:
                continue
            peer = m.get(run.replace("/gvlib", "/peer"))
            limit = m.get(run.replace("/gvlib", "/limit"))
            if peer or limit:
                rows.append((suite, run.replace("/gvlib", ""), ns, peer, limit))
    # Interleaved repetitions shuffle the order in the results; sizes sort as numbers.
    rows.sort(key=lambda r: (r[0], [int(p) if p.isdigit() else p for p in r[1].split("/")]))
    return rows, context


def scaling(rows):
    """Families of a case run at several sizes: {case: [(n, gvlib, peer)]}."""
    families = {}
    for _suite, case, ns, peer, _limit in rows:
        m = re.fullmatch(r"(.*)/(\d+)", case)
        if m:
            families.setdefault(m.group(1), []).append((int(m.group(2)), ns, peer))
    return {k: sorted(v) for k, v in families.items() if len(v) > 1}


def write_scaling(f, families):
    if not families:
        return
    f.write("\n## Scaling\n\nGrowth = how much the time grew over the previous row divided by how much the "
            "size grew (1.00 is linear).\n\n")
    f.write("| case | n | gvlib | per item | growth | peer | ratio |\n|---|---|---|---|---|---|---|\n")
    for case, points in sorted(families.items()):
        previous = None
        for n, ns, peer in points:
            growth = (ns / previous[1]) / (n / previous[0]) if previous else None
            f.write(f"| {case} | {n:,} | {pretty(ns)} | {pretty(ns / n)} | {fmt(growth)} | {pretty(peer)} | "
                    f"{fmt(ratio(ns, peer))} |\n")
            previous = (n, ns)


def main(results, report, datafile, notesfile):
    rows, context = collect(results)
    notes = open(notesfile).read() if os.path.exists(notesfile) else ""
    with open(report, "w") as f:
        f.write("# Benchmark report\n\n")
        f.write("Made by `bench/run`: release build, median CPU time of the repetitions, library, peer and limit "
                "measured in the same run on the same data. Ratio = library / peer (below 1: the "
                "library is faster). Limit = the least work the specified contract forces, written "
                "out by hand; library / limit says how much is left to gain.\n\n")
        if context:
            f.write(f"Machine: {context.get('num_cpus')} CPUs at {context.get('mhz_per_cpu')} MHz; "
                    f"run {context.get('date')}.\n\n")
        f.write("| suite | case | gvlib | peer | ratio | limit | gvlib / limit |\n|---|---|---|---|---|---|---|\n")
        for suite, case, ns, peer, limit in rows:
            f.write(f"| {suite} | {case} | {pretty(ns)} | {pretty(peer)} | {fmt(ratio(ns, peer), 2)} | "
                    f"{pretty(limit)} | {fmt(ratio(ns, limit))} |\n")
        write_scaling(f, scaling(rows))
        write_memory(f, results)
        f.write("\n![ratios](ratios.svg)\n\n")
        f.write(notes)
    with open(datafile, "w") as f:
        for i, (suite, case, ns, peer, limit) in enumerate(rows):
            r, rl = ratio(ns, peer), ratio(ns, limit)
            f.write(f'{i} "{suite}: {case}" {r if r else "?"} {rl if rl else "?"}\n')


if __name__ == "__main__":
    main(*sys.argv[1:5])
