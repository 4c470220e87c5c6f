#!/usr/bin/env python3
"""The scripts that make the system folder refuse sources that contradict themselves: a line for each fault that names both
sides, and nothing is written.
"""
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

SOURCE = Path(__file__).resolve().parents[2] / "data" / "source"

# Of each script: source, what stands there and what is put in its place, what is told.
CASES = {
    "make_standard.py": [
        ("systems.csv", "空调凝结水,,KN", "空调凝结水,凝结水,KN", "pipes of 凝结水 would be of 凝结水 and of 空调凝结水"),
        ("systems.csv", "雨淋,雨淋,YL", "雨淋,喷淋,YL", "pipes of 喷淋 would be of 自动喷淋 and of 雨淋"),
        ("systems.csv", "膨胀管,,PZ", "消火栓,,PZ", "消火栓 stands there twice"),
        ("systems.csv", "直饮水,ZY", "直饮水,J", "生活给水 and 直饮水 bear the same letters J"),
        ("systems.csv", "50,30,RJ", "50,10,RJ", "热水给水 and 消火栓 are drawn in the same colour 1"),
        ("systems.csv", "4,ZY,", "4,ZP,", "直饮水 and 自动喷淋 are drawn in the same linetype ZP"),
        ("systems.csv", "HDPE管", "HDP管", "systems.csv: HDP管 of 排水系统 is not in pipe.csv"),
        ("layers.csv", "system,Continuous,默认", "system,Continuous,随层", "no layer can have the lineweight 随层"),
        ("otherlayers.csv", "默认,Morvel给排水", "其他,网格,公用-网格,8,Continuous,0.09,1,\n默认,Morvel给排水",
         "网格 of 其他 comes before that of 默认"),
        ("otherlayers.csv", "默认,桩,给排-桩", "默认,桩,给排-地漏", "桩 of 默认 and 地漏 of 默认 are one layer 给排-地漏"),
    ],
    "make_tables.py": [
        ("pipe.csv", "球墨铸铁管,350,378,7.7", "球墨铸铁管,350,378,7.6", "350 is 378 x 7.6; GB/T 13295-2019 K9"),
        ("pipe.csv", "PE管SDR11,110,110,10,", "PE管SDR11,110,110,9.9,", "SDR11, by ISO 4065 (S5): 110 x 10"),
        ("pipe.csv", "铜管,67,67", "铜管,65,67", "GB/T 18033-2017 B型, table of sizes, wall B: no such size"),
        ("pipe.csv", "衬塑钢管,100,114.3,4,2", "衬塑钢管,100,114.3,4,1.5", "ordinary wall: 114.3 x 4 x 2"),
        ("pipe.csv", "无缝钢管,108,108,4", "无缝钢管,108,108,3.9", "108 x 2 or 108 x 2.2 or"),
        ("pipe.csv", "GB/T 5836.1-2018", "GB/T 5836.1-1900", "no series GB/T 5836.1-1900"),
    ],
}


def main():
    failed = 0
    for script, edits in CASES.items():
        with tempfile.TemporaryDirectory() as folder:
            source = Path(folder) / "source"
            shutil.copytree(SOURCE, source)
            for table, old, new, _ in edits:
                text = (source / table).read_text(encoding="utf-8")
                if old not in text:
                    raise LookupError(f"{table} has no {old}")
                (source / table).write_text(text.replace(old, new, 1), encoding="utf-8")
            ran = subprocess.run([sys.executable, str(source / script)], capture_output=True, text=True)
            written = [path.name for path in Path(folder).iterdir() if path != source]
            lines = ran.stderr.splitlines()
            untold = [told for *_, told in edits if sum(told in line for line in lines) != 1]
            if ran.returncode != 1 or ran.stdout or written or untold or len(lines) != len(edits):
                failed = 1
                print(f"{script}: exit code {ran.returncode}, written {written}, not told {untold}\n{ran.stdout}{ran.stderr}")
    return failed


if __name__ == "__main__":
    sys.exit(main())
