"""The letters that lie in the demonstration's mailbox of requests."""

import email.message
import email.policy
import email.utils

MAILBOX = "requests@garden.example"  # what the letters are addressed to

# Subject, the sender's name, the sender's address. Which senders the program takes depends on the places of the angle
# brackets, too (ExtractAddress): a name that is changed here may turn its letter into one that is left out.
SUBSCRIBE = [("subscribe", "Zofia Żółć", "zofia.zolc@weiden.example"),
             ("Subscribe", "Jürgen Größl", "j.groessl@garden.example"),
             ("subscribe", "佐藤 花", "hana.sato@posy.test"),
             ("  SUBSCRIBE  ", "", "willow@posy.test")]
UNSUBSCRIBE = [("unsubscribe", "Erika", "erika@garden.example"),
               ("Unsubscribe", "Óscar Muñoz", "oskar@weiden.example")]
DUPLICATE = ("subscribe", "Zofia Żółć", "Zofia.Zolc@weiden.example")  # the first one again, in other letter case
UNUSABLE = "nobody in particular"  # what stands for the sender's address in one letter
UNRELATED = ("When do the roses bloom?", "Tom Heath", "tom.heath@posy.test")

ADDED = [address for _, _, address in SUBSCRIBE]
REMOVED = [address for _, _, address in UNSUBSCRIBE]


def _letter(number, subject, name, address):
    message = email.message.EmailMessage(policy=email.policy.SMTP)
    message["Received"] = "from somewhere.test by mail.test; Sat, 21 Nov 2026 10:00:00 +0000"
    message["Message-ID"] = email.utils.make_msgid(domain="mail.test")
    message["From"] = email.utils.formataddr((name, address))
    message["To"] = MAILBOX
    message["Subject"] = subject
    message["Date"] = f"Sat, 21 Nov 2026 10:{number:02}:00 +0000"
    message.set_content("Thank you!\n")
    return message.as_bytes()


def _without_address(number):
    """Written by hand: Python's e-mail package makes no letter with a sender that is none."""
    usable = "requester@posy.test"
    return _letter(number, "subscribe", "", usable).replace(usable.encode(), UNUSABLE.encode())


def letters():
    """All letters as they lie in a mailbox, in the order in which they came."""
    senders = [*SUBSCRIBE[:2], UNRELATED, *UNSUBSCRIBE, DUPLICATE, *SUBSCRIBE[2:]]
    made = [_letter(number, *sender) for number, sender in enumerate(senders, 1)]
    return [*made, _without_address(len(made) + 1)]


def more_letters(turn):
    """What comes after the mailbox was emptied for the `turn`-th time: two visitors join, an earlier one leaves."""
    joining = [("subscribe", "", f"visitor{number}@posy.test") for number in (2 * turn - 1, 2 * turn)]
    leaving = ("unsubscribe", "", SUBSCRIBE[-1][2] if turn == 1 else f"visitor{2 * turn - 2}@posy.test")
    return [_letter(10 + number, *sender) for number, sender in enumerate([*joining, leaving])]
