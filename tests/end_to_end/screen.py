"""What a user has: eyes (the accessibility tree, pictures), a mouse and a keyboard."""

from gi.repository import GLib

from stage import PIXELS_PER_POINT, connect_to_bus, wait_for

_ACCESSIBLE = "org.a11y.atspi.Accessible"
_COMPONENT = "org.a11y.atspi.Component"
_TEXT = "org.a11y.atspi.Text"
_VALUE = "org.a11y.atspi.Value"


class Node:
    """One element of the accessibility tree, which is asked for its properties one by one: Qt 6.4 cannot answer for all. A
    GLib.Error says that it is gone."""

    ACTIVE, CHECKED, ENABLED, FOCUSED, SHOWING = 1, 4, 8, 12, 25

    def __init__(self, bus, address):
        self._bus = bus
        self._address = address

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
        return self._property(_VALUE, "CurrentValue")

    @property
    def text(self):
        """Of a text field."""
        return self._call(_TEXT, "GetText", "(ii)", 0, -1)

    @property
    def children(self):
        return [Node(self._bus, address) for address in self._call(_ACCESSIBLE, "GetChildren")]

    def has(self, state):
        low, _high = self._call(_ACCESSIBLE, "GetState")
        return bool(low >> state & 1)

    @property
    def rectangle(self):
        """x, y, width and height, in pixels of the screen."""
        return tuple(PIXELS_PER_POINT * each for each in self._call(_COMPONENT, "GetExtents", "(u)", 0))

    def showing(self):
        """The element and everything in it that is on screen, from the outside in."""
        if self.has(Node.SHOWING):
            yield self
            for child in self.children:
                yield from child.showing()

    def find(self, role, name=None):
        """The first such element on screen; None where there is none."""
        return next((each for each in self.showing() if each.role == role and name in (None, each.name)), None)

    def value_of(self, caption):
        """What a screen reader reads behind a caption: the label that follows it. None where the caption is not."""
        labels = [each for each in self.showing() if each.role == "label"]
        return next((following.name for label, following in zip(labels, labels[1:]) if label.name == caption), None)

    def says(self, text):
        """Whether a label on screen has this text."""
        return self.find("label", text) is not None


class Screen:
    def __init__(self, stage):
        self._stage = stage
        session = connect_to_bus(stage.environment["DBUS_SESSION_BUS_ADDRESS"])
        address = session.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress",
                                    None, None, 0, 20_000, None).unpack()[0]
        self._bus = connect_to_bus(address)
        self._desktop = Node(self._bus, ("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"))

    # Eyes

    def windows(self):
        return [window for program in self._desktop.children for window in program.children if window.has(Node.SHOWING)]

    def window(self, title):
        """The window of that title, once it is in front and rests."""
        def in_front():
            return next((each for each in self.windows() if each.name == title and each.has(Node.ACTIVE)), None)
        window = wait_for(f"a window titled '{title}' in front", in_front)
        self._rest(window)
        return window

    def wait_until_gone(self, title):
        wait_for(f"the window '{title}' goes", lambda: title not in [each.name for each in self.windows()])

    def find(self, window, role, name):
        return wait_for(f"the {role} '{name or ''}' in '{window.name}'", lambda: window.find(role, name))

    def picture(self, window, path):
        """A picture of the window, and of what is in front of it, once it rests; the mouse is out of the way."""
        self._stage.run("xdotool", "mousemove", "0", "0")
        number = self._stage.run("xdotool", "search", "--onlyvisible", "--name", f"^{window.name}$").strip()
        seen = [b""]

        def rests():
            self._stage.run("import", "-screen", "-window", number, path)
            seen.append(path.read_bytes())
            return seen[-1] == seen[-2]
        wait_for(f"the picture of '{window.name}' rests", rests)

    @staticmethod
    def _rest(node):
        """Waits until the node stays where it is: a window comes up before it is moved to its place."""
        seen = []

        def rests():
            seen.append(node.rectangle)
            return len(seen) > 2 and seen[-1] == seen[-2] == seen[-3]
        wait_for(f"'{node.name}' rests", rests)

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
        self._rest(node)
        self._stage.run("xdotool", "mousemove", *self._middle(node), "click", "1")

    def choose_file(self, title, path):
        """Types a path into a file chooser and confirms it."""
        chooser = self.window(title)
        field = self.find(chooser, "text", None)
        self.press("ctrl+a")
        self.type(str(path))
        wait_for("the file chooser's field takes the path", lambda: field.text == str(path))
        self.press("Return")
        self.wait_until_gone(title)

    def drag(self, source_program, files, target):
        """Drags files out of another program's window and drops them on a node. Answers what that program was told that
        the drop did."""
        before = len(self._stage.log(source_program))
        source = self._stage.start(source_program, *files)

        def said(what):
            lines = self._stage.log(source_program)[before:].splitlines()
            return next((line.split()[1] for line in reversed(lines) if line.startswith(what)), None)
        handle = wait_for("the drag source", lambda: next(
            (each for each in self.windows() if each.name == "Drag me"), None))
        self._rest(handle)
        self.carry(handle, target, lambda: said("offered") not in (None, "nothing"))
        action = wait_for("the drop", lambda: said("done"))
        wait_for("the drag source ends", lambda: source.poll() is not None)
        return action

    def carry(self, handle, target, is_welcome=None):
        """Takes a node with the mouse and drops it on another, once that welcomes it; without a word from the source:
        once the target looks it."""
        x, y = self._middle(target)
        shot = self._stage.folder / "target.ppm"

        def looks():
            left, top, width, height = target.rectangle
            self._stage.run("import", "-window", "root", "-crop", f"{width // 3}x{height // 3}+{left}+{top}", shot)
            return shot.read_bytes()
        before = looks()
        self._stage.run("xdotool", "mousemove", *self._middle(handle), "mousedown", "1")
        # A hand moves all the way and does not jump: the last steps are over the target.
        for step in (60, 40, 20, 0):
            self._stage.run("xdotool", "mousemove", x - step, y - step)
        wait_for("the window accepts what is dragged over it", is_welcome or (lambda: looks() != before))
        self._stage.run("xdotool", "mouseup", "1")

    @staticmethod
    def _middle(node):
        x, y, width, height = node.rectangle
        return x + width // 2, y + height // 2
