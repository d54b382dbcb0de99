"""Draws the plots of docs/performance.md as SVG, with matplotlib. In a dark page they turn dark."""
import io
import re

import matplotlib

matplotlib.use("svg")
import matplotlib.pyplot as plt  # noqa: E402
from matplotlib.ticker import FixedLocator, FuncFormatter, NullLocator  # noqa: E402

import figures  # noqa: E402

# Each colour, and what stands for it in a dark page. No two colours of the light page are the same.
PAPER, INK, FAINT, GRID = "#ffffff", "#1d2c40", "#5a6a7e", "#dfe4ec"
FASTER, SLOWER, OTHER = "#1f6fb5", "#c8601a", "#8a97a7"
DARK = {PAPER: "#161b22", INK: "#e6edf3", FAINT: "#9aa7b5", GRID: "#303a46",
        FASTER: "#58a6ff", SLOWER: "#f0883e", OTHER: "#7d8a99"}

plt.rcParams.update({
    "svg.fonttype": "none", "svg.hashsalt": "kelcl", "font.family": ["DejaVu Sans"], "font.size": 10,
    "figure.facecolor": PAPER, "axes.facecolor": PAPER, "axes.edgecolor": GRID, "axes.labelcolor": FAINT,
    "text.color": INK, "xtick.color": FAINT, "ytick.color": INK, "grid.color": GRID, "axes.titlecolor": INK,
    "axes.titlesize": 10.5, "axes.titleweight": "bold", "axes.titlelocation": "left"})


LOWEST, HIGHEST = 0.01, 100.0  # of the ratios shown; what is beyond is an arrow at the edge


def ratios(areas, path, mark):
    """A row for each area: a dot for each work and size, and their mean."""
    figure, axes = plt.subplots(figsize=(9.6, 0.27 * len(areas) + 1.3))
    height = figure.get_figheight()
    figure.subplots_adjust(left=0.315, right=0.975, top=1 - 0.5 / height, bottom=0.68 / height)
    for row, (_, dots) in enumerate(areas):
        draw_dots(axes, row, [d for d in dots if d <= 1], FASTER)
        draw_dots(axes, row, [d for d in dots if d > 1], SLOWER)
        average = figures.mean(dots)
        axes.scatter([average], [row], s=46, marker="D", facecolor=PAPER, linewidths=1.8, zorder=4,
                     edgecolor=FASTER if average <= 1 else SLOWER)
    axes.set_xscale("log")
    axes.set_xlim(LOWEST / 1.3, HIGHEST * 1.3)
    axes.axvline(1, color=INK, linewidth=1.2, zorder=2)
    axes.set_yticks(range(len(areas)), [title for title, _ in areas])
    axes.set_ylim(len(areas) - 0.4, -0.6)
    axes.xaxis.set_major_locator(FixedLocator([0.01, 0.1, 0.5, 1, 2, 10, 100]))
    axes.xaxis.set_major_formatter(FuncFormatter(lambda value, _: f"{value:g}"))
    axes.xaxis.set_minor_locator(NullLocator())
    axes.grid(True, axis="x", linewidth=0.8)
    axes.grid(True, axis="y", linewidth=0.5)
    axes.set_axisbelow(True)
    finish(axes)
    axes.set_xlabel("time of kelcl divided by that of the fastest other\ndot: one work at one size; diamond: geometric mean", fontsize=9)
    for text, colour, side in (("kelcl is faster", FASTER, "right"), ("the other is faster", SLOWER, "left")):
        axes.annotate(text, (1, 1), (-8 if side == "right" else 8, 6), xycoords=("data", "axes fraction"),
                      textcoords="offset points", ha=side, color=colour, weight="bold")
    save(figure, path, mark, "Ratio of the times of kelcl to those of the fastest other, by area",
         "; ".join(f"{title}: mean {figures.mean(dots):.2f}" for title, dots in areas))


