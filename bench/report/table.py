"""The table: work that was measured, and its text."""

import dataclasses

UNITS = {
    "time": ((1, "s"), (1e-3, "ms"), (1e-6, "µs"), (1e-9, "ns")),
    "bytes": ((1e9, "GB"), (1e6, "MB"), (1e3, "kB")),
    "rate": ((1e9, "GB/s"), (1e6, "MB/s")),
    "count": ((1, ""),),
}


@dataclasses.dataclass
class Figure:
    """What one program needs. One that was not done in time has its value behind it: it is more."""

    who: str
    value: float
    is_more: bool = False


@dataclasses.dataclass
class Row:
    """One kind of work: Mivora's figure, what nobody can be better than, and the others'."""

    work: str
    unit: str
    mivora: float
    limit: Figure | None = None
    peers: list[Figure] = dataclasses.field(default_factory=list)
    missing: list[str] = dataclasses.field(default_factory=list)


def amount(value, unit):
    factor, name = next((pair for pair in UNITS[unit] if value >= pair[0]), UNITS[unit][-1])
    return f"{three_digits(value / factor)} {name}".strip()


def three_digits(value):
    return f"{value:.0f}" if value >= 100 or value == 0 else f"{value:.3g}"


def ratio(figure, row):
    """How many times Mivora's need it is: the time, the memory; or the rate turned over."""
    if not figure.value or not row.mivora:
        return "–"
    times = row.mivora / figure.value if row.unit == "rate" else figure.value / row.mivora
    digits = f"{times:.0f}" if times >= 10 else f"{times:.2f}" if times < 2 else f"{times:.1f}"
    return digits + "×"


def cell(figure, row, only_ratios):
    more = "> " if figure.is_more else ""
    if only_ratios:
        return f"{figure.who} {more}{ratio(figure, row)}"
    return f"{figure.who} {more}{amount(figure.value, row.unit)} ({more}{ratio(figure, row)})"


def cells(row, only_ratios):
    peers = sorted(row.peers, key=lambda figure: figure.value, reverse=row.unit == "rate")
    others = [cell(figure, row, only_ratios) for figure in peers] + [f"{who} skipped" for who in row.missing]
    return [
        row.work,
        "1×" if only_ratios else amount(row.mivora, row.unit),
        cell(row.limit, row, only_ratios) if row.limit else "–",
        ", ".join(others) or "–",
    ]


def rendered(rows, only_ratios):
    """The rows as Markdown, in columns for those who read it as it is."""
    lines = [["Work", "Mivora", "Limit", "Others"]] + [cells(row, only_ratios) for row in rows]
    widths = [max(len(line[column]) for line in lines) for column in range(4)]
    lines.insert(1, ["-" * width for width in widths])
    return "\n".join(
        "| " + " | ".join(text.ljust(width) for text, width in zip(line, widths)) + " |" for line in lines
    )
