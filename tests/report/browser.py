"""A browser without a window, and files to look at in it."""

import json
import struct
import time

from selenium import webdriver
from selenium.webdriver.common.by import By

import samples


def open_browser():
    """A Chromium that keeps what its console says and which requests it makes."""
    options = webdriver.ChromeOptions()
    # Root may not have its sandbox; the pages are this project's own.
    for word in ("--headless=new", "--no-sandbox", "--disable-gpu", "--hide-scrollbars",
                 "--disable-dev-shm-usage", "--force-device-scale-factor=1",
                 "--force-prefers-reduced-motion",
                 "--window-size=1280,900"):
        options.add_argument(word)
    options.binary_location = "/usr/bin/chromium"
    options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
    service = webdriver.chrome.service.Service("/usr/bin/chromedriver")
    return webdriver.Chrome(service=service, options=options)


class Page:
    """A page in the browser."""

    def __init__(self, browser, path):
        self.browser = browser
        self.path = path
        self.forget_logs()
        browser.get(path.as_uri())

    def forget_logs(self):
        for kind in ("browser", "performance"):
            self.browser.get_log(kind)

    def run(self, script, *arguments):
        return self.browser.execute_script(script, *arguments)

    def all(self, selector):
        return self.browser.find_elements(By.CSS_SELECTOR, selector)

    def one(self, selector):
        return self.browser.find_element(By.CSS_SELECTOR, selector)

    def shows(self, selector):
        return self.run("return document.querySelector(arguments[0]).checkVisibility()", selector)

    def text(self, selector):
        return self.run("return document.querySelector(arguments[0]).textContent", selector)

    def wait(self, script, *arguments):
        """Waits until a script returns something true, which is returned."""
        end = time.monotonic() + 10
        while time.monotonic() < end:
            found = self.run(script, *arguments)
            if found:
                return found
            time.sleep(0.02)
        raise AssertionError(f"never true: {script}")

    def search(self, words):
        """Types words into the search; returns kinds, names and rests of what it lists."""
        query = self.one("#query")
        query.clear()
        query.send_keys(words)
        return self.run(
            "return Array.from(document.querySelectorAll('#hits a'),"
            " (hit) => Array.from(hit.children, (part) => part.textContent))"
        )

    def messages(self):
        """What the console says, and each address that was asked for but the page's own."""
        said = [entry["message"] for entry in self.browser.get_log("browser")]
        for entry in self.browser.get_log("performance"):
            message = json.loads(entry["message"])["message"]
            if message["method"] == "Network.requestWillBeSent":
                url = message["params"]["request"]["url"]
                if url != self.path.as_uri():
                    said.append(f"asked for {url}")
        return said

    def emulate(self, scheme="light", media="screen"):
        features = [{"name": "prefers-color-scheme", "value": scheme}]
        self.browser.execute_cdp_cmd(
            "Emulation.setEmulatedMedia", {"media": media, "features": features}
        )


def kernel(name, variables=(), hardware=(), paths=(), conditions=()):
    """A kernel record; hardware variables are (name, locations), conditions (text, file, line)."""
    encoded_variables = [
        samples.text(word) + samples.text(register) + samples.text(b"int") + samples.items()
        for word, register in variables
    ]
    encoded_hardware = [
        samples.text(word) + samples.u32(len(bits))
        + b"".join(struct.pack("<II", first, second) for first, second in bits)
        for word, bits in hardware
    ]
    encoded_conditions = [
        samples.u32(2) + samples.text(word) + samples.u32(line) + samples.text(file)
        for word, file, line in conditions
    ]
    return (
        samples.text(name)
        + samples.items(*(samples.text(path) for path in paths))
        + samples.u32(1)
        + samples.items()
        + samples.items(*encoded_variables)
        + samples.items(*encoded_hardware)
        + samples.items(*encoded_conditions)
        + samples.items()
    )


def container(project, kernels):
    """A file with a project name and kernel records alone."""
    records = samples.items(*kernels)
    offset = 16 + 2 * 24
    return (
        b"\xd4\xda\xef\xbe"
        + struct.pack("<iiI", 1, 1, 2)
        + struct.pack("<I4xQI4x", 0, offset, len(project))
        + struct.pack("<I4xQI4x", 2, offset + len(project), len(records))
        + project
        + records
    )
