"""The mail servers of the tests themselves: what goes in comes out."""

import email.message
import poplib
import smtplib
import unittest

import isolation
from mailhost import Dovecot, Maildir, Postfix, is_listening


def message(number, recipient):
    text = email.message.EmailMessage()
    text["From"] = "sender@sender.test"
    text["To"] = recipient
    text["Subject"] = f"Message {number}"
    text.set_content(f"This is message {number}.\n.\n..dots\n")
    return text


class PostfixTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.host = Postfix(mailboxes=["owner@list.test"], refused=["bad@list.test"])
        cls.addClassCleanup(cls.host.stop)
        cls.host.start()

    def setUp(self):
        self.host.empty()
        self.client = smtplib.SMTP("127.0.0.1", 25)
        self.addCleanup(self.client.close)

    def test_twenty_messages_arrive(self):
        recipients = [f"user{i}@list.test" for i in range(19)] + ["owner@list.test"]
        for number, recipient in enumerate(recipients):
            self.client.send_message(message(number, recipient))
        delivered = self.host.delivered(20)
        self.assertEqual(sorted(delivered), sorted(recipients))
        for number, recipient in enumerate(recipients):
            (found,) = delivered[recipient]
            self.assertEqual(found["Subject"], f"Message {number}")
            self.assertEqual(found.get_content(), f"This is message {number}.\n.\n..dots\n")
        self.assertEqual(len(self.host.mailboxes["owner@list.test"].messages()), 1)

    def test_chosen_recipients_are_refused(self):
        with self.assertRaises(smtplib.SMTPRecipientsRefused) as refusal:
            self.client.send_message(message(1, "bad@list.test"))
        code, text = refusal.exception.recipients["bad@list.test"]
        self.assertEqual(code, 550)
        self.assertIn(b"No such user here", text)
        self.client.send_message(message(2, "good@list.test"))
        self.assertEqual(list(self.host.delivered(1)), ["good@list.test"])

    def test_foreign_domains_are_refused(self):
        with self.assertRaises(smtplib.SMTPRecipientsRefused) as refusal:
            self.client.send_message(message(1, "who@elsewhere.test"))
        self.assertEqual(refusal.exception.recipients["who@elsewhere.test"][0], 554)

    def test_second_server_on_the_port_is_an_error(self):
        with self.assertRaises(AssertionError):
            with Postfix():
                pass
        self.assertTrue(is_listening(25), "the first one stays")


class PostfixOfItsOwnTest(unittest.TestCase):
    def test_settings_reach_the_server_and_nothing_is_left_of_it(self):
        with Postfix(settings={"smtpd_discard_ehlo_keywords": "pipelining"}) as host:
            folder = host.folder
            with smtplib.SMTP("127.0.0.1", 25) as client:
                client.ehlo()
                self.assertFalse(client.has_extn("pipelining"))
                self.assertTrue(client.has_extn("8bitmime"))
        self.assertFalse(is_listening(25))
        self.assertFalse(folder.exists())


class DovecotTest(unittest.TestCase):
    def test_messages_are_served(self):
        with Dovecot({"list": "secret", "other": "x"}) as host:
            for number in range(20):
                host.mailboxes["list"].put(message(number, "list@list.test"))
            client = poplib.POP3("127.0.0.1", 110)
            self.addCleanup(client.close)
            client.user("list")
            client.pass_("secret")
            self.assertEqual(client.stat()[0], 20)
            lines = client.retr(7)[1]
            self.assertIn(b"Subject: Message 6", lines)
            client.dele(1)
            client.quit()
            self.assertEqual(len(host.mailboxes["list"].messages()), 19)
            self.assertEqual(host.mailboxes["other"].messages(), [])

    def test_wrong_password_is_refused(self):
        with Dovecot({"list": "secret"}, settings="auth_failure_delay = 0"):
            client = poplib.POP3("127.0.0.1", 110)
            self.addCleanup(client.close)
            client.user("list")
            with self.assertRaises(poplib.error_proto):
                client.pass_("wrong")

    def test_mail_that_postfix_took_is_fetched_by_pop3(self):
        with Postfix(mailboxes=["owner@list.test"]) as sender:
            box = sender.mailboxes["owner@list.test"]
            with Dovecot({"owner": "pw"}, mailboxes={"owner": box}):
                with smtplib.SMTP("127.0.0.1", 25) as smtp:
                    smtp.send_message(message(1, "owner@list.test"))
                box.wait_for(1)
                client = poplib.POP3("127.0.0.1", 110)
                client.user("owner")
                client.pass_("pw")
                self.assertIn(b"Subject: Message 1", client.retr(1)[1])
                client.quit()


class MaildirTest(unittest.TestCase):
    def test_too_many_messages_are_an_error(self):
        with Dovecot({"list": "x"}) as host:
            box = host.mailboxes["list"]
            self.assertIsInstance(box, Maildir)
            box.put(message(1, "a@list.test"))
            box.put(b"Subject: raw\r\n\r\nraw\r\n")
            self.assertEqual([m["Subject"] for m in box.wait_for(2)], ["Message 1", "raw"])
            with self.assertRaises(AssertionError):
                box.wait_for(1)
            with self.assertRaises(AssertionError):
                box.wait_for(3, seconds=0.1)


if __name__ == "__main__":
    isolation.run(unittest.main)
