# SPDX-License-Identifier: GPL-3.0-or-later
"""The part of a desktop that a bare virtual display lacks: the service that shows notifications."""
from gi.repository import GLib

from session_service import SessionService

SERVICE = "org.freedesktop.Notifications"
PATH = "/org/freedesktop/Notifications"
DESCRIPTION = f"""
<node>
  <interface name="{SERVICE}">
    <method name="GetCapabilities"><arg type="as" direction="out"/></method>
    <method name="Notify">
      <arg type="s" direction="in"/><arg type="u" direction="in"/><arg type="s" direction="in"/>
      <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="as" direction="in"/>
      <arg type="a{{sv}}" direction="in"/><arg type="i" direction="in"/>
      <arg type="u" direction="out"/>
    </method>
    <signal name="ActionInvoked"><arg type="u"/><arg type="s"/></signal>
  </interface>
</node>"""


class DesktopNotifications:
    """Keeps title and text of what it is asked to show, on the session bus until closed."""

    def __init__(self):
        self.shown = []
        self._service = SessionService(SERVICE, PATH, DESCRIPTION, self._answer)

    def _answer(self, _bus, _sender, _path, _interface, method, arguments, invocation):
        if method == "GetCapabilities":
            invocation.return_value(GLib.Variant("(as)", (["body", "body-markup", "actions"],)))
            return
        values = arguments.unpack()
        self.shown.append((values[3], values[4]))
        invocation.return_value(GLib.Variant("(u)", (len(self.shown),)))

    def click(self):
        """On the last one."""
        arguments = GLib.Variant("(us)", (len(self.shown), "default"))
        self._service.bus.emit_signal(None, PATH, SERVICE, "ActionInvoked", arguments)
        self._service.bus.flush_sync(None)

    def close(self):
        self._service.close()
