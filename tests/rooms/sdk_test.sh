#!/usr/bin/env bash
# Gives the module folders in place of the SDK: one without headers, and one with copies of the stand-ins' headers, with
# which a source is compiled.
#   sdk_test.sh SOURCES SCRATCH CMAKE GENERATOR COMPILER
set -euo pipefail
sources=$1 scratch=$2 cmake=$3 generator=$4 compiler=$5
rm -rf "$scratch"
mkdir -p "$scratch/empty" "$scratch/sdk/inc"
cp "$sources"/host/objectarx/*.h "$sources"/host/mfc/*.h "$scratch/sdk/inc"
configure() {
    "$cmake" -S "$sources" -B "$scratch/$1" -G "$generator" -DCMAKE_CXX_COMPILER="$compiler" -DQRS_SDK="$scratch/$2" \
        -DCMAKE_BUILD_TYPE=Debug -DCMAKE_EXPORT_COMPILE_COMMANDS=ON >"$scratch/$1.txt" 2>&1
}
fail() {
    echo "$1"
    cat "$scratch"/*.txt
    exit 1
}
configure refused empty && fail "a folder without headers was taken"
[ "$(grep -c "CMake Error" "$scratch/refused.txt")" = 1 ] || fail "not one message"
# CMake breaks lines where the folder's name lets it.
tr -s " \n" " " <"$scratch/refused.txt" | grep -q "there is no inc/acdb.h" || fail "the message does not tell what is missing"
configure build sdk || fail "a folder with headers was not taken"
commands=$scratch/build/compile_commands.json
if grep -q "host/objectarx\|host/mfc" "$commands"; then fail "the host's headers are in the way"; fi
# One source that uses the editor, the framework, the suite and the platform.
command=$(python3 -c 'import json, sys
print(next(c["command"] for c in json.load(open(sys.argv[1])) if c["file"].endswith("panel/layercontrolbar.cpp")))' "$commands")
(cd "$scratch/build" && bash -c "${command/ -c / -fsyntax-only -c }") 2>"$scratch/compile.txt" || fail "the panel does not compile"
echo "refused and taken as it should be"
