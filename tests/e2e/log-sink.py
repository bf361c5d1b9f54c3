#!/usr/bin/env python3
# Stands in for the system logger: binds a datagram socket at SOCKET and writes every message it
# receives to OUTPUT, one line each, as "daemon.notice qv-netconf: TEXT" (priority decoded, time
# and pid left out, so cases can hold the exact lines). Runs until SIGTERM, then takes what is
# still queued and ends.
#   log-sink.py SOCKET OUTPUT
import os
import signal
import socket
import sys

MESSAGE_SIZE = 8192
POLL_SECONDS = 0.05
SEVERITIES = "emerg alert crit err warning notice info debug".split()
FACILITIES = "kern user mail daemon auth syslog lpr news uucp cron authpriv ftp".split()


def decode(raw):
    # "<PRI>Mmm dd hh:mm:ss IDENT[PID]: TEXT", as syslog(3) sends it; bytes kept as they came.
    text = raw.decode("latin-1").removesuffix("\n")
    close = text.find(">")
    colon = text.find(": ", close)
    if not text.startswith("<") or close < 0 or colon < 0:
        return "unparsed " + text
    facility, severity = divmod(int(text[1:close]), 8)
    name = FACILITIES[facility] if facility < len(FACILITIES) else str(facility)
    ident = text[close + 1:colon].split(" ")[-1].split("[")[0]
    return f"{name}.{SEVERITIES[severity]} {ident}: {text[colon + 2:]}"


def main(path, output):
    stopped = []
    signal.signal(signal.SIGTERM, lambda *_: stopped.append(True))
    sink = socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM)
    sink.bind(path)
    sink.settimeout(POLL_SECONDS)
    with open(output, "w", encoding="latin-1") as out:
        # Read as messages come, so that a burst never fills the socket's queue. The stop comes
        # after the program that logs has ended: what it sent is then all queued.
        while True:
            last = bool(stopped)
            if last:
                sink.setblocking(False)
            try:
                while True:
                    out.write(decode(sink.recv(MESSAGE_SIZE)) + "\n")
            except (TimeoutError, BlockingIOError):
                if last:
                    break
    os.unlink(path)


main(*sys.argv[1:])
