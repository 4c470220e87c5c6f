#!/usr/bin/env python3
"""Sixteen consoles at once on one settings file, one drawing, one export folder: nothing is lost, each refusal is told.

    many_test.py CONSOLE DATA
"""
import os
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

# One option of setting.ini for each console: its section, its name, a value that is not the default.
OPTIONS = [("管线设置", name, value) for name, value in (
    ("管线默认管径", 77), ("双线水管线宽", 30), ("单注标高随管线标高联动", 0), ("扣弯样式", 5), ("弯头曲率", 120), ("洁具数据读取", 0),
    ("立管楼号标注设置", 3), ("立管标注样式", 4))] + [("设备设置", "设备支持3D", 1), ("设备设置", "喷头间距模数", 50), ("室外设置", "室外标注样式", 2)] + [
    ("其它设置", name, value) for name, value in (("工具条状态", 0), ("选择预览", 0), ("自动线型比例", 0), ("采用Morvel系统捕捉设置", 1),
                                              ("转K7Morvel文字中英文打断", 1))]
COUNT = len(OPTIONS)
DRAWING = ("0\nSECTION\n2\nTABLES\n0\nTABLE\n2\nLAYER\n70\n1\n0\nLAYER\n2\n0\n70\n0\n62\n7\n6\nCONTINUOUS\n0\nENDTAB\n0\nENDSEC\n"
           "0\nSECTION\n2\nENTITIES\n" + "0\nPOINT\n8\n0\n10\n1.0\n20\n2.0\n" * 3000 + "0\nENDSEC\n0\nEOF\n")

def run_all(console, folder, arguments):
    """Starts them together; their exit codes and what they complained of."""
    environment = dict(os.environ, HOME=str(folder), TMPDIR=str(folder), LC_ALL="C.UTF-8")
    runs = [subprocess.Popen([console, *arguments(number)], cwd=folder, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                             stderr=subprocess.PIPE, env=environment, encoding="utf-8") for number in range(COUNT)]
    outputs = [run.communicate(timeout=300) for run in runs]
    return [(run.returncode, out, error) for run, (out, error) in zip(runs, outputs)]


def execute(*lines):
    return [part for line in lines for part in ("-e", line)]


def one_drawing(console, folder):
    (folder / "plan.dxf").write_text(DRAWING)
    results = run_all(console, folder, lambda number: ["--no-module", "--in-place", "--backup", "99", *execute(
        "-LAYER", "N", f"console-{number}", ""), "plan.dxf"])
    told = "was saved by somebody else since this drawing was opened"
    written = set()
    for number, (code, _, error) in enumerate(results):
        assert code in (0, 4), (number, code, error)
        assert code == 0 or told in error, error
        if code == 0:
            written.add(f"console-{number}")
    kept = set(re.findall(r"console-\d+", (folder / "plan.dxf").read_text()))
    assert written, "nobody could write"
    assert kept == written, f"said to be written {written}, there {kept}"


def one_settings_file(console, folder):
    for number in range(COUNT):
        place = folder / f"from-{number}"
        place.mkdir()
        section, option, value = OPTIONS[number]
        (place / "setting.ini").write_text(f"[{section}]\n{option}={value}\n", encoding="utf-8")
    results = run_all(console, folder, lambda number: ["--settings", "shared.ini", "--system", str(folder / "system"), *execute(
        "drsz", "2", f"from-{number}")])
    assert all(code == 0 for code, _, _ in results), results
    kept = (folder / "shared.ini").read_text(encoding="utf-8")
    for _, option, value in OPTIONS:
        assert re.search(rf"^{option}=[ir]:{value}$", kept, re.MULTILINE), (option, value, kept)


def one_export_folder(console, folder):
    """The default one, which each of them empties first, and one that was chosen."""
    system = folder / "system"
    for chosen in (False, True):
        answers = ["dcsz", "导出到指定文件夹", "OK", "chosen"] if chosen else ["dcsz", "OK"]
        (folder / "chosen").mkdir(exist_ok=True)
        results = run_all(console, folder, lambda number: ["--settings", f"settings-{number}.ini", "--system", str(system),
                                                           *execute(*answers)])
        target = folder / ("chosen" if chosen else "PwxSetting")
        for code, out, error in results:
            assert code in (0, 1, 4), (code, error)
            assert not chosen or (code == 0 and not error), error
        there = {file.name for file in target.iterdir()}
        for file in ("CmdConfig.xml", "acad.pgp", "qrsdata.dbf", "linetype.dbf", "pipe.dbf", "pwx.qdsl"):
            assert file in there, (chosen, file, there, [error for _, _, error in results])
            assert (target / file).read_bytes() == (system / file).read_bytes(), (chosen, file)
        assert "setting.ini" in there, there
        assert not [name for name in there if name.startswith(".qrs-")], there


if __name__ == "__main__":
    with tempfile.TemporaryDirectory() as place:
        folder = Path(place)
        program = str(Path(sys.argv[1]).resolve())
        shutil.copytree(sys.argv[2], folder / "system")
        one_drawing(program, folder)
        one_settings_file(program, folder)
        one_export_folder(program, folder)
