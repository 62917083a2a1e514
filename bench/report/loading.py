"""Reading calendars: the day of 10 March 2026 in Berlin, out of many events."""

import contextlib
import functools
import json
import time

from measuring import NotThere, TookTooLong, best, run
from table import Figure, Row

FROM, TO = "1773097200", "1773183600"
ZONE = {"TZ": "Europe/Berlin"}
SIZES = (1_000, 10_000, 100_000)
LIMIT = "reading alone"
KHAL = """[calendars]
[[work]]
path = {path}
[sqlite]
path = {path}.khal.db
[locale]
local_timezone = Europe/Berlin
default_timezone = Europe/Berlin
dateformat = %Y-%m-%d
longdateformat = %Y-%m-%d
"""


class Calendar:
    """Events to read, and the programs that read them. Each returns the seconds it took and how many it found."""

    def __init__(self, bench, kind, count):
        self.bench = bench
        self.root = bench.folder / f"{kind}{count}"
        self.folder = self.root / "work"
        if not self.folder.exists():
            self.folder.mkdir(parents=True)
            run([bench.programs / "make-samples", self.folder, kind, count], 600)

    def timed(self, command):
        return run(command, self.bench.limit, ZONE)

    def mivora(self):
        command = [self.bench.programs / "mivora", "agenda", "--json", "--at", "2026-03-09T23:00:00Z"]
        printed, seconds = self.timed([*command, "--calendars", self.root])
        return seconds, len(json.loads(printed)["today"])

    def peer(self, program, *more):
        """One of the programs in bench/peers; with a word more it prints the seconds itself."""
        printed, seconds = self.timed([self.bench.peers / program, self.folder, FROM, TO, *more])
        return (float(printed), None) if more else (seconds, int(printed))

    def libecal(self):
        command = [self.bench.programs / "LibecalLoading", self.folder / "all.ics", FROM, TO]
        count, seconds = self.timed(command)[0].split()
        return float(seconds), int(count)

    def khal(self):
        listing = ["list", "--day-format", "", "--format", "{title}", "2026-03-10", "1d"]
        printed, seconds = run(["khal", "-c", self.root / "khal.conf", *listing], 10 * self.bench.limit, ZONE)
        return seconds, len(printed.split("\n")) - 1

    def make_khal_index(self):
        """So that khal is measured as it is every time but the first."""
        self.root.joinpath("khal.conf").write_text(KHAL.format(path=self.folder))
        with contextlib.suppress(NotThere):
            self.khal()


def in_turns(bench, programs):
    """The best figure of each program; those that need long are not asked as often. Names the missing ones."""
    figures, missing, spent, found = {}, [], dict.fromkeys(programs, 0), {}
    for _ in range(bench.rounds):
        for who, program in programs.items():
            if who in missing or spent[who] > bench.limit / 10:
                continue
            try:
                begin = time.monotonic()
                seconds, count = program()
                spent[who] += time.monotonic() - begin
                figures[who] = min(figures.get(who, seconds), seconds)
                found[who] = count
            except TookTooLong:
                spent[who] = bench.limit
                figures[who] = bench.limit
            except NotThere:
                missing.append(who)
    return figures, missing, {who: count for who, count in found.items() if count}


def row(bench, work, programs):
    """None when Mivora itself could not be measured."""
    figures, missing, found = in_turns(bench, programs)
    if len(set(found.values())) > 1:
        bench.notes.append(f"{work}: not all found the same: {found}")
    if "Mivora" not in figures:
        bench.notes.append(f"{work}: Mivora could not be run")
        return []
    own = figures.pop("Mivora")
    least = figures.pop(LIMIT, None)
    peers = [Figure(who, value, value >= bench.limit) for who, value in figures.items()]
    return [Row(work, "time", own, Figure(LIMIT, least) if least else None, peers, missing)]


def readers(calendar, kind, count):
    programs = {
        "Mivora": calendar.mivora,
        LIMIT: functools.partial(calendar.peer, "read-files"),
        "libical": functools.partial(calendar.peer, "libical-agenda"),
        "KCalendarCore": functools.partial(calendar.peer, "kcalendarcore-agenda"),
    }
    if kind == "oneFile":
        # It keeps all events in one file.
        return programs | {"libecal": calendar.libecal}
    # The index of the largest calendar would take many minutes to make.
    if count < SIZES[-1]:
        calendar.make_khal_index()
        programs["khal"] = calendar.khal
    return programs


def loading(bench):
    rows = []
    for kind, title in (("files", "files"), ("oneFile", "events in one file")):
        too_slow = set()
        for count in SIZES:
            programs = readers(Calendar(bench, kind, count), kind, count)
            more = row(bench, f"Load {count:,} {title}", {k: v for k, v in programs.items() if k not in too_slow})
            for line in more:
                # Who didn't manage the smaller calendar is not made to try the larger one.
                line.peers += [Figure(who, bench.limit, True) for who in too_slow]
                too_slow |= {figure.who for figure in line.peers if figure.is_more}
            rows += more
    return rows


def in_memory(bench, benchmark):
    """A benchmark of Mivora's store as a program: seconds, and no count."""

    def measure():
        results = bench.google("CalendarLoading", f"{benchmark}/10000", 1)
        name = next(iter(results), None)
        if name is None:
            raise NotThere
        return best(results, name), None

    return measure


def refresh(bench):
    files = Calendar(bench, "files", 10_000)
    programs = {
        "Mivora": in_memory(bench, "RefreshWithNothingChanged"),
        "libical": functools.partial(files.peer, "libical-agenda", "refresh"),
        "KCalendarCore": functools.partial(files.peer, "kcalendarcore-agenda", "refresh"),
    }
    return row(bench, "Refresh, none of 10,000 changed", programs)


def change(bench):
    files = Calendar(bench, "files", 10_000)
    programs = {
        "Mivora": in_memory(bench, "OneChangedFile"),
        LIMIT: functools.partial(files.peer, "read-files", "change"),
        "libical": functools.partial(files.peer, "libical-agenda", "change"),
        "KCalendarCore": functools.partial(files.peer, "kcalendarcore-agenda", "change"),
    }
    return row(bench, "Refresh, one file of 10,000 changed", programs)
