# SPDX-License-Identifier: GPL-3.0-or-later
"""Whether a long run of the program was level: what it uses, sampled every few seconds, must not grow
once the first ten minutes have filled what fills up."""
import statistics
from dataclasses import dataclass, field

MINUTE = 60
WARM_UP = 10 * MINUTE
SPAN = 10 * MINUTE
KIB = 1024
MIB = 1024 * KIB


@dataclass(frozen=True)
class Quantity:
    """What is sampled, and what a level run may do.

    `growth` is the most that the trend may rise over the whole time after the warm-up, `swing` the most
    that one sample may lie above the middle of that time. Both in the unit of the samples.
    """

    name: str
    title: str
    growth: float
    swing: float
    is_size: bool = True


# The reasons: memory comes and goes with a search's hundred apps and with pictures, and the allocator
# keeps some of it; a leak of ten kilobytes in each of some hundred rounds still shows. Connections to the
# services are kept for a while, and a database is open only while it is read. A thread that nobody has
# needed for half a minute ends. Measuring again on the same day replaces what that day has, so files
# stay as they are but for figures with more digits.
QUANTITIES = (
    Quantity("memory", "memory", 4 * MIB, 32 * MIB),
    Quantity("files", "open files", 2, 32, is_size=False),
    Quantity("threads", "threads", 1, 8, is_size=False),
    Quantity("state", "state file", 16 * KIB, 64 * KIB),
    Quantity("history", "history", 64 * KIB, 256 * KIB),
    Quantity("caches", "caches", 256 * KIB, MIB),
    Quantity("settings", "settings", 4 * KIB, 16 * KIB),
)


@dataclass(frozen=True)
class Sample:
    """One look at the program: seconds since its start, sizes in bytes, and what was done until then."""

    seconds: float
    memory: float = 0
    files: float = 0
    threads: float = 0
    state: float = 0
    history: float = 0
    caches: float = 0
    settings: float = 0
    rounds: int = 0
    requests: int = 0


@dataclass
class Verdict:
    faults: list = field(default_factory=list)

    @property
    def is_level(self):
        return not self.faults


def slope(samples, name):
    """The trend in units a second: the median of the slopes of pairs that lie half the time apart, which
    a few outliers cannot move."""
    half = len(samples) // 2
    slopes = [
        (getattr(late, name) - getattr(early, name)) / (late.seconds - early.seconds)
        for early, late in zip(samples[:half], samples[-half:])
    ]
    return statistics.median(slopes)


def shown(quantity, value):
    if not quantity.is_size:
        return f"{value:.0f}"
    if abs(value) < KIB:
        return f"{value:.0f} B"
    return f"{value / MIB:.1f} MiB" if abs(value) >= MIB else f"{value / KIB:.0f} KiB"


def spans(samples):
    """The samples of the first ten minutes, and of each ten minutes after."""
    parts = {}
    for sample in samples:
        parts.setdefault(int(sample.seconds // SPAN), []).append(sample)
    return [parts[number] for number in sorted(parts)]


def table(samples):
    """Lines for people: the median of each quantity in each ten minutes, and what was done in them."""
    lines = [["minutes", *(quantity.title for quantity in QUANTITIES), "rounds", "requests"]]
    before = Sample(0)
    for part in spans(samples):
        start, end = part[0].seconds // SPAN * SPAN, part[-1].seconds
        medians = [
            shown(quantity, statistics.median(getattr(sample, quantity.name) for sample in part))
            for quantity in QUANTITIES
        ]
        done = [str(part[-1].rounds - before.rounds), str(part[-1].requests - before.requests)]
        lines.append([f"{start / MINUTE:.0f}–{end / MINUTE:.0f}", *medians, *done])
        before = part[-1]
    widths = [max(len(line[column]) for line in lines) for column in range(len(lines[0]))]
    return ["  ".join(cell.rjust(width) for cell, width in zip(line, widths)) for line in lines]


def judge(samples, console):
    """`console` is all that the program printed."""
    verdict = Verdict()
    for line in console.splitlines():
        verdict.faults.append(f"the program printed: {line}")
    rest = [sample for sample in samples if sample.seconds >= WARM_UP]
    if len(rest) < 10:
        verdict.faults.append("the run was too short to be judged")
        return verdict
    for quantity in QUANTITIES:
        values = [getattr(sample, quantity.name) for sample in rest]
        time = rest[-1].seconds - rest[0].seconds
        growth = slope(rest, quantity.name) * time
        if growth > quantity.growth:
            verdict.faults.append(
                f"{quantity.title}: grew by {shown(quantity, growth)} in {time / MINUTE:.0f} minutes, "
                f"{shown(quantity, quantity.growth)} at most are level"
            )
        swing = max(values) - statistics.median(values)
        if swing > quantity.swing:
            verdict.faults.append(
                f"{quantity.title}: once {shown(quantity, swing)} above the middle, "
                f"{shown(quantity, quantity.swing)} at most are level"
            )
    # A program that does nothing is level, too.
    if rest[-1].rounds == rest[0].rounds:
        verdict.faults.append("nothing was done after the first ten minutes")
    if rest[-1].requests == rest[0].requests:
        verdict.faults.append("nothing was asked of the services after the first ten minutes")
    return verdict
