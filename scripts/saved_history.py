# SPDX-License-Identifier: GPL-3.0-or-later
"""Gives a saved state the days before today, as if Veltrix had measured then, too."""
import copy
import json
import os
import uuid

SECONDS_PER_DAY = 86_400


def add_earlier_days(state_file, positions):
    """Adds to every keyword a measurement for each day before its newest one.

    `positions(place, newest)` gives, for the keyword at that place of the list and its newest rank,
    the ranks of the days before, nearest first: a number, None for a check that found no rank, or
    "none" for a day without a check.
    """
    with open(state_file, encoding="utf-8") as file:
        state = json.load(file)
    earlier = []
    for place, keyword in enumerate(state["trackedKeywords"]):
        own = [s for s in state["snapshots"] if s["trackedKeywordId"] == keyword["id"]]
        newest = max(own, key=lambda snapshot: snapshot["fetchedAt"])
        for days, position in enumerate(positions(place, newest.get("position")), start=1):
            if position == "none":
                continue
            snapshot = copy.deepcopy(newest)
            snapshot["id"] = str(uuid.uuid4()).upper()
            snapshot["fetchedAt"] -= days * SECONDS_PER_DAY
            snapshot["position"] = position
            if position is None:
                del snapshot["position"]
            earlier.append(snapshot)
            keyword["createdAt"] = min(keyword["createdAt"], snapshot["fetchedAt"])
    earlier.sort(key=lambda snapshot: snapshot["fetchedAt"])
    state["snapshots"] = earlier + state["snapshots"]
    whole = state_file + ".new"
    with open(whole, "w", encoding="utf-8") as file:
        json.dump(state, file)
    os.replace(whole, state_file)
