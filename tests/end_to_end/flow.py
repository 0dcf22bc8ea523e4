# SPDX-License-Identifier: GPL-3.0-or-later
"""What the flows share: starts of the program on one data folder, and what a failure tells."""
import os
import signal
import sys
from contextlib import contextmanager

from window_driver import DriveError, Veltrix, describe, saved_state, state_path, wait_for


class Flow:
    """A user's data folder, and the sample services beside it."""

    def __init__(self, program, folder, services):
        self.program = program
        self.data = os.path.join(folder, "data")
        self.state_file = state_path(self.data)
        self.services = services

    @contextmanager
    def started(self):
        """The running program; a failure prints what is on the screen."""
        veltrix = Veltrix(self.program)
        try:
            yield veltrix
        except DriveError:
            print(describe(veltrix.root), file=sys.stderr)
            raise
        finally:
            veltrix.close()

    def state(self):
        return saved_state(self.data)

    def wait_state(self, what, agrees):
        """Waits until the state file says what the window says."""
        wait_for(f"the state file to hold {what}", lambda: agrees(self.state()))

    def saved_keywords(self):
        return sorted(keyword["keyword"] for keyword in self.state()["trackedKeywords"])

    def end_services(self):
        """From here on nobody answers."""
        os.kill(self.services, signal.SIGTERM)
        stat = f"/proc/{self.services}/stat"

        def has_ended():
            try:
                with open(stat, encoding="ascii") as file:
                    return file.read().rsplit(")", 1)[1].split()[0] == "Z"
            except FileNotFoundError:
                return True

        wait_for("the sample services to end", has_ended)


def run(steps):
    """Runs one flow with the arguments that tests/end_to_end/run gives."""
    try:
        steps(Flow(sys.argv[1], sys.argv[2], int(sys.argv[3])))
    except DriveError as error:
        print(f"The end-to-end test failed: {error}.", file=sys.stderr)
        sys.exit(1)
    print("1 passed, 0 failed")
