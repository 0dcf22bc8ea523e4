# SPDX-License-Identifier: GPL-3.0-or-later
"""The default storefront is kept over a restart and leaves the filter of the keywords alone."""
from flow import run


def steps(flow):
    with flow.started() as veltrix:
        veltrix.key("Ctrl+,")
        settings = veltrix.dialog("Settings")
        veltrix.button("Default storefront: United States", inside=settings)
        veltrix.pick_storefront("Default storefront: ", "Germany")
        # The list lay over the sheet, which is read anew now.
        settings = veltrix.dialog("Settings")
        veltrix.button("Default storefront: Germany", inside=settings)
        veltrix.press("Done", inside=settings)
        veltrix.wait_closed("Settings")
        veltrix.button("Storefront filter: All Countries")
        veltrix.press("Add App")
        veltrix.button("Search the App Store in Germany")

    with flow.started() as veltrix:
        veltrix.button("Storefront filter: All Countries")
        veltrix.key("Ctrl+,")
        settings = veltrix.dialog("Settings")
        veltrix.button("Default storefront: Germany", inside=settings)
        veltrix.key("Escape")
        veltrix.wait_closed("Settings")
        veltrix.press("Add App")
        veltrix.button("Search the App Store in Germany")
        veltrix.type_into("Search app name, ID, or App Store URL", "Lumen Photo Editor")
        veltrix.press("Search", inside=veltrix.dialog("Add App"))
        veltrix.text(starts="20 results for “Lumen Photo Editor” in Germany")


if __name__ == "__main__":
    run(steps)
