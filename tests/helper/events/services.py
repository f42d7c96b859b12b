#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""The services of a desktop, mocked on a private system bus.

Answers each line of its input, a statement of Python, with "done" when it has run it. Ends, with its servers, at the
end of the input.
"""
import subprocess
import sys
import time

import dbus
import dbusmock

MOCK = "org.freedesktop.DBus.Mock"
POWER = "org.freedesktop.UPower"
LOGIN = "org.freedesktop.login1"
DISKS = "org.freedesktop.UDisks2"
DISK = "/org/freedesktop/UDisks2/block_devices/sdb1"
OBJECTS = "org.freedesktop.DBus.ObjectManager"
servers = []


def server(template, parameters):
    process, mock = dbusmock.DBusTestCase.spawn_server_template(template, parameters, stdout=subprocess.DEVNULL)
    servers.append(process)
    return dbus.Interface(mock, MOCK)


def mock(service, path):
    return dbus.Interface(bus.get_object(service, path), MOCK)


def run(command):
    """Runs a command of the shell; what it prints."""
    return subprocess.run(command, shell=True, check=True, capture_output=True, text=True).stdout.strip()


def start(command):
    """Starts a program that ends with the others."""
    servers.append(subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL))


def windows(command):
    """Has the windows of xev do something."""
    run(f"xdotool search --name 'Event Tester' {command}")


def job(member, state):
    """What the print server's notifier says about a job."""
    disks.EmitSignal("org.cups.cupsd.Notifier", member, "sssusbuuss",
                     ["", "", "printer", dbus.UInt32(4), "", True, dbus.UInt32(7), dbus.UInt32(state), "", "letter"])


def play(name):
    """The sound of an event, as the desktop's programs play it."""
    run(f"head -c 20000 /dev/zero | timeout 5 pacat --raw --property=event.id={name} || true")


def notify(category, urgency=1):
    """What a mail program calls; nobody answers here."""
    hints = dbus.Dictionary({"category": category, "urgency": dbus.Byte(urgency)}, signature="sv")
    message = dbus.lowlevel.MethodCallMessage(
        "org.freedesktop.DBus", "/org/freedesktop/Notifications", "org.freedesktop.Notifications", "Notify")
    message.append("mail", dbus.UInt32(0), "", "Title", "Text", dbus.Array([], signature="s"), hints, dbus.Int32(-1),
                   signature="susssasa{sv}i")
    dbus.SessionBus().send_message(message)


bus = dbusmock.DBusTestCase.get_dbus(True)
try:
    power = server("upower", {"OnBattery": True})
    battery = mock(POWER, "/org/freedesktop/UPower/devices/DisplayDevice")
    login = server("logind", {})
    session = mock(LOGIN, login.AddSession("c1", "seat0", 1000, "user", True))
    session.UpdateProperties(LOGIN + ".Session", {"Timestamp": dbus.UInt64(time.time() * 1e6)})
    network = server("networkmanager", {"State": dbus.UInt32(20)})
    servers.append(dbusmock.DBusTestCase.spawn_server(DISKS, "/org/freedesktop/UDisks2", OBJECTS, system_bus=True,
                                                      stdout=subprocess.DEVNULL))
    disks = mock(DISKS, "/org/freedesktop/UDisks2")
    disks.AddObject(DISK, DISKS + ".Filesystem", {"MountPoints": dbus.Array([], signature="ay")}, [])
    disk = mock(DISKS, DISK)
    saver = server("gnome_screensaver", {})
    start(["openbox"])
    print("done", flush=True)
    for line in sys.stdin:
        exec(line)  # pylint: disable=exec-used
        print("done", flush=True)
finally:
    for process in servers:
        process.kill()
        process.wait()
