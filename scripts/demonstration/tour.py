"""The demonstration without a display: does the main job by itself, tells each step, takes a picture of it."""

import sample_requests
from application import compose
from driver import Program
from mailworld import GONE, MailWorld

LIST = "Newsletter"
LISTS = ("Members", "Newsletter", "Volunteers")
SUBJECT = "Open garden on Sunday – everybody welcome"
TEXT = """Dear friends,

on Sunday the garden gate stands open from ten o'clock. Bring cuttings to exchange; coffee is made. What to sow \
when stands in the calendar that comes with this message."""


class Tour:
    """One run through the main job. Each step checks what it shows: an AssertionError ends the run."""

    def __init__(self, place, world, ui):
        self._place, self._world, self._ui = place, world, ui
        self._steps = self._pictures = 0

    def run(self):
        for step in (self._start, self._fetch, self._process, self._save, self._compose, self._attach, self._send,
                     self._clean_up, self._end):
            step()

    # Telling

    def _tell(self, text):
        self._steps += 1
        print(f"\n{self._steps}. {text}", flush=True)

    @staticmethod
    def _detail(*lines):
        for line in lines:
            print(f"     {line}", flush=True)

    def _picture(self, name, window=None):
        """A picture of a window, or, without one, of the open box."""
        self._pictures += 1
        file = self._place.folder / f"{self._pictures:02}-{name}.png"
        if window:
            self._ui.grab(window, file)
        else:
            self._ui.grab_box(file)
        self._detail(f"picture: {self._place.shown(file)}")

    def _arrived(self, addresses):
        """Waits for a message to each of the addresses and to nobody else; tells of them."""
        found = self._world.wait_for(len(addresses))
        self._detail(*(f"arrived: {arrival}" for arrival in found))
        got, wanted = sorted(a.address.lower() for a in found), sorted(a.lower() for a in addresses)
        if got != wanted:
            raise AssertionError(f"messages for {got} instead of {wanted}")
        return found

    def _status(self, text):
        self._ui.wait_text("lblStatus", text, window="frmMain", seconds=60)
        self._detail(f"the program says: {text}")

    # Doing

    def _start(self):
        subscribers = self._place.read_list(LIST)
        self._ui.wait_text("lblStatusCurrent", f"{len(subscribers)} Current")
        self._tell(f"The program starts with the list \"{LIST}\" open: {len(subscribers)} subscribers.")
        self._detail("both mail servers want a name and a password, on an encrypted connection")
        self._picture("started", "frmMain")

    def _fetch(self):
        letters = len(self._world.requests.files())
        self._tell(f"{letters} letters lie in the mailbox {sample_requests.MAILBOX}; \"E-mail Account\" fetches them.")
        self._ui.trigger("mnuMainConsole")
        self._ui.wait_window("frmConsole")
        self._ui.click("cmdAutoAdd")
        self._status(f"POP3 check complete (+{len(sample_requests.ADDED)}, -{len(sample_requests.REMOVED)})")
        pending = self._ui.items("lstEmailList_2")
        expected = ["+" + a for a in sample_requests.ADDED] + ["-" + a for a in sample_requests.REMOVED]
        if pending != expected:
            raise AssertionError(f"the Pending list holds {pending} instead of {expected}")
        self._detail("the Pending list:", *(f"  {entry}" for entry in pending),
                     "left out: a second request of the same address, one without a usable sender, an unrelated letter",
                     f"letters left in the mailbox: {len(self._world.requests.files())}")
        self._picture("requests-fetched", "frmMain")
        self._ui.wait(lambda: "QUIT" in self._ui.text("txtConsole"), "end of the dialogue in the console")
        self._picture("console", "frmConsole")
        self._ui.close("frmConsole")

    def _process(self):
        self._tell("\"<<< Process Pending List\" applies the requests and sends a notification to each of the senders.")
        self._ui.click("cmdCapturesAdd")
        added, removed = sample_requests.ADDED, sample_requests.REMOVED
        self._status(f"Pending list processing complete (+{len(added)}, -{len(removed)})")
        self._arrived(added + removed)
        self._picture("requests-processed", "frmMain")

    def _save(self):
        self._ui.click("cmdFileSave")
        self._tell(f"\"Save\" writes the list: {len(self._saved())} subscribers.")
        self._status(f"Saved [{LIST}]")
        file = self._place.profile / "lists" / f"{LIST}.vlo"
        self._detail(f"file: {self._place.shown(file)}")
        self._picture("saved", "frmMain")

    def _saved(self):
        """The list's lines, once the new subscribers are in the file."""
        return self._ui.wait(lambda: sample_requests.ADDED[-1] in (saved := self._place.read_list(LIST)) and saved,
                             "saved list")

    def _compose(self):
        self._tell("A message to all lists is written.")
        compose(self._ui, SUBJECT, "", source="All Mailing Lists", to_name="Friends of the garden")
        self._ui.trigger("mnuInsSignature")
        self._ui.keys("txtMessage", "Ctrl+Home")
        self._ui.type("txtMessage", TEXT)
        self._detail(f"subject: {SUBJECT}", f"recipients: {self._ui.text('lblStatusRecipients', 'frmCompose')}")
        self._picture("message", "frmCompose")

    def _attach(self):
        self._tell(f"A file is attached: {self._place.shown(self._place.attachment)}")
        self._ui.trigger("mnuMessageAttach")
        self._ui.wait_window("frmAttach")
        self._ui.click("cmdAddFile", window="frmAttach")
        self._ui.answer_input(self._place.attachment, button="Open")
        self._ui.wait_text("lblFilesize", lambda shown: shown.startswith("1 Files"))
        self._picture("attachments", "frmAttach")
        self._ui.click("cmdOK", window="frmAttach")
        self._ui.wait(lambda: self._ui.get("picAttachments", "visible"), "attachment indicator")
        self._picture("message-with-file", "frmCompose")

    def _recipients(self):
        """Who is to get the message: everybody on the lists once, but the one whose mailbox is gone."""
        addresses = {address.lower(): address for name in LISTS for address in self._place.read_list(name)}
        return [address for key, address in addresses.items() if key != GONE]

    def _send(self):
        self._tell("\"Send Message\" sends it, one recipient at a time, nobody twice.")
        recipients = self._recipients()
        self._ui.trigger("mnuMessageSend")
        summary = self._ui.wait_box(f"The message was sent to {len(recipients)} recipients", seconds=60)
        self._detail(*(line for line in summary["text"].splitlines() if line))
        self._picture("summary")
        self._ui.answer("OK")
        self._ui.wait(lambda: "frmCompose" not in self._ui.window_names(), "closed compose window")
        for arrival in self._arrived(recipients):
            if arrival.attachments != [self._place.attachment.name]:
                raise AssertionError(f"{arrival} came without the file")

    def _clean_up(self):
        self._tell("The address that the mail server refused is on the Pending list now, to be removed.")
        if self._ui.items("lstEmailList_2") != ["-" + GONE]:
            raise AssertionError(f"the Pending list holds {self._ui.items('lstEmailList_2')}")
        self._detail(f"-{GONE}")
        self._picture("refused-address", "frmMain")
        self._ui.click("cmdCapturesAdd")
        self._status("Pending list processing complete (-1)")
        self._ui.click("cmdFileSave")
        self._status(f"Saved [{LIST}]")
        self._picture("end", "frmMain")

    def _end(self):
        self._ui.close("frmMain")
        code = self._ui.wait_end()
        if code != 0:
            raise AssertionError(f"the program ended with {code}: {self._ui.output()}")
        self._tell("The program is closed.")
        self._detail(f"messages that arrived: {len(self._world.arrivals())}, "
                     f"to be read in {self._place.shown(self._place.mail)}",
                     f"pictures: {self._pictures}, in {self._place.shown(self._place.folder)}",
                     f"lists, logs and the copy of the sent message: {self._place.shown(self._place.profile)}")


def drive(place):
    """Runs the tour; returns the exit code."""
    print("No display: the demonstration runs by itself. Nothing leaves this machine.", flush=True)
    try:
        with MailWorld(place.mail) as world:
            place.trust(world.certificate.fingerprint())
            with Program(place.program, cwd=place.program_folder) as ui:
                Tour(place, world, ui).run()
    finally:
        place.hand_over()
    return 0
