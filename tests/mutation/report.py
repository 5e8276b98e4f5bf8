"""The mutation report: what was planted, what the tests caught, and every survivor."""

import subprocess
import time
from collections import Counter


def _line_text(root, site):
    lines = (root / site.path).read_text(encoding="utf-8", errors="replace").splitlines()
    return lines[site.line - 1].strip() if site.line <= len(lines) else ""


def _mutated_text(root, site):
    lines = (root / site.path).read_text(encoding="utf-8", errors="replace").splitlines(keepends=True)
    return site.apply(lines)[site.line - 1].strip()


def _line_counts(root):
    out = subprocess.run([str(root / "tests" / "mutation" / "count")], capture_output=True, text=True)
    return out.stdout.strip()


def write_report(path, args, sites, results, equivalent, explained, root, timing):
    """Write REPORT.md; equivalent mutants and compile failures are counted apart."""
    tally = Counter()
    survivors, equivalents = [], []
    for site, outcome, _ in results:
        if outcome == "survived" and site.key in equivalent:
            outcome = "equivalent"
            equivalents.append(site)
        elif outcome == "survived":
            survivors.append(site)
        tally[outcome] += 1
    caught = tally["caught"] + tally["timeout"] + tally["sanitizer"]
    judged = caught + tally["survived"]
    score = 100.0 * caught / judged if judged else 0.0
    seconds = [s for _, o, s in results if o != "compile-error"]
    per_mutant = sum(seconds) / len(seconds) if seconds else 0.0
    paths = " ".join(args.paths) if args.paths else "src/**/*.cpp"
    command = f"tests/mutation/run {args.count} {args.seed}" + (f" --paths {paths}" if args.paths else "")

    out = [
        "# Mutation report",
        "",
        f"Command: `nice -n 10 {command}` ({args.jobs} jobs), {time.strftime('%Y-%m-%d %H:%M UTC', time.gmtime())}."
        + (" Its survivors were then run again (`--again`) after tests were added for them; the wall time"
           " counts both runs." if timing.get("again") else ""),
        "",
        "| | |", "|---|---|",
        f"| Sites in {paths} | {len(sites)} |",
        f"| Sample | {len(results)} |",
        f"| Caught (tests failed or crashed) | {tally['caught']} |",
        f"| Caught (hang, time limit {timing['limit']:.0f} s) | {tally['timeout']} |",
        f"| Caught only by the sanitiser build (address, undefined behaviour, leaks) | {tally['sanitizer']} |",
        f"| Survived | {tally['survived']} |",
        f"| Equivalent (listed in equivalent.txt) | {tally['equivalent']} |",
        f"| Did not compile | {tally['compile-error']} |",
        f"| **Score: caught / (caught + survived)** | **{score:.1f} %** |",
        f"| Survivors explained in explained.txt | {sum(s.key in explained for s in survivors)} of {len(survivors)} |",
        "",
        f"Unit tests alone: {timing['baseline']:.1f} s. Mean time per compiled mutant (rebuild + tests, both passes): "
        f"{per_mutant:.1f} s. Wall time for the run: {timing['wall'] / 60:.1f} min.",
        "",
        "Non-blank lines (`tests/mutation/count`):",
        "",
        "```", _line_counts(root), "```",
        "",
        "## Survivors",
        "",
    ]
    if not survivors:
        out.append("None.")
    for site in sorted(survivors, key=lambda s: (s.path, s.line)):
        out += [f"- `{site.key}`", f"  - was: `{_line_text(root, site)}`",
                f"  - now: `{_mutated_text(root, site)}`",
                f"  - why it survives: {explained.get(site.key, 'not yet explained')}"]
    out += ["", "## Equivalent mutants met in this sample", ""]
    if not equivalents:
        out.append("None.")
    for site in equivalents:
        out.append(f"- `{site.key}`: {equivalent[site.key]}")
    path.write_text("\n".join(out) + "\n", encoding="utf-8")
