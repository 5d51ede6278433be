#!/usr/bin/python3
"""The console in headless Chromium, against a server over the real module and a registry of its own.

usage: browser_test.py BUILD_FOLDER [unittest's options]
"""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.support.ui import Select, WebDriverWait

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(sys.argv.pop(1) if len(sys.argv) > 1 else ROOT / "build/dev").resolve()
SERVICE = ('QTX_CDRService.SystemCreationClassName="QTX_System",SystemName="QTX",'
           'CreationClassName="QTX_CDRService",Name="CDRService"')
SHELF = 'class ACME_Shelf { [Key] string Name; [Units("Slots")] uint16 BoardCount = 2; uint16 Sizes[] = {3, 4}; };\n' \
        'instance of ACME_Shelf { Name = "left & <right>"; };\n' \
        '[Provider("c++::Lost")] class ACME_Lost { [Key] string Name; uint32 Count; };\n'
FLAGS = ["--headless=new", "--no-sandbox", "--disable-dev-shm-usage", "--disable-background-networking",
         "--hide-scrollbars", "--lang=en-US", "--host-resolver-rules=MAP * ~NOTFOUND, EXCLUDE 127.0.0.1"]


class Lab:
    """A registry, a scheduler's table and a server of this test."""

    def __init__(self):
        self.home = pathlib.Path(tempfile.mkdtemp(prefix="console"))
        (self.home / "crontabs").mkdir()
        (self.home / "shelf.mof").write_text(SHELF)
        os.environ.update(ZPO_STATE_DIR=str(self.home / "state"), ZPO_LOG_DIR=str(self.home / "log"),
                          ZPO_CRONTAB_DIR=str(self.home / "crontabs"), PATH=f"{BUILD}/bin:{os.environ['PATH']}")
        os.environ.pop("ZPO_CRONTAB_SUNDAY", None)
        self.run("zporeg", "load", str(ROOT / "platform/defaults/cdr.defaults"))
        self.users = self.home / "users"
        for name, role in (("viewer", "read"), ("operator", "write")):
            self.run("cimserver-passwd", self.users, name, "--role", role, "--stdin", text=f"{name}: pässword\n")
        self.port, self.server = 0, None

    def run(self, *command, text=""):
        return subprocess.run(command, input=text, capture_output=True, text=True, check=True).stdout

    def start(self, *options):
        ready = self.home / "ports"
        ready.unlink(missing_ok=True)
        with open(self.home / "server.log", "a") as log:
            self.server = subprocess.Popen(
                ["cimserverd", "--mof", ROOT / "schema/QTX_CDR.mof", "--mof", self.home / "shelf.mof", "--provider-dir",
                 BUILD / "lib/providers", "--listen", f"127.0.0.1:{self.port}", "--port-file", ready, "--console",
                 ROOT / "console", "--audit-log", self.home / "audit", *options],
                stdout=subprocess.DEVNULL, stderr=log)
        WebDriverWait(None, 20).until(lambda _: ready.exists() and ready.read_text().strip())
        self.port = int(ready.read_text())

    def stop(self):
        self.server.terminate()
        self.server.wait(20)

    def stored(self, *entry):
        return self.run("zporeg", "get", "CDR", *entry).strip()

    def set_by_another(self, assignment):
        self.run("wbemcli", "mi", f"http://127.0.0.1:{self.port}/root/cimv2:{SERVICE}", assignment)


def browser():
    options = webdriver.ChromeOptions()
    options.binary_location = shutil.which("chromium")
    for flag in FLAGS:
        options.add_argument(flag)
    options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
    return webdriver.Chrome(service=Service(shutil.which("chromedriver")), options=options)


