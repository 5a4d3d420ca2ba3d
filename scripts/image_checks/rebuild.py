"""Builds the image a second time, elsewhere, and compares."""

import os
import pathlib
import shutil
import subprocess
import tempfile

from image_checks.headers import require

NO_SOURCES = shutil.ignore_patterns("build", ".git")
PRODUCTS = ("koru.dll", "koru.dbg")  # koru.map names the folder


def check_rebuild(folder, source):
    with tempfile.TemporaryDirectory(prefix="a-folder-with-another-name-") as place:
        copy = pathlib.Path(place) / "sources"
        shutil.copytree(source, copy, ignore=NO_SOURCES)
        environment = {name: value for name, value in os.environ.items() if "LAUNCHER" not in name}
        for command in (["cmake", "--preset", "image"], ["cmake", "--build", "--preset", "image", "--target", "koru"]):
            result = subprocess.run(command, cwd=copy, env=environment, capture_output=True, text=True, check=False)
            require(result.returncode == 0, f"{' '.join(command)} failed:\n{result.stdout}{result.stderr}")
        for name in PRODUCTS:
            same = (folder / name).read_bytes() == (copy / "build" / "image" / name).read_bytes()
            require(same, f"{name} comes out differently when built in another folder")
    return f"built in another folder, the same bytes: {', '.join(PRODUCTS)}"
