#!/usr/bin/env python3
"""Puts texts into imagined files and sees which of them scripts/check-texts refuses."""
import sys
from importlib.machinery import SourceFileLoader

# what the code says, the row in the table, part of the refusal ("": allowed)
CASES = (
    ('translated("is read-only")', '{"is read-only", "只读"}', ""),
    ('fail(translated(one ? "one %1"\n "more" : L"several %1", "a part"));', '{"one %1more", "%1 一"}, {"several %1", "%1 几"}', ""),
    ('translated("is read-only")', "", "has no row"),
    ("", '{"is read-only", "只读"}', "nothing uses"),
    ('translated("%1 of %2")', '{"%1 of %2", "%2 的 %3"}', "other parts"),
    ('untranslated(L"\\nis read-only")', '{"\\nis read-only", "只读"}', "begins or ends its line"),
    ('translated("is read-only")', '{"is read-only", "is read only"}', "is no Chinese"),
    ('translated("is read-only")', '{"is read-only", "只读"}, {"is read-only", "不能写"}', "a row already"),
    ('fail(translated("is %1", "no file"), "cannot be read");', '{"is %1", "是 %1"}', '"cannot be read" is not translated'),
    ('require(true, "no tag there"); // "not here"', "", ""),
    ('askKeyword(L"LOck unlock", "which one? ");', "", '"which one? " is not translated'),
)


def main() -> int:
    check = SourceFileLoader("check_texts", sys.argv[1]).load_module()
    wrong = []
    for code, rows, refusal in CASES:
        faults = check.faults_of({"host/platform/x.cpp": code, "host/platform/chinese.cpp": rows})
        if (refusal not in "".join(faults) or not faults) if refusal else faults:
            wrong.append(f"{code} with {rows}: {faults}")
    print("\n".join(wrong) if wrong else f"{len(CASES)} cases")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
