#!/usr/bin/env bash
# Installs the build, builds a sibling plug-in against the installed package and runs its command beside the module.
#   check.sh BUILD_FOLDER SOURCE_FOLDER
set -euo pipefail
build=$1 source=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake --install "$build" --prefix "$work/prefix" >/dev/null
cmake -S "$source/examples/sibling" -B "$work/sibling" -G Ninja -DCMAKE_PREFIX_PATH="$work/prefix" \
    -DCMAKE_CXX_FLAGS="${SIBLING_FLAGS:-}" >/dev/null
cmake --build "$work/sibling" >/dev/null

# The module is found beside the installed program, the standard in the installed system folder.
answer=$("$work/prefix/bin/qrsconsole" --settings "$work/settings.ini" -p "$work/prefix/lib/qrs_pipeSystem/qrs_pipeSystem.so" \
    -p "$work/sibling/sibling.so" -e ASKSTANDARD)
echo "$answer"
grep -qx 'standard pwx, elevation text on 试验标注, water supply known: 1' <<<"$answer"
"$work/prefix/bin/qrsconsole" --settings "$work/settings.ini" -e SetAllPipeLayOpen >/dev/null
# Nothing the module does not mean to export leaves it (weak symbols are the compiler's copies of library templates).
strange=$(nm -D --defined-only -C "$work/prefix/lib/qrs_pipeSystem/qrs_pipeSystem.so" |
    awk '$2 ~ /^[TDBRS]$/ { $1 = $2 = ""; print substr($0, 3) }' |
    grep -vE '^(PipeSystemTool|PwxTool|FontTool)::|^[A-Za-z]+Node::|^g_|^acrxEntryPoint$' || true)
[ -z "$strange" ] || { echo "exported without meaning to: $strange" >&2; exit 1; }
