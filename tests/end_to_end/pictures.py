"""The pictures that the tour takes: kept small, and put where they are shown."""

import shutil
from pathlib import Path

from stage import PIXELS_PER_POINT, Failure

_PROJECT = Path(__file__).resolve().parents[2]


class Album:
    """Takes pictures while the tour runs and writes them when it went well: where README and the help book show them, in
    the project or in another folder of the same layout."""

    def __init__(self, stage):
        self._stage, self._draft, self._packing = stage, stage.folder / "pictures", []

    def take(self, screen, window, *names):
        """A picture of the window under each name. One with an ending is for the documents, which show light ones; one
        without is for the help book, which has a second one for dense displays."""
        shot = self._stage.folder / f"{names[0]}.ppm"
        screen.picture(window, shot)
        is_dark = self._stage.palette == "dark"
        for name in names:
            if not name.endswith(".png"):
                page = f"resources/help/dark/{name}" if is_dark else f"resources/help/{name}"
                self._pack(shot, f"{page}@{PIXELS_PER_POINT}x.png")
                self._pack(shot, f"{page}.png", "-filter", "Lanczos", "-resize", f"{100 / PIXELS_PER_POINT}%")
            elif not is_dark:
                self._pack(shot, f"docs/pictures/{name}")

    def _pack(self, shot, name, *operations):
        """Beside the tour, which does not wait for it."""
        picture = self._draft / name
        picture.parent.mkdir(parents=True, exist_ok=True)
        self._packing.append(self._stage.start(
            "convert", shot, *operations, "-strip", "-define", "png:exclude-chunks=date,time",
            "-define", "png:compression-level=9", "-define", "png:compression-filter=0",
            "-define", "png:compression-strategy=0", f"PNG24:{picture}"))

    def write(self, folder):
        if any(process.wait() for process in self._packing):
            raise Failure(self._stage.log("convert"))
        shutil.copytree(self._draft, folder or _PROJECT, copy_function=shutil.copyfile, dirs_exist_ok=True)
