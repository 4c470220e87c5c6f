#!/usr/bin/env bash
# Installs the Windows build and runs it from there: the package carries every library it needs, and its batch file
# shows the main job.
#   check-windows.sh BUILD_FOLDER SOURCE_FOLDER
set -euo pipefail
build=$1 source=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cmake --install "$build" --prefix "$work/prefix" >/dev/null

cd "$work/prefix"
told=$("$source/scripts/wine" cmd /c demo.bat | tr -d '\r')
expected=$(cat "$source/examples/scripts/show-everything.txt")
[[ $told == *"$expected"* ]] || { echo "the demo printed: $told" >&2; exit 1; }
[[ $told == *"== What changed in the drawing"*"LAYER"*"no difference"*"The result is"* ]] || { echo "$told" >&2; exit 1; }
cmp shown.dxf <("$source/scripts/wine" bin/qrsconsole.exe --settings s.ini -o same.dxf shown.dxf && cat same.dxf)
# Elsewhere and without the module's folder in any path.
cd "$work"
printf 'SetAllPipeLayOpen\n' | "$source/scripts/wine" prefix/bin/qrsconsole.exe --settings s.ini >/dev/null
# The console needs no screen: the panel's list is printed, at every call.
told=$(printf 'tckz\nOK\ntckz\n' | env -u DISPLAY "$source/scripts/wine" prefix/bin/qrsconsole.exe --settings s.ini "$source/examples/building.dxf")
[ "$(grep -c '\[ \] 给排-生活给水-管线 *开' <<<"$told")" = 2 ] || { echo "tckz printed: $told" >&2; exit 1; }