class ConsoleTest(unittest.TestCase):
    server_options = ()

    @classmethod
    def setUpClass(cls):
        cls.lab, cls.page = Lab(), browser()
        cls.addClassCleanup(shutil.rmtree, cls.lab.home)
        cls.addClassCleanup(cls.page.quit)

    def setUp(self):
        self.lab.start(*self.server_options)
        self.addCleanup(self.lab.stop)
        self.page.set_window_size(1200, 900)
        self.page.get("about:blank")
        self.page.get_log("browser")

    def open(self, page="settings"):
        self.page.get(f"http://127.0.0.1:{self.lab.port}/console/#{page}")

    def all(self, selector):
        return self.page.find_elements(By.CSS_SELECTOR, selector)

    def one(self, selector):
        return self.until(lambda: self.all(selector), f"there is no {selector}")[0]

    def until(self, condition, message=""):
        return WebDriverWait(self.page, 20, 0.1).until(lambda _: condition(), message)

    def until_text(self, selector, text):
        def shows():
            return self.page.execute_script(
                "return [...document.querySelectorAll(arguments[0])].some(e => e.innerText.includes(arguments[1]))",
                selector, text)
        self.until(shows, f"{selector} does not show {text}")

    def control(self, name):
        return self.one(f'[data-property="{name}"] .control > :first-child')

    def type(self, element, text):
        element.send_keys(Keys.CONTROL, "a", Keys.NULL, text or Keys.BACKSPACE)

    def save(self):
        self.one("#save").click()

    def until_saved(self):
        self.until_text("#said", "Saved.")
        self.until(lambda: not self.one("#savebar").is_displayed())

    def expect_no_complaints(self):
        """Of the browser: blocked by the policy, not found, uncaught."""
        self.assertEqual([one for one in self.page.get_log("browser") if one["level"] == "SEVERE"], [])


