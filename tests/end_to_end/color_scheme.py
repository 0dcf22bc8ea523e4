# SPDX-License-Identifier: GPL-3.0-or-later
"""The window is as dark as the desktop wants it, at the start and when the user changes his mind."""
from desktop_settings import DARK, LIGHT, DesktopSettings
from flow import run
from window_driver import wait_for


def wait_dark(veltrix):
    wait_for("a dark window", lambda: veltrix.brightness() < 0.3)


def wait_light(veltrix):
    wait_for("a light window", lambda: veltrix.brightness() > 0.7)


def steps(flow):
    desktop = DesktopSettings(DARK)
    try:
        with flow.started() as veltrix:
            veltrix.button("Add App")
            wait_dark(veltrix)
            desktop.set_color_scheme(LIGHT)
            wait_light(veltrix)
            desktop.set_color_scheme(DARK)
            wait_dark(veltrix)
    finally:
        desktop.close()


if __name__ == "__main__":
    run(steps)
