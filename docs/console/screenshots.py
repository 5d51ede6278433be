#!/usr/bin/python3
"""Takes the pictures of this folder anew: screenshots.py BUILD_FOLDER; needs optipng and what the browser's test needs."""
import pathlib
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).parents[2] / "tests/console"))
import browser_test as lab  # noqa: E402 (from the folder just added)
from selenium.webdriver.support.ui import Select

lab.SHELF = "// the device alone\n"
FOLDER = lab.ROOT / "docs/console"


def fill(test):
    """A device in use."""
    for entry in (("CDRPush", "TransferType", "--binary", "01"), ("CDRPush", "TranTime", "--text", "8:30"),
                  ("CDRPush", "IpAddr", "--text", "sftp://files.example"), ("CDRPush", "UserName", "--text", "pbx"),
                  ("CDRPush", "DestFolder", "--text", "/incoming/cdr"), ("CDRPush", "Password", "--text", "secret")):
        test.lab.run("zporeg", "set", "CDR", *entry)


def count(test, transfers):
    """The counters of a device whose files are pulled."""
    test.lab.run("zporeg", "set", "CDR", "CDRPush", "TransferType", "--binary", "03")
    for key, number in {"NumSuccesses": transfers, "NumFailures": transfers // 9, "NumberOfFiles": 3 * transfers,
                        "NumberOfBytes": 48211 * transfers, "LargestFile": 61440, "SmallestFile": 512}.items():
        test.lab.run("zporeg", "set", "CDR", "CDRPull", f"Pull-{key}", "--binary", number.to_bytes(4, "little").hex())
    test.lab.run("zporeg", "set", "CDR", "CDRPull", "Pull-MostRecentSuccess", "--text", "2026-11-22 08:00")


def take(test, name, width, height, dark=False):
    test.page.execute_cdp_cmd("Emulation.setEmulatedMedia", {"features": [
        {"name": "prefers-color-scheme", "value": "dark" if dark else "light"}]})
    test.page.execute_cdp_cmd("Emulation.setDeviceMetricsOverride",
                              {"width": width, "height": height, "deviceScaleFactor": 1, "mobile": width < 500})
    test.page.save_screenshot(str(FOLDER / f"{name}.png"))
    subprocess.run(["optipng", "-quiet", "-strip", "all", "-o5", FOLDER / f"{name}.png"], check=True)


class Screenshots(lab.ConsoleTest):
    def test_take(self):
        FOLDER.mkdir(exist_ok=True)
        fill(self)
        self.open("settings")
        self.type(self.control("DigitsLimit"), "25")
        self.save()
        self.until_text(".refusal", "24")
        self.page.execute_script("document.querySelectorAll('.card')[1].scrollIntoView()")
        self.page.execute_script("document.getElementById('nav').focus()")
        take(self, "settings", 1100, 720)
        take(self, "settings-dark", 1100, 720, dark=True)
        self.one("#discard").click()
        for page in ("bins", "push", "settings"):
            self.open(page)
            self.until(lambda: self.all(".card"))
            take(self, page if page != "settings" else "settings-phone", *((1100, 720) if page != "settings" else (380, 720)))
        self.open("push")
        Select(self.one("#language")).select_by_visible_text("Deutsch")
        self.until_text("#next-run", "Sonntag")
        take(self, "push-phone-dark", 380, 720, dark=True)
        Select(self.one("#language")).select_by_visible_text("English")
        self.open("statistics")
        for transfers in (12, 14, 15, 19, 26, 27):
            count(self, transfers)
            self.until_text(".tiles output", str(transfers))
        self.until_text(".times", ":")
        take(self, "statistics", 1100, 860)


class SignIn(lab.UsersTest):
    test_asks_for_users_itself_and_forgets_them = None

    def test_take(self):
        self.open()
        self.one("dialog")
        take(self, "sign-in", 1100, 720)


if __name__ == "__main__":
    lab.unittest.main()
