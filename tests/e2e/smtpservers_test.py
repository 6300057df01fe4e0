"""The scripted SMTP servers themselves."""

import smtplib
import socket
import unittest

import isolation
from smtpservers import (ScriptedSmtp, busy_once, closes_after, refuses_every_recipient, says_once, silent_at)

BODY = "Subject: x\r\n\r\n.dot\r\n"


def client():
    return smtplib.SMTP("127.0.0.1", 25, timeout=5)


def send(smtp, recipient="a@list.test"):
    smtp.sendmail("s@sender.test", [recipient], BODY)


class ScriptedSmtpTest(unittest.TestCase):
    def test_takes_messages(self):
        with ScriptedSmtp() as server, client() as smtp:
            send(smtp)
            send(smtp, "b@list.test")
            self.assertTrue(smtp.has_extn("pipelining"))
            self.assertEqual([(m.sender, m.recipients, m.data) for m in server.messages],
                             [("s@sender.test", ["a@list.test"], BODY.encode()),
                              ("s@sender.test", ["b@list.test"], BODY.encode())])
            self.assertEqual(server.connections[0].commands[1:4],
                             ["MAIL FROM:<s@sender.test>", "RCPT TO:<a@list.test>", "DATA"])
            self.assertEqual(server.violations, [])

    def test_refuses_every_recipient(self):
        with ScriptedSmtp(refuses_every_recipient) as server, client() as smtp:
            for _ in range(3):
                with self.assertRaises(smtplib.SMTPRecipientsRefused):
                    send(smtp)
            self.assertEqual(server.messages, [])

    def test_closes_after_so_many_messages(self):
        with ScriptedSmtp(closes_after(2)) as server:
            with client() as smtp:
                send(smtp)
                send(smtp)
                with self.assertRaises(smtplib.SMTPServerDisconnected):
                    send(smtp)
            with client() as smtp:
                send(smtp)
            self.assertEqual([len(c.messages) for c in server.connections], [2, 1])

    def test_sends_one_client_away(self):
        for verb in ("connect", "MAIL", "."):
            with self.subTest(verb), ScriptedSmtp(busy_once(verb)):
                with self.assertRaises(smtplib.SMTPException) as refusal:
                    with client() as smtp:
                        send(smtp)
                self.assertEqual(refusal.exception.smtp_code, 421)
                with client() as smtp:
                    send(smtp)

    def test_one_odd_reply(self):
        with ScriptedSmtp(says_once("RCPT", "this is no reply")), client() as smtp:
            with self.assertRaises(smtplib.SMTPException):
                send(smtp)

    def test_stays_silent(self):
        with ScriptedSmtp(silent_at("DATA")) as server:
            with socket.create_connection(("127.0.0.1", 25), timeout=0.3) as raw:
                self.assertIn(b"220", raw.recv(1000))
                raw.sendall(b"EHLO x\r\n")
                self.assertIn(b"PIPELINING", raw.recv(1000))
                raw.sendall(b"MAIL FROM:<a@b>\r\nRCPT TO:<c@d>\r\nDATA\r\n")
                got = b""
                with self.assertRaises(TimeoutError):
                    while True:
                        got += raw.recv(1000)
                self.assertEqual(got, b"250 2.1.0 ok\r\n250 2.1.5 ok\r\n")
            self.assertEqual(server.violations, [])

    def test_notes_what_no_client_may_do(self):
        with ScriptedSmtp(pipelining=False) as server:
            with socket.create_connection(("127.0.0.1", 25), timeout=5) as raw:
                raw.sendall(b"EHLO x\r\nMAIL FROM:<a@b>\nQUIT\r\n")
                while raw.recv(1000):
                    pass
            self.assertEqual(server.violations, ["sent more behind EHLO without waiting for the reply",
                                                 "line without a carriage return: b'MAIL FROM:<a@b>'",
                                                 "sent more behind MAIL without waiting for the reply"])

    def test_commands_out_of_order_are_refused(self):
        with ScriptedSmtp(), client() as smtp:
            self.assertEqual(smtp.docmd("RCPT TO:<a@b>")[0], 503)
            self.assertEqual(smtp.docmd("DATA")[0], 503)
            self.assertEqual(smtp.docmd("TURN")[0], 500)


if __name__ == "__main__":
    isolation.run(unittest.main)
