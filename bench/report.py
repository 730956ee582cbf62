#!/usr/bin/env python3
"""Turns the JSON of one benchmark run into the table, bench/RESULTS.md and a plot per area.

usage: report.py RUN.json TARGETS.json OUTPUT_DIRECTORY

A row of the run is named "area|case|contender". The contender is "mortise", a peer, or "limit: ...". Times are medians over
the repetitions, in nanoseconds of processor time per item where a case counts items; throughput, where a case counts bytes, enters the
ratios as time per byte, so a ratio below 1 always means that mortise is faster.
"""
import collections
import json
import pathlib
import statistics
import sys

import matplotlib

matplotlib.use("svg")
import matplotlib.pyplot as plt

Row = collections.namedtuple("Row", "area case ours peer peer_name ratio limit limit_name limit_ratio target met throughput")


def cost(entry):
    """Nanoseconds per byte, per item, or per iteration; and whether bytes were counted."""
    if "bytes_per_second" in entry:
        return 1e9 / entry["bytes_per_second"], True
    if "items_per_second" in entry:
        return 1e9 / entry["items_per_second"], False
    scale = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}[entry["time_unit"]]
    return entry["cpu_time"] * scale, False


def medians(run):
    """{(area, case): {contender: cost}}, and the set of cases measured in bytes."""
    samples, in_bytes, failed = {}, set(), []
    for entry in run["benchmarks"]:
        if entry.get("run_type") == "aggregate":
            continue
        area, case, contender = entry["name"].split("/repeats:")[0].split("/iterations:")[0].split("|")
        if entry.get("error_occurred"):
            failed.append(f"{area}, {case}, {contender}: {entry.get('error_message', '')}")
            continue
        value, bytes_counted = cost(entry)
        samples.setdefault((area, case), {}).setdefault(contender, []).append(value)
        if bytes_counted:
            in_bytes.add((area, case))
    if failed:
        sys.exit("benchmarks failed:\n" + "\n".join(failed))
    costs = {key: {who: statistics.median(v) for who, v in cases.items()} for key, cases in samples.items()}
    return costs, in_bytes


def judge(target, ours, peers, limit_ratio):
    """What the case must reach, as text, and whether it does; None where nothing is asked."""
    asked, met = [], True
    if "peer" in target:
        # The best of them, unless the target names one.
        peer = peers.get(target["of"]) if "of" in target else min(peers.values(), default=None)
        asked.append(f"{target['peer']:g} x {target.get('of', 'peer')}")
        met = met and peer is not None and ours / peer <= target["peer"]
    if "limit" in target:
        asked.append(f"{target['limit']:g} x limit")
        met = met and limit_ratio is not None and limit_ratio <= target["limit"]
    if "nanoseconds" in target:
        asked.append(f"{target['nanoseconds']:,} ns")
        met = met and ours <= target["nanoseconds"]
    return ", ".join(asked), (met if asked else None)


def rows(costs, in_bytes, targets):
    for (area, case), contenders in costs.items():
        ours = contenders.get("mortise")
        if ours is None:
            sys.exit(f"{area}, {case}: mortise itself was not measured")
        peers = {who: c for who, c in contenders.items() if who != "mortise" and not who.startswith("limit: ")}
        limits = {who[7:]: c for who, c in contenders.items() if who.startswith("limit: ")}
        peer_name = min(peers, key=peers.get) if peers else None
        limit_name = min(limits, key=limits.get) if limits else None
        peer = peers.get(peer_name)
        limit = limits.get(limit_name)
        ratio = ours / peer if peer else None
        limit_ratio = ours / limit if limit else None
        target, met = judge(targets.get(area, {}).get(case, {}), ours, peers, limit_ratio)
        yield Row(area, case, ours, peer, peer_name, ratio, limit, limit_name, limit_ratio, target, met,
                  (area, case) in in_bytes)


def shown(value, throughput):
    if value is None:
        return ""
    if throughput:
        return f"{1 / value:.2f} GB/s" if value < 10 else f"{1000 / value:.1f} MB/s"
    for unit, scale in (("ns", 1), ("us", 1e3), ("ms", 1e6)):
        if value < 1000 * scale or unit == "ms":
            return f"{value / scale:.3g} {unit}" if value / scale < 100 else f"{value / scale:.0f} {unit}"


