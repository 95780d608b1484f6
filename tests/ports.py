"""Ports on 127.0.0.1 for the servers that the end-to-end tests start."""
import socket


def free_port():
    """A port of 127.0.0.1 on which nothing listens (bound, then let go)."""
    with socket.socket() as s:
        s.bind(("127.0.0.1", 0))
        return s.getsockname()[1]