def draw_dots(axes, row, dots, colour):
    style = {"color": colour, "linewidths": 0, "zorder": 3}
    shown = [d for d in dots if LOWEST <= d <= HIGHEST]
    axes.scatter(shown, [row] * len(shown), s=17, alpha=0.4, **style)
    for edge, arrow, beyond in ((LOWEST, "<", any(d < LOWEST for d in dots)), (HIGHEST, ">", any(d > HIGHEST for d in dots))):
        if beyond:
            axes.scatter([edge], [row], s=34, marker=arrow, **style)


def curves(panels, path, mark):
    """Time against size, a small plot for each operation."""
    columns = 3
    rows = -(-len(panels) // columns)
    figure, grid = plt.subplots(rows, columns, figsize=(9.6, 2.95 * rows + 0.3), squeeze=False)
    figure.subplots_adjust(left=0.075, right=0.98, top=0.85, bottom=0.06, wspace=0.26, hspace=0.5)
    for axes, (title, sizes, own, others, names) in zip(grid.flat, panels):
        axes.set_xscale("log")
        axes.set_yscale("log")
        axes.plot(sizes, others, color=OTHER, linewidth=1.8, marker="o", markersize=4, label="the fastest other at each size")
        axes.plot(sizes, own, color=FASTER, linewidth=2.2, marker="o", markersize=4.5, label="kelcl")
        axes.set_title(title, pad=18)
        axes.annotate(names, (0, 1), (0, 6), xycoords="axes fraction", textcoords="offset points", color=FAINT, fontsize=8.5)
        axes.xaxis.set_major_locator(FixedLocator(sizes))
        axes.xaxis.set_major_formatter(FuncFormatter(size_text))
        axes.yaxis.set_major_locator(FixedLocator([10 ** power for power in range(10)]))
        axes.yaxis.set_major_formatter(FuncFormatter(time_text))
        axes.xaxis.set_minor_locator(NullLocator())
        axes.yaxis.set_minor_locator(NullLocator())
        axes.set_ylim(min(own + others) / 2, max(own + others) * 2)
        axes.grid(True, linewidth=0.8)
        axes.tick_params(labelcolor=FAINT)
        finish(axes)
    for axes in grid.flat[len(panels):]:
        axes.set_visible(False)
    handles, labels = grid.flat[0].get_legend_handles_labels()
    figure.legend(handles[::-1], labels[::-1], frameon=False, loc="upper left", ncols=2, bbox_to_anchor=(0.06, 1.0))
    save(figure, path, mark, "Time of some operations against the size of the text, beside the fastest other",
         "; ".join(f"{title}: {names}" for title, _, _, _, names in panels))


def size_text(size, _):
    return f"{size / (1 << 20):g} MB" if size >= 1 << 20 else f"{size / 1024:g} KB" if size >= 1024 else f"{size:g} B"


def time_text(time, _):
    return f"{time / 1e6:g} ms" if time >= 1e6 else f"{time / 1e3:g} µs" if time >= 1e3 else f"{time:g} ns"


def finish(axes):
    for side in ("top", "right", "left"):
        axes.spines[side].set_visible(False)
    axes.tick_params(length=0)


def save(figure, path, mark, title, description):
    made = io.StringIO()
    figure.savefig(made, format="svg", metadata={"Date": None})
    plt.close(figure)
    text = made.getvalue()
    text = re.sub(r"<metadata>.*?</metadata>", "", text, flags=re.DOTALL)
    text = re.sub(r"(\d+\.\d\d)\d+", r"\1", text)
    text = re.sub(r"[ \t]+\n", "\n", text)
    rules = "".join(f'[style*="{kind}: {light}"] {{ {kind}: {dark} !important }}\n'
                    for light, dark in DARK.items() for kind in ("fill", "stroke"))
    head = (f"<!-- {mark} -->\n<title>{title}</title>\n<desc>{description}</desc>\n"
            f"<style>@media (prefers-color-scheme: dark) {{\n{rules}}}\n"
            "text { font-family: 'DejaVu Sans', Helvetica, Arial, sans-serif !important }</style>\n")
    start = text.index(">", text.index("<svg")) + 1
    path.write_text(text[:start] + "\n" + head + text[start:].lstrip())
