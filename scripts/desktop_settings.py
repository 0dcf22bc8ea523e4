# SPDX-License-Identifier: GPL-3.0-or-later
"""The part of a desktop that a bare virtual display lacks: the service that programs ask whether the
user prefers a light or a dark appearance, and that tells them when the user changes it."""
from gi.repository import GLib

from session_service import SessionService

SERVICE = "org.freedesktop.portal.Desktop"
PATH = "/org/freedesktop/portal/desktop"
INTERFACE = "org.freedesktop.portal.Settings"
GROUP, KEY = "org.freedesktop.appearance", "color-scheme"
DARK, LIGHT = 1, 2
DESCRIPTION = f"""
<node>
  <interface name="{INTERFACE}">
    <method name="Read">
      <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/>
    </method>
    <signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal>
  </interface>
</node>"""


class DesktopSettings:
    """Answers on the session bus from a thread of its own until closed."""

    def __init__(self, color_scheme=LIGHT):
        self._scheme = color_scheme
        self._service = SessionService(SERVICE, PATH, DESCRIPTION, self._answer)

    def _answer(self, _bus, _sender, _path, _interface, _method, arguments, invocation):
        if arguments.unpack() == (GROUP, KEY):
            value = GLib.Variant("u", self._scheme)
            invocation.return_value(GLib.Variant("(v)", (value,)))
        else:
            invocation.return_dbus_error(SERVICE + ".Error.NotFound", "no such setting")

    def set_color_scheme(self, color_scheme):
        """The user changes the appearance while programs run."""
        self._scheme = color_scheme
        value = GLib.Variant("(ssv)", (GROUP, KEY, GLib.Variant("u", color_scheme)))
        self._service.bus.emit_signal(None, PATH, INTERFACE, "SettingChanged", value)
        self._service.bus.flush_sync(None)

    def close(self):
        self._service.close()
