"""The rows of the table: what is done, by whom, and how it is measured. A figure is the best of all rounds, which
the programs take in turns."""

import pathlib
import shutil
import tempfile

import loading
from measuring import NotThere, TookTooLong, best, google_benchmark
from table import Figure, Row


class Bench:
    """The built programs, a folder for samples, and what there is to say beside the table."""

    def __init__(self, built, rounds, limit):
        self.programs = built / "bin"
        self.peers = built / "peers"
        self.rounds = rounds
        self.limit = limit
        self.notes = []

    def __enter__(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="mivora-benchmark-"))
        return self

    def __exit__(self, *_):
        shutil.rmtree(self.folder)

    def google(self, program, pattern, rounds=None, **options):
        """The rounds of a benchmark program; none when it was not built or failed."""
        try:
            limit = 10 * self.limit
            return google_benchmark(self.programs / program, pattern, rounds or self.rounds, limit, **options)
        except (NotThere, TookTooLong):
            self.notes.append(f"{program} could not be run")
            return {}

    def rounds_of(self, program, pattern):
        """As google, for what can only be measured once in a process."""
        results = {}
        for _ in range(self.rounds):
            for name, entries in self.google(program, pattern, 1).items():
                results.setdefault(name, []).extend(entries)
        return results


def row(work, unit, values, limit=None):
    """A row from figures by name, Mivora's first; None stands for what was not there."""
    mivora = values.pop("Mivora")
    if mivora is None:
        return []
    least = values.pop(limit, None)
    return [
        Row(
            work,
            unit,
            mivora,
            Figure(limit, least) if least is not None else None,
            [Figure(who, value) for who, value in values.items() if value is not None],
            [who for who, value in values.items() if value is None],
        )
    ]


TEXTS = {"plain": "notes without links", "notes": "invitations", "hard": "near misses"}


def links(bench):
    results = bench.google("LinkScanning", "match|links")

    def rates(text, names):
        return {who: rate(results.get(f"run/{text}_{name}")) for who, name in names.items()}

    def rate(entries):
        return max((entry["bytes_per_second"] for entry in entries or []), default=None)

    scanning = {"Mivora": "match_own", "PCRE2's JIT": "match_pcre2", "memchr": "match_memchr"}
    parsing = {"Mivora": "links_own", "PCRE2's JIT": "links_pcre2"}
    rows = []
    for text, title in TEXTS.items():
        found = {name: entries[0]["found"] for name, entries in results.items() if name.startswith(f"run/{text}_")}
        if len({count for name, count in found.items() if not name.endswith("memchr")}) > 1:
            bench.notes.append(f"links: not all found the same: {found}")
        rows += row(f"Find links in {title}", "rate", rates(text, scanning), "memchr")
    return rows + row("… and parse those of invitations", "rate", rates("notes", parsing))


APPLETS = {"Mivora": "mivora", "bare Qt item": "bareQt", "Qt Widgets": "qtWidgets", "GTK": "gtk"}


def start(bench):
    results = bench.google("Tray", "start")

    def values(what, factor=1):
        figures = {who: best(results, f"start/{name}", what) for who, name in APPLETS.items()}
        return {who: value and value * factor for who, value in figures.items()}

    return row("Start to status item", "time", values("seconds"), "bare Qt item") + row(
        "… on the processor", "time", values("processor_ms", 1e-3), "bare Qt item"
    )


IDLE = {
    "Resident memory at rest": ("rss_kB", "bytes", 1024),
    "… shared parts divided": ("pss_kB", "bytes", 1024),
    "… its own alone": ("private_kB", "bytes", 1024),
    "Wake-ups in a minute": ("wakeUps", "count", 1),
    "Processor in that minute": ("processor_ms", "time", 1e-3),
}


def idle(bench):
    results = bench.google("Tray", "idle", 1)
    rows = []
    for work, (what, unit, factor) in IDLE.items():
        figures = {who: best(results, "idle", f"{name}.{what}") for who, name in APPLETS.items()}
        values = {who: None if value is None else value * factor for who, value in figures.items()}
        rows += row(work, unit, values, "bare Qt item")
    return rows


def window(program, benchmark, work):
    def measure(bench):
        results = bench.rounds_of(program, f"{benchmark}|bareWindow")
        values = {"Mivora": best(results, benchmark), "bare QML window": best(results, "bareWindow")}
        return row(work, "time", values, "bare QML window")

    return measure


GROUPS = {
    "loading": loading.loading,
    "refresh": loading.refresh,
    "change": loading.change,
    "links": links,
    "start": start,
    "panel": window("PanelBench", "firstPanel", "First panel"),
    "settings": window("SettingsOpening", "firstOpening", "First settings window"),
    "idle": idle,
}
