"""The operator's first day: a profile, lists, requests, unsaved changes, two copies, a crash."""

import unittest

import isolation
from application import Application


class FirstDayTest(unittest.TestCase):
    def test_from_an_empty_folder_to_a_saved_list(self):
        with Application() as app:
            app.profile.joinpath("lists").rmdir()
            app.profile.joinpath("prefs.ini").unlink()
            app.profile.rmdir()
            with app.program() as ui:
                ui.wait_window("frmProfile")
                ui.answer("OK", text="The selected profile could not be found.")
                self.assertFalse(ui.get("cmdGo", "enabled"))
                ui.click("cmdProfileNew")
                ui.answer_input("My/News")
                ui.wait_text("cmbProfiles", "My News")
                ui.click("cmdGo")
                ui.wait_window("frmMain")
                ui.click("cmdFileNew")
                ui.answer_input("Weekly")
                ui.wait_text("lblStatus", "Created mailing list [Weekly]")
                for address in ("b@x.test", "a@x.test", "A@X.test"):
                    ui.set_text("txtAddEmail", address)
                    ui.keys("txtAddEmail", "Return")
                self.assertEqual(ui.items("lstEmailList_2"), ["+b@x.test", "+a@x.test", "+A@X.test"])
                ui.click("cmdCapturesAdd")
                ui.wait_text("lblStatus", "Pending list processing complete (+2)")
                self.assertEqual(ui.items("lstEmailList_0"), ["b@x.test", "a@x.test"])
                self.assertEqual(ui.items("lstEmailList_1"), ["a@x.test", "b@x.test"])
                ui.close("frmMain")
                ui.answer("Yes", text="The changes to list [Weekly] have not been saved, save now?")
                self.assertEqual(ui.wait_end(), 0)
            saved = app.folder / "profiles" / "My News" / "lists" / "Weekly.vlo"
            self.assertEqual(saved.read_bytes(), b"b@x.test\r\na@x.test\r\n")

    def test_a_second_copy_is_refused_and_a_crash_survived(self):
        with Application({"News": ["a@x.test"]}) as app, app.program() as first:
            first.wait_text("lblStatus", "Loaded [News]")
            with app.program() as second:
                box = second.answer("OK", title="Varlo Pro Error")
                self.assertEqual(box["text"], "Varlo Pro is already running. Please close the other instance before "
                                              "starting Varlo Pro again.")
                self.assertNotEqual(second.wait_end(), None)
            self.assertEqual(first.text("lblStatusCurrent"), "1 Current")
            first.kill()
            with app.program() as third:
                third.wait_text("lblStatus", "Loaded [News]")

    def test_the_profile_switch_shows_the_manager_anyway(self):
        with Application() as app, app.program("/profile") as ui:
            ui.wait_window("frmProfile")
            self.assertNotIn("frmMain", ui.window_names())

    def test_bypass_processes_at_once(self):
        with Application({"News": []}) as app, app.program() as ui:
            ui.wait_text("lblStatus", "Loaded [News]")
            ui.check("chkInstantAdd")
            ui.set_text("txtAddEmail", "mailto:a@x.test")
            self.assertEqual(ui.text("txtAddEmail"), "a@x.test")
            ui.click("cmdEmailAdd_0")
            ui.wait_text("lblStatusCurrent", "1 Current")
            self.assertEqual(ui.items("lstEmailList_2"), [])


if __name__ == "__main__":
    isolation.run(unittest.main)
