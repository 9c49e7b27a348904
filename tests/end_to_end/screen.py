"""What a user has: eyes (the accessibility tree, pictures), a mouse and a keyboard."""

import mmap
from itertools import pairwise

from gi.repository import GLib

from stage import PIXELS_PER_POINT, SCREEN_SIZE, connect_to_bus, wait_for, wait_for_rest

_ACCESSIBLE = "org.a11y.atspi.Accessible"


class Node:
    """One element of the accessibility tree, which is asked for its properties one by one: Qt 6.4 cannot answer for all. A
    GLib.Error says that it is gone."""

    ACTIVE, CHECKED, ENABLED, SHOWING = 1, 4, 8, 25

    def __init__(self, bus, address):
        self._bus, self._address = bus, address

    def _call(self, interface, method, signature=None, *arguments):
        parameters = GLib.Variant(signature, arguments) if signature else None
        return self._bus.call_sync(*self._address, interface, method, parameters, None, 0, 10_000, None).unpack()[0]

    def _property(self, interface, name):
        return self._call("org.freedesktop.DBus.Properties", "Get", "(ss)", interface, name)

    @property
    def role(self):
        return self._call(_ACCESSIBLE, "GetRoleName")

    @property
    def name(self):
        return self._property(_ACCESSIBLE, "Name")

    @property
    def value(self):
        """Of a progress bar."""
        return self._property("org.a11y.atspi.Value", "CurrentValue")

    @property
    def text(self):
        """Of a text field."""
        return self._call("org.a11y.atspi.Text", "GetText", "(ii)", 0, -1)

    @property
    def children(self):
        return [Node(self._bus, address) for address in self._call(_ACCESSIBLE, "GetChildren")]

    def has(self, state):
        low, _high = self._call(_ACCESSIBLE, "GetState")
        return bool(low >> state & 1)

    @property
    def rectangle(self):
        """x, y, width and height, in pixels of the screen."""
        extents = self._call("org.a11y.atspi.Component", "GetExtents", "(u)", 0)
        return tuple(PIXELS_PER_POINT * each for each in extents)

    def showing(self):
        """The element and everything in it that is on screen, from the outside in."""
        if self.has(Node.SHOWING):
            yield self
            for child in self.children:
                yield from child.showing()

    def all(self, role):
        return (each for each in self.showing() if each.role == role)

    def find(self, role, name=None):
        """The first such element on screen; None where there is none."""
        return next((each for each in self.all(role) if name in (None, each.name)), None)

    def labels(self):
        return [each.name for each in self.all("label")]

    def facts(self):
        """What a screen reader reads behind a caption: the label that follows it."""
        return dict(pairwise(self.labels()))


class Screen:
    def __init__(self, stage):
        self._stage = stage
        address = stage.bus.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress",
                                      None, None, 0, 20_000, None).unpack()[0]
        self._desktop = Node(connect_to_bus(address), ("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"))
        with open(stage.screen_file, "rb") as file:
            self._memory = mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ)

    # Eyes

    def windows(self):
        return [window for program in self._desktop.children for window in program.children if window.has(Node.SHOWING)]

    def window(self, title):
        """The window of that title, once it is in front and stays where it is: it comes up before it is moved there."""
        def in_front():
            return next((each for each in self.windows() if each.name == title and each.has(Node.ACTIVE)), None)
        window = wait_for(f"a window titled '{title}' in front", in_front)
        wait_for_rest(f"the window '{title}'", lambda: window.rectangle)
        return window

    def wait_until_gone(self, title):
        wait_for(f"the window '{title}' goes", lambda: title not in [each.name for each in self.windows()])

    def find(self, window, role, name=None):
        return wait_for(f"the {role} '{name or ''}'", lambda: window.find(role, name))

    def picture(self, window, path):
        """A picture of the window, and of what is in front of it, once it rests; the mouse is out of the way."""
        self._stage.run("xdotool", "mousemove", "0", "0")
        # For less than a cursor stays on or off.
        wait_for_rest("the picture", lambda: self._pixels(*window.rectangle), seconds=0.2)
        number = self._stage.run("xdotool", "search", "--onlyvisible", "--name", f"^{window.name}$").strip()
        self._stage.run("import", "-screen", "-window", number, path)

    def _pixels(self, left, top, width, height):
        """Blue, green, red and nothing, row by row."""
        across, down = SCREEN_SIZE
        first = len(self._memory) - 4 * across * down  # they are the end of the file
        rows = (first + 4 * (across * row + left) for row in range(top, top + height))
        return b"".join(self._memory[row:row + 4 * width] for row in rows)

    # Hands

    def press(self, *keys):
        """Key combinations, one after the other: "ctrl+i", "Return"."""
        self._stage.run("xdotool", "key", "--clearmodifiers", *keys)

    def type(self, text):
        self._stage.run("xdotool", "type", "--delay", "5", text)

    def click(self, window, role, name):
        """Clicks a control, once it can be used."""
        node = self.find(window, role, name)
        wait_for(f"the {role} '{name}' can be used", lambda: node.has(Node.ENABLED))
        self._stage.run("xdotool", "mousemove", *self._middle(node), "click", "1")

    def choose_file(self, title, path):
        """Types a path into a file chooser and confirms it."""
        field = self.find(self.window(title), "text")
        self.press("ctrl+a")
        self.type(str(path))
        wait_for("the file chooser's field takes the path", lambda: field.text == str(path))
        self.press("Return")
        self.wait_until_gone(title)

    def carry(self, node, target):
        """Takes an element with the mouse and drops it on another, once that looks as if it takes it."""
        x, y = self._middle(target)

        def look():
            left, top, width, height = target.rectangle
            return self._pixels(left + width // 20, top + height // 10, 8, 8)
        before = wait_for_rest("the target", look, seconds=0.2)
        self._stage.run("xdotool", "mousemove", *self._middle(node), "mousedown", "1")

        def takes_it():
            # A hand moves all the way and does not jump: the last steps are over the target.
            self._stage.run("xdotool", "mousemove", x - 20, y - 20, "mousemove", x, y)
            return look() != before
        wait_for("the target looks as if it takes what is dragged over it", takes_it)
        self._stage.run("xdotool", "mouseup", "1")

    @staticmethod
    def _middle(node):
        x, y, width, height = wait_for_rest("the element", lambda: node.rectangle)
        return x + width // 2, y + height // 2
