"""Requests by mail: a real mailbox is fetched, the requests are applied and their senders notified."""

import unittest

import isolation
from application import SMTP, Application
from mailhost import Dovecot, Postfix

USER, PASSWORD = "requests", "secret"


def letter(subject, sender, number, body="Please.\r\n"):
    """A message as it lies in a mailbox."""
    return (f"Received: from somewhere.test\r\nMessage-ID: <{number}@mail.test>\r\nFrom: {sender}\r\n"
            f"To: requests@list.test\r\nSubject: {subject}\r\nDate: Sat, 21 Nov 2026 10:00:00 +0000\r\n\r\n{body}").encode()


def preferences(delete_unrelated, notify=0):
    return {**SMTP,
            "General": {"Notify": notify},
            "POP3": {"POPServer": "127.0.0.1", "POPUsername": USER, "POPPassword": PASSWORD,
                     "POPDeleteAll": delete_unrelated},
            "Notify": {"SubSubject": "Welcome", "UnsubSubject": "Goodbye"}}


class Mail:
    """A thousand messages and what is to come of them."""

    def __init__(self):
        subscribe = [f"new{i}@list.test" for i in range(375)] + [f"NEW{i}@list.test" for i in range(25)]
        unsubscribe = [f"old{i}@list.test" for i in range(275)] + [f"old{i}@list.test" for i in range(25)]
        unusable = [("subscribe" if i % 2 else "unsubscribe", f"no address {i}") for i in range(50)]
        letters = ([("subscribe", address) for address in subscribe] +
                   [("  UnSubscribe ", address) for address in unsubscribe] + unusable +
                   [(f"Re: subscribe {i}", f"friend{i}@list.test") for i in range(250)])
        # The kinds come mixed, the order within a kind stays.
        letters = [letters[i] for start in range(4) for i in range(start, len(letters), 4)]
        self.letters = [letter(subject, sender, i) for i, (subject, sender) in enumerate(letters)]
        self.added = self._first([sender for subject, sender in letters if subject == "subscribe" and "@" in sender])
        self.removed = self._first([sender for subject, sender in letters
                                    if subject.strip().lower() == "unsubscribe" and "@" in sender])

    @staticmethod
    def _first(addresses):
        """Without those that repeat an earlier one in whatever letter case."""
        seen = {}
        for address in addresses:
            seen.setdefault(address.lower(), address)
        return list(seen.values())


class MailCheckTest(unittest.TestCase):
    def start_mailbox(self):
        self.dovecot = Dovecot({USER: PASSWORD})
        self.addCleanup(self.dovecot.stop)
        self.dovecot.start()
        return self.dovecot.mailboxes[USER]

    def test_a_thousand_messages_are_fetched_applied_and_answered(self):
        mail = Mail()
        self.assertEqual((len(mail.letters), len(mail.added), len(mail.removed)), (1000, 375, 275))
        box = self.start_mailbox()
        for each in mail.letters:
            box.put(each)
        current = ["stays@list.test"] + [f"old{i}@list.test" for i in range(200)]
        with Postfix() as postfix:
            with Application({"News": current}, preferences(1, notify=1)) as app, app.program() as ui:
                ui.wait_text("lblStatus", "Loaded [News]")
                ui.check("chkInstantAdd")
                ui.click("cmdAutoAdd")
                ui.wait_text("lblStatus", "Pending list processing complete (+375, -200)", 240)
                self.assertEqual(ui.items("lstEmailList_0"), ["stays@list.test"] + mail.added)
                self.assertEqual(ui.items("lstEmailList_2"), [])
                self.assertEqual(app.log("PendingLog.txt"),
                                 ["+" + a for a in mail.added] + ["-" + a for a in mail.removed])
                log = app.status_log()
                self.assertIn("POP3 check complete (+375, -275)", log)
                self.assertIn("PASS ********", log)
                self.assertNotIn(PASSWORD, "\n".join(log))
                self.assertEqual([line for line in log if line.startswith("DELE ")],
                                 [f"DELE {i}" for i in range(1, 1001)])
                duplicates = [line for line in log if line.startswith("Duplicate address [")]
                self.assertEqual(len(duplicates), 50)
            delivered = postfix.delivered(575)
        self.assertEqual(sorted(a.lower() for a in delivered),
                         sorted([a.lower() for a in mail.added] + [f"old{i}@list.test" for i in range(200)]))
        self.assertEqual({len(messages) for messages in delivered.values()}, {1})
        (welcome,) = delivered["new100@list.test"]
        self.assertEqual(welcome["Subject"], "Welcome")
        (goodbye,) = delivered["old100@list.test"]
        self.assertEqual(goodbye["Subject"], "Goodbye")
        self.assertEqual(box.files(), [], "everything was deleted on the server")

    def test_a_message_that_is_kept_stops_the_check_and_loses_nothing(self):
        box = self.start_mailbox()
        unrelated = letter("Hello", "friend@list.test", 1)
        box.put(unrelated)
        box.put(letter("subscribe", "new@list.test", 2))
        with Application({"News": []}, preferences(0)) as app, app.program() as ui:
            ui.wait_text("lblStatus", "Loaded [News]")
            ui.click("cmdAutoAdd")
            ui.wait(lambda: "RETR 1" in app.status_log(), "first message asked for")
            ui.wait_text("lblStatus", "Downloading message 1/2")
            self.assertNotIn("DELE 1", app.status_log())
            self.assertEqual(ui.items("lstEmailList_2"), [])
        self.assertEqual(len(box.files()), 2)
        self.assertEqual(box.raw()[0], unrelated)

    def test_a_wrong_password_is_told_and_nothing_is_lost(self):
        box = self.start_mailbox()
        box.put(letter("subscribe", "new@list.test", 1))
        prefs = preferences(1)
        prefs["POP3"]["POPPassword"] = "wrong"
        with Application({"News": []}, prefs) as app, app.program() as ui:
            ui.wait_text("lblStatus", "Loaded [News]")
            ui.click("cmdAutoAdd")
            told = ui.answer("OK", title="Varlo POP3 Error")
            self.assertTrue(told["text"].startswith("POP3 Error [-ERR"), told["text"])
        self.assertEqual(len(box.files()), 1)

    def test_without_an_account_the_preferences_open(self):
        with Application({"News": []}) as app, app.program() as ui:
            ui.wait_text("lblStatus", "Loaded [News]")
            ui.click("cmdAutoAdd")
            ui.answer("OK", text="You must configure your POP3 server, username and password from preferences before "
                                 "you can use this feature.")
            ui.wait_window("frmOptions")
            ui.click("cmdCancel", window="frmOptions")


if __name__ == "__main__":
    isolation.run(unittest.main)
