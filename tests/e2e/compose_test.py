"""What the compose window sends, read back from real mailboxes: attachments, several lists, drafts."""

import os
import unittest

import isolation
from application import SMTP, Application, compose, send
from mailhost import Postfix


class ComposeTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.host = Postfix(settings={"message_size_limit": 50_000_000})
        cls.addClassCleanup(cls.host.stop)
        cls.host.start()

    def setUp(self):
        self.host.empty()

    def test_attachments_arrive_byte_for_byte(self):
        with Application({"News": ["a@list.test", "b@list.test"]}, SMTP) as app, app.program() as ui:
            files = {"Übersicht „März“.bin": os.urandom(5_000_000), "notes.txt": b"one\r\ntwo\n.\nthree"}
            for name, data in files.items():
                (app.folder / name).write_bytes(data)
            compose(ui, "With files", "See the files.\n")
            ui.trigger("mnuMessageAttach")
            ui.wait_window("frmAttach")
            ui.drop("lstAttachments", [app.folder / name for name in files])
            self.assertEqual(len(ui.items("lstAttachments")), 2)
            ui.click("cmdOK", window="frmAttach")
            ui.wait(lambda: ui.get("picAttachments", "visible"), "attachment indicator")
            self.assertIn("- The message was sent to 2 recipients", send(ui))
        delivered = self.host.delivered(2)
        self.assertEqual(sorted(delivered), ["a@list.test", "b@list.test"])
        for (message,) in delivered.values():
            self.assertEqual(message.get_body().get_content(), "See the files.\n")
            found = {part.get_filename(): part.get_payload(decode=True) for part in message.iter_attachments()}
            self.assertEqual(found, files)

    def test_all_lists_reach_everybody_once(self):
        lists = {"One": ["a@list.test", "b@list.test"], "Three": ["C@list.test", "d@list.test", "A@LIST.test"],
                 "Two": ["b@list.test", "c@list.test"]}
        with Application(lists, SMTP) as app, app.program() as ui:
            compose(ui, "To all", "text", source="All Mailing Lists")
            ui.wait_text("lblStatusRecipients", "7 Recipients")
            self.assertEqual(ui.get("cmbTo", "toolTip"), "One, Three, Two")
            summary = send(ui)
        self.assertIn("- The message was sent to 4 recipients", summary)
        self.assertIn("- 3 duplicate recipients were ignored", summary)
        delivered = self.host.delivered(4)
        self.assertEqual(sorted(delivered, key=str.lower), ["a@list.test", "b@list.test", "C@list.test", "d@list.test"])

    def test_the_current_selection_is_sent_to(self):
        with Application({"News": [f"r{i}@list.test" for i in range(5)]}, SMTP) as app, app.program() as ui:
            ui.wait_text("lblStatusCurrent", "5 Current")
            ui.select_rows("lstEmailList_1", [1, 3])
            compose(ui, "To two", "text", source="Current Selection")
            ui.wait_text("lblStatusRecipients", "2 Recipients")
            self.assertIn("- The message was sent to 2 recipients", send(ui))
        self.assertEqual(sorted(self.host.delivered(2)), ["r1@list.test", "r3@list.test"])

    def test_a_draft_comes_back_and_is_sent(self):
        prefs = {**SMTP, "Signature": {"Text": "-- \\nThe Editor", "AutoAdd": 1}}
        with Application({"News": ["a@list.test"]}, prefs) as app, app.program() as ui:
            compose(ui, "Später", "Erste Zeile\n\nLetzte")
            ui.trigger("mnuMessageSave")
            ui.wait(lambda: (app.profile / "draft.txt").exists(), "draft")
            self.assertEqual((app.profile / "draft.txt").read_bytes().decode(), "Später\r\nErste Zeile\r\n\r\nLetzte\r\n")
            ui.trigger("mnuMessageClearAll")
            ui.wait_text("txtSubject", "")
            self.assertEqual(ui.text("txtMessage").replace("\r\n", "\n"), "\n-- \nThe Editor")
            ui.trigger("mnuMessageOpen")
            ui.wait_text("txtSubject", "Später")
            self.assertIn("- The message was sent to 1 recipients", send(ui))
            (copy,) = (app.profile / "sent").iterdir()
            self.assertEqual(copy.read_bytes().decode(), "From: editor@sender.test\r\nTo: Mailing List\r\n"
                             "Subject: Später\r\n\r\nErste Zeile\r\n\r\nLetzte\r\n")
        (message,) = self.host.delivered(1)["a@list.test"]
        self.assertEqual(message.get_content(), "Erste Zeile\n\nLetzte\n")

    def test_a_file_that_vanished_is_one_clear_error(self):
        with Application({"News": [f"r{i}@list.test" for i in range(50)]}, SMTP) as app, app.program() as ui:
            file = app.folder / "report.pdf"
            file.write_bytes(b"pdf")
            compose(ui, "With a file", "text")
            ui.trigger("mnuMessageAttach")
            ui.wait_window("frmAttach")
            ui.drop("lstAttachments", [file])
            ui.click("cmdOK", window="frmAttach")
            file.unlink()
            ui.trigger("mnuMessageSend")
            self.assertIn("[ File not found ]", ui.answer("OK", title="varlo-pro Error 53 in Compose.cmdSend")["text"])
            self.assertEqual(ui.items("lstEmailList_2"), [])
            self.assertIn("frmCompose", ui.window_names(), "the message is still there")


if __name__ == "__main__":
    isolation.run(unittest.main)
