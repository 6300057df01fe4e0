"""Private mail servers on the real ports: Postfix on 25, Dovecot on 110, and the mailboxes between them."""

import email
import email.policy
import hashlib
import os
import pathlib
import shutil
import signal
import socket
import ssl
import subprocess
import tempfile
import time

from isolation import Skip

OWNER = 65534  # the user "nobody": owns every mailbox
MASTER_CF = """\
127.0.0.1:{port} inet n - n - - smtpd
cleanup   unix       n - n - 0 cleanup
qmgr      unix       n - n 300 1 qmgr
rewrite   unix       - - n - - trivial-rewrite
bounce    unix       - - n - 0 bounce
defer     unix       - - n - 0 bounce
trace     unix       - - n - 0 bounce
anvil     unix       - - n - 1 anvil
proxymap  unix       - - n - - proxymap
tlsmgr    unix       - - n 1000? 1 tlsmgr
virtual   unix       - n n - - virtual
error     unix       - - n - - error
retry     unix       - - n - - error
discard   unix       - - n - - discard
smtp      unix       - - n - - smtp
showq     unix       n - n - - showq
flush     unix       n - n 1000? 0 flush
postlog   unix-dgram n - n - 1 postlogd
"""


# Encrypted, and only for those who sign in: after STARTTLS on 587, from the first byte on 465.
SUBMISSION_CF = """\
127.0.0.1:587 inet n - n - - smtpd -o smtpd_tls_security_level=encrypt {sasl}
127.0.0.1:465 inet n - n - - smtpd -o smtpd_tls_wrappermode=yes {sasl}
"""
SASL = ("-o smtpd_sasl_auth_enable=yes -o smtpd_sasl_type=dovecot -o smtpd_sasl_path={socket} -o smtpd_tls_auth_only=yes "
        "-o smtpd_client_restrictions=permit_sasl_authenticated,reject")


class Certificate:
    """A certificate that nobody has signed, made anew, for 127.0.0.1 and the names. The folder is the caller's."""

    def __init__(self, folder, names=("mail.test",)):
        self.file, self.key = pathlib.Path(folder) / "certificate.pem", pathlib.Path(folder) / "key.pem"
        alternatives = ",".join(["IP:127.0.0.1", *(f"DNS:{name}" for name in names)])
        subprocess.run([need("openssl"), "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1",
                        "-nodes", "-days", "2", "-subj", f"/CN={names[0]}", "-addext", f"subjectAltName={alternatives}",
                        "-keyout", str(self.key), "-out", str(self.file)], check=True, capture_output=True)

    def fingerprint(self):
        """The SHA-256 in hexadecimal digits."""
        return hashlib.sha256(ssl.PEM_cert_to_DER_cert(self.file.read_text())).hexdigest()


def wait_until(condition, seconds, what):
    """Returns the first true value of `condition`; fails with `what` after so many seconds."""
    deadline = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > deadline:
            raise AssertionError(f"after {seconds} s still no {what}")
        time.sleep(0.02)


def is_listening(port):
    with socket.socket() as probe:
        probe.settimeout(1)
        return probe.connect_ex(("127.0.0.1", port)) == 0


def need(command):
    """The path of a server's program; the test is skipped without it."""
    path = shutil.which(command, path=os.environ.get("PATH", "") + ":/usr/sbin:/usr/lib/postfix/sbin")
    if not path:
        raise Skip(f"{command} is not installed (./test installs it)")
    return path


class Maildir:
    """A mailbox folder that both servers know."""

    def __init__(self, folder):
        self.folder = pathlib.Path(folder)
        for part in ("", "new", "cur", "tmp"):
            path = self.folder / part
            path.mkdir(parents=True, exist_ok=True)
            os.chown(path, OWNER, OWNER)
        self._count = 0

    def files(self):
        return sorted([*(self.folder / "new").iterdir(), *(self.folder / "cur").iterdir()])

    def put(self, message):
        """Lays a message (bytes, or an EmailMessage) into the mailbox."""
        data = message if isinstance(message, bytes) else message.as_bytes(policy=email.policy.SMTP)
        self._count += 1
        name = f"{int(time.time())}.M{self._count:06d}P{os.getpid()}.test"
        temporary = self.folder / "tmp" / name
        temporary.write_bytes(data)
        os.chown(temporary, OWNER, OWNER)
        temporary.rename(self.folder / "new" / name)

    def empty(self):
        for path in self.files():
            path.unlink()

    def raw(self):
        return [path.read_bytes() for path in self.files()]

    def messages(self):
        """The messages, read by Python's e-mail package."""
        return [email.message_from_bytes(data, policy=email.policy.default) for data in self.raw()]

    def wait_for(self, count, seconds=30):
        """The messages, once there are so many of them."""
        wait_until(lambda: len(self.files()) >= count, seconds, f"{count} messages in {self.folder.name}")
        found = self.messages()
        if len(found) != count:
            raise AssertionError(f"{len(found)} messages in {self.folder.name} instead of {count}")
        return found


