#!/usr/bin/env python3
"""The options of --help are those of the manual pages, of docs/console and of the completion, which knows all commands, too.

    options.py CONSOLE COMPLETION

The manual pages are also formatted: the formatter must have nothing to say.
"""
import os
import re
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
MANUALS = (ROOT / "docs/man/qrsconsole.1", ROOT / "docs/man/zh_CN/qrsconsole.1")
PAGES = (ROOT / "docs/console.md", ROOT / "docs/console.zh-CN.md")
OPTION = re.compile(r"(?<![\w-])--?[A-Za-z][\w-]*")


def options_of(lines):
    return {option for line in lines for option in OPTION.findall(line)}


def described_in_help(text):
    return options_of(line.split()[0] for line in text.splitlines() if re.match(r" +-", line))


def described_in_manual(text):
    return options_of(re.findall(r"^\.TP\n(\..*)$", text.replace("\\-", "-"), re.MULTILINE))


def described_in_page(text):
    section = re.search(r"^## (?:Options|选项)$(.*?)^## ", text, re.MULTILINE | re.DOTALL)
    return options_of(re.findall(r"^\| (`-.*?) \|", section.group(1), re.MULTILINE))


def registered_commands():
    commands = set()
    for file in ("module/frame/cmdtable.cpp", "host/commands/registration.cpp", "console/standard.cpp", "console/help.cpp"):
        text = (ROOT / file).read_text(encoding="utf-8")
        commands |= set(re.findall(r'^    \{L"([\w-]+)", (?:ACRX|&command)', text, re.MULTILINE))
        commands |= set(re.findall(r'addCommand\(L"\w+", L"([\w-]+)"', text))
    # Short forms are typed faster than completed.
    return {command for command in commands if len(command.lstrip("-")) > 2 or command == "U"}


def completed(completion, variable):
    printed = subprocess.run(["bash", "-c", f'source "$1"; echo ${variable}', "bash", completion], check=True, capture_output=True)
    return set(printed.stdout.decode().split())


def main():
    console, completion = sys.argv[1:3]
    told = subprocess.run([console, "--help"], check=True, capture_output=True).stdout.decode()
    options, commands = described_in_help(told), registered_commands()
    faults = [] if len(options) > 20 and len(commands) > 40 else [f"found only {options} and {commands}"]
    compared = [("the completion's options", completed(completion, "_qrsconsole_options"), options),
                ("the completion's commands", completed(completion, "_qrsconsole_commands"), commands)]
    for files, described, wanted in ((MANUALS, described_in_manual, options),
                                     (PAGES, described_in_page, options - {"-h"})):
        compared += [(file.relative_to(ROOT), described(file.read_text(encoding="utf-8")), wanted) for file in files]
    for place, found, wanted in compared:
        faults += [f"{place}: {option} is missing" for option in sorted(wanted - found)]
        faults += [f"{place}: there is no {option}" for option in sorted(found - wanted)]
    for manual in MANUALS:
        for width in (60, 80, 130):
            ran = subprocess.run(["groff", "-man", "-Kutf8", "-Tutf8", "-ww", f"-rLL={width}n", manual], capture_output=True,
                                 env={**os.environ, "LC_ALL": "C.UTF-8"})
            faults += [ran.stderr.decode()] if ran.returncode != 0 or ran.stderr else []
    print("\n".join(faults) if faults else f"{len(options)} options and {len(commands)} commands are told everywhere")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
