# SPDX-License-Identifier: GPL-3.0-or-later
"""Starting and ending: one instance, a clean exit, and starts where something is missing or broken."""

import os
import re
import socket
import stat
import subprocess

from support import case
from support.pages import open_page
from support.waiting import wait_for

SOCKET = "runtime/org.Quorvel.SingleInstance"  # in the home folder
SECOND_INSTANCE_TEXT = "An application is already running."
NO_SOCKET_TEXT = re.compile("Quorvel 无法启动")
UNSTORED_TEXT = re.compile("无法将设置保存到 .*Documents/Quorvel")


def connects_to(path):
    """Returns whether a connection to this local socket is made at once."""
    with socket.socket(socket.AF_UNIX) as probe:
        probe.setblocking(False)
        return probe.connect_ex(str(path)) == 0


class SessionTest(case.SystemTestCase):
    def test_a_second_instance_says_so_and_ends(self):
        settings = case.default_settings()
        settings["sysSettings"] = {"usbDebugEnabled": "true"}
        app = self.start(settings=settings)
        # More instances before this one than connections fit into the running instance's queue.
        for _ in range(100):
            wait_for(lambda: connects_to(app.home.path / SOCKET), "the instance socket accepts")
        self.assertEqual(self.end_of_a_start_that_says(re.escape(SECOND_INSTANCE_TEXT), app.environment()), 0)
        # Both write to this log; its message left the second one nothing to work with.
        log = "".join(path.read_text(encoding="utf-8")
                      for path in app.home.data.glob("Logs/system_manager_*.log"))
        self.assertEqual(log.count("SystemManager constructed."), 2, log)
        self.assertEqual(log.count("Deferred initialization started."), 1, log)
        open_page(app, "charge")
        self.assertIsNone(app.process.poll(), "the first instance goes on")

    def test_nothing_starts_without_the_instance_socket(self):
        home = self.make_home(self)
        (home.path / SOCKET).mkdir()
        environment = {**self.desktop.env, **home.environment(), "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}
        self.assertEqual(self.end_of_a_start_that_says(NO_SOCKET_TEXT, environment), 255)

    def end_of_a_start_that_says(self, text, environment):
        """Starts the program without an instrument, confirms its message and returns its exit code."""
        process = subprocess.Popen([case.build_folder() / "quorvel"], env=environment, stdin=subprocess.DEVNULL,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(process.kill)

        def items():
            root = self.desktop.accessibility.program(process.pid)
            return case.snapshot(root) if root is not None else []

        wait_for(lambda: any(re.search(text, item.name) for item in items()), "the message shows")
        button = wait_for(lambda: next((item for item in items() if item.role == "push button"), None),
                          "its button shows")
        self.desktop.click(*button.center)
        return process.wait(20)

    def test_close_ends_everything(self):
        app = self.start()
        app.instrument.wait_open()
        app.click_item("Close")
        self.assertEqual(app.wait_exit(), 0)
        self.assertNotIn("left processes behind", app.console())
        self.assertIn("After app delete", app.console())

    def test_close_while_packets_pour_in_and_a_page_loads(self):
        app = self.start()
        app.instrument.wait_open()
        app.instrument.do("burst 1000000 1000")
        app.instrument.do("screen 3")
        self.desktop.key("alt+F4")
        self.assertEqual(app.wait_exit(), 0)

    def test_close_without_an_instrument(self):
        app = self.start(scenario="unplugged")
        wait_for(lambda: app.find("Not Connected"), "the badge tells that no instrument is there")
        app.click_item("Close")
        self.assertEqual(app.wait_exit(), 0)


class AdverseStartTest(case.SystemTestCase):
    """The window opens although parts are missing, and shows readings."""

    @classmethod
    def setUpClass(cls):
        # File permissions do not bind an administrator.
        why = case.drop_privileges()
        if why:
            raise case.unittest.SkipTest(why)
        super().setUpClass()

    def check_readings(self, app):
        wait_for(lambda: app.find(re.compile(r"(Voltage|电压) [45]\.\d{3} V")),
                 lambda: f"readings show; shown: {app.texts()}\n{app.console()}")

    def test_no_documents_folder(self):
        home = self.make_home(self)
        home.documents.rmdir()
        app = self.start(home)
        self.check_readings(app)

    def test_read_only_documents_folder(self):
        home = self.make_home(self)
        home.documents.chmod(stat.S_IRUSR | stat.S_IXUSR)
        self.addCleanup(home.documents.chmod, stat.S_IRWXU)
        app = self.start(home)
        app.wait_item(UNSTORED_TEXT)
        app.click_item("OK")
        app.wait_gone(UNSTORED_TEXT)
        self.check_readings(app)
        app.click_item(re.compile("Close|关闭"))
        self.assertEqual(app.wait_exit(), 0)

    def test_malformed_settings_file(self):
        home = self.make_home(self)
        home.data.mkdir(parents=True)
        home.settings_file.write_bytes(
            b"\x00\xff[[[system\nlanguage==\xfe=one\n[windowGeometry]\nvalid=true\n"
            b"width=99999999999999\nheight=-7\nx=@Invalid()\n" + os.urandom(4096))
        app = self.start(home)
        self.check_readings(app)

    def test_each_scene_graph_shows_every_page(self):
        for wanted, used in ({"QT_QUICK_BACKEND": "opengl"}, "opengl"), ({}, "software"):
            with self.subTest(used):
                app = self.start(env=wanted)
                self.assertIn(f"Scene graph: {used}", app.console())
                self.check_readings(app)
                for page in ("wave", "multimeter", "charge", "user", "system", "gauge"):
                    open_page(app, page)
                app.stop()

    def test_node_without_permission(self):
        app = self.start(scenario="bench", commands=["permission denied", "replug"])
        wait_for(lambda: re.search("permission|udev", app.console(), re.IGNORECASE),
                 lambda: f"the console tells the way out\n{app.console()}")
        wait_for(lambda: app.find("Not Connected"), "the badge tells that no instrument is there")
        app.instrument.do("permission granted")
        self.check_readings(app)


if __name__ == "__main__":
    case.main()
