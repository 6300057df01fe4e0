"""The driver itself, on a sample program that holds one of each."""

import os
import pathlib
import tempfile
import unittest

from driver import Ended, Program, Refused

SAMPLE = os.environ.get("VARLO_SAMPLE") or str(
    pathlib.Path(__file__).resolve().parents[2] / "build/release/tests/e2e/e2e_sample")


class DriverTest(unittest.TestCase):
    def setUp(self):
        self.ui = Program(SAMPLE)
        self.addCleanup(self.ui.stop)
        self.ui.start()
        self.ui.wait_window("frmSample")

    def result(self):
        return self.ui.text("lblResult")

    def test_sees_windows_and_texts(self):
        (window,) = self.ui.windows()
        self.assertEqual((window["name"], window["title"], window["modal"]), ("frmSample", "Sample", False))
        self.assertEqual(self.result(), "ready")
        self.assertEqual(self.ui.text("chkOne"), "A rather long caption of a check box")
        self.assertEqual(self.ui.text("frmSample"), "Sample")
        self.assertEqual(self.ui.get("cmdNever", "enabled"), False)

    def test_types_and_replaces_text(self):
        self.ui.set_text("txtName", "caf\u00e9 \U0001f4e7 <b>")
        self.assertEqual(self.ui.text("txtName"), "caf\u00e9 \U0001f4e7 <b>")
        self.ui.type("txtName", "!x")
        self.assertEqual(self.ui.text("txtName"), "caf\u00e9 \U0001f4e7 <b>!x")
        self.ui.set_text("txtName", "")
        self.assertEqual(self.ui.text("txtName"), "")
        self.ui.set_text("txtBody", "one\ntwo")
        self.ui.keys("txtBody", "Ctrl+Home")
        self.ui.type("txtBody", "zero\n")
        self.assertEqual(self.ui.text("txtBody"), "zero\none\ntwo")

    def test_clicks_check_boxes(self):
        self.ui.click("chkOne")
        self.assertEqual(self.result(), "on")
        self.ui.check("chkOne", True)
        self.assertEqual(self.ui.get("chkOne", "checked"), True)
        self.ui.check("chkOne", False)
        self.assertEqual(self.result(), "off")

    def test_selects_in_combo_boxes(self):
        self.assertEqual(self.ui.items("cmbList"), ["one", "two", "three"])
        self.ui.select("cmbList", "three")
        self.assertEqual(self.result(), "three")
        self.ui.select("cmbList", index=1)
        self.assertEqual((self.result(), self.ui.selected("cmbList")), ("two", [1]))
        self.assertEqual(self.ui.window_names(), ["frmSample"], "the list is closed again")
        with self.assertRaises(Refused):
            self.ui.select("cmbList", "four")

    def test_selects_rows(self):
        self.assertEqual(len(self.ui.items("lstItems_0")), 1000)
        self.assertEqual(self.ui.items("lstItems_0", first=998, count=5), ["item 998", "item 999"])
        self.ui.select_rows("lstItems_0", [3, 900, 5])
        self.assertEqual(self.ui.selected("lstItems_0"), [3, 5, 900])
        self.ui.click_row("lstItems_0", 7, double=True)
        self.assertEqual(self.result(), "opened item 7")
        self.ui.keys("lstItems_0", "Ctrl+A")
        self.assertEqual(len(self.ui.selected("lstItems_0")), 1000)
        with self.assertRaises(Refused):
            self.ui.click_row("lstItems_0", 1000)

    def test_chooses_from_a_context_menu(self):
        self.ui.click_row("lstItems_0", 3, button="right")
        self.ui.trigger("mnuRemove")
        self.assertEqual(self.result(), "Remove")
        self.ui.click_row("lstItems_0", 3, button="right")
        (menu,) = [window for window in self.ui.windows() if window["class"] == "QMenu"]
        self.assertEqual(menu["name"], "")
        self.ui.trigger("mnuEdit")
        self.assertEqual(self.result(), "Edit")

    def test_chooses_from_the_menu_bar(self):
        self.ui.trigger("mnuOpen")
        self.assertEqual(self.result(), "open")
        with self.assertRaises(Refused):
            self.ui.trigger("mnuOff")
        with self.assertRaises(Refused):
            self.ui.trigger("mnuNone")

    def test_presses_shortcuts(self):
        self.ui.keys("frmSample", "Ctrl+O")
        self.assertEqual(self.result(), "open")
        with self.assertRaises(Refused):
            self.ui.keys("frmSample", "Ctrl+Nonsense")

    def test_answers_boxes_one_after_the_other(self):
        self.ui.click("cmdAsk")
        box = self.ui.box()
        self.assertEqual((box["title"], box["text"], sorted(box["buttons"])), ("First", "Go on?", ["No", "Yes"]))
        with self.assertRaises(Refused) as refusal:
            self.ui.click("cmdAsk")
        self.assertEqual(str(refusal.exception), 'cmdAsk is behind the box "First"')
        with self.assertRaises(Refused):
            self.ui.answer("Perhaps")
        self.assertEqual(self.ui.answer("Yes", title="First")["text"], "Go on?")
        self.assertEqual(self.ui.answer("OK", text="Going")["title"], "Second")
        self.ui.wait_text("lblResult", "asked")
        with self.assertRaises(Refused):
            self.ui.box()

    def test_fills_input_boxes(self):
        self.ui.click("cmdInput")
        self.assertEqual(self.ui.box()["input"], "preset")
        self.assertEqual(self.ui.answer_input("typed")["text"], "Name:")
        self.ui.wait_text("lblResult", "typed")
        self.ui.click("cmdInput")
        self.ui.answer("Cancel")
        self.ui.wait_text("lblResult", "")

    def test_fills_file_choosers(self):
        with tempfile.NamedTemporaryFile(suffix=".txt") as file:
            self.ui.click("cmdFile")
            self.ui.answer_input(file.name, button="Open")
            self.ui.wait_text("lblResult", file.name)

    def test_drops_files(self):
        self.ui.drop("lblDrop", ["/tmp/one.txt", "/tmp/two.txt"])
        self.assertEqual(self.ui.text("lblDrop"), "one.txt,two.txt")

    def test_copies_to_the_clipboard(self):
        self.ui.copy("caf\u00e9")
        self.assertEqual(self.ui.clipboard(), "caf\u00e9")
        self.ui.keys("txtName", "Ctrl+A")
        self.ui.keys("txtName", "Ctrl+V")
        self.assertEqual(self.ui.text("txtName"), "caf\u00e9")

    def test_is_answered_while_the_program_works(self):
        self.ui.click("cmdBusy")
        self.ui.wait_text("lblResult", lambda shown: shown.startswith("busy") and int(shown[5:]) > 10)
        self.ui.close("frmSample")
        self.assertEqual(self.ui.wait_end(), 0)

    def test_refuses_what_no_operator_can_do(self):
        for attempt, reason in ((lambda: self.ui.click("cmdNever"), "cmdNever is disabled"),
                                (lambda: self.ui.click("cmdNone"), "there is no cmdNone"),
                                (lambda: self.ui.get("txtName", "nonsense"), "txtName has no property nonsense"),
                                (lambda: self.ui.items("txtName"), "txtName is a QLineEdit"),
                                (lambda: self.ui.ask("dance"), "there is no command dance")):
            with self.assertRaises(Refused) as refusal:
                attempt()
            self.assertEqual(str(refusal.exception), reason)

    def test_takes_pictures(self):
        with tempfile.TemporaryDirectory() as folder:
            picture = pathlib.Path(folder) / "sample.png"
            self.ui.grab("frmSample", picture)
            self.assertEqual(picture.read_bytes()[:8], b"\x89PNG\r\n\x1a\n")
            with self.assertRaises(Refused):
                self.ui.grab("frmSample", pathlib.Path(folder) / "none" / "sample.png")

    def test_takes_pictures_of_boxes(self):
        with tempfile.TemporaryDirectory() as folder:
            picture = pathlib.Path(folder) / "box.png"
            with self.assertRaises(Refused):
                self.ui.grab_box(picture)
            self.ui.click("cmdInput")
            self.ui.grab_box(picture)
            self.assertEqual(picture.read_bytes()[:8], b"\x89PNG\r\n\x1a\n")
            self.ui.answer("Cancel")

    def test_sees_the_end(self):
        self.ui.close("frmSample")
        self.assertEqual(self.ui.wait_end(), 0)
        with self.assertRaises(Ended):
            self.ui.text("lblResult")

    def test_sees_a_crash(self):
        self.ui.kill()
        with self.assertRaises(Ended):
            self.ui.text("lblResult")


class StartTest(unittest.TestCase):
    def test_box_before_the_first_window(self):
        with Program(SAMPLE, "--refuse") as ui:
            self.assertEqual(ui.answer("OK")["text"], "Not today.")
            self.assertEqual(ui.wait_end(), 3)

    def test_program_that_does_not_start(self):
        with self.assertRaises(Ended) as end:
            with Program(SAMPLE, platform="nonsense"):
                pass
        self.assertIn("nonsense", str(end.exception))


if __name__ == "__main__":
    unittest.main()
