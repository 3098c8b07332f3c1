#!/usr/bin/python3
"""motion_setting_test.py LUMVALE: starts the program beside a portal that says whether the desktop wants animations.
The program draws frames only while it does. Needs a D-Bus session of its own."""

import os
import pathlib
import subprocess
import sys
import tempfile
import threading
import time

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

INTERFACE = "org.freedesktop.portal.Settings"
PATH = "/org/freedesktop/portal/desktop"
SETTING = ("org.gnome.desktop.interface", "enable-animations")
DESCRIPTION = f"""<node><interface name="{INTERFACE}">
<method name="Read"><arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/></method>
<signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal></interface></node>"""

asked = threading.Event()
last_frame = None


def answer(_bus, _sender, _path, _interface, _method, parameters, invocation):
    if tuple(parameters) == SETTING:
        # The portal wraps the value twice.
        invocation.return_value(GLib.Variant("(v)", (GLib.Variant("v", GLib.Variant("b", False)),)))
        asked.set()


def watch_frames():
    global last_frame
    for line in process.stderr:
        if b"renderloop" in line:
            last_frame = time.monotonic()


def wait_for(what, holds):
    end = time.monotonic() + 60
    while not holds():
        if time.monotonic() > end or process.poll() is not None:
            sys.exit(f"{what} did not happen")
        time.sleep(0.05)


def is_still():
    return last_frame is not None and time.monotonic() - last_frame > 1


bus = Gio.bus_get_sync(Gio.BusType.SESSION)
bus.register_object(PATH, Gio.DBusNodeInfo.new_for_xml(DESCRIPTION).interfaces[0], answer)
Gio.bus_own_name_on_connection(bus, "org.freedesktop.portal.Desktop", Gio.BusNameOwnerFlags.NONE)
threading.Thread(target=GLib.MainLoop().run, daemon=True).start()

with tempfile.TemporaryDirectory() as folder:
    pathlib.Path(folder, "Users/me").mkdir(parents=True)
    environment = dict(os.environ, LUMVALE_DISK=folder, LUMVALE_HOME="/Users/me", LUMVALE_SETTINGS=folder,
                       QT_FORCE_STDERR_LOGGING="1", QT_LOGGING_RULES="qt.scenegraph.time.renderloop=true")
    process = subprocess.Popen([sys.argv[1]], env=environment, stderr=subprocess.PIPE)
    try:
        threading.Thread(target=watch_frames, daemon=True).start()
        wait_for("the question", asked.is_set)
        wait_for("the end of all motion", is_still)
        for wants_animations in (True, False):
            bus.emit_signal(None, PATH, INTERFACE, "SettingChanged",
                            GLib.Variant("(ssv)", (*SETTING, GLib.Variant("b", wants_animations))))
            wait_for("a change of the motion", lambda: is_still() != wants_animations)
    finally:
        process.kill()
        process.wait()
