"""The operator's whole circle through servers that encrypt and want a name and a password: the account is entered and
tried, the certificate trusted, requests are fetched and answered, a message is sent. Once with each security."""

import tempfile
import unittest

import isolation
from application import Application, compose, send
from mailcheck_test import letter
from mailhost import Certificate, Dovecot, Postfix

USER, PASSWORD = "requests", "Zaubernuss 7"
STARTTLS = {"sending": "STARTTLS", "port": "587", "receiving": "STLS", "pop_port": "110"}
TLS = {"sending": "TLS", "port": "465", "receiving": "TLS", "pop_port": "995"}


class Servers:
    """Both servers with one certificate. Use it in a `with`."""

    def __enter__(self):
        self._folder = tempfile.TemporaryDirectory(prefix="varlo-certificate-")
        self.certificate = Certificate(self._folder.name)
        self.dovecot = Dovecot({USER: PASSWORD}, certificate=self.certificate)
        self.postfix = Postfix(certificate=self.certificate, sasl=self.dovecot.sasl)
        try:
            self.dovecot.start()
            self.postfix.start()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        self.postfix.stop()
        self.dovecot.stop()
        self._folder.cleanup()


def choose(ui, name, entry):
    """As the operator does it with the keys, so that the port follows."""
    ui.keys(name, "Home")
    while ui.text(name) != entry:
        ui.keys(name, "Down")


def enter(ui, fields):
    for name, text in fields.items():
        ui.set_text(name, text)


def preferences(app):
    return (app.profile / "prefs.ini").read_text()


def files_with(app, text):
    """The files of the program folder that hold the text."""
    return sorted(path.name for path in app.folder.rglob("*")
                  if path.is_file() and path.name != "varlo-pro" and text.encode() in path.read_bytes())


class CircleTest(unittest.TestCase):
    def open_page(self, ui, row):
        if "frmOptions" not in ui.window_names():
            ui.trigger("mnuMainPreferences")
            ui.wait_window("frmOptions")
        ui.click_row("lstOptions", row)

    def try_account(self, ui, button, trusts):
        """Presses "Test" and trusts the certificate on the way; returns the steps."""
        ui.click(button, window="frmOptions")
        ui.wait_window("frmServerTest")
        if trusts:
            ui.wait(lambda: ui.get("cmdTrust", "visible", "frmServerTest"), "certificate that is not trusted")
            ui.click("cmdTrust", window="frmServerTest")
            ui.wait_window("frmTrust")
            self.assertIn(trusts.upper(), ui.text("txtCertificate", "frmTrust").replace(":", ""))
            ui.click("cmdTrust", window="frmTrust")
        ui.wait(lambda: ui.items("lstSteps", window="frmServerTest")[-1:] == ["Everything worked."], "test that worked")
        steps, dialogue = ui.items("lstSteps", window="frmServerTest"), ui.text("txtDialogue", "frmServerTest")
        self.assertNotIn(PASSWORD, dialogue)
        ui.click("cmdClose", window="frmServerTest")
        ui.wait(lambda: "frmServerTest" not in ui.window_names(), "closed test")
        return steps

    def enter_accounts(self, ui, kind, certificate):
        self.open_page(ui, 1)
        enter(ui, {"txtSMTPServer": "127.0.0.1", "txtSMTPFrom": "The Editor", "txtSMTPEmail": "editor@sender.test",
                   "txtSMTPUsername": USER, "txtSMTPPassword": PASSWORD})
        choose(ui, "cmbSMTPSecurity", kind["sending"])
        self.assertEqual(ui.text("txtSMTPPort"), kind["port"])
        steps = self.try_account(ui, "cmdSMTPTest", certificate.fingerprint())
        self.assertTrue(any(step.startswith(f"Signed in as [{USER}]") for step in steps), steps)
        self.open_page(ui, 2)
        enter(ui, {"txtPOPServer": "127.0.0.1", "txtPOPUsername": USER, "txtPOPPassword": PASSWORD})
        choose(ui, "cmbPOPSecurity", kind["receiving"])
        self.assertEqual(ui.text("txtPOPPort"), kind["pop_port"])
        steps = self.try_account(ui, "cmdPOPTest", certificate.fingerprint())
        self.assertIn("The mailbox holds 2 messages.", steps)
        ui.click_row("lstOptions", 0)
        ui.check("chkNotify")
        ui.click("cmdOK", window="frmOptions")

    def circle(self, kind):
        with Servers() as servers:
            box = servers.dovecot.mailboxes[USER]
            box.put(letter("subscribe", "new@list.test", 1))
            box.put(letter("unsubscribe", "old@list.test", 2))
            with Application({"News": ["stays@list.test", "old@list.test"]}) as app, app.program() as ui:
                ui.wait_text("lblStatus", "Loaded [News]")
                self.enter_accounts(ui, kind, servers.certificate)
                ui.click("cmdAutoAdd")
                ui.wait_text("lblStatus", "POP3 check complete (+1, -1)")
                self.assertEqual(box.files(), [])
                ui.click("cmdCapturesAdd")
                ui.wait_text("lblStatus", "Pending list processing complete (+1, -1)")
                ui.click("cmdFileSave")
                ui.wait_text("lblStatus", "Saved [News]")
                compose(ui, "News of the week", "Dear readers.\n")
                self.assertIn("- The message was sent to 2 recipients", send(ui))
                self.assertEqual(files_with(app, PASSWORD), ["prefs.ini"])
                self.assertIn(f"SMTPTrusted={servers.certificate.fingerprint()} 127.0.0.1", preferences(app))
                ui.close("frmMain")
                self.assertEqual(ui.wait_end(), 0)
            delivered = servers.postfix.delivered(4)
            self.assertEqual({to: len(messages) for to, messages in delivered.items()},
                             {"new@list.test": 2, "old@list.test": 1, "stays@list.test": 1})
            self.assertEqual(servers.postfix.log().count(f"sasl_username={USER}") > 0, True)

    def test_with_starttls_and_stls(self):
        self.circle(STARTTLS)

    def test_with_tls_from_the_first_byte(self):
        self.circle(TLS)


