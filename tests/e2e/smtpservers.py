"""Small SMTP servers that behave as real ones seldom do, and note what the client said."""

import dataclasses
import socket
import threading

CLOSE = object()    # end the connection without a word
SILENCE = object()  # say nothing more, and keep the connection open


@dataclasses.dataclass
class Message:
    sender: str
    recipients: list
    data: bytes  # as received, dots unstuffed


class Connection:
    """One connection: what the client said, and which messages were taken."""

    def __init__(self):
        self.commands = []
        self.messages = []


class ScriptedSmtp:
    """A server on 127.0.0.1. `answer(connection, verb, argument)` decides: a reply line, CLOSE, SILENCE, or None for
    the usual reply; the verb is "connect" for the greeting, "." for the end of a message, and else in capitals.
    A reply that begins with 421 is the last one of its connection.
    """

    def __init__(self, answer=None, pipelining=True, port=25):
        self._answer = answer or (lambda connection, verb, argument: None)
        self._pipelining = pipelining
        self._port = port
        self._listener = None
        self._stopping = threading.Event()
        self._sockets = []
        self._lock = threading.Lock()
        self.connections = []
        self.violations = []  # what no client may do

    def __enter__(self):
        self._listener = socket.create_server(("127.0.0.1", self._port), backlog=50)
        threading.Thread(target=self._accept, daemon=True).start()
        return self

    def __exit__(self, *_):
        self._stopping.set()
        self._listener.shutdown(socket.SHUT_RDWR)
        self._listener.close()
        with self._lock:
            for client in self._sockets:
                _shut(client)

    @property
    def messages(self):
        """All messages taken, over all connections."""
        return [message for connection in self.connections for message in connection.messages]

    def _accept(self):
        while not self._stopping.is_set():
            try:
                client, _ = self._listener.accept()
            except OSError:
                return  # stopped
            connection = Connection()
            with self._lock:
                self._sockets.append(client)
                self.connections.append(connection)
            threading.Thread(target=self._serve, args=(client, connection), daemon=True).start()

    def _serve(self, client, connection):
        try:
            _Dialogue(self, client, connection).run()
        except OSError:
            pass  # the client, or the end of the test, closed the connection
        finally:
            client.close()


def _shut(client):
    try:
        client.shutdown(socket.SHUT_RDWR)
    except OSError:
        pass  # closed already


class _Dialogue:
    def __init__(self, server, client, connection):
        self._server, self._client, self._connection = server, client, connection
        self._received = b""
        self._sender, self._recipients = None, []

    def run(self):
        going = self._reply("connect", "", "220 mail.test ESMTP")
        while going:
            line = self._line()
            if line is None:
                return
            verb, _, argument = line.partition(" ")
            going = self._command(verb.upper(), argument)

    def _command(self, verb, argument):
        self._connection.commands.append(f"{verb} {argument}".strip())
        if self._received and not self._server._pipelining:
            self._server.violations.append(f"sent more behind {verb} without waiting for the reply")
        if verb == "DATA" and self._recipients:
            return self._reply("DATA", "", "354 go ahead", ) and self._take_message()
        return self._reply(verb, argument, self._usual(verb, argument))

    def _usual(self, verb, argument):
        if verb == "EHLO":
            extensions = ["PIPELINING"] if self._server._pipelining else []
            lines = ["mail.test", *extensions, "8BITMIME"]
            return "\r\n".join(f"250{'-' if i + 1 < len(lines) else ' '}{text}" for i, text in enumerate(lines))
        if verb == "MAIL":
            self._sender, self._recipients = _address(argument), []
        if verb == "RCPT" and self._sender is None or verb == "DATA":
            return "503 5.5.1 bad sequence of commands"
        if verb == "RSET":
            self._sender, self._recipients = None, []
        known = {"HELO": "250 mail.test", "MAIL": "250 2.1.0 ok", "RCPT": "250 2.1.5 ok", "RSET": "250 2.0.0 ok",
                 "NOOP": "250 2.0.0 ok", "QUIT": "221 2.0.0 bye"}
        return known.get(verb, "500 5.5.2 unknown command")

    def _reply(self, verb, argument, usual):
        """Answers; false when the connection is over."""
        answer = self._server._answer(self._connection, verb, argument)
        answer = usual if answer is None else answer
        if answer is CLOSE:
            return False
        if answer is SILENCE:
            self._server._stopping.wait()
            return False
        if verb == "RCPT" and answer.startswith("25"):
            self._recipients.append(_address(argument))
        self._client.sendall(answer.encode() + b"\r\n")
        return verb != "QUIT" and not answer.startswith("421")

    def _take_message(self):
        data = b""
        while True:
            line = self._line(keep=True)
            if line is None:
                return False
            if line == b".\r\n":
                break
            data += line[1:] if line.startswith(b".") else line
        self._connection.messages.append(Message(self._sender, self._recipients, data))
        self._sender, self._recipients = None, []
        count = len(self._connection.messages)
        return self._reply(".", "", f"250 2.0.0 taken as number {count}")

    def _line(self, keep=False):
        while b"\n" not in self._received:
            more = self._client.recv(65536)
            if not more:
                return None
            self._received += more
        line, _, self._received = self._received.partition(b"\n")
        if not line.endswith(b"\r"):
            self._server.violations.append(f"line without a carriage return: {line!r}")
        return line + b"\n" if keep else line.rstrip(b"\r").decode("utf-8", "replace")


def _address(argument):
    return argument[argument.find("<") + 1:argument.rfind(">")]


def refuses_every_recipient(_connection, verb, _argument):
    return "550 5.1.1 no such user" if verb == "RCPT" else None


def closes_after(count):
    """Takes so many messages on a connection, then closes it without a word."""

    def answer(connection, verb, _argument):
        return CLOSE if verb == "MAIL" and len(connection.messages) >= count else None

    return answer


def says_once(verb, reply):
    """Gives `reply` (a line, CLOSE or SILENCE) to the first `verb` of all, and behaves from then on."""
    said = threading.Event()

    def answer(_connection, given, _argument):
        if given != verb or said.is_set():
            return None
        said.set()
        return reply

    return answer


def busy_once(verb="MAIL"):
    """Sends the first client away for a while."""
    return says_once(verb, "421 4.3.2 try again later")


def silent_at(verb):
    """Never answers this."""
    return lambda _connection, given, _argument: SILENCE if given == verb else None
