"""The mail servers of the demonstration: every address in the world has its mailbox here, nothing leaves."""

import dataclasses
import email
import email.policy
import pathlib
import tempfile

import sample_requests
from mailhost import Certificate, Dovecot, Postfix, wait_until

USER, PASSWORD = "requests", "marigold"  # as in the sample profile
GONE = "moved.away@garden.example"  # on a list, but the server knows no such mailbox


@dataclasses.dataclass
class Arrival:
    """A message that came to somebody, and the file in which it can be read."""

    address: str
    subject: str
    attachments: list
    file: pathlib.Path

    def __str__(self):
        files = f", with {', '.join(self.attachments)}" if self.attachments else ""
        return f"{self.address}: \"{self.subject}\"{files}"


class MailWorld:
    """Both servers, which encrypt and want a name and a password. Use it in a `with`: they end with it. `folder` is where copies of what arrives are kept, because
    the servers' own folders are not for everybody to read, and go at the end."""

    def __init__(self, folder):
        self.folder = pathlib.Path(folder)
        self._secrets = tempfile.TemporaryDirectory(prefix="varlo-certificate-")
        self.certificate = Certificate(self._secrets.name)
        self.dovecot = Dovecot({USER: PASSWORD}, certificate=self.certificate)
        self.postfix = Postfix(domains=(), refused=[GONE], certificate=self.certificate, sasl=self.dovecot.sasl)
        # Whatever address the newcomer types is one of this server's own, so that no message ever looks for a way out.
        self.postfix.settings.update({"virtual_mailbox_domains": "static:all",
                                      "virtual_mailbox_maps": "static:everybody/"})
        self.requests = self.dovecot.mailboxes[USER]
        self._seen = {}

    def __enter__(self):
        for letter in sample_requests.letters():
            self.requests.put(letter)
        try:
            self.postfix.start()
            self.dovecot.start()
        except BaseException:
            self.stop()
            raise
        return self

    def __exit__(self, *_):
        self.stop()

    def stop(self):
        self.dovecot.stop()
        self.postfix.stop()
        self._secrets.cleanup()

    def collect(self):
        """Copies what arrived since the last call; returns it."""
        fresh = [path for path in self.postfix.everybody.files() if path.name not in self._seen]
        for path in fresh:
            self._seen[path.name] = self._keep(path.read_bytes())
        return [self._seen[path.name] for path in fresh]

    def _keep(self, data):
        message = email.message_from_bytes(data, policy=email.policy.default)
        address = str(message["Delivered-To"])
        folder = self.folder / address.lower().replace("/", "_")
        folder.mkdir(parents=True, exist_ok=True)
        file = folder / f"{len(list(folder.iterdir())) + 1}.eml"
        file.write_bytes(data)
        attachments = [part.get_filename() or "a file without a name" for part in message.iter_attachments()]
        return Arrival(address, str(message["Subject"]), attachments, file)

    def arrivals(self):
        """Everything that was collected, by address."""
        return sorted(self._seen.values(), key=lambda arrival: (arrival.address.lower(), str(arrival.file)))

    def wait_for(self, count, seconds=60):
        """The next `count` messages, once they arrived."""
        found = []

        def all_here():
            found.extend(self.collect())
            return len(found) >= count

        wait_until(all_here, seconds, f"{count} messages delivered")
        if len(found) != count:
            raise AssertionError(f"{len(found)} messages arrived instead of {count}")
        return sorted(found, key=lambda arrival: arrival.address.lower())
