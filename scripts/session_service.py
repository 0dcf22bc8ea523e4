# SPDX-License-Identifier: GPL-3.0-or-later
"""An object on the session bus, served from a thread of its own."""
import threading

from gi.repository import Gio, GLib


class SessionService:
    """Owns `name` and answers for the one interface of `description` at `path` until closed."""

    def __init__(self, name, path, description, answer):
        self._name = name
        self._path = path
        self._description = description
        self._answer = answer
        self._context = GLib.MainContext.new()
        self._loop = GLib.MainLoop.new(self._context, False)
        self._is_ready = threading.Event()
        self.bus = None
        self._thread = threading.Thread(target=self._serve, daemon=True)
        self._thread.start()
        if not self._is_ready.wait(10):
            raise RuntimeError(f"{name} did not start")

    def _serve(self):
        self._context.push_thread_default()
        flags = (
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
            | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        )
        address = Gio.dbus_address_get_for_bus_sync(Gio.BusType.SESSION, None)
        self.bus = Gio.DBusConnection.new_for_address_sync(address, flags, None, None)
        interface = Gio.DBusNodeInfo.new_for_xml(self._description).interfaces[0]
        self.bus.register_object(self._path, interface, self._answer, None, None)
        owner = Gio.bus_own_name_on_connection(
            self.bus, self._name, Gio.BusNameOwnerFlags.NONE, lambda *_: self._is_ready.set(), None
        )
        self._loop.run()
        Gio.bus_unown_name(owner)
        self.bus.close_sync(None)
        self._context.pop_thread_default()

    def close(self):
        self._context.invoke_full(GLib.PRIORITY_DEFAULT, self._loop.quit)
        self._thread.join(10)
