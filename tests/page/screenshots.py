#!/usr/bin/python3
"""Takes the two pictures of the page in docs/: of the bundled model, and of a real one beside it."""

import os
import pathlib
import subprocess
import tempfile

from browser import ROOT, chromium, settle, show, write_page

PICTURES = {
    "page_bundled.png": ("models/mounting_bracket.qif", "All annotations", "318", 1.45),
    "page_ftc_08.png": ("../shared/models/nist_ftc_08_asme1_ap242.qif", "MBD_B", "4201", 2),
}

os.chdir(ROOT)
with tempfile.TemporaryDirectory() as folder, chromium() as browser:
    for name, (model, view, annotation, larger) in PICTURES.items():
        page = pathlib.Path(folder) / "page.html"
        write_page(model, page)
        show(browser, page)
        browser.execute_script(
            """const [view, annotation, larger] = arguments;
            [...document.querySelectorAll("#captures button")].findLast((b) => b.textContent === view).click();
            document.querySelector(`#list [data-annotation="${annotation}"]`).click();
            Page.viewer.picture.camera.zoomBy(larger);""",
            view,
            annotation,
            larger,
        )
        settle(browser)
        picture = ROOT / "docs" / name
        browser.get_screenshot_as_file(str(picture))
        smaller = ["pngquant", "--force", "--strip", "--output", picture, "64", picture]
        subprocess.run(smaller, check=True)
