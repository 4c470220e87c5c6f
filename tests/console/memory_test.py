#!/usr/bin/env python3
"""Every allocation of a run fails in turn: the run is done, or it tells what failed and leaves all files as they were.

    memory_test.py CONSOLE FAULT_LIBRARY SYSTEM_FOLDER [--most N] [--runs N] [--only NAME]

The first 20,000 allocations of each kind of run (--most), or N of them that are spread evenly (--runs).
"""
import argparse
import os
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
# The console's options, and the files that change. A drawing without the module, one that two threads read, one with the
# module; the standard and its tables read, the standard written; settings written, read and written again.
RUNS = {
    "plain": (["--no-module", "-o", "out.dxf", "-e", "-LAYER", "-e", "N", "-e", "new", "-e", "", "site.dxf"], ["out.dxf"]),
    "large": (["--no-module", "--in-place", "-e", "-LAYER", "-e", "N", "-e", "new", "-e", "", "large.dxf"], ["large.dxf"]),
    "drawing": (["--in-place", "--backup", "2", "-e", "UnFrozenAllLayer", "-e", "gxgd", "-e", "", "site.dxf"],
                ["site.dxf", "site.dxf.bak"]),
    "standard": (["-e", "gxsz", "-e", "中水给水", "-e", "系统属性...", "-e", "室内管材", "-e", "管线宽度=0.36", "-e", "OK",
                  "-e", "OK"], ["sys/pwx.qdsl"]),
    "settings": (["-e", "dcsz", "-e", "导出到指定文件夹", "-e", "OK", "-e", "my", "-e", "drsz", "-e", "2", "-e", "my"],
                 ["set.ini", "my/setting.ini", "my/pwx.qdsl", "my/pipe.dbf"]),
}
LARGE = ("0\nSECTION\n2\nTABLES\n0\nTABLE\n2\nLAYER\n70\n1\n0\nLAYER\n2\n0\n70\n0\n62\n7\n6\nCONTINUOUS\n0\nENDTAB\n0\nENDSEC\n"
         "0\nSECTION\n2\nENTITIES\n" + "0\nLINE\n8\n0\n10\n1.0\n20\n1.0\n11\n2.0\n21\n3.0\n" * 40000 + "0\nENDSEC\n0\nEOF\n")
CODES = (0, 1, 3, 4)
SETTINGS = "set.ini"


class Program:
    """The console, ready to run again and again in a folder."""

    def __init__(self, console, library, folder, words):
        to_child, self.asked = os.pipe()
        answers, from_child = os.pipe()
        self.errors = open(folder.parent / "errors", "ab")
        environment = dict(os.environ, LD_PRELOAD=str(library), QRS_SERVE=f"{to_child} {from_child}", HOME=str(folder),
                           XDG_CONFIG_HOME=str(folder), LC_ALL="C.UTF-8")
        self.process = subprocess.Popen([console, "--system", "sys", "--settings", "set.ini", *words], cwd=folder,
                                        env=environment, pass_fds=(to_child, from_child), stdin=subprocess.DEVNULL,
                                        stdout=subprocess.DEVNULL, stderr=self.errors)
        os.close(to_child)
        os.close(from_child)
        self.answers = open(answers, encoding="ascii")

    def run(self, failing):
        """The exit code (negative: the signal), the number of allocations, and the messages."""
        self.errors.truncate(0)
        os.write(self.asked, b"%d\n" % failing)
        status, made = map(int, self.answers.readline().split())
        messages = Path(self.errors.name).read_text(encoding="utf-8", errors="replace")
        return os.waitstatus_to_exitcode(status), made, messages

    def end(self):
        os.close(self.asked)
        self.process.wait()


def contents(folder):
    return {str(path.relative_to(folder)): path.read_bytes() for path in sorted(folder.rglob("*")) if path.is_file()}


def restore(folder, wanted):
    """Makes the files of the folder those wanted; tells the files that were there."""
    found = contents(folder)
    for name in found.keys() - wanted.keys():
        (folder / name).unlink()
    for name, content in wanted.items():
        if found.get(name) != content:
            (folder / name).write_bytes(content)
    return found


def is_part_of(some, all_lines):
    """Settings are written one by one: each is there whole or not at all."""
    return some is not None and set(some.splitlines()) <= set(all_lines.splitlines())


def faults(code, messages, found, before, after):
    """What is wrong with the outcome of a run."""
    if code not in CODES:
        yield f"ended with {code}"
    if code != 0 and "qrsconsole: " not in messages:
        yield "no message"
    for file in sorted(found.keys() | before.keys() | after.keys()):
        content = found.get(file)
        isPart = file == SETTINGS and is_part_of(content, after[file])
        if content not in (before.get(file), after.get(file)) and not isPart:
            yield f"{file}: neither as it was nor as it should be"
        elif code == 0 and content != after.get(file) and not messages:
            yield f"{file}: not written, and nothing said"


def check(name, console, library, system, options):
    words, written = RUNS[name]
    with tempfile.TemporaryDirectory(dir="/dev/shm" if os.path.isdir("/dev/shm") else None) as place:
        folder = Path(place) / "work"
        (folder / "my").mkdir(parents=True)
        shutil.copytree(system, folder / "sys")
        shutil.copy(ROOT / "examples/site.dxf", folder)
        if name == "large":
            (folder / "large.dxf").write_text(LARGE, encoding="ascii")
        before = contents(folder)
        program = Program(console, library, folder, words)
        code, made, messages = program.run(0)
        after = restore(folder, before)
        assert code == 0, (code, messages)
        for file in written:
            assert after[file] != before.get(file), file
        last = min(made, options.most)
        runs = min(options.runs or last, last)
        bad = done = 0
        for number in (1 + index * (last - 1) // max(runs - 1, 1) for index in range(runs)):
            code, _, messages = program.run(number)
            found = restore(folder, before)
            done += code == 0
            for fault in faults(code, messages, found, before, after):
                bad += 1
                print(f"{name}, allocation {number}: {fault}: {messages[:300]!r}", flush=True)
        program.end()
    print(f"{name}: {runs} of {made} allocations failed, {done} runs were done all the same, {bad} faults", flush=True)
    return bad


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("console", type=os.path.abspath)
    parser.add_argument("library", type=os.path.abspath)
    parser.add_argument("system")
    parser.add_argument("--most", type=int, default=20000)
    parser.add_argument("--runs", type=int)
    parser.add_argument("--only", choices=RUNS)
    options = parser.parse_args()
    names = [options.only] if options.only else RUNS
    sys.exit(sum(check(name, options.console, options.library, options.system, options) for name in names) != 0)


main()
