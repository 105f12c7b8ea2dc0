"""Pages of pmi_report in a headless Chromium that draws by software and calls nobody."""

import contextlib
import json
import pathlib
import subprocess
import tempfile
import time

from selenium import webdriver
from selenium.webdriver.chrome.options import Options
from selenium.webdriver.chrome.service import Service

ROOT = pathlib.Path(__file__).resolve().parents[2]
PROGRAM = ROOT / "build/release/bin/pmi_report"
BUNDLED = ROOT / "models/mounting_bracket.qif"
SHARED = ROOT.parent / "shared/models"
FLAGS = """--headless=new --no-sandbox --disable-gpu --use-gl=angle --use-angle=swiftshader
    --enable-unsafe-swiftshader --disable-background-networking --disable-component-update
    --disable-sync --disable-quic --no-first-run --hide-scrollbars""".split()


def report_of(model, *options):
    """The report on a model, as --json prints it."""
    made = subprocess.run([PROGRAM, model, "--json", *options], stdout=subprocess.PIPE, check=False)
    return json.loads(made.stdout)


def write_page(model, page, *options):
    """Writes the page of a model; lost PMI (exit code 4) and errors found (5) are no failure here."""
    code = subprocess.run([PROGRAM, model, "--html", page, *options], check=False).returncode
    assert code in (0, 4, 5), f"{model}: exit code {code}"


@contextlib.contextmanager
def chromium(*flags):
    """A browser of its own, 1280 by 800, gone afterwards with all it wrote."""
    with tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as profile:
        options = Options()
        options.binary_location = "/usr/bin/chromium"
        for flag in [*FLAGS, f"--user-data-dir={profile}", *flags]:
            options.add_argument(flag)
        options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
        browser = webdriver.Chrome(options=options, service=Service("/usr/bin/chromedriver"))
        try:
            browser.execute_cdp_cmd(
                "Emulation.setDeviceMetricsOverride",
                {"width": 1280, "height": 800, "deviceScaleFactor": 1, "mobile": False},
            )
            yield browser
        finally:
            browser.quit()


def show(browser, page, state="ready"):
    """Opens a page and returns after how many seconds its first picture stood there."""
    start = time.monotonic()
    browser.get(page.resolve().as_uri())
    while browser.execute_script("return document.documentElement.dataset.state") != state:
        assert time.monotonic() - start < 60, f"{page} does not become {state}"
        time.sleep(0.01)
    return time.monotonic() - start


def settle(browser):
    """Waits until the picture shows the state: for the frame after the next."""
    browser.execute_async_script(
        "const done = arguments[0]; requestAnimationFrame(() => requestAnimationFrame(done))"
    )
