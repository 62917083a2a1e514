"""Runs programs and takes their times."""

import json
import os
import signal
import subprocess
import time

SECONDS = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1}


class TookTooLong(Exception):
    pass


class NotThere(Exception):
    """The program, or something that it needs, is not installed."""


def run(command, limit, environment=None):
    """Returns what a program printed and the seconds that it took. It gets a group of its own, to end all of it."""
    start = time.monotonic()
    try:
        process = subprocess.Popen(
            [str(word) for word in command],
            stdout=subprocess.PIPE,
            stderr=subprocess.DEVNULL,
            env={**os.environ, **(environment or {})},
            start_new_session=True,
        )
    except FileNotFoundError:
        raise NotThere from None
    try:
        printed = process.communicate(timeout=limit)[0]
    except subprocess.TimeoutExpired:
        os.killpg(process.pid, signal.SIGKILL)
        process.communicate()
        raise TookTooLong from None
    seconds = time.monotonic() - start
    if process.returncode != 0:
        raise NotThere
    return printed.decode(), seconds


def google_benchmark(program, pattern, rounds, limit, min_time=0.1):
    """Runs some of the benchmarks of a program, in turns; returns of each the rounds with all that they count."""
    command = [
        program,
        f"--benchmark_filter={pattern}",
        f"--benchmark_repetitions={rounds}",
        "--benchmark_enable_random_interleaving=true",
        f"--benchmark_min_time={min_time}",
        "--benchmark_format=json",
    ]
    printed, _ = run(command, limit)
    results = {}
    for entry in json.loads(printed)["benchmarks"]:
        if entry["run_type"] != "iteration" or entry.get("error_occurred"):
            continue
        entry["seconds"] = entry["real_time"] * SECONDS[entry["time_unit"]]
        name = entry["run_name"].split("/iterations:")[0].removesuffix("/real_time").removesuffix("/process_time")
        results.setdefault(name, []).append(entry)
    return results


def best(results, name, what="seconds"):
    """The least of what the rounds of a benchmark counted; nothing when there is no such benchmark."""
    return min((entry[what] for entry in results.get(name, []) if what in entry), default=None)
