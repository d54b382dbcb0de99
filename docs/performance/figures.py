"""Reads figures.json and works.txt: what was measured, and how works are grouped, named and explained.

A figure has the name WORK/SIZE/WHO and is a time. WHO is kelcl, or kelcl+i18n with the national-language switch on;
what begins with "limit-" is no contender but a mark for what the memory allows, and is left out.
"""
import json
import math
import re
from pathlib import Path

FOLDER = Path(__file__).parent
LIBRARY = {"kelcl": False, "kelcl+i18n": True}
SHORTEST = 4.0  # nanoseconds; shorter times count as this, about what one call takes


class Result:
    """One work at one size, by the library in one state of the switch, and by the others."""

    def __init__(self, work, size, with_switch, time, others):
        self.work, self.size, self.with_switch, self.time, self.others = work, size, with_switch, time, others
        self.same = others  # those that do the same; see Works.sort_out
        self.name = work + ("+i18n" if with_switch else "")
        self.family = re.sub(r"\.(asc|mix|cjk|bad)$", "", work) + (" (switch on)" if with_switch else "")

    def best(self, others=None):
        return min((self.others if others is None else others).items(), key=lambda other: other[1])

    def ratio(self, others=None):
        return max(self.time, SHORTEST) / max(self.best(others)[1], SHORTEST)


class Works:
    """The sections of works.txt; each line is a row of columns between bars."""

    def __init__(self, path=FOLDER / "works.txt"):
        sections, rows = {}, None
        for line in path.read_text().splitlines():
            if line.startswith("["):
                rows = sections.setdefault(line.strip("[]"), [])
            elif line and not line.startswith("#"):
                rows.append([column.strip() for column in re.split(r"\s+\|\s+", line)])
        self.areas = [(title, re.compile(pattern)) for title, pattern in sections["areas"]]
        self.names = [(re.compile(pattern), name) for pattern, name in sections["names of others"]]
        self.different = [(re.compile(work), re.compile(size), re.compile(who), title, why)
                          for work, size, who, title, why in sections["others that do less"]]
        self.reasons = [(re.compile(pattern), why) for pattern, why in sections["reasons"]]
        self.typical = sections["typical"]
        self.curves = sections["curves"]

    def area_of(self, result):
        for title, pattern in self.areas:
            if pattern.search(result.work):
                return title
        raise SystemExit(f"works.txt: no area has the work {result.work}; add it to one of [areas]")

    def reason_for(self, result):
        return next(why for pattern, why in self.reasons if pattern.search(result.name))

    def shown(self, who):
        for pattern, name in self.names:
            who = pattern.sub(name + " ", who)
        return who.strip()

    def library_of(self, who):
        """The name without that of the function."""
        name = re.match(r"\w+ library|hand-written|std::\w+|\w+", self.shown(who))[0]
        return "hand-written code" if name == "hand-written" else name

    def sort_out(self, result):
        """Leaves out the others that do less than the library has to, as long as some remain."""
        same = dict(result.others)
        for work, size, who, _, _ in self.different:
            if work.search(result.name) and size.search(result.size):
                same = {name: time for name, time in same.items() if not who.search(name)}
        result.same = same or result.others


def bytes_of(size):
    count, unit = re.fullmatch(r"([\de]+)(B|KB|MB|)", size).groups()
    return float(count) * {"": 1, "B": 1, "KB": 1 << 10, "MB": 1 << 20}[unit]


def read(works, path=FOLDER / "figures.json"):
    """The context of the measurement and its results."""
    data = json.loads(path.read_text())
    times = {}
    for figure in data["benchmarks"]:
        work, size, who = figure.get("run_name", figure["name"]).split("/", 2)
        if "cpu_time" in figure and figure["run_type"] == "iteration" and not who.startswith("limit-"):
            factor = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}[figure["time_unit"]]
            by_whom = times.setdefault((work, size), {})
            by_whom[who] = min(figure["cpu_time"] * factor, by_whom.get(who, math.inf))
    results = []
    for (work, size), by_whom in sorted(times.items(), key=lambda item: (item[0][0], bytes_of(item[0][1]))):
        others = {who: time for who, time in by_whom.items() if who not in LIBRARY}
        for who, with_switch in LIBRARY.items():
            if who in by_whom and others:
                results.append(Result(work, size, with_switch, by_whom[who], others))
                works.sort_out(results[-1])
    return data["context"], results


def mean(ratios):
    return math.exp(sum(map(math.log, ratios)) / len(ratios))


def grouped(results, key):
    groups = {}
    for result in results:
        groups.setdefault(key(result), []).append(result)
    return groups


def curve(results, work, with_switch):
    """Of one work at all its sizes: the sizes, the library's times, those of the fastest other, and who that is."""
    rows = sorted((r for r in results if r.work == work and r.with_switch == with_switch), key=lambda r: bytes_of(r.size))
    others = [r.best() for r in rows]
    return [bytes_of(r.size) for r in rows], [r.time for r in rows], [time for _, time in others], [who for who, _ in others]
