# SPDX-License-Identifier: GPL-3.0-or-later
"""Upgrades by a person in the window: of the controller's firmware and of the application."""

import os
import re

from support import case
from support.pages import open_page
from support.services import FlashTool, LocalServer, Opener
from support.waiting import wait_for

FIRMWARE = "F1C100s-V1"
FLASH_PLACES = {"boot.bin": 0x0, "logo.bin": 0x6000, "f1c100s.bin": 0x50000}
INSTALLER = "/download/Quorvel-installer.exe"
QUESTION = "A new software version has been detected. Do you want to upgrade now?"
UPGRADE_TIMEOUT_S = 90
# What is shown in the first fifth of the last image, which counts from 70 % on.
LAST_IMAGE = re.compile(r"^7\d%$")


class UpgradeTestCase(case.SystemTestCase):
    def start_with(self, server, **options):
        """Starts the program on this server. Its flash tool and its opener only record their calls."""
        home = self.make_home(self)
        settings = case.default_settings()
        settings["sysSettings"] = {"apiPort": server.api_port}
        home.write_settings(settings)
        self.tool = FlashTool(case.build_folder(), home)
        self.opener = Opener(home)
        path = f"{self.opener.folder}:{self.desktop.env.get('PATH', os.environ['PATH'])}"
        return self.start(home=home, env=self.tool.environment(path), **options)

    def serve(self, *options):
        server = LocalServer(case.build_folder(), *options)
        self.addCleanup(server.__exit__)
        return server.__enter__()


class FirmwareUpgradeTest(UpgradeTestCase):
    def start_ready(self, server, **tool):
        """The settings page with the controller in its boot mode."""
        app = self.start_with(server)
        self.tool.play(**tool)
        app.instrument.do("boot-controller plug")
        open_page(app, "system")
        app.wait_item("FEL Ready", timeout_s=30)
        return app

    def test_every_byte_arrives(self):
        server = self.serve()
        images = {FLASH_PLACES[name]: server.get(f"/firmware/{FIRMWARE}/{name}") for name in FLASH_PLACES}
        app = self.start_ready(server, SPEED=2000)
        app.click_item("Upgrade")
        # The page goes at once; its button has only begun the work.
        open_page(app, "charge")
        wait_for(lambda: all(self.tool.content(address, len(image)) == image for address, image in images.items()),
                 "the images are written", UPGRADE_TIMEOUT_S)
        # A second upgrade at once: it is refused while the first one cleans up, or it runs.
        open_page(app, "system")
        app.click_item("Upgrade")
        app.wait_item("Upgrade complete", timeout_s=UPGRADE_TIMEOUT_S)

    def test_cable_pulled_in_the_middle(self):
        app = self.start_ready(self.serve(), STALL_AT=20, ADDRESS="0x50000", SPEED=0)
        app.click_item("Upgrade")
        app.wait_item(LAST_IMAGE, timeout_s=UPGRADE_TIMEOUT_S)
        app.instrument.do("boot-controller unplug")
        app.wait_item("Upgrade Faild", timeout_s=30)
        app.instrument.do("boot-controller plug")
        app.wait_gone("Upgrade Faild", timeout_s=30)

    def test_closing_in_the_middle(self):
        app = self.start_ready(self.serve(), STALL_AT=20, ADDRESS="0x50000", SPEED=0)
        app.click_item("Upgrade")
        app.wait_item(LAST_IMAGE, timeout_s=UPGRADE_TIMEOUT_S)
        app.click_item("Close")
        self.assertEqual(app.wait_exit(), 0)


class ApplicationUpdateTest(UpgradeTestCase):
    def installer_of(self, app):
        return app.home.path / "tmp/Quorvel-installer.exe"

    def start_offered(self, server):
        """The question after the check at start-up."""
        app = self.start_with(server)
        app.wait_item(QUESTION, timeout_s=30)
        return app

    def test_found_downloaded_and_started(self):
        server = self.serve("--update", "newer")
        app = self.start_offered(server)
        app.click_item("Upgrade", role="push button")
        app.click_item("install", role="push button")
        self.assertEqual(app.wait_exit(), 0)
        wait_for(self.opener.opened, "the installer is opened")
        self.assertEqual(self.opener.opened(), [str(self.installer_of(app))])
        self.assertEqual(self.installer_of(app).read_bytes(), server.get(INSTALLER))

    def test_cancelled_in_the_middle(self):
        app = self.start_offered(self.serve("--update", "newer", "--fault", f"{INSTALLER}=slow:2000000"))
        app.click_item("Upgrade", role="push button")
        app.wait_item("download file...")
        app.click_item("Cancel upgrade", role="push button")
        app.wait_gone("download file...")
        # A second download at once: the new dialog shows it, not the end of the old one.
        app.click_item("Check update")
        app.click_item("Upgrade", role="push button")
        app.wait_item("download file...")
        self.desktop.key("Escape")
        app.wait_gone("download file...")
        wait_for(lambda: not self.installer_of(app).exists(), "nothing of it stays")

    def test_ignored_version_is_not_offered_again(self):
        server = self.serve("--update", "ignored")
        app = self.start_offered(server)
        app.click_item("Ignore this version")
        app.click_item("Cancel", role="push button")
        app.wait_gone(QUESTION)
        self.assertEqual(app.home.settings()["upgrade"]["ignoredVersion"], "1.1.99")
        # A manual check offers it anyway.
        app.click_item("Check update")
        app.wait_item(QUESTION)

    def test_closing_in_the_middle(self):
        app = self.start_offered(self.serve("--update", "newer", "--fault", f"{INSTALLER}=stalled"))
        app.click_item("Upgrade", role="push button")
        wait_for(self.installer_of(app).exists, "the download has begun")
        self.desktop.key("alt+F4")
        self.assertEqual(app.wait_exit(), 0)
        self.assertFalse(self.installer_of(app).exists())

    def test_server_that_never_answers(self):
        app = self.start_with(self.serve("--fault", "/api/check_version=never"))
        app.click_item("Check update")
        app.wait_item("Checking for updates, please wait...")
        # The window stays, and the question can be closed.
        app.click_item("Cancel", role="push button")
        app.wait_gone("Checking for updates, please wait...")
        open_page(app, "charge")


if __name__ == "__main__":
    case.main()
