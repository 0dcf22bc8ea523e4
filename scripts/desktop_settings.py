# SPDX-License-Identifier: GPL-3.0-or-later
"""The part of a desktop that a bare virtual display lacks: the service that programs ask whether the
user prefers a light or a dark appearance, and that tells them when the user changes it."""
import threading

from gi.repository import Gio, GLib

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
        self._context = GLib.MainContext.new()
        self._loop = GLib.MainLoop.new(self._context, False)
        self._is_ready = threading.Event()
        self._bus = None
        self._thread = threading.Thread(target=self._serve, daemon=True)
        self._thread.start()
        if not self._is_ready.wait(10):
            raise RuntimeError("the desktop's settings did not start")

    def _serve(self):
        self._context.push_thread_default()
        flags = (
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
            | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        )
        address = Gio.dbus_address_get_for_bus_sync(Gio.BusType.SESSION, None)
        self._bus = Gio.DBusConnection.new_for_address_sync(address, flags, None, None)
        interface = Gio.DBusNodeInfo.new_for_xml(DESCRIPTION).interfaces[0]
        self._bus.register_object(PATH, interface, self._answer, None, None)
        owner = Gio.bus_own_name_on_connection(
            self._bus, SERVICE, Gio.BusNameOwnerFlags.NONE, lambda *_: self._is_ready.set(), None
        )
        self._loop.run()
        Gio.bus_unown_name(owner)
        self._bus.close_sync(None)
        self._context.pop_thread_default()

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
        self._bus.emit_signal(None, PATH, INTERFACE, "SettingChanged", value)
        self._bus.flush_sync(None)

    def close(self):
        self._context.invoke_full(GLib.PRIORITY_DEFAULT, self._loop.quit)
        self._thread.join(10)
