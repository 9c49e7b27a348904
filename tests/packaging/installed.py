"""Installs the program into a folder of its own, starts it as its desktop entry says, and looks at what came along."""

import configparser
import os
import plistlib
import subprocess
import sys
import tempfile
import time
import xml.etree.ElementTree as ET
from pathlib import Path

SOURCE, BUILD, CMAKE = Path(sys.argv[1]), sys.argv[2], sys.argv[3]


def check(what, holds):
    if not holds:
        sys.exit(f"FAILED: {what}")


def starts(command, home):
    """Whether the program comes up: it makes its archive folder when it has launched."""
    (home / "Documents").mkdir(parents=True)
    environment = os.environ | {"HOME": str(home), "QT_QPA_PLATFORM": "offscreen", "DBUS_SESSION_BUS_ADDRESS": "unix:path=/nonexistent"}
    program = subprocess.Popen(command, env=environment, stderr=subprocess.DEVNULL)
    deadline = time.monotonic() + 60
    while program.poll() is None and time.monotonic() < deadline and not (home / "Documents/Brimvale").exists():
        time.sleep(0.02)
    up = program.poll() is None and (home / "Documents/Brimvale").exists()
    program.kill()
    program.wait()
    return up


def main(root):
    prefix = root / "prefix"
    subprocess.run([CMAKE, "--install", BUILD, "--prefix", prefix, "--strip"], check=True, stdout=subprocess.DEVNULL)

    entry = configparser.ConfigParser(interpolation=None)
    entry.optionxform = str
    (path,) = prefix.glob("share/applications/*.desktop")
    entry.read(path)
    entry = entry["Desktop Entry"]
    program = prefix / "bin" / entry["Exec"]
    check("the program starts", starts([program], root / "home"))

    check("it does not know the checkout", str(SOURCE).encode() not in program.read_bytes())
    dynamic = subprocess.run(["readelf", "--dynamic", program], check=True, capture_output=True, text=True).stdout
    check("it looks for libraries where the system does", "PATH)" not in dynamic)

    metainfo = ET.parse(*prefix.glob("share/metainfo/*.xml"))
    check("one name for entry and metadata", path.name == f"{metainfo.findtext('id')}.desktop" == metainfo.findtext("launchable"))

    icons = {icon.stem for icon in prefix.glob("share/icons/hicolor/*/*/*")}
    mime = ET.parse(*prefix.glob("share/mime/packages/*.xml")).findall("{*}mime-type")
    wanted = {entry["Icon"]} | {kind.get("type").replace("/", "-") for kind in mime}
    check(f"the icons {wanted} are all there", len(wanted) == 5 and icons == wanted)

    kinds = plistlib.loads((SOURCE / "packaging/macos/Info.plist.in").read_bytes())["CFBundleDocumentTypes"]
    check("the bundle opens no documents", {kind["CFBundleTypeRole"] for kind in kinds} == {"None"})


with tempfile.TemporaryDirectory() as folder:
    main(Path(folder))
