#!/usr/bin/env python3
"""Types at the console's prompt through a pseudo-terminal: Chinese answers, ^C, asking before QUIT,
completion, history; and a reader that goes away.

    prompt_test.py CONSOLE [--plain]    plain: where the system edits the lines, without completion, history and ^D
"""

import os
import pty
import re
import select
import shutil
import subprocess
import sys
import tempfile
import time


PLAIN = "--plain" in sys.argv
BUILDING = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "examples", "building.dxf")


def readable(shown):
    """What a terminal was sent, with moves to the right as blanks and without other control sequences."""
    shown = re.sub(r"\x1b\[(\d*)C", lambda move: " " * int(move.group(1) or 1), shown)
    return re.sub(r"\x1b\[[?\d;]*[A-Za-z]", "", shown)


class Typist:
    def __init__(self, program, folder):
        self.sent, self.seen, self.mark = b"", "", 0
        environment = dict(os.environ, TERM="xterm", LC_ALL="C.UTF-8", XDG_CONFIG_HOME=folder)
        self.pid, self.terminal = pty.fork()
        if self.pid == 0:
            os.chdir(folder)
            os.execve(program, [program], environment)

    def types(self, text):
        os.write(self.terminal, (text.replace("\n", "\r") if PLAIN else text).encode())

    def sees(self, text, seconds=20):
        """Waits until the text appears after what was seen before."""
        end = time.monotonic() + seconds
        while self.seen.find(text, self.mark) < 0:
            ready, _, _ = select.select([self.terminal], [], [], max(0, end - time.monotonic()))
            if not ready:
                sys.exit("not seen: %r in %r" % (text, self.seen[self.mark:]))
            try:
                self.sent += os.read(self.terminal, 4096)
                self.seen = self.sent.decode("utf-8", "replace")
                self.seen = readable(self.seen) if PLAIN else self.seen
            except OSError:
                sys.exit("ended before %r in %r" % (text, self.seen[self.mark:]))
        self.mark = self.seen.find(text, self.mark) + len(text)

    def ends(self):
        try:
            while os.read(self.terminal, 4096):
                pass
        except OSError:
            pass
        return os.waitstatus_to_exitcode(os.waitpid(self.pid, 0)[1])


def session(program, folder):
    typist = Typist(program, folder)
    typist.sees("Command: ", 60)
    typist.types("-LAYER" if PLAIN else "-laye\t")
    typist.sees("LAYER")
    typist.types("\nN\n管道一\n?\n管*\n")
    typist.sees('"管道一"')
    typist.sees("Enter an option")
    typist.types("OFF\n")
    typist.sees("turn off")
    typist.types("half")
    typist.sees("alf")
    before = typist.mark
    typist.types("\x03")
    typist.sees("*Cancel*")
    assert "turn off" not in typist.seen[before:typist.mark], "the prompt again"
    typist.sees("Command: ")
    # Esc cancels as well, also when the next key follows at once.
    typist.types("UnLockSelLayer\n")
    typist.sees("全部>")
    typist.types("\x1b\x1b")
    typist.sees("*Cancel*")
    typist.sees("Command: ")
    typist.sees("Command: ")
    assert "Command: *Cancel*" not in typist.seen, "nothing to cancel at an empty command prompt"
    if not PLAIN:
        typist.types("nosuch\x03")
        typist.sees("*Cancel*")
        typist.sees("Command: ")
    typist.types("-LAYR\n")
    typist.sees('Unknown command "-LAYR". Did you mean -LAYER?')
    typist.sees("Command: ")
    # Enter repeats the last command and says which; what that command sent to follow it is none of the user's.
    typist.types("UnLockSelLayer\n\n")
    typist.sees("Regenerating model.")
    typist.sees("Command: ")
    typist.types("\n")
    typist.sees("UnLockSelLayer")
    typist.sees("全部>")
    typist.types("\x03")
    typist.sees("Command: ")
    typist.types("CTAB\n")
    typist.sees("Enter new value for CTAB")
    typist.types("\n")
    typist.sees("Command: ")
    # Something was changed: quitting asks.
    typist.types("QUIT\n" if PLAIN else "\x04")
    typist.sees("QUIT")
    typist.sees("discard all changes")
    typist.types("\n")
    typist.sees("Command: ")
    typist.types("QUIT\nY\n")
    # A command that failed at the prompt is no failure of the session.
    assert typist.ends() == 0


