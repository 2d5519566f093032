"""Pictures of a page in both themes: report.png and report-dark.png.

usage: picture.py <page> <folder>
"""

import base64
import pathlib
import sys

import browser as support

# Up to and with the map.
WIDTH = 1280
SCRIPT = "return document.getElementById('map').getBoundingClientRect().bottom + scrollY"


def main():
    path, folder = (pathlib.Path(word).resolve() for word in sys.argv[1:])
    browser = support.open_browser()
    try:
        page = support.Page(browser, path)
        browser.set_window_size(WIDTH, 2600)  # all of it is drawn
        page.wait("return document.querySelector('#map-legend button')")
        height = round(page.run(SCRIPT)) + 16
        for scheme, name in (("light", "report.png"), ("dark", "report-dark.png")):
            page.emulate(scheme)
            page.browser.execute_async_script(
                "requestAnimationFrame(() => requestAnimationFrame(arguments[0]))")
            clip = {"x": 0, "y": 0, "width": WIDTH, "height": height, "scale": 1}
            taken = browser.execute_cdp_cmd("Page.captureScreenshot", {"clip": clip})
            (folder / name).write_bytes(base64.b64decode(taken["data"]))
    finally:
        browser.quit()


main()
