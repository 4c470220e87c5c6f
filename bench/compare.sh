#!/bin/sh
# Compares opening, editing and saving a large drawing with plain copying of the same file.
#
#     bench/compare.sh BUILD_FOLDER [ENTITIES]
#
# Prints medians (hyperfine) and the peak memory (GNU time), for a text and for a binary drawing, of
#   cp        copying the file
#   session   open, rewrite 200 layer records, save           (qrs_dxf_session)
#   move      the same and every second entity to layer 0     (qrs_dxf_session ... move)
#   console   open, UnFrozenAllLayer, save                    (qrsconsole, where it is built)
#   open      open and leave
#   check     open, check against the standard, report
# and for a text drawing of
#   convert   open, move half of the entities to another layer (ConvertLayer), save; the other half lies there
#   erase     open, erase half of the entities (EraseSelLayer), save
# Ends with 1 when a row is above its limit: 3, 8, 3, 8 and 8 times cp, and 1.3 times the file for session, console, open and check.
set -eu

build=${1:?usage: bench/compare.sh BUILD_FOLDER [ENTITIES]}
entities=${2:-1000000}
bin=$build/bin
folder=$(mktemp -d "${TMPDIR:-/tmp}/qrs_compare.XXXXXX")
trap 'rm -rf "$folder"' EXIT INT TERM
drawing=$folder/drawing.dxf
output=$folder/output.dxf

failed=0
# begin LAYERS [--binary]: makes the drawing that the next rows are about
begin() {
    layers=$1
    shift
    "$bin/qrs_make_drawing" "$@" "$entities" "$layers" AC1024 "$drawing"
    size=$(wc -c <"$drawing")
    copied=
    printf '%s\n%-10s %10s %8s %12s %8s\n' "$entities entities on $layers layers, $size bytes $*" \
        program 'median s' 'of cp' 'peak bytes' 'of file'
    measure cp 0 0 cp "$drawing" "$output"
}
# measure NAME TIME_LIMIT MEMORY_LIMIT COMMAND...
measure() {
    name=$1
    time_limit=$2
    memory_limit=$3
    shift 3
    hyperfine --shell none --warmup 2 --runs 9 --style none --export-json "$folder/times.json" "$*" >/dev/null
    median=$(sed -n 's/.*"median": *\([0-9.e-]*\).*/\1/p' "$folder/times.json" | head -n 1)
    /usr/bin/time -v "$@" >/dev/null 2>"$folder/memory"
    peak=$(sed -n 's/.*Maximum resident set size (kbytes): *//p' "$folder/memory")
    copied=${copied:-$median}
    awk -v name="$name" -v median="$median" -v copied="$copied" -v peak="$peak" -v size="$size" \
        -v time_limit="$time_limit" -v memory_limit="$memory_limit" 'BEGIN {
            times = median / copied
            memory = peak * 1024 / size
            printf "%-10s %10.3f %8.2f %12.0f %8.2f\n", name, median, times, peak * 1024, memory
            exit (time_limit > 0 && times > time_limit) || (memory_limit > 0 && memory > memory_limit)
        }' || {
        failed=1
        echo "$name is above its limit (time $time_limit, memory $memory_limit)"
    }
}

for form in '' --binary; do
    begin 200 $form
    measure session 3 1.3 "$bin/qrs_dxf_session" "$drawing" "$output"
    measure move 8 0 "$bin/qrs_dxf_session" "$drawing" "$output" move
    if [ -x "$bin/qrsconsole" ]; then
        measure console 3 1.3 "$bin/qrsconsole" --settings "$folder/settings.ini" -e UnFrozenAllLayer -o "$output" \
            "$drawing"
        measure open 0 1.3 "$bin/qrsconsole" --settings "$folder/settings.ini" -e REGEN "$drawing"
        measure check 0 1.3 "$bin/qrsconsole" --settings "$folder/settings.ini" --check --to "$folder/report.txt" "$drawing"
    fi
done
if [ -x "$bin/qrsconsole" ]; then
    # On two layers each entity lies on one half's; the first entity of each stands for it.
    begin 2
    first_of() {
        awk -v layer="$1" '
            $1 == "ENTITIES" { inside = 1 }
            previous == "5" { handle = $1 }
            inside && previous == "8" && $1 == layer { print "(handent \"" handle "\")"; exit }
            { previous = previous_is_code ? "" : $1; previous_is_code = !previous_is_code }' "$drawing"
    }
    { echo ConvertLayer; first_of PIPE-001; first_of PIPE-002; } >"$folder/convert.scr"
    { echo EraseSelLayer; first_of PIPE-001; echo; } >"$folder/erase.scr"
    for name in convert erase; do
        measure $name 8 0 "$bin/qrsconsole" --settings "$folder/settings.ini" -s "$folder/$name.scr" -o "$output" \
            "$drawing"
    done
fi
exit "$failed"