class Server:
    """A server in the foreground, as a child that is ended by its process id."""

    def __init__(self, folder=None):
        self.folder = pathlib.Path(folder or tempfile.mkdtemp(prefix="varlo-mail-"))
        self.folder.chmod(0o755)
        self._own_folder = folder is None
        self._process = None

    def start(self):
        raise NotImplementedError

    def log(self):
        return ""

    def __enter__(self):
        try:
            self.start()
        except BaseException:
            self.stop()
            raise
        return self

    def __exit__(self, *_):
        self.stop()

    def _run(self, command, port):
        if is_listening(port):
            raise AssertionError(f"something listens on port {port} already")
        self._process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                         stderr=subprocess.STDOUT)

        def ready():
            if self._process.poll() is not None:
                raise AssertionError(f"{command[0]} ended at once:\n{self.log()}")
            return is_listening(port)

        wait_until(ready, 20, f"answer on port {port}:\n{self.log()}")

    def stop(self):
        if self._process and self._process.poll() is None:
            self._process.send_signal(signal.SIGTERM)
            try:
                self._process.wait(10)
            except subprocess.TimeoutExpired:
                self._process.kill()
                self._process.wait()
        self._process = None
        if self._own_folder:
            shutil.rmtree(self.folder, ignore_errors=True)


class Postfix(Server):
    """Takes mail for every address of its domains. What has no mailbox of its own lies in the box `everybody`.

    `mailboxes` are addresses with a mailbox each, `refused` are refused with 550 at RCPT, `settings` are more lines
    of main.cf, such as {"smtpd_discard_ehlo_keywords": "pipelining"}. With a `certificate` and the `sasl` of a
    Dovecot it listens on the ports 587 and 465, too, for the users of that one.
    """

    def __init__(self, domains=("list.test", "other.test", "sender.test"), mailboxes=(), refused=(), settings=None,
                 port=25, folder=None, certificate=None, sasl=None):
        super().__init__(folder)
        self.certificate, self.sasl = certificate, sasl
        self.domains, self.refused, self.port = list(domains), list(refused), port
        self.settings = dict(settings or {})
        self._mail = self.folder / "mail"
        self.mailboxes = {address: Maildir(self._mail / address) for address in mailboxes}
        self.everybody = Maildir(self._mail / "everybody")
        self._config = self.folder / "config"

    def start(self):
        master = need("master")
        for part in ("config", "queue", "data", "log"):
            (self.folder / part).mkdir(exist_ok=True)
        shutil.chown(self.folder / "data", "postfix")
        self._make_queue()
        self._write_configuration()
        self._run([master, "-c", str(self._config), "-d"], self.port)

    def _make_queue(self):
        """The folders that "postfix check" would make; that script takes three seconds for it."""
        queue = self.folder / "queue"
        (queue / "pid").mkdir(exist_ok=True)
        for part in ("active", "bounce", "corrupt", "defer", "deferred", "flush", "hold", "incoming", "private",
                     "saved", "trace", "maildrop", "public"):
            (queue / part).mkdir(mode=0o700, exist_ok=True)
            shutil.chown(queue / part, "postfix")
        for part, mode in (("maildrop", 0o730), ("public", 0o710)):
            shutil.chown(queue / part, "postfix", "postdrop")
            (queue / part).chmod(mode)

    def _write_configuration(self):
        boxes = [f"{address} {address}/" for address in self.mailboxes]
        boxes += [f"@{domain} everybody/" for domain in self.domains]
        self._write("mailboxes", boxes)
        self._write("refused", [f"{address} 550 5.1.1 No such user here" for address in self.refused])
        submission = SUBMISSION_CF.format(sasl=SASL.format(socket=self.sasl)) if self.certificate else ""
        (self._config / "master.cf").write_text(MASTER_CF.format(port=self.port) + submission)
        lines = {
            "compatibility_level": "3.6",
            "queue_directory": self.folder / "queue",
            "data_directory": self.folder / "data",
            "maillog_file": self.folder / "log" / "mail.log",
            "maillog_file_prefixes": self.folder,
            "myhostname": "mail.test",
            "mydestination": "",
            "mynetworks": "127.0.0.0/8",
            "inet_protocols": "ipv4",
            "disable_dns_lookups": "yes",
            "alias_maps": "",
            "local_recipient_maps": "",
            "virtual_mailbox_domains": " ".join(self.domains),
            "virtual_mailbox_base": self._mail,
            "virtual_mailbox_maps": f"texthash:{self._config}/mailboxes",
            "virtual_mailbox_limit": "0",
            "virtual_uid_maps": f"static:{OWNER}",
            "virtual_gid_maps": f"static:{OWNER}",
            "message_size_limit": "104857600",
            "smtpd_recipient_restrictions":
                f"check_recipient_access texthash:{self._config}/refused, reject_unauth_destination",
            **({"smtpd_tls_cert_file": self.certificate.file, "smtpd_tls_key_file": self.certificate.key}
               if self.certificate else {}),
            **self.settings,
        }
        self._write("main.cf", [f"{key} = {value}" for key, value in lines.items()])

    def _write(self, name, lines):
        (self._config / name).write_text("".join(f"{line}\n" for line in lines))

    def log(self):
        path = self.folder / "log" / "mail.log"
        return path.read_text(errors="replace") if path.exists() else ""

    def empty(self):
        for box in (self.everybody, *self.mailboxes.values()):
            box.empty()

    def delivered(self, count, seconds=60):
        """Once `count` messages lie in all mailboxes together: a dictionary from recipient to its messages."""
        boxes = [self.everybody, *self.mailboxes.values()]
        wait_until(lambda: sum(len(box.files()) for box in boxes) >= count, seconds, f"{count} messages delivered")
        by_recipient = {}
        for box in boxes:
            for message in box.messages():
                by_recipient.setdefault(str(message["Delivered-To"]), []).append(message)
        found = sum(len(messages) for messages in by_recipient.values())
        if found != count:
            raise AssertionError(f"{found} messages delivered instead of {count}")
        return by_recipient


