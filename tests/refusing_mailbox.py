"""An aiosmtpd handler for mail_test.py: a Maildir (aiosmtpd's Mailbox) that
refuses every recipient whose local part begins with "no" ("nobody@...",
"noone@..."), as a server refuses an unknown user, and takes the others.

    python3 -m aiosmtpd -n -l 127.0.0.1:PORT -c refusing_mailbox.RefusingMailbox MAILDIR
(with this folder on PYTHONPATH)
"""
from aiosmtpd.handlers import Mailbox


class RefusingMailbox(Mailbox):
    async def handle_RCPT(self, server, session, envelope, address, rcpt_options):
        if address.startswith("no"):
            return "550 5.1.1 No such user here"
        envelope.rcpt_tos.append(address)
        return "250 OK"
