"""The solved plan of the transport example as LibreOffice draws it. A test of its own, which ctest tells as skipped where
LibreOffice is missing; QUILLET_SKIP_NOTHING makes that a failure."""
import importlib.util
import os
import shutil
import subprocess

import numpy as np
import pytest

from test_transport import solved


def pixels(picture):
    """The colours of a picture in the format PPM, as pdftoppm writes it."""
    kind, width, height, most, data = picture.read_bytes().split(maxsplit=4)
    assert (kind, most) == (b"P6", b"255")
    return np.frombuffer(data[-3 * int(width) * int(height):], np.uint8).reshape(int(height), int(width), 3)


def test_the_result_as_a_picture(tmp_path):
    """LibreOffice draws the chart with a bar for each flow, and the cells' fills."""
    missing = [name for name in ("soffice", "pdftoppm") if shutil.which(name) is None]
    missing += [name for name in ("pulp",) if importlib.util.find_spec(name) is None]
    if missing:
        (pytest.fail if "QUILLET_SKIP_NOTHING" in os.environ else pytest.skip)(f"not installed: {', '.join(missing)}")
    result = solved(tmp_path, "transport.py")
    ours = ("PYTHONPATH", "LD_PRELOAD", "PYTHONMALLOC")
    environment = {name: value for name, value in os.environ.items() if name not in ours}
    subprocess.run(["soffice", f"-env:UserInstallation=file://{tmp_path}/profile", "--headless", "--convert-to", "pdf",
                    "--outdir", tmp_path, result], check=True, env=environment, capture_output=True, timeout=180)
    subprocess.run(["pdftoppm", "-r", "50", "-f", "1", "-l", "1", f"{tmp_path}/transport.py.pdf", tmp_path / "page"],
                   check=True, env=environment)
    page = pixels(next(tmp_path.glob("page*.ppm")))
    bars = (page == (0x2E, 0x75, 0xB6)).all(2)
    runs = np.diff(np.concatenate([[0], bars.any(1).astype(int)])) == 1
    assert runs.sum() == 6, "a bar for each way that is used"
    assert (page == (204, 255, 204)).all(2).sum() > 50, "the fill of the headers"
