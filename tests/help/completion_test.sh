#!/usr/bin/env bash
# What the completion of the command line offers.
#   completion_test.sh COMPLETION
set -euo pipefail
source "$1"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
mkdir "my plans"
touch a.dxf B.DXF old.dwg thaw.scr sibling.so list.txt "my plans/c d.dxf"

failed=0
# offers EXPECTED WORD...: the last word is being completed; what is offered is joined by bars.
offers() {
    local expected=$1 offered
    shift
    COMP_WORDS=(qrsconsole "$@") COMP_CWORD=$# COMPREPLY=()
    _qrsconsole || true
    offered=$(printf '%s\n' "${COMPREPLY[@]}" | LC_ALL=C sort | paste -sd'|')
    [[ $offered == "$expected" ]] || { echo "qrsconsole $*: offered $offered, expected $expected" >&2; failed=1; }
}

drawings="B.DXF|a.dxf|my plans|old.dwg"
offers "$drawings" ""
offers "$drawings" a.dxf ""
offers "my plans/c d.dxf" "my plans/"
offers "--in-place|--info" --in
offers "--script|--settings|--strict|--support|--system" --s
offers "my plans|thaw.scr" -s ""
offers "thaw.scr" --script = th
offers "my plans|thaw.scr" --script =
offers "my plans|sibling.so" --plugin ""
offers "my plans" --system ""
offers "list.txt" --list l
offers "UnFrozenAllLayer|UnFrozenViewAllLayer|UnLockSelLayer" -e un
offers "tcdc|tckz|tctq" --execute TC
offers "$drawings" --info ""
offers "a.dxf" --compare old.dwg a
offers "all|drawings" --keep-going =
offers "drawings" --keep-going = d
offers "$drawings" --keep-going ""
offers "$drawings" --in-place ""
offers "936" --codepage 936
offers "en|zh" --language ""
offers "" --timeout ""
[[ $(complete -p qrsconsole) == "complete -F _qrsconsole qrsconsole" ]]
exit $failed
