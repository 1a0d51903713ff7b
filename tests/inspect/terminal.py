"""Runs a command on a terminal of its own: terminal.py COMMAND [WORD...]. Prints what the terminal shows, without the carriage
returns that it adds, and ends as the command did."""
import os
import pty
import sys

shown = bytearray()
pid, terminal = pty.fork()
if pid == 0:
    os.execvp(sys.argv[1], sys.argv[1:])
while True:
    try:
        data = os.read(terminal, 65536)
    except OSError:
        data = b""
    if not data:
        break
    shown.extend(data)
sys.stdout.buffer.write(shown.replace(b"\r\n", b"\n"))
sys.stdout.flush()
sys.exit(os.waitstatus_to_exitcode(os.waitpid(pid, 0)[1]))
