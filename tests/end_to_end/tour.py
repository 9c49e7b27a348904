"""Drives the program through its main jobs as a user does: mouse, keyboard and drops, on a stage of its own.

Every step checks what came of it: on screen as a screen reader sees it, on disk, in the settings, with the desktop.
"""

import argparse
import re
import sys
import time
from pathlib import Path

sys.dont_write_bytecode = True  # the tour leaves nothing in the sources

from pictures import Album  # noqa: E402
from screen import Node, Screen  # noqa: E402
from stage import Failure, NotificationService, Stage, wait_for  # noqa: E402

CATEGORIES = ("Compositions", "Effects", "Generators", "Titles", "Transitions")
DATE = r"\d{4}-\d\d-\d\d \d\d:\d\d:\d\d"
# Only the sub-category sheet leaves a name for the history, so that the first install has none.
HISTORY = ("Effects   ", "Effects   Glow", "Titles   Lower Third")


def check(claim, holds):
    if not holds:
        raise Failure(f"not true: {claim}")


def tree(folder):
    """Every file below a folder with what is in it."""
    return {each.relative_to(folder): each.read_bytes() for each in sorted(folder.rglob("*")) if each.is_file()}


class Tour:
    def __init__(self, stage, album, program, drag_source):
        self.stage, self.screen, self.album = stage, Screen(stage), album
        self.program, self.drag_source = program, drag_source
        self.notifications = NotificationService(stage.environment["DBUS_SESSION_BUS_ADDRESS"])
        self.home = stage.home
        self.library = self.home / "Movies" / "Motion Templates.localized"
        self.motion_file = self.home / "Desktop" / "Intro.motn"
        self.running = None

    def run(self):
        for step in (self.furnish_home, self.start, self.create_library, self.install_by_drop,
                     self.replace_installed, self.install_by_keyboard, self.look_at_history, self.inspect,
                     self.archive, self.conform, self.set_theme, self.rename, self.back_up, self.read_help,
                     self.restart, self.reset_history, self.quit):
            started = time.monotonic()
            step()
            print(f"{step.__name__.replace('_', ' '):20} {time.monotonic() - started:5.1f} s", flush=True)

    # Before the program starts

    def furnish_home(self):
        for folder in ("Documents", "Movies", "Backups"):
            (self.home / folder).mkdir()
        self.make_template("Glow", "first")
        self.motion_file.write_bytes((Path(__file__).parent / "Intro.motn").read_bytes())

    def make_template(self, name, content):
        """A template folder on the desktop, as a download brings it."""
        folder = self.home / "Desktop" / name
        (folder / "Media").mkdir(parents=True)
        (folder / f"{name}.moef").write_text(content)
        (folder / "Media" / "light.png").write_bytes(bytes(range(256)))
        self.stage.run("convert", "-size", "640x360", "radial-gradient:#ffe3a0-#3b2a6e", folder / "large.png")
        return folder

    def category(self, name):
        return self.library / f"{name}.localized"

    # The jobs, in the order of a first afternoon

    def start(self):
        self.running = self.stage.start(self.program)
        self.main()
        wait_for("the archive folder", (self.home / "Documents" / "Brimvale").is_dir)

    def main(self):
        return self.screen.window("Brimvale")

    def create_library(self):
        backup = self.open_window("Backup", "Library and Backup")
        self.screen.click(backup, "push button", "Create Folder Structure")
        wait_for("'Folder Structure Created'", lambda: backup.says("Folder Structure Created"))
        for name in CATEGORIES:
            wait_for(f"the folder {name}.localized", self.category(name).is_dir)
        self.close_window(backup)

    def install_by_drop(self):
        self.drop_template(self.home / "Desktop" / "Glow")
        self.screen.click(self.main(), "radio button", "Effects")
        self.take("install.png", self.main())
        self.take("bv_1", self.main())
        self.screen.click(self.main(), "push button", "Install")
        self.wait_for_install("Effect Installed ...")
        check("the template is in the category folder, and whole",
              sorted(map(str, tree(self.category("Effects") / "Glow"))) == ["Glow.moef", "Media/light.png", "large.png"])
        check("the template left the desktop", not (self.home / "Desktop" / "Glow").exists())

    def replace_installed(self):
        self.drop_template(self.make_template("Glow", "second"))
        self.screen.click(self.main(), "push button", "Sub-category…")
        sheet = self.screen.window("Install into a Sub-category")
        wait_for("the sheet names the category", lambda: sheet.value_of("Category:") == "Effects")
        # Without a name, it goes straight into the category.
        self.screen.click(sheet, "push button", "Install")
        self.wait_for_install("Effect Installed ...")
        in_trash = self.home / ".local" / "share" / "Trash" / "files" / "Glow"
        check("the new template is in place", "second" in (self.category("Effects") / "Glow/Glow.moef").read_text())
        check("the old one is in the trash", "first" in (in_trash / "Glow.moef").read_text())

    def install_by_keyboard(self):
        self.make_template("Lower Third", "by keyboard")
        press, main = self.screen.press, self.main()
        press("ctrl+shift+o")
        self.screen.choose_file("Folder Selector", self.home / "Desktop" / "Lower Third")
        self.main()
        press("alt+t")
        wait_for("Titles is chosen", lambda: self.screen.find(main, "radio button", "Titles").has(Node.CHECKED))
        press("alt+s")
        sheet = self.screen.window("Install into a Sub-category")
        self.screen.type("Lower Thirds")
        wait_for("the sheet takes the name", lambda: sheet.find("text").text == "Lower Thirds")
        self.take("sub-category.png", main)
        self.take("bv_2", sheet)
        press("Return")
        self.wait_for_install("Title Installed ...")
        installed = self.category("Titles") / "Lower Thirds" / "Lower Third"
        check("the template is in the sub-category", (installed / "Media" / "light.png").is_file())

    def look_at_history(self):
        history = self.open_window("History", "Installation History")
        self.history_is(history, *HISTORY)
        self.take("history.png", history)
        self.close_window(history)

    def inspect(self):
        self.screen.press("ctrl+2")
        main = self.main()
        action = self.screen.drag(self.drag_source, [self.motion_file], self.drop_area())
        check("the drop is a link, which takes nothing away", action == "link")
        self.facts_are(("Theme:", "Template does not include Theme reference ..."), ("Frame rate:", "29.97"),
                       ("Frames:", "300"), ("Duration:", "10.0 seconds"), ("Frame size:", "1920x1080"),
                       ("Pixel aspect ratio:", "Square"))
        self.take("edit.png", main)
        self.take("bv_3", main)

    def archive(self):
        original = self.motion_file.read_bytes()
        self.screen.click(self.main(), "push button", "Archive Original")
        wait_for("'Original Archived'", lambda: self.main().says("Original Archived"))
        copies = list((self.home / "Documents" / "Brimvale").iterdir())
        check("one dated copy is in the archive folder", len(copies) == 1 and re.fullmatch(
            r"Intro-\d\d-\d\d-\d{4} \|\| \d\d_\d\d_\d\d \S+\.motn", copies[0].name))
        check("the copy is the original", copies[0].read_bytes() == original == self.motion_file.read_bytes())

    def conform(self):
        self.screen.press("alt+r")
        self.screen.type("25")
        self.screen.find(self.main(), "combo box", "25 fps")
        self.screen.press("alt+c")
        self.facts_are(("Frame rate:", "25"), ("Frames:", "250"), ("Duration:", "10.0 seconds"))
        self.file_says(frameRate="25", duration="250", NTSC="0")

    def set_theme(self):
        self.screen.press("alt+n")
        self.screen.type("Ember")
        self.screen.press("Return")
        self.facts_are(("Theme:", "Ember"))
        self.file_says(theme="Ember", frameRate="25", text="two  blanks,  kept")
        self.take("bv_4", self.main())

    def rename(self):
        self.screen.click(self.main(), "push button", "Rename…")
        sheet = self.screen.window("Rename")
        wait_for("the window bears the file's name", lambda: "Intro" in [each.name for each in self.screen.windows()])
        self.screen.type("Opening")
        wait_for("the sheet takes the name", lambda: sheet.find("text").text == "Opening")
        self.screen.press("Return")
        self.main()
        renamed = self.motion_file.with_name("Opening.motn")
        check("the file bears the new name alone", renamed.is_file() and not self.motion_file.exists())

    def back_up(self):
        backup = self.open_window("Backup", "Library and Backup")
        self.screen.click(backup, "push button", "Choose…")
        self.screen.choose_file("Backup Folder Selector", self.home / "Backups")
        self.screen.window("Library and Backup")
        self.screen.click(backup, "push button", "Back Up Now")
        wait_for("the date of the last backup", lambda: re.search(r"\d", backup.value_of("Last backup:") or ""))
        copies = list((self.home / "Backups").iterdir())
        check("one dated copy is in the backup folder", len(copies) == 1 and re.fullmatch(
            r"\d{4}-\d\d-\d\d \d\d-\d\d-\d\d Motion Templates\.localized", copies[0].name))
        check("the copy is the library", tree(copies[0]) == tree(self.library))
        self.take("backup.png", backup)
        self.take("bv_5", backup)
        self.close_window(backup)

    def read_help(self):
        self.screen.press("F1")
        book = self.screen.window("Brimvale Help")
        pages = self.screen.find(book, "layered pane", None)
        before = pages.children[0].has(Node.SHOWING)
        self.screen.press("alt+i")
        wait_for("the page about installing", lambda: pages.children[1].has(Node.SHOWING))
        check("the book opens at its first page", before)
        self.close_window(book)

    def restart(self):
        self.quit()
        self.start()
        history = self.open_window("History", "Installation History")
        self.history_is(history, *HISTORY)

    def reset_history(self):
        history = self.screen.window("Installation History")
        self.screen.click(history, "push button", "Reset…")
        sheet = self.screen.window("Reset the History")
        self.screen.click(sheet, "push button", "Reset")
        self.screen.window("Installation History")
        self.history_is(history)
        settings = (self.home / ".config" / "Brimvale" / "Brimvale.conf").read_text()
        check("the settings hold no history, and the backup folder still",
              "installations" not in settings and str(self.home / "Backups") in settings)
        self.close_window(history)

    def quit(self):
        self.main()
        self.screen.press("alt+F4")
        wait_for("the program ends with its window", lambda: self.running.poll() is not None)
        check("the program ends well", self.running.returncode == 0)

    # What the jobs are made of

    def take(self, name, window):
        self.album.take(self.screen, name, window)

    def open_window(self, button, title):
        self.screen.click(self.main(), "push button", button)
        return self.screen.window(title)

    def close_window(self, window):
        title = window.name
        self.screen.press("Escape")
        self.screen.wait_until_gone(title)
        self.main()

    def drop_area(self):
        return self.screen.find(self.main(), "layered pane", None)

    def drop_template(self, folder):
        main = self.main()
        action = self.screen.drag(self.drag_source, [folder], self.drop_area())
        check("the drop is a link, which takes nothing away", action == "link")
        field = self.screen.find(main, "text", "Folder:")
        wait_for("the path of the dropped folder", lambda: field.text == str(folder))
        log = self.stage.log(self.program)
        check("the log tells of the drop", f"Dragged files\n{folder}\n" in log)

    def wait_for_install(self, announcement):
        bar = self.screen.find(self.main(), "progress bar", "Installation progress")
        wait_for("the progress bar runs", lambda: bar.value > 0)
        wait_for("the progress bar comes to its end", lambda: bar.value == 0)
        wait_for("a notification", lambda: self.notifications.shown)
        check(f"the one notification says '{announcement}'",
              self.notifications.shown == [("Operation Successful", announcement)])
        self.notifications.shown.clear()
        check("the path field is empty again", self.screen.find(self.main(), "text", "Folder:").text == "")

    def history_is(self, window, *ends):
        """Each line of the history: a date and time, a blank, and then exactly this."""
        def lines():
            table = window.find("table")
            return [each.name for each in table.showing() if each.role == "cell"] if table else None

        def agrees():
            seen = lines()
            return seen is not None and len(seen) == len(ends) and all(
                re.fullmatch(f"{DATE} {re.escape(end)}", line) for line, end in zip(seen, ends))
        wait_for(f"a history of {ends or 'no lines'}", agrees)

    def facts_are(self, *facts):
        for caption, value in facts:
            wait_for(f"'{caption} {value}'", lambda: self.main().value_of(caption) == value)

    def file_says(self, **values):
        written = self.motion_file.read_text()
        for element, value in values.items():
            check(f"the file holds one {element}, and it is {value}",
                  re.findall(f"<{element}>(.*?)</{element}>", written) == [value])


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--program", type=Path, required=True, help="the program that is toured")
    parser.add_argument("--drag-source", type=Path, required=True, help="the program that files are dragged from")
    parser.add_argument("--pictures", type=Path, metavar="FOLDER", help="where the pictures go (default: the project)")
    parser.add_argument("--palette", choices=("light", "dark"), default="light")
    arguments = parser.parse_args()

    with Stage(arguments.palette) as stage:
        album = Album(stage, arguments.pictures)
        try:
            Tour(stage, album, arguments.program.resolve(), arguments.drag_source.resolve()).run()
            album.write()
        except Exception as fault:
            print(f"tour: {fault}", file=sys.stderr)
            print(f"the screen then: {album.keep_failure()}", file=sys.stderr)
            print(f"the program's log:\n{stage.log(arguments.program)}", file=sys.stderr)
            if isinstance(fault, Failure):
                sys.exit(1)
            raise


if __name__ == "__main__":
    main()
