"""The program is ended from outside: a signal, with and without somebody who answers; what is left and offered."""

import os
import signal
import unittest

import isolation
from application import Application

QUESTION = "The changes to list [News] have not been saved, save now?"


def change(ui):
    """One unsaved change of the open list."""
    ui.wait_text("lblStatus", "Loaded [News]")
    ui.set_text("txtAddEmail", "b@x.test")
    ui.click("cmdEmailAdd_0")
    ui.click("cmdCapturesAdd")
    ui.wait_text("lblStatus", "Pending list processing complete (+1)")


class EndingTest(unittest.TestCase):
    def expect_footers(self, app):
        for log in ("ErrorLog.txt", "StatusLog.txt", "PendingLog.txt"):
            lines = (app.profile / "logs" / log).read_bytes().decode().split("\r\n")
            self.assertTrue(lines[-3].endswith(" SESSION ENDED"), lines)
        self.assertFalse((app.folder / "varlo-pro.lock").exists())

    def test_each_signal_closes_a_program_with_nothing_to_ask(self):
        for number in (signal.SIGTERM, signal.SIGHUP, signal.SIGINT):
            if signal.getsignal(number) == signal.SIG_IGN:
                signal.signal(number, signal.SIG_DFL)  # the program would inherit the deaf ear of a background job
            with Application({"News": ["a@x.test"]}) as app, app.program() as ui:
                ui.wait_text("lblStatus", "Loaded [News]")
                os.kill(ui.pid, number)
                self.assertEqual(ui.wait_end(), 0)
                self.expect_footers(app)

    def test_a_signal_asks_and_the_answer_counts(self):
        with Application({"News": ["a@x.test"]}) as app, app.program() as ui:
            change(ui)
            os.kill(ui.pid, signal.SIGTERM)
            ui.answer("Cancel", text=QUESTION)
            self.assertEqual(ui.text("lblStatusCurrent"), "2 Current")
            os.kill(ui.pid, signal.SIGTERM)
            ui.answer("Yes", text=QUESTION)
            self.assertEqual(ui.wait_end(), 0)
            self.assertEqual(app.read_list("News"), ["a@x.test", "b@x.test"])
            self.assertFalse((app.profile / "lists" / "News.vlo.unsaved").exists())
            self.expect_footers(app)

    def test_what_nobody_saved_is_kept_and_offered(self):
        with Application({"News": ["a@x.test"]}) as app:
            kept = app.profile / "lists" / "News.vlo.unsaved"
            with app.program() as ui:
                change(ui)
                os.kill(ui.pid, signal.SIGTERM)
                self.assertEqual(ui.wait_end(), 0)
            self.expect_footers(app)
            self.assertEqual(app.read_list("News"), ["a@x.test"])
            self.assertEqual(kept.read_bytes(), b"a@x.test\r\nb@x.test\r\n")
            with app.program() as ui:
                ui.wait_text("lblStatus", "Loaded [News]")
                self.assertTrue(ui.get("barUnsaved", "visible"))
                ui.click("cmdUnsavedRestore")
                self.assertEqual(ui.items("lstEmailList_0"), ["a@x.test", "b@x.test"])
                ui.click("cmdFileSave")
                ui.wait_text("lblStatus", "Saved [News]")
            self.assertEqual(app.read_list("News"), ["a@x.test", "b@x.test"])
            self.assertFalse(kept.exists())

    def test_before_a_profile_is_open_a_signal_just_ends(self):
        with Application() as app, app.program("/profile") as ui:
            ui.wait_window("frmProfile")
            os.kill(ui.pid, signal.SIGTERM)
            self.assertEqual(ui.wait_end(), 0)


if __name__ == "__main__":
    isolation.run(unittest.main)
