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

# Every installed header stands on its own, nothing of the inside came along, and what headers define inline needs no
# symbol that the libraries keep for themselves.
headers="$work/prefix/include/qrs_pipeSystem"
flags=(-std=c++17 -Wall -Wextra -Werror "-I$headers")
for folder in host/mfc host/objectarx host/suite/kernel host/suite/public host/suite/pipewire; do flags+=("-I$headers/$folder"); done
inside=$(cd "$headers" && find . -path '*/inside/*' -o -path '*/db/*' -o -path '*/dxf/*' -o -path '*/drawing/*')
[ -z "$inside" ] || { echo "installed without meaning to: $inside" >&2; exit 1; }
(cd "$headers" && find . -name '*.h' -printf '#include "%P"\n' | sort) >"$work/all.cpp"
[ "$(wc -l <"$work/all.cpp")" -gt 60 ]
while read -r line; do printf '%s\n' "$line" >"$work/$(tr -c '[:alnum:]\n' _ <<<"$line").one.cpp"; done <"$work/all.cpp"
printf '%s\0' "$work"/*.one.cpp | xargs -0 -n 8 -P 2 c++ "${flags[@]}" -fsyntax-only
c++ "${flags[@]}" -fPIC -shared -fkeep-inline-functions -Wl,-z,defs,--warn-unresolved-symbols "$work/all.cpp" -o "$work/all.so" \
    "$work/prefix/lib/qrs_pipeSystem/qrs_pipeSystem.so" "$(find "$work/prefix" -name 'libqrs_host.so')" 2>"$work/linked.txt"
missing=$(grep 'undefined reference' "$work/linked.txt" | grep -v 'to `std::' || true)
[ -z "$missing" ] || { echo "headers need what does not leave the libraries: $missing" >&2; exit 1; }

# The module is found beside the installed program, the standard in the installed system folder.
console() { "$work/prefix/bin/qrsconsole" --settings "$work/settings.ini" "$@"; }
# The plug-in that checks drawings lies beside the module.
console --check "$source/examples/building.dxf" | grep -qx '0 errors, 6 warnings, 0 notes'
with_sibling() { console -p "$work/sibling/sibling.so" "$@"; }
answer=$(with_sibling -e ASKSTANDARD)
echo "$answer"
grep -qx 'standard pwx, elevation text on 试验标注, water supply known: 1' <<<"$answer"

# Pipes it draws in a new drawing lie on the layers of the standard; an old drawing cannot hold any.
(cd "$work" && with_sibling -s "$source/examples/sibling/draw.scr" >drawn.txt)
grep -q 'of 生活给水 on layer 给排-生活给水-管线\.$' "$work/drawn.txt"
grep -q 'of 生活给水 on layer 给排-生活给水-立管\.$' "$work/drawn.txt"
grep -q 'of 污水 on layer 给排-污水-管线\.$' "$work/drawn.txt"
grep -qx 'The standard has no pipe system "牛奶"\.' "$work/drawn.txt"
[ "$(grep -cx 'QRS_PIPE.\?' "$work/pipes.dxf")" = 4 ]   # three pipes, one class
refused=$(printf 'DRAWPIPE\n污水\n0,0\n1,0\n' | with_sibling -s - "$source/examples/building-r12.dxf")
grep -qx 'This drawing cannot hold pipes\.' <<<"$refused"
# Whoever meets them again can ask what they are.
with_sibling -s "$source/examples/sibling/ask.scr" "$source/examples/pipes.dxf" | diff "$source/examples/sibling/ask.txt" -
# Risers and a run of pipes are numbered, and the numbers go on when the drawing is opened again.
(cd "$work" && with_sibling -s "$source/examples/sibling/number.scr" "$source/examples/risers.dxf") |
    diff "$source/examples/sibling/number.txt" -
[ "$(grep -c '^给排-计算文字' "$work/numbered.dxf")" = 7 ]   # the layer and six texts
# A riser that was drawn under a system's old name is numbered with those of its name of today.
with_sibling -p "$work/sibling/oldnames.so" -s "$source/examples/sibling/oldnames.scr" |
    diff "$source/examples/sibling/oldnames.txt" -
# The page about siblings is followed in an empty folder.
python3 "$source/tests/help/pages.py" "$work/prefix/bin/qrsconsole" --package "$work/prefix"
# Beside the program a bare name is enough; without the module started the sibling is told so.
cp "$work/sibling/sibling.so" "$work/prefix/bin/"
answer=$(cd "$work" && console -p sibling.so -e ASKSTANDARD)
grep -q '^standard pwx' <<<"$answer"
answer=$(console --no-module -p sibling.so -e ASKSTANDARD 2>&1)
grep -q 'has not been started' <<<"$answer"
# The whole standard comes into an empty and into real drawings, once.
for drawing in "" "$source/examples/building.dxf" "$source/examples/building-r12.dxf"; do
    with_sibling -s "$source/examples/sibling/init.scr" ${drawing:+-o "$work/ready.dxf" "$drawing"} >"$work/made.txt"
    grep -q '^[1-9][0-9]* layers made, 10 of 10 text styles ready\.$' "$work/made.txt"
    grep -qx '0 layers made, 10 of 10 text styles ready\.' "$work/made.txt"
done

console -e SetAllPipeLayOpen >/dev/null
# Nothing the module does not mean to export leaves it (weak symbols are the compiler's copies of library templates).
strange=$(nm -D --defined-only -C "$work/prefix/lib/qrs_pipeSystem/qrs_pipeSystem.so" |
    awk '$2 ~ /^[TDBRS]$/ { $1 = $2 = ""; print substr($0, 3) }' |
    grep -vE '^(PipeSystemTool|PwxTool|FontTool)::|^[A-Za-z]+Node::|^(vtable|typeinfo|typeinfo name) for [A-Za-z]+Node$|^IsStrAllNum\(|^g_|^acrxEntryPoint$' || true)
[ -z "$strange" ] || { echo "exported without meaning to: $strange" >&2; exit 1; }