def number(value):
    return "" if value is None else f"{value:.2f}"


def table(all_rows):
    head = ["area", "case", "mortise", "best peer", "", "ratio", "limit", "", "ratio", "must be at most", "met"]
    lines = [head] + [
        [r.area, r.case, shown(r.ours, r.throughput), shown(r.peer, r.throughput), r.peer_name or "", number(r.ratio),
         shown(r.limit, r.throughput), r.limit_name or "", number(r.limit_ratio), r.target,
         {None: "", True: "yes", False: "NO"}[r.met]]
        for r in all_rows
    ]
    widths = [max(len(line[i]) for line in lines) for i in range(len(head))]
    lines.insert(1, ["-" * w for w in widths])
    return "\n".join("| " + " | ".join(text.ljust(w) for text, w in zip(line, widths)) + " |" for line in lines)


def plot(area, costs, in_bytes, path):
    """One group of bars per case: the cost of each contender relative to mortise, on a logarithmic axis."""
    cases = [(case, who) for (a, case), who in costs.items() if a == area]
    names = list(dict.fromkeys(name for _, who in cases for name in who))
    figure, axes = plt.subplots(figsize=(11, 0.8 + 0.16 * sum(len(w) + 2 for _, w in cases)))
    colours = {name: plt.get_cmap("tab10")(i % 10) for i, name in enumerate(names)}
    y, ticks, seen = 0, [], set()
    for case, who in cases:
        ticks.append((y + (len(who) - 1) / 2, case))
        for name, value in who.items():
            axes.barh(y, value / who["mortise"], color=colours[name], label=None if name in seen else name)
            axes.text(value / who["mortise"], y, " " + shown(value, (area, case) in in_bytes), va="center", fontsize=7)
            seen.add(name)
            y += 1
        y += 1
    axes.set_yticks([t for t, _ in ticks], [c for _, c in ticks], fontsize=8)
    axes.set_xscale("log")
    axes.axvline(1, color="black", linewidth=0.8)
    axes.set_xlabel("cost relative to mortise (less is faster)")
    axes.set_title(area)
    axes.invert_yaxis()
    axes.legend(fontsize=7)
    figure.tight_layout()
    figure.savefig(path, metadata={"Date": None})
    plt.close(figure)


def main():
    run_path, targets_path, output = sys.argv[1], sys.argv[2], pathlib.Path(sys.argv[3])
    run = json.loads(pathlib.Path(run_path).read_text())
    targets = json.loads(pathlib.Path(targets_path).read_text())
    costs, in_bytes = medians(run)
    # The run is in random order; the table follows the targets, and cases without one come last in their area.
    areas = list(targets)
    order = {(area, case): i for area, cases in targets.items() for i, case in enumerate(cases)}
    costs = dict(sorted(costs.items(), key=lambda item: (areas.index(item[0][0]), order.get(item[0], len(order)), item[0])))
    all_rows = list(rows(costs, in_bytes, targets))
    text = table(all_rows)
    print(text)
    missing = [f"{area}: {case}" for area, cases in targets.items() for case in cases if (area, case) not in costs]
    missed = [r for r in all_rows if r.met is False]
    context = run["context"]
    repetitions = max(e.get("repetitions", 1) for e in run["benchmarks"])
    plots = []
    for area in dict.fromkeys(r.area for r in all_rows):
        plot(area, costs, in_bytes, output / f"{area}.svg")
        plots.append(f"![{area}]({area}.svg)")
    summary = f"{sum(r.met is True for r in all_rows)} figures met, {len(missed)} missed, {len(missing)} not measured."
    print(summary)
    notes = output / "NOTES.md"
    (output / "RESULTS.md").write_text(
        "# Benchmarks\n\n"
        f"Written by `./bench.sh`: one run of one process on {context['num_cpus']} CPUs of {context['mhz_per_cpu']} MHz, "
        f"medians of {repetitions} repetitions in random order. A ratio is the cost of mortise over that of the other; below 1 "
        "mortise is faster. The limit is the bare thing that the case cannot do without.\n\n"
        f"{text}\n\n{summary}\n\n" + "".join(f"Not measured: {m}\n\n" for m in missing)
        + (notes.read_text() + "\n" if notes.exists() else "") + "\n".join(plots) + "\n")


if __name__ == "__main__":
    main()
