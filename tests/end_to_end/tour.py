"""Drives the program through its main jobs as a user does: mouse, keyboard and drops, on a stage of its own, among the
programs of a real desktop: a file manager, a notification daemon, the trash.

Every step checks what came of it: on screen as a screen reader sees it, on disk, in the settings, with the desktop.
"""

import argparse
import contextlib
import re
import shutil
import signal
import sys
import tempfile
import time
from pathlib import Path

sys.dont_write_bytecode = True  # the tour leaves nothing in the sources

NEEDED = ("Xvfb", "dbus-daemon", "openbox", "xdotool", "import", "convert", "pcmanfm-qt", "dunst", "gio", "xdg-open")
SKIPPED = 77

try:
    from pictures import Album
    from screen import Node, Screen
    from stage import Failure, Stage, wait_for
except ModuleNotFoundError as missing:
    print(f"tour: not installed: Python's {missing.name}; script/setup installs what the tour needs", file=sys.stderr)
    sys.exit(SKIPPED)

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
    def __init__(self, stage, album, program):
        self.stage, self.screen, self.album, self.program = stage, Screen(stage), album, program
        self.home = stage.home
        self.library = self.home / "Movies" / "Motion Templates.localized"
        self.motion_file = self.home / "Desktop" / "Intro.motn"
        self.announced = []

    def run(self):
        for step in (self.furnish_home, self.start, self.create_library, self.install_by_drop, self.replace_installed,
                     self.restore_replaced, self.open_library, self.install_by_keyboard, self.look_at_history,
                     self.inspect, self.archive, self.conform, self.set_theme, self.rename, self.back_up, self.read_help,
                     self.restart, self.reset_history, self.quit):
            started = time.monotonic()
            step()
            print(f"{step.__name__.replace('_', ' '):20} {time.monotonic() - started:5.1f} s", flush=True)

    # Before the program starts

    def furnish_home(self):
        for folder in ("Documents", "Movies", "Backups"):
            (self.home / folder).mkdir()
        (self.home / ".config" / "mimeapps.list").write_text("[Default Applications]\ninode/directory=pcmanfm-qt.desktop\n")
        self.stage.run("convert", "-size", "640x360", "radial-gradient:#ffe3a0-#3b2a6e", self.stage.folder / "large.png")
        self.make_template("Glow", "first")
        shutil.copy(Path(__file__).with_name("Intro.motn"), self.motion_file)
        self.desktop = self.open_folder("Desktop", lambda: self.stage.start("pcmanfm-qt", self.motion_file.parent))

    def make_template(self, name, content):
        """A template folder on the desktop, as a download brings it."""
        folder = self.home / "Desktop" / name
        (folder / "Media").mkdir(parents=True)
        (folder / f"{name}.moef").write_text(content)
        (folder / "Media" / "light.png").write_bytes(bytes(range(256)))
        shutil.copy(self.stage.folder / "large.png", folder)
        return folder

    def category(self, name):
        return self.library / f"{name}.localized"

    # The jobs, in the order of a first afternoon

    def start(self):
        self.running = self.stage.start(self.program)
        self.bar = self.screen.find(self.main(), "progress bar", "Installation progress")
        wait_for("the archive folder", (self.home / "Documents" / "Brimvale").is_dir)

    def main(self):
        return self.screen.window("Brimvale")

    def create_library(self):
        backup = self.open_window("Backup", "Library and Backup")
        self.screen.click(backup, "push button", "Create Folder Structure")
        wait_for("'Folder Structure Created'", lambda: "Folder Structure Created" in backup.labels())
        for name in CATEGORIES:
            wait_for(f"the folder {name}.localized", self.category(name).is_dir)
        self.close_window("Library and Backup")

    def install_by_drop(self):
        self.drop_template(self.home / "Desktop" / "Glow")
        self.screen.click(self.main(), "radio button", "Effects")
        self.take(self.main(), "install.png", "bv_1")
        self.install(lambda: self.screen.click(self.main(), "push button", "Install"), "Effect Installed ...")
        check("the template is in the category folder, and whole",
              sorted(map(str, tree(self.category("Effects") / "Glow"))) == ["Glow.moef", "Media/light.png", "large.png"])
        check("the template left the desktop", not (self.home / "Desktop" / "Glow").exists())
        wait_for("the file manager shows it no more", lambda: not self.desktop.find("list item", "Glow"))

    def replace_installed(self):
        self.drop_template(self.make_template("Glow", "second"))
        self.screen.click(self.main(), "push button", "Sub-category…")
        sheet = self.screen.window("Install into a Sub-category")
        wait_for("the sheet names the category", lambda: sheet.facts().get("Category:") == "Effects")
        # Without a name, it goes straight into the category.
        self.install(lambda: self.screen.click(sheet, "push button", "Install"), "Effect Installed ...")
        check("the new template is in place", "second" in (self.category("Effects") / "Glow/Glow.moef").read_text())

    def restore_replaced(self):
        replaced = self.category("Effects") / "Glow"
        shutil.rmtree(replaced)
        trash = ("env", "--unset=GIO_USE_VFS", "gio", "trash")
        listed = wait_for("the replaced template in the desktop's trash", lambda: next(
            (line for line in self.stage.run(*trash, "--list").splitlines() if line.endswith(str(replaced))), None))
        self.stage.run(*trash, "--restore", listed.split()[0])
        check("the desktop restores the replaced template", "first" in (replaced / "Glow.moef").read_text())

    def open_library(self):
        opened = self.open_folder(
            self.library.name, lambda: self.screen.click(self.main(), "push button", "Library"))
        self.screen.find(opened, "list item", "Titles.localized")
        self.close_window(self.library.name, "alt+F4")

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
        self.type_into(sheet, "Lower Thirds")
        self.take(main, "sub-category.png")
        self.take(sheet, "bv_2")
        self.install(lambda: press("Return"), "Title Installed ...")
        installed = self.category("Titles") / "Lower Thirds" / "Lower Third"
        check("the template is in the sub-category", (installed / "Media" / "light.png").is_file())

    def look_at_history(self):
        history = self.open_window("History", "Installation History")
        self.history_is(history, *HISTORY)
        self.take(history, "history.png")
        self.close_window("Installation History")

    def inspect(self):
        self.screen.press("ctrl+2")
        mode = self.screen.find(self.main(), "radio button", "Edit")
        wait_for("the Edit mode", lambda: mode.has(Node.CHECKED))
        self.drop(self.motion_file)
        self.facts_are({"Theme:": "Template does not include Theme reference ...", "Frame rate:": "29.97",
                        "Frames:": "300", "Duration:": "10.0 seconds", "Frame size:": "1920x1080",
                        "Pixel aspect ratio:": "Square"})
        self.take(self.main(), "edit.png", "bv_3")

    def archive(self):
        original = self.motion_file.read_bytes()
        self.screen.click(self.main(), "push button", "Archive Original")
        wait_for("'Original Archived'", lambda: "Original Archived" in self.main().labels())
        copies = list((self.home / "Documents" / "Brimvale").iterdir())
        check("one dated copy is in the archive folder", len(copies) == 1 and re.fullmatch(
            r"Intro-\d\d-\d\d-\d{4} \|\| \d\d_\d\d_\d\d \S+\.motn", copies[0].name))
        check("the copy is the original", copies[0].read_bytes() == original == self.motion_file.read_bytes())

    def conform(self):
        self.screen.press("alt+r")
        self.screen.type("25")
        self.screen.find(self.main(), "combo box", "25 fps")
        self.screen.press("alt+c")
        self.facts_are({"Frame rate:": "25", "Frames:": "250", "Duration:": "10.0 seconds"})
        self.file_says(frameRate="25", duration="250", NTSC="0")

    def set_theme(self):
        self.screen.press("alt+n")
        self.screen.type("Ember")
        self.screen.press("Return")
        self.facts_are({"Theme:": "Ember"})
        self.file_says(theme="Ember", frameRate="25", text="two  blanks,  kept")
        self.take(self.main(), "bv_4")

    def rename(self):
        self.screen.click(self.main(), "push button", "Rename…")
        sheet = self.screen.window("Rename")
        wait_for("the window bears the file's name", lambda: "Intro" in [each.name for each in self.screen.windows()])
        self.type_into(sheet, "Opening")
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
        wait_for("the date of the last backup", lambda: re.search(r"\d", backup.facts().get("Last backup:", "")))
        copies = list((self.home / "Backups").iterdir())
        check("one dated copy is in the backup folder", len(copies) == 1 and re.fullmatch(
            r"\d{4}-\d\d-\d\d \d\d-\d\d-\d\d Motion Templates\.localized", copies[0].name))
        check("the copy is the library", tree(copies[0]) == tree(self.library))
        self.take(backup, "backup.png", "bv_5")
        self.close_window("Library and Backup")

    def read_help(self):
        self.screen.press("F1")
        book = self.screen.window("Brimvale Help")
        pages = self.screen.find(book, "layered pane")
        wait_for("the book opens at its first page", lambda: pages.children[0].has(Node.SHOWING))
        self.screen.press("alt+i")
        wait_for("the page about installing", lambda: pages.children[1].has(Node.SHOWING))
        self.close_window("Brimvale Help")

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
        self.close_window("Installation History")

    def quit(self):
        self.main()
        self.screen.press("alt+F4")
        wait_for("the program ends with its window", lambda: self.running.poll() is not None)
        check("the program ends well", self.running.returncode == 0)

    # What the jobs are made of

    def take(self, window, *names):
        self.album.take(self.screen, window, *names)

    def open_window(self, button, title):
        self.screen.click(self.main(), "push button", button)
        return self.screen.window(title)

    def type_into(self, sheet, text):
        field = self.screen.find(sheet, "text")
        self.screen.type(text)
        wait_for(f"the sheet takes '{text}'", lambda: field.text == text)

    def open_folder(self, title, ask):
        """The file manager's window of a folder. It is asked again when none comes: now and then its threads miss each
        other, and it waits for a thread that has ended."""
        ask()
        with contextlib.suppress(Failure):
            return self.screen.window(title)
        ask()
        return self.screen.window(title)

    def close_window(self, title, key="Escape"):
        self.screen.press(key)
        self.screen.wait_until_gone(title)
        self.main()

    def drop(self, path):
        """Drags a file out of the file manager's window onto the program's."""
        self.screen.carry(self.screen.find(self.desktop, "list item", path.name),
                          self.screen.find(self.main(), "layered pane"))
        wait_for("the log tells of the drop", lambda: f"Dragged files\n{path}\n" in self.stage.log(self.program))

    def drop_template(self, folder):
        field = self.screen.find(self.main(), "text", "Folder:")
        self.drop(folder)
        wait_for("the path of the dropped folder", lambda: field.text == str(folder))

    def install(self, confirm, announcement):
        confirm()
        wait_for("the progress bar runs", lambda: self.bar.value > 0)
        wait_for("the progress bar comes to its end", lambda: self.bar.value == 0)
        self.announced.insert(0, ("Operation Successful", announcement))
        wait_for("a notification", lambda: len(self.stage.notifications()) >= len(self.announced))
        check(f"the one notification says '{announcement}'", self.stage.notifications() == self.announced)
        check("the path field is empty again", self.screen.find(self.main(), "text", "Folder:").text == "")

    def history_is(self, window, *ends):
        """Each line of the history: a date and time, a blank, and then exactly this."""
        table = self.screen.find(window, "table")

        def agrees():
            lines = [each.name for each in table.all("cell")]
            return len(lines) == len(ends) and all(
                re.fullmatch(f"{DATE} {re.escape(end)}", line) for line, end in zip(lines, ends))
        wait_for(f"a history of {ends or 'no lines'}", agrees)

    def facts_are(self, facts):
        wait_for(f"the facts {facts}", lambda: facts.items() <= self.main().facts().items())

    def file_says(self, **values):
        written = self.motion_file.read_text()
        for element, value in values.items():
            check(f"the file holds one {element}, and it is {value}",
                  re.findall(f"<{element}>(.*?)</{element}>", written) == [value])


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--program", type=Path, required=True, help="the program that is toured")
    parser.add_argument("--pictures", type=Path, metavar="FOLDER", help="where the pictures go (default: the project)")
    parser.add_argument("--palette", choices=("light", "dark"), default="light")
    arguments = parser.parse_args()

    missing = [program for program in NEEDED if not shutil.which(program)]
    if missing:
        print(f"tour: not installed: {', '.join(missing)}; script/setup installs what the tour needs", file=sys.stderr)
        sys.exit(SKIPPED)
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))  # the stage is struck all the same
    stage = Stage(arguments.palette)
    try:
        stage.set_up()
        album = Album(stage)
        Tour(stage, album, arguments.program.resolve()).run()
        album.write(arguments.pictures)
    except Exception:
        for log in stage.folder.glob("*.log"):
            print(f"{log.stem} said:\n{log.read_text(errors='replace')}", file=sys.stderr)
        picture = Path(tempfile.gettempdir()) / "tour-failure.png"
        with contextlib.suppress(Failure, OSError):  # the fault itself matters more
            stage.run("convert", f"xwd:{stage.screen_file}", picture)
            print(f"the screen then: {picture}", file=sys.stderr)
        raise
    finally:
        stage.strike()


if __name__ == "__main__":
    main()
