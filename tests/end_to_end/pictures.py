"""The pictures that the tour takes: kept small, and put where they are shown."""

import shutil
import tempfile
from pathlib import Path

from stage import PIXELS_PER_POINT

_PROJECT = Path(__file__).resolve().parents[2]


class Album:
    """Takes pictures while the tour runs and writes them when it went well: to `folder`, or, without one, into the
    project, where README and the help book show them."""

    def __init__(self, stage, folder=None):
        self._stage = stage
        self._folder = folder
        self._draft = stage.folder / "pictures"
        self._draft.mkdir()

    def take(self, screen, name, window):
        """A picture of the window. A name with an ending is a picture of the documents, one without is a picture of
        the help book, which has a second one for dense displays."""
        shot = self._draft / "shot.ppm"
        screen.picture(window, shot)
        if name.endswith(".png"):
            self._pack(shot, name)
        else:
            self._pack(shot, f"{name}@{PIXELS_PER_POINT}x.png")
            self._pack(shot, f"{name}.png", "-filter", "Lanczos", "-resize", f"{100 / PIXELS_PER_POINT}%")
        shot.unlink()

    def _pack(self, shot, name, *operations):
        self._stage.run("convert", shot, *operations, "-strip", "-define", "png:exclude-chunks=date,time",
                        "-define", "png:compression-level=9", "-define", "png:compression-filter=0",
                        "-define", "png:compression-strategy=0", f"PNG24:{self._draft / name}")

    def keep_failure(self):
        """Keeps a picture of the whole screen; answers where."""
        folder = self._folder or Path(tempfile.gettempdir())
        folder.mkdir(parents=True, exist_ok=True)
        path = folder.resolve() / "tour-failure.png"
        self._stage.run("import", "-window", "root", path)
        return path

    def write(self):
        for picture in sorted(self._draft.iterdir()):
            is_help = picture.name.startswith("bv_")
            if self._stage.palette == "dark" and not is_help:
                continue  # the documents show the light ones
            in_project = "docs/pictures" if not is_help else "resources/help"
            folder = (self._folder or _PROJECT / in_project) / ("dark" if self._stage.palette == "dark" else "")
            folder.mkdir(parents=True, exist_ok=True)
            shutil.copyfile(picture, folder / picture.name)
            print(f"{folder / picture.name}: {picture.stat().st_size // 1024} KB")