def completion(program, folder):
    """Tab completes what is asked for; each row: what is typed at which prompt, and what it becomes."""
    drawings = os.path.join(folder, "图 纸")
    os.mkdir(drawings)
    shutil.copy(BUILDING, os.path.join(drawings, "首层 a.dxf"))
    open(os.path.join(drawings, "首层.txt"), "w").close()
    typist = Typist(program, folder)
    typist.sees("HELP or ?")
    typist.sees("Drawing: new. Standard: ")
    for typed, becomes in (("unfrozena\t", "UnFrozenAllLayer"), ("gx\t\t", "gxfz  gxgd  gxsz"), ("OPEN 图\t首\t", "层 a.dxf"),
                           ("setvar cla\t", "CLAYER"), ("clay\t", "CLAYER"), ("HELP GXS\t", "gxsz"), ("'zo\t", "ZOOM")):
        typist.sees("Command: ")
        typist.types(typed)
        typist.sees(becomes)
        typist.types("\x03")
        typist.sees("*Cancel*")
    for answer, prompt in (("OPEN", "to open: "), ("图\t\t", "Command: "), ("-LAYER", "Enter an option"),
                           ("'help GXS\t", "gxsz: "), ("fr\t", "to freeze"),
                           ("建筑-房\t,公用-图\t", "Enter an option"), ("?", "to list"), ("公用-图\t", "frozen")):
        typist.types(answer + "\n")
        typist.sees(prompt)
    typist.types("\n")
    typist.sees("Command: ")
    typist.types("LAYOUT\n")
    typist.sees("option")
    typist.types("s\t\n")
    typist.sees("make current")
    typist.types("布\t\n")
    typist.sees("Regenerating layout.")
    typist.types("QUIT\nY\n")
    assert typist.ends() == 0


def history(program, folder):
    typist = Typist(program, folder)
    typist.sees("Command: ")
    typist.types("\x1b[A")
    typist.sees("Y")
    typist.types("\x1b[A")
    typist.sees("QUIT")
    typist.types("\n")
    assert typist.ends() == 0


def closed_pipe(program, folder):
    """A reader that goes away (| head) is no failure, and the drawing is written all the same."""
    drawing = os.path.join(folder, "a.dxf")
    for arguments, code in ((["--in-place", "a.dxf"], 0), (["--in-place", "--list", "list"], 0), (["--info", "a.dxf"], 0),
                            (["--help"], 0), (["nosuch.dxf"], 3)):
        shutil.copy(BUILDING, drawing)
        with open(os.path.join(folder, "list"), "w") as listed:
            listed.write("a.dxf\n")
        reads = arguments[0] in ("--info", "--help")
        arguments += [] if reads else ["-e", "UnFrozenAllLayer", "-e", "REGEN"]
        reader, writer = os.pipe()
        os.close(reader)
        ran = subprocess.run([program] + arguments, cwd=folder, stdout=writer, stderr=subprocess.PIPE, timeout=60,
                             env=dict(os.environ, XDG_CONFIG_HOME=folder))
        os.close(writer)
        assert ran.returncode == code, (arguments, ran)
        assert b"cannot be written" not in ran.stderr, (arguments, ran)
        with open(drawing, "rb") as left, open(BUILDING, "rb") as given:
            assert (left.read() == given.read()) == (reads or code != 0), arguments


def main():
    folder = tempfile.mkdtemp()
    try:
        os.mkdir(os.path.join(folder, "qrs_pipeSystem"))
        if not PLAIN:
            closed_pipe(sys.argv[1], folder)
        session(sys.argv[1], folder)
        if not PLAIN:
            history(sys.argv[1], folder)
            completion(sys.argv[1], folder)
    finally:
        shutil.rmtree(folder)


main()