class Dovecot(Server):
    """Serves mailboxes by POP3. `users` is a dictionary from user name to password. With a `certificate` it offers
    STLS, encrypts on port 995, and says to a Postfix at `sasl` who may send."""

    def __init__(self, users, mailboxes=None, settings="", port=110, folder=None, certificate=None):
        super().__init__(folder)
        self.certificate, self.sasl = certificate, self.folder / "sasl"
        self.users, self.port, self.settings = dict(users), port, settings
        # A mailbox given here (one of Postfix's) is served under that user's name.
        self.mailboxes = {user: (mailboxes or {}).get(user) or Maildir(self.folder / "mail" / user) for user in users}

    def start(self):
        dovecot = need("dovecot")
        if not pathlib.Path("/usr/lib/dovecot/pop3").exists():
            raise Skip("Dovecot's POP3 server is not installed (./test installs it)")
        (self.folder / "run").mkdir(exist_ok=True)
        (self.folder / "state").mkdir(exist_ok=True)
        self._write_users()
        (self.folder / "dovecot.conf").write_text(self._configuration())
        self._run([dovecot, "-F", "-c", str(self.folder / "dovecot.conf")], self.port)

    def _write_users(self):
        lines = []
        for user, password in self.users.items():
            if any(c in password for c in ":\n"):
                raise ValueError("the users' file has no room for a colon in a password")
            box = self.mailboxes[user].folder
            lines.append(f"{user}:{{PLAIN}}{password}:{OWNER}:{OWNER}::{self.folder}::userdb_mail=maildir:{box}\n")
        (self.folder / "users").write_text("".join(lines))

    def _configuration(self):
        return f"""\
base_dir = {self.folder}/run
state_dir = {self.folder}/state
log_path = {self.folder}/dovecot.log
protocols = pop3
listen = 127.0.0.1
{self._encryption()}
disable_plaintext_auth = {"yes" if self.certificate else "no"}
first_valid_uid = 1
passdb {{
  driver = passwd-file
  args = username_format=%u {self.folder}/users
}}
userdb {{
  driver = passwd-file
  args = username_format=%u {self.folder}/users
}}
service pop3-login {{
  chroot =
  inet_listener pop3 {{
    port = {self.port}
  }}
  inet_listener pop3s {{
    port = {995 if self.certificate else 0}
  }}
}}
service anvil {{
  chroot =
}}
{self.settings}
"""

    def _encryption(self):
        if not self.certificate:
            return "ssl = no"
        return f"""\
ssl = required
ssl_cert = <{self.certificate.file}
ssl_key = <{self.certificate.key}
auth_mechanisms = plain login cram-md5 scram-sha-256
service auth {{
  unix_listener {self.sasl} {{
    mode = 0666
  }}
}}"""

    def log(self):
        path = self.folder / "dovecot.log"
        return path.read_text(errors="replace") if path.exists() else ""