def account(security, port, trusted, password=PASSWORD):
    return {"SMTP": {"SMTPServer": "127.0.0.1", "SMTPPort": port, "SMTPFrom": "The Editor",
                     "SMTPEmail": "editor@sender.test", "SMTPSecurity": security, "SMTPUsername": USER,
                     "SMTPPassword": password, "SMTPTrusted": f"{trusted} 127.0.0.1"},
            "POP3": {"POPServer": "127.0.0.1", "POPPort": 995, "POPUsername": USER, "POPPassword": password,
                     "POPSecurity": 2, "POPTrusted": f"{trusted} 127.0.0.1"}}


class TroubleTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.servers = Servers()
        cls.servers.__enter__()
        cls.addClassCleanup(cls.servers.__exit__)

    def start(self, prefs):
        app = self._enter(Application({"News": ["reader@list.test"]}, prefs))
        ui = self._enter(app.program())
        ui.wait_text("lblStatus", "Loaded [News]")
        return app, ui

    def _enter(self, context):
        entered = context.__enter__()
        self.addCleanup(context.__exit__, None, None, None)
        return entered

    def test_a_changed_certificate_is_shown_and_nothing_is_said_to_the_server(self):
        app, ui = self.start(account(2, 465, "ab" * 32))
        ui.click("cmdAutoAdd")
        ui.wait_window("frmTrust")
        self.assertIn("another certificate than the one that you trust", ui.text("txtCertificate", "frmTrust"))
        ui.click("cmdCancel", window="frmTrust")
        ui.answer("OK", text="POP3 check failed (error 10107 - ")
        self.assertNotIn("USER", "".join(app.status_log()))
        self.assertIn("POPTrusted=" + "ab" * 32, preferences(app))

    def test_a_wrong_password_stops_the_send_and_stands_in_no_file(self):
        wrong = "falsches Wort"
        app, ui = self.start(account(1, 587, self.servers.certificate.fingerprint(), wrong))
        compose(ui, "News", "Dear readers.\n")
        ui.trigger("mnuMessageSend")
        box = ui.wait_box()
        self.assertNotIn(wrong, box["text"])
        self.assertIn("535", box["text"])
        ui.answer("OK")
        self.assertEqual(ui.items("lstEmailList_2", window="frmMain"), [])
        ui.click("cmdAutoAdd", window="frmMain")
        box = ui.answer("OK", title="Varlo POP3 Error")
        self.assertNotIn(wrong, box["text"])
        self.assertEqual(files_with(app, wrong), ["prefs.ini"])

    def test_a_system_without_a_keyring_says_so_and_loses_no_password(self):
        app, ui = self.start(account(2, 465, "ab" * 32))
        before = preferences(app)
        ui.trigger("mnuMainPreferences")
        ui.wait_window("frmOptions")
        ui.check("chkKeyring")
        ui.click("cmdOK", window="frmOptions")
        ui.answer("OK", text="The passwords cannot be put into the system's keyring: ")
        ui.click("cmdCancel", window="frmOptions")
        self.assertEqual(preferences(app), before)


if __name__ == "__main__":
    isolation.run(unittest.main)
