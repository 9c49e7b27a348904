"""Brimvale among the programs of a real desktop: a file manager that files are dragged out of and that folders open in, a
notification daemon, the desktop's trash. Skipped, with a message, where one of them is not installed."""

import argparse
import json
import shutil
import sys
from pathlib import Path

sys.dont_write_bytecode = True  # nothing is left in the sources

from screen import Node, Screen  # noqa: E402
from stage import Failure, Stage, wait_for  # noqa: E402

NEEDED = ("pcmanfm-qt", "dunst", "dunstctl", "gio", "xdg-open", "xdg-mime")
SKIPPED = 77


class Desktop:
    def __init__(self, stage, program):
        self.stage, self.screen, self.program = stage, Screen(stage), program
        self.titles = stage.home / "Movies" / "Motion Templates.localized" / "Titles.localized"

    def run(self):
        self.furnish()
        self.stage.start("dunst")
        self.stage.start(self.program)
        self.screen.window("Brimvale")
        for step in (self.install_out_of_the_file_manager, self.restore_from_the_trash, self.open_in_the_file_manager,
                     self.edit_out_of_the_file_manager):
            step()
            print(step.__name__.replace("_", " "), flush=True)

    def furnish(self):
        home = self.stage.home
        for name in ("Documents", "Downloads", "Desktop/Glow"):
            (home / name).mkdir(parents=True)
        (self.titles / "Glow").mkdir(parents=True)
        (self.titles / "Glow" / "Glow.moti").write_text("old")
        (home / "Desktop/Glow/Glow.moti").write_text("new")
        shutil.copy(Path(__file__).with_name("Intro.motn"), home / "Downloads")
        # As on any desktop that was used before: one that has no trash yet does not see one that comes.
        (home / "Downloads" / "junk").touch()
        self.stage.run("gio", "trash", home / "Downloads" / "junk")
        self.stage.run("xdg-mime", "default", "pcmanfm-qt.desktop", "inode/directory")

    def show_folder(self, name):
        """The file manager's window of a folder in the home, on the left of the program's."""
        self.stage.start("pcmanfm-qt", "--new-window", self.stage.home / name)
        window = self.screen.window(name)
        self.place(name, 0)
        self.place("Brimvale", 1)
        return window

    def place(self, title, column):
        number = self.stage.run("xdotool", "search", "--onlyvisible", "--name", f"^{title}$").split()[-1]
        self.stage.run("xdotool", "windowmove", "--sync", number, 20 + 940 * column, 100)

    def item(self, window, name):
        return wait_for(f"'{name}' in '{window.name}'", lambda: window.find("list item", name))

    def area(self):
        main = wait_for("the program's window", lambda: next(
            (each for each in self.screen.windows() if each.name == "Brimvale"), None))
        return self.screen.find(main, "layered pane", None)

    def install_out_of_the_file_manager(self):
        window = self.show_folder("Desktop")
        self.screen.carry(self.item(window, "Glow"), self.area())
        main = self.screen.window("Brimvale")
        path = str(self.stage.home / "Desktop" / "Glow")
        wait_for("the path of the dragged folder", lambda: self.screen.find(main, "text", "Folder:").text == path)
        self.screen.click(main, "radio button", "Titles")
        self.screen.click(main, "push button", "Install")
        wait_for("the new template in its category", lambda: (self.titles / "Glow/Glow.moti").read_text() == "new")

        def shown():
            history = json.loads(self.stage.run("dunstctl", "history"))
            waiting = self.stage.run("dunstctl", "count", "displayed").strip() != "0"
            return waiting or any(each["summary"]["data"] == "Operation Successful" for each in history["data"][0])
        wait_for("the notification daemon shows the install", shown)
        self.stage.run("dunstctl", "close-all")
        history = json.loads(self.stage.run("dunstctl", "history"))["data"][0]
        if [(each["summary"]["data"], each["body"]["data"]) for each in history] != [
                ("Operation Successful", "Title Installed ...")]:
            raise Failure(f"the notification daemon showed something else: {history}")

    def restore_from_the_trash(self):
        old = self.titles / "Glow"
        shutil.rmtree(old)
        listed = wait_for("the old template in the desktop's trash", lambda: next(
            (line for line in self.stage.run("gio", "trash", "--list").splitlines() if line.endswith(str(old))), None))
        self.stage.run("gio", "trash", "--restore", listed.split()[0])
        if (old / "Glow.moti").read_text() != "old":
            raise Failure("the desktop did not restore the old template")

    def open_in_the_file_manager(self):
        self.screen.click(self.screen.window("Brimvale"), "push button", "Library")
        title = "Motion Templates.localized"
        self.item(self.screen.window(title), "Titles.localized")
        self.screen.press("alt+F4")
        self.screen.wait_until_gone(title)

    def edit_out_of_the_file_manager(self):
        self.screen.window("Brimvale")
        self.screen.press("ctrl+2")
        window = self.show_folder("Downloads")
        self.screen.carry(self.item(window, "Intro.motn"), self.area())
        wait_for("the facts of the dragged file", lambda: self.screen.window("Brimvale").value_of("Frame rate:") == "29.97")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--program", type=Path, required=True)
    arguments = parser.parse_args()
    missing = [name for name in NEEDED if not shutil.which(name)]
    if missing:
        print(f"skipped: not installed: {', '.join(missing)}")
        sys.exit(SKIPPED)
    with Stage() as stage:
        try:
            Desktop(stage, arguments.program.resolve()).run()
        except Failure as failure:
            picture = Path("desktop-failure.png").resolve()
            stage.run("import", "-window", "root", picture)
            sys.exit(f"{failure}\nthe screen then: {picture}\nthe program's log:\n{stage.log(arguments.program)}")


if __name__ == "__main__":
    main()