class OpenTest(ConsoleTest):
    """Without users."""

    def test_changes_a_setting_and_shows_why_another_is_refused(self):
        self.open()
        self.type(self.control("DigitsLimit"), "12")
        self.control("DNISInfo").click()
        self.until_text("#unsaved", "2 unsaved changes")
        self.save()
        self.until_saved()
        self.assertEqual(self.lab.stored("CDRService", "DIGITSLIMIT"), "00 0c")
        changed = [line for line in (self.lab.home / "audit").read_text().splitlines() if "begun" in line]
        self.assertEqual(len(changed), 1)
        self.assertIn('DNISInfo="FALSE", DigitsLimit="12" ->', changed[0])
        self.type(self.control("DigitsLimit"), "25")
        self.type(self.control("Language"), "7")
        self.save()
        self.until_text('[data-property="DigitsLimit"] .refusal', "DigitsLimit must be <= 24")
        self.assertEqual(self.control("DigitsLimit").get_attribute("aria-invalid"), "true")
        self.assertEqual(self.page.switch_to.active_element, self.control("DigitsLimit"))
        self.until_text("#unsaved", "1 unsaved change")  # the language was applied before
        self.assertEqual(self.lab.stored("CDRService", "DIGITSLIMIT"), "00 0c")
        self.type(self.control("DigitsLimit"), "ten")
        self.save()
        self.until_text('[data-property="DigitsLimit"] .refusal', "ten")
        self.one("#discard").click()
        self.assertEqual(self.control("DigitsLimit").get_attribute("value"), "12")
        self.type(self.control("FeatureCode"), "7")
        self.save()
        self.until_text('[data-property="FeatureCode"] .notice', "70")
        self.expect_no_complaints()

    def test_edits_bins(self):
        self.open("bins")
        cells = self.until(lambda: self.all('[data-property="PrefixBin"] input'))
        self.type(cells[3], "0049")
        self.type(cells[4], "12x" + Keys.ENTER)
        self.until_text("td .refusal", "301")
        self.assertEqual([cell.accessible_name for cell in self.all("td [aria-invalid=true]")], ["Prefix bin, no. 4"])
        self.assertIn("00 00 04 09 0c 0c 0c 0c", self.lab.stored("CDRService", "PREFIX BIN"))

    def test_schedules_a_weekly_push_with_one_save(self):
        self.open("push")
        self.until_text("#next-run", "None")
        self.assertFalse(self.control("TransferTime").is_enabled())
        self.until_text('[data-property="TransferTime"] .reason', "“Transfer type” is “Pull” or “No transfer”")
        Select(self.control("TransferType")).select_by_visible_text("Weekly push")
        self.control("TransferTime").send_keys("0830AM")
        Select(self.control("TransferDayOfWeek")).select_by_visible_text("Sunday")
        self.assertFalse(self.control("TransferDayOfMonth").is_enabled())
        self.until_text("#plan", "Every Sunday at 08:30")
        self.until_text("#next-run", "at 8:30 AM (once saved)")
        self.save()
        self.until_saved()
        table = next((self.lab.home / "crontabs").iterdir())
        self.assertEqual(table.read_text(), "30 8 * * 7 /qv/bin/CDRTransfer\n")
        self.one('[data-method="PushFileNow"]').click()
        self.one('dialog [value="run"]').click()
        self.until_text(".methods [role=status]", "was called")
        self.lab.run("zporeg", "set", "CDR", "CDRPush", "LastTransferTime", "--text", "20261122083000.000000+000")
        self.until_text("#last-transfer", "2026 at 8:30 AM: files have arrived")

    def test_shows_what_another_client_changed_and_overwrites_nothing_unseen(self):
        self.open()
        self.control("DateFormat")
        self.lab.set_by_another("DateFormat=3")
        self.until_text('[data-property="DateFormat"] .news', "it was “0”")
        self.type(self.control("HeaderFormat"), "5")
        self.lab.set_by_another("HeaderFormat=6")
        self.save()
        self.until_text('[data-property="HeaderFormat"] .conflict', "“6”")
        self.until_text("#outcome", "Decide")
        self.assertEqual(self.lab.stored("CDRService", "HEADER"), "06")
        self.all('[data-property="HeaderFormat"] .conflict button')[1].click()
        self.save()
        self.until_saved()
        self.assertEqual(self.lab.stored("CDRService", "HEADER"), "05")

    def test_shows_hostile_values_as_text(self):
        texts = {"IpAddr": '<script>document.title="x"</script>', "UserName": "\"'&amp;]]>", "DestFolder": "w" * 511,
                 "Password": "<img src=x>"}
        for key, value in {**texts, "TranTime": "</VALUE>"}.items():
            self.lab.run("zporeg", "set", "CDR", "CDRPush", key, "--text", value)
        self.lab.run("zporeg", "set", "CDR", "CDRPush", "TransferType", "--binary", "00")
        self.lab.run("zporeg", "set", "CDR", "CDRPull", "Pull-MostRecentFailureReason", "--text", "\u202e<b>")
        self.addCleanup(self.lab.run, "zporeg", "load", str(ROOT / "platform/defaults/cdr.defaults"))
        self.open("push")
        names = {"IpAddr": "IPAddress"}
        for key, value in texts.items():
            self.assertEqual(self.control(names.get(key, key)).get_attribute("value"), value)
        self.type(self.control("UserName"), "<&>\"' \u05d0\u05d1\u05d2")
        self.save()
        self.until(lambda: self.lab.stored("CDRPush", "UserName").startswith("<&>\"' "))
        self.open("class/QTX_CDRPullStatistics")
        self.lab.run("zporeg", "set", "CDR", "CDRPush", "TransferType", "--binary", "03")
        self.until_text("output", "<b>")
        self.expect_no_complaints()

    def test_tells_that_the_server_is_gone_and_goes_on_when_it_is_back(self):
        self.open()
        self.type(self.control("Language"), "9")
        self.lab.stop()
        self.until_text("#state", "No connection")
        self.until_text("#gone", "has not answered since")
        self.lab.run("zporeg", "set", "CDR", "CDRService", "FILTER", "--binary", "04")
        self.lab.start()
        self.until_text("#state", "Live")
        self.assertFalse(self.one("#gone").is_displayed())
        self.until(lambda: self.control("ReportFilter").get_attribute("value") == "4")
        self.assertEqual(self.control("Language").get_attribute("value"), "9")
        self.page.execute_script("Object.defineProperty(document, 'hidden', { value: true, configurable: true });"
                                 "document.dispatchEvent(new Event('visibilitychange'))")
        self.until_text("#state", "Paused")
        self.one("#discard").click()

    def test_shows_classes_that_it_was_not_made_for(self):
        self.open("class/ACME_Shelf")
        self.until_text("nav", "Shelf")
        self.until_text("h2", "left & <right>")
        self.until_text('[data-property="BoardCount"]', "Slots")
        self.until_text('[data-property="BoardCount"] output', "2")
        self.until_text('[data-property="Sizes"] output', "3, 4")
        self.open("class/ACME_Lost")
        self.until_text("#problem", "Lost")

    def test_is_small_needs_nothing_from_elsewhere_and_keeps_nothing(self):
        self.open()
        self.control("DigitsLimit")
        read = self.page.execute_script(
            "return ['navigation', 'resource'].flatMap(kind => performance.getEntriesByType(kind))"
            ".map(one => [one.name, one.encodedBodySize])")
        self.assertTrue(all(name.startswith(f"http://127.0.0.1:{self.lab.port}/") for name, _ in read), read)
        first = [(name, size) for name, size in read
                 if "/console/" in name and not any(late in name for late in ("bins", "push", "statistics", "dialogs"))]
        self.assertLessEqual(len(first), 5, first)
        self.assertLess(sum(size for _, size in first), 80_000)  # and the data, about 25 kB in two requests
        self.assertEqual(self.page.execute_script("return document.cookie + localStorage.length"), "0")

    def test_reads_well_on_a_phone_in_german_and_to_a_screen_reader(self):
        self.page.set_window_size(500, 800)
        self.page.execute_cdp_cmd("Emulation.setDeviceMetricsOverride",
                                  {"width": 360, "height": 740, "deviceScaleFactor": 1, "mobile": True})
        self.addCleanup(self.page.execute_cdp_cmd, "Emulation.clearDeviceMetricsOverride", {})
        for page in ("settings", "bins", "push", "statistics", "class/QTX_CDRService"):
            self.open(page)
            self.one("#view h1")
            Select(self.one("#language")).select_by_visible_text("Deutsch")
            self.until_text("#state", "Aktuell")
            self.until(lambda: self.all(".card"))
            unnamed = [one.get_attribute("outerHTML") for one in self.all("input, select, button, output")
                       if one.is_displayed() and not one.accessible_name]
            self.assertEqual(unnamed, [])
            wide = self.page.execute_script("return document.documentElement.scrollWidth")
            self.assertLessEqual(wide, 360, page)


class UsersTest(ConsoleTest):
    @property
    def server_options(self):
        return "--user-file", self.lab.users

    def sign_in(self, name, password=None):
        self.type(self.one("dialog #user"), name)
        self.type(self.one("dialog #password"), password or f"{name}: pässword")
        self.one("dialog .main").click()

    def test_asks_for_users_itself_and_forgets_them(self):
        self.open()
        self.sign_in("viewer", "wrong")
        self.until_text("dialog .refusal", "password is wrong")
        self.sign_in("viewer")
        self.type(self.control("DigitsLimit"), "20")
        self.save()
        self.until_text("#outcome", 'role of "viewer" is read')
        self.one("#discard").click()
        self.one("#sign-out").click()
        self.until(lambda: self.all("dialog"))
        self.assertEqual(self.all("#view *"), [])
        self.sign_in("operator")
        self.type(self.control("DigitsLimit"), "21")
        self.save()
        self.until_saved()
        self.assertEqual(self.lab.stored("CDRService", "DIGITSLIMIT"), "00 15")
        self.page.refresh()
        self.one("dialog #password")
        self.assertEqual(self.page.execute_script("return document.cookie + JSON.stringify(localStorage)"), "{}")


if __name__ == "__main__":
    unittest.main(verbosity=2)
