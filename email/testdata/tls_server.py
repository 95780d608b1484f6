"""A real SMTP server (aiosmtpd) on 127.0.0.1 that speaks TLS and asks for
a login, and delivers into a Maildir.

usage: tls_server.py WORKDIR [MAILDIR]
WORKDIR/mode is "starttls" (STARTTLS required before anything else) or
"implicit" (TLS from the first byte); WORKDIR/server.pem and server.key are
the certificate and its key. The one login is "ops" with the password in
WORKDIR/password. Mail goes to MAILDIR, by default WORKDIR/maildir (the
demo, scripts/demo, runs this server too); the port is written to
WORKDIR/port once the server takes connections. Runs until it is killed.
"""
import os
import ssl
import sys

from aiosmtpd.controller import Controller
from aiosmtpd.handlers import Mailbox
from aiosmtpd.smtp import AuthResult

from serve import serve

work = sys.argv[1]
mode = open(os.path.join(work, "mode")).read().strip()
password = open(os.path.join(work, "password")).read().strip().encode()

context = ssl.create_default_context(ssl.Purpose.CLIENT_AUTH)
context.load_cert_chain(os.path.join(work, "server.pem"), os.path.join(work, "server.key"))


def authenticator(server, session, envelope, mechanism, auth_data):
    return AuthResult(success=auth_data.login == b"ops" and auth_data.password == password)


handler = Mailbox(sys.argv[2] if len(sys.argv) > 2 else os.path.join(work, "maildir"))


def controller(port):
    common = dict(hostname="127.0.0.1", port=port, authenticator=authenticator, auth_required=True)
    if mode == "implicit":
        # aiosmtpd counts only STARTTLS as TLS for auth_require_tls, and
        # would offer no AUTH here; the whole connection is encrypted anyway.
        return Controller(handler, ssl_context=context, auth_require_tls=False, **common)
    return Controller(handler, tls_context=context, require_starttls=True, auth_require_tls=True,
                      **common)


serve(work, controller)
