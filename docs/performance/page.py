#!/usr/bin/env python3
"""Makes the tables and plots of docs/performance.md from figures.json, or checks that they are made from it.

    page.py            writes the tables between the marks of the page, and both plots (needs matplotlib)
    page.py --check    fails if a table or a plot is not what the figures give (needs nothing but Python)
"""
import argparse
import hashlib
import json
import math
import re
import sys

import figures

DOCS = figures.FOLDER.parent
PAGE = DOCS / "performance.md"
SLOWER = 1.5  # from this mean ratio on a family is explained


def short(nanoseconds):
    for factor, unit in ((1, "ns"), (1e3, "µs"), (1e6, "ms")):
        if nanoseconds < 999.5 * factor:
            break
    else:
        factor, unit = 1e9, "s"
    return f"{nanoseconds / factor:.3g} {unit}"


def times(ratio):
    digits = max(0, 1 - math.floor(math.log10(ratio))) if ratio < 0.1 else 2 if ratio < 10 else 0
    return f"{ratio:,.{digits}f}"


def switch_of(result):
    return ", switch on" if result.with_switch else ""


def at_size(result):
    """Texts have bytes; the rest is done so many times."""
    count = re.fullmatch(r"1e(\d+)", result.size)
    if not count:
        return ", " + result.size.replace("B", " B").replace("K B", " KB").replace("M B", " MB")
    return "" if count[1] == "0" else f", {10 ** int(count[1]):,}"


def table(head, rows):
    lines = ["| " + " | ".join(head) + " |", "|" + "---|" * len(head)]
    return "\n".join(lines + ["| " + " | ".join(row) + " |" for row in rows])


def machine(context):
    model = context.get("cpu_model") or "not told"
    return table(["processor", "seen by the system", "date"], [[model, str(context["num_cpus"]), context["date"][:10]]])


def summary(results):
    rows = []
    for title, others in (("the fastest of all", "others"), ("the fastest that does as much", "same")):
        ratios = [r.ratio(getattr(r, others)) for r in results]
        counts = [sum(x <= limit for x in ratios) for limit in (1, 1.1, 1.5, 3)]
        rows.append([title, str(len(ratios)), *map(str, counts), str(len(ratios) - counts[-1]), times(figures.mean(ratios))])
    return table(["beside", "works and sizes", "not slower", "within 1.1", "within 1.5", "within 3", "above 3", "mean"], rows)


def areas(works, results):
    rows = []
    for title, members in in_areas(works, results):
        ratios = sorted(r.ratio() for r in members)
        won = sum(x <= 1 for x in ratios)
        rows.append([title, str(len(ratios)), str(won), times(figures.mean(ratios)), times(ratios[0]), times(ratios[-1])])
    return table(["area", "works and sizes", "not slower", "mean", "best", "worst"], rows)


def in_areas(works, results):
    """All areas in the order of works.txt, with their results."""
    groups = figures.grouped(results, works.area_of)
    return [(title, groups[title]) for title, _ in works.areas if title in groups]


def typical(works, results):
    rows = []
    for title, work, switch in works.typical:
        cells = []
        for size in ("64B", "1KB", "1MB"):
            found = [r for r in results if (r.work, r.size, r.with_switch) == (work, size, switch == "on")]
            cells.append(cell(works, found[0]) if found else "")
        rows.append([title, *cells])
    return table(["operation", "64 bytes", "1 KB", "1 MB"], rows)


def cell(works, result):
    who, time = result.best()
    own = short(result.time)
    return f"{f'**{own}**' if result.ratio() <= 1 else own}, `{works.shown(who)}` {short(time)}"


def slower(works, results):
    by_reason = {}
    for family, members in figures.grouped(results, lambda r: r.family).items():
        ratio = figures.mean([r.ratio() for r in members])
        if ratio >= SLOWER:
            worst = max(members, key=lambda r: r.ratio())
            by_reason.setdefault(works.reason_for(worst), []).append((ratio, family, worst))
    rows = []
    for why, families in sorted(by_reason.items(), key=lambda item: -max(item[1])[0]):
        named = ", ".join(f"`{family}` {times(ratio)}" for ratio, family, _ in sorted(families, key=lambda f: (-f[0], f[1])))
        worst = max(families)[2]
        rows.append([why, named, f"`{worst.work}`{switch_of(worst)}{at_size(worst)}: {cell(works, worst)}"])
    return table(["why", "works, and how many times the fastest", "the worst of them"], rows)


def different(works, results):
    rows = []
    for work, size, who, title, why in works.different:
        left_out = {works.shown(name) for r in results if work.search(r.name) and size.search(r.size)
                    for name in r.others if who.search(name)}
        if left_out:
            named = ", ".join(f"`{name}`" for name in sorted(left_out)) if len(left_out) <= 4 else "most others"
            rows.append([title, named, why])
    return table(["work", "what is left out", "why"], rows)


def plot_data(works, results):
    """What each plot shows, rounded to what can be seen."""
    ratios = [[title, [float(f"{r.ratio():.3g}") for r in members]] for title, members in in_areas(works, results)]
    curves = []
    for title, work, switch in works.curves:
        sizes, own, others, who = figures.curve(results, work, switch == "on")
        curves.append([title, sizes, own, others, "beside " + ", ".join(dict.fromkeys(map(works.library_of, who)))])
    return {"performance_ratios.svg": ratios, "performance_sizes.svg": curves}


def mark_of(data):
    """Stands in the plot, and says which data it shows and which code has drawn it."""
    drawing = (figures.FOLDER / "plots.py").read_text()
    return "drawn from " + hashlib.sha256((json.dumps(data) + drawing).encode()).hexdigest()


def with_tables(page, tables):
    """The page with each table between its marks."""
    for name, text in tables.items():
        pattern = rf"(<!-- table: {name} -->\n).*?(<!-- end of table -->)"
        page, count = re.subn(pattern, lambda match: f"{match[1]}\n{text}\n\n{match[2]}", page, flags=re.DOTALL)
        if count != 1:
            raise SystemExit(f"{PAGE}: the marks of the table '{name}' are there {count} times, not once")
    return page


def main():
    parser = argparse.ArgumentParser(usage=__doc__)
    parser.add_argument("--check", action="store_true")
    check = parser.parse_args().check
    works = figures.Works()
    context, results = figures.read(works)
    page = PAGE.read_text()
    wanted = with_tables(page, {
        "machine": machine(context), "summary": summary(results), "areas": areas(works, results),
        "typical": typical(works, results), "slower": slower(works, results), "different": different(works, results)})
    plots = plot_data(works, results)
    if not check:
        import plots as drawing
        PAGE.write_text(wanted)
        for (name, data), draw in zip(plots.items(), (drawing.ratios, drawing.curves)):
            draw(data, DOCS / name, mark_of(data))
        return 0
    stale = [] if page == wanted else [str(PAGE)]
    stale += [str(DOCS / name) for name, data in plots.items()
              if not (DOCS / name).exists() or mark_of(data) not in (DOCS / name).read_text()]
    for name in stale:
        print(f"{name} is not what docs/performance/figures.json gives: run ./dev docs --update", file=sys.stderr)
    return 1 if stale else 0


if __name__ == "__main__":
    sys.exit(main())
