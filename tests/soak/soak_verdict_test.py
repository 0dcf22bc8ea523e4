# SPDX-License-Identifier: GPL-3.0-or-later
"""The verdict over a long run, on runs that are made up."""
import random
import unittest
from dataclasses import replace

from soak_verdict import KIB, MIB, MINUTE, Sample, judge, table


def level_run(minutes=60):
    """An hour as a healthy program has it: fills up for ten minutes, then comes and goes."""
    chance = random.Random(1)
    samples = []
    for number in range(minutes * 12):
        seconds = number * 5.0
        filled = min(1.0, seconds / (10 * MINUTE))
        samples.append(
            Sample(
                seconds=seconds,
                memory=(90 + 25 * filled) * MIB + chance.uniform(0, 3) * MIB,
                files=24 + chance.choice((0, 0, 0, 6)),
                threads=9 + chance.choice((0, 0, 1)),
                state=60 * KIB * filled + chance.uniform(0, 64),
                history=128 * KIB,
                caches=700 * KIB * filled,
                settings=430,
                rounds=number // 8,
                requests=number * 3,
            )
        )
    return samples


def changed(samples, **changes):
    """`changes` are functions of a sample that give a quantity's new value."""
    return [
        replace(sample, **{name: change(sample) for name, change in changes.items()})
        for sample in samples
    ]


class Verdicts(unittest.TestCase):
    def assert_only_fault(self, verdict, start):
        self.assertEqual(len(verdict.faults), 1, verdict.faults)
        self.assertTrue(verdict.faults[0].startswith(start), verdict.faults)

    def test_a_run_that_comes_and_goes_is_level(self):
        verdict = judge(level_run(), "")
        self.assertEqual(verdict.faults, [])
        self.assertTrue(verdict.is_level)

    def test_what_grows_in_the_first_ten_minutes_alone_is_level(self):
        filling = changed(
            level_run(), memory=lambda s: s.memory + min(s.seconds, 10 * MINUTE) * 100 * KIB
        )
        self.assertTrue(judge(filling, "").is_level)

    def test_memory_that_grows_by_six_megabytes_in_fifty_minutes_is_not_level(self):
        growing = changed(level_run(), memory=lambda s: s.memory + s.seconds * 2 * KIB)
        self.assert_only_fault(judge(growing, ""), "memory: grew by ")

    def test_memory_that_leaps_once_and_stays_is_not_level(self):
        leaping = changed(
            level_run(),
            memory=lambda s: s.memory + (10 * MIB if s.seconds > 30 * MINUTE else 0),
        )
        self.assert_only_fault(judge(leaping, ""), "memory: grew by ")

    def test_memory_that_doubles_for_a_moment_is_not_level(self):
        swinging = changed(
            level_run(), memory=lambda s: s.memory * (2 if s.seconds == 40 * MINUTE else 1)
        )
        self.assert_only_fault(judge(swinging, ""), "memory: once ")

    def test_files_that_stay_open_are_not_level(self):
        growing = changed(level_run(), files=lambda s: s.files + s.seconds // (10 * MINUTE))
        self.assert_only_fault(judge(growing, ""), "open files: grew by ")

    def test_a_thread_more_every_twenty_minutes_is_not_level(self):
        growing = changed(level_run(), threads=lambda s: s.threads + s.seconds // (20 * MINUTE))
        self.assert_only_fault(judge(growing, ""), "threads: grew by ")

    def test_every_file_that_grows_is_named(self):
        growing = changed(
            level_run(),
            state=lambda s: s.state + s.seconds * 20,
            history=lambda s: s.history + s.seconds * 50,
            caches=lambda s: s.caches + s.seconds * 200,
            settings=lambda s: s.settings + s.seconds * 2,
        )
        named = [fault.split(":")[0] for fault in judge(growing, "").faults]
        self.assertEqual(named, ["state file", "history", "caches", "settings"])

    def test_one_line_on_the_console_is_a_fault(self):
        verdict = judge(level_run(), "QObject::connect: invalid null parameter\n")
        self.assert_only_fault(verdict, "the program printed: QObject::connect: invalid")

    def test_a_run_in_which_nothing_was_done_is_no_proof(self):
        idle = changed(level_run(), rounds=lambda s: 0, requests=lambda s: 0)
        self.assertEqual(len(judge(idle, "").faults), 2)

    def test_a_run_that_ends_with_the_warm_up_is_no_proof(self):
        self.assert_only_fault(judge(level_run(10), ""), "the run was too short")
        self.assert_only_fault(judge([], ""), "the run was too short")


class Tables(unittest.TestCase):
    def test_the_table_has_a_line_for_each_ten_minutes(self):
        lines = table(level_run(30))
        self.assertEqual([line.split()[0] for line in lines], ["minutes", "0–10", "10–20", "20–30"])
        self.assertRegex(lines[-1], r" 116\.\d MiB .* 430 B ")
        self.assertEqual(lines[-1].split()[-2:], ["15", "360"])


if __name__ == "__main__":
    unittest.main()
