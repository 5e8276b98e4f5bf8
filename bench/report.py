"""Turns Google Benchmark JSON results into the benchmark report.

Cases are named "<case>/gvlib[/args]" and "<case>/peer[/args]"; each library
median is set against the peer's median from the same run.
"""
import json
import os
import sys


def medians(path):
    with open(path) as f:
        data = json.load(f)
    out = {}
    for b in data["benchmarks"]:
        if b.get("aggregate_name") == "median":
            out[b["run_name"]] = b["real_time"] * {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}[b["time_unit"]]
    return out, data["context"]


def pretty(ns):
    for unit, scale in (("s", 1e9), ("ms", 1e6), ("µs", 1e3)):
        if ns >= scale:
            return f"{ns / scale:.3g} {unit}"
    return f"{ns:.3g} ns"


def main(results, report, datafile, notesfile):
    rows = []
    context = None
    for name in sorted(os.listdir(results)):
        if not name.endswith(".json"):
            continue
        suite = name[:-5]
        m, context = medians(os.path.join(results, name))
        for run, ns in m.items():
            if "/gvlib" not in run:
                continue
            peer = m.get(run.replace("/gvlib", "/peer"))
            if peer:
                rows.append((suite, run.replace("/gvlib", ""), ns, peer, ns / peer))
    notes = open(notesfile).read() if os.path.exists(notesfile) else ""
    with open(report, "w") as f:
        f.write("# Benchmark report\n\n")
        f.write("Made by `bench/run`: release build, median of the repetitions, library and peer "
                "measured in the same run on the same data. Ratio = library / peer (below 1: the "
                "library is faster).\n\n")
        if context:
            f.write(f"Machine: {context.get('num_cpus')} CPUs at {context.get('mhz_per_cpu')} MHz; "
                    f"run {context.get('date')}.\n\n")
        f.write("| suite | case | gvlib | peer | ratio |\n|---|---|---|---|---|\n")
        for suite, case, ns, peer, ratio in rows:
            flag = " ⚠" if ratio > 2 else ""
            f.write(f"| {suite} | {case} | {pretty(ns)} | {pretty(peer)} | {ratio:.2f}{flag} |\n")
        f.write("\n![ratios](ratios.svg)\n\n")
        f.write(notes)
    with open(datafile, "w") as f:
        for i, (suite, case, ns, peer, ratio) in enumerate(rows):
            f.write(f'{i} "{suite}: {case}" {ratio:.4f}\n')


if __name__ == "__main__":
    main(*sys.argv[1:5])
