#!/bin/sh
# Compares what the programs do to large drawings with reading and writing the same bytes once.
#
#     bench/compare.sh BUILD_FOLDER [ENTITIES [ROUNDS]]
#
# The unit is cp and wc -l of the drawing, one after the other: copying it, and finding all its line ends. Each row is
# the median of some rounds, in which all rows take turns, so that a machine that is busy at times slows them alike.
# Printed are seconds, the times in units, and the peak memory in times of the file, of
#   open                  open and leave
#   session               open, rewrite 200 layer records, save, without the console
#   layers                open, UnFrozenAllLayer, save
#   check                 open, check against the standard, report: in times of open
#   convert erase merge paint
#                         open, ConvertLayer, EraseSelLayer, hbtc, tbds over half of the entities, save
#   same moved moved-bare moved-binary
#                         --compare with itself, with a drawing of which half is changed, without handles, in binary
#   png svg pdf           open, draw the model in such a picture: in seconds
#   ezdxf, libdxfrw       open, turn the layers off, save by other libraries: where python3 knows ezdxf; where the
#                         variable DXFRW names a program that takes two files
# and in milliseconds: the start without a drawing, the first pick of a point, each further one, and a first pick where
# nothing is, which has to look at every entity.
# Ends with 1 when a row is above its limit.
set -eu

build=${1:?usage: bench/compare.sh BUILD_FOLDER [ENTITIES [ROUNDS]]}
entities=${2:-1000000}
rounds=${3:-5}
bin=$build/bin
here=$(dirname "$0")
folder=$(mktemp -d "${TMPDIR:-/tmp}/qrs_compare.XXXXXX")
trap 'rm -rf "$folder"' EXIT INT TERM
# The programs shall not find settings of the user.
export XDG_CONFIG_HOME="$folder" HOME="$folder"
console="$bin/qrsconsole"
output=$folder/output.dxf
failed=0

# measure NAME COMMAND...: the median of some runs goes to the row's times; the first time its peak memory is taken too.
# What ends with 1 has found something.
measure() {
    name=$1
    shift
    hyperfine --shell none --ignore-failure --warmup 1 --runs 3 --style none --export-json "$folder/one.json" "$*" \
        >/dev/null 2>&1
    sed -n 's/.*"median": *\([0-9.e-]*\).*/\1/p' "$folder/one.json" | head -n 1 >>"$folder/$name.times"
    [ ! -e "$folder/$name.peak" ] || return 0
    /usr/bin/time -f %M -o "$folder/time" "$@" >/dev/null 2>"$folder/$name.error" || [ $? = 1 ] ||
        { echo "$name failed: $(head -n 1 "$folder/$name.error")"; failed=1; }
    tail -n 1 "$folder/time" >"$folder/$name.peak"
}
median_of() { sort -g "$folder/$1.times" | awk '{ all[NR] = $1 } END { print all[int((NR + 1) / 2)] }'; }
# take_turns: measures all rows of the list, one "NAME COMMAND..." a line, in rounds.
take_turns() {
    round=0
    while [ $round -lt "$rounds" ]; do
        round=$((round + 1))
        while read -r line; do
            # shellcheck disable=SC2086 # the words of a line are the command
            measure $line </dev/null
        done <"$folder/rows"
    done
}
# row NAME TIME_LIMIT MEMORY_LIMIT [WHAT]: prints one; 0 is no limit. WHAT: the row that the time is compared with.
row() {
    [ -s "$folder/$1.times" ] || return 0
    awk -v name="$1" -v median="$(median_of "$1")" -v unit="${4:-$unit}" -v peak="$(cat "$folder/$1.peak")" \
        -v size="$size" -v time_limit="$2" -v memory_limit="$3" 'BEGIN {
            times = median / unit
            memory = peak * 1024 / size
            late = time_limit > 0 && times > time_limit
            large = memory_limit > 0 && memory > memory_limit
            printf "%-12s %10.3f %8.2f %8.2f", name, median, times, memory
            if (time_limit > 0) printf "   limit %s", time_limit
            if (memory_limit > 0) printf "   memory %s", memory_limit
            print (late || large ? "   ABOVE" : "")
            exit late || large
        }' || failed=1
}
# milliseconds NAME LIMIT SECONDS: 0 is no limit.
milliseconds() {
    awk -v name="$1" -v limit="$2" -v seconds="$3" 'BEGIN {
        late = limit > 0 && seconds * 1000 > limit
        printf "%-12s %10.1f ms%s%s\n", name, seconds * 1000, (limit > 0 ? "   limit " limit : ""), (late ? "   ABOVE" : "")
        exit late }' || failed=1
}
# seconds NAME LIMIT: prints the time and the memory of a row whose limit are seconds.
seconds() {
    awk -v name="$1" -v limit="$2" -v median="$(median_of "$1")" -v peak="$(cat "$folder/$1.peak")" -v size="$size" 'BEGIN {
        late = median > limit
        printf "%-12s %10.3f %8s %8.2f   limit %s s%s\n", name, median, "", peak * 1024 / size, limit, late ? "   ABOVE" : ""
        exit late }' || failed=1
}
# head_of_table TITLE: sizes and units of the drawing that the next rows are about.
head_of_table() {
    size=$(wc -c <"$drawing")
    unit=$(awk -v a="$(median_of cp)" -v b="$(median_of wc)" 'BEGIN { print a + b }')
    printf '\n%s, %s bytes; unit %.3f s (cp %.3f, wc -l %.3f)\n' "$1" "$size" "$unit" "$(median_of cp)" "$(median_of wc)"
    printf '%-12s %10s %8s %8s\n' row seconds units memory
}

# --- both forms on 200 layers
for form in text binary; do
    drawing=$folder/$form.dxf
    rm -f "$folder"/*.times "$folder"/*.peak
    "$bin/qrs_make_drawing" $([ $form = text ] || echo --binary) "$entities" 200 AC1024 "$drawing"
    cat >"$folder/rows" <<END
cp cp $drawing $output
wc wc -l $drawing
open $console -e REGEN $drawing
layers $console -e UnFrozenAllLayer -o $output $drawing
session $bin/qrs_dxf_session $drawing $output
check $console --check --to $folder/report.txt $drawing
END
    take_turns
    if [ $form = text ]; then
        for kind in png svg pdf; do
            measure $kind "$console" --plot "$folder/model.$kind" --layout Model "$drawing"
        done
        if python3 -c 'import ezdxf' 2>/dev/null; then
            hyperfine --shell none --runs 1 --style none --export-json "$folder/one.json" \
                "python3 $here/ezdxf_round.py $drawing $output" >/dev/null 2>&1 || :
            sed -n 's/.*"median": *\([0-9.e-]*\).*/\1/p' "$folder/one.json" >"$folder/ezdxf.times"
            /usr/bin/time -f %M -o "$folder/ezdxf.peak" python3 "$here/ezdxf_round.py" "$drawing" "$output"
        fi
        [ -z "${DXFRW:-}" ] || measure libdxfrw "$DXFRW" "$drawing" "$output"
    fi
    head_of_table "$entities entities on 200 layers, $form"
    row open 0 1.3
    row session 1.8 1.3
    row layers 1.8 1.3
    row check 2 1.3 "$(median_of open)"
    # Ten seconds for a million entities.
    [ $form != text ] || for kind in png svg pdf; do
        seconds $kind "$(awk -v entities="$entities" 'BEGIN { print entities / 100000 }')"
    done
    row ezdxf 0 0
    row libdxfrw 0 0
done

# --- commands over half of the entities, picks, comparing. On two layers each entity lies on one half's; the first
# entity of each stands for it.
drawing=$folder/halves.dxf
rm -f "$folder"/*.times "$folder"/*.peak
"$bin/qrs_make_drawing" "$entities" 2 AC1024 "$drawing"
# first_of LAYER: the handle of its first entity. line_start: where the first line begins.
first_of() {
    awk -v layer="$1" '
        $1 == "ENTITIES" { inside = 1 }
        previous == "5" { handle = $1 }
        inside && previous == "8" && $1 == layer { print "(handent \"" handle "\")"; exit }
        { previous = previous_is_code ? "" : $1; previous_is_code = !previous_is_code }' "$drawing"
}
line_start() {
    awk '$1 == "ENTITIES" { inside = 1 }
        inside && previous == "0" { line = $1 == "LINE" }
        inside && line && previous == "10" { x = $1 }
        inside && line && previous == "20" { print x "," $1; exit }
        { previous = previous_is_code ? "" : $1; previous_is_code = !previous_is_code }' "$drawing"
}
one=$(first_of PIPE-001)
other=$(first_of PIPE-002)
point=$(line_start)
{ echo ConvertLayer; echo "$one"; echo "$other"; } >"$folder/convert.scr"
{ echo EraseSelLayer; echo "$one"; echo; } >"$folder/erase.scr"
{ echo hbtc; echo "$one"; echo "$other"; echo Y; } >"$folder/merge.scr"
{ echo tbds; echo 3; } >"$folder/paint.scr"
# Both picks meet one layer, so that nothing is merged.
further=40
{ echo hbtc; echo "$point"; echo "^C"; } >"$folder/pick.scr"
{ echo hbtc; echo "-1000000,-1000000"; echo "^C"; } >"$folder/miss.scr"
{ i=0; while [ $i -lt $((further / 2)) ]; do echo hbtc; echo "$point"; echo "$point"; i=$((i + 1)); done
  cat "$folder/pick.scr"; } >"$folder/picks.scr"
"$console" -s "$folder/convert.scr" -o "$folder/moved.dxf" "$drawing" >/dev/null
"$bin/qrs_make_drawing" --binary "$entities" 2 AC1024 "$folder/halves-binary.dxf"
"$console" -s "$folder/convert.scr" -o "$folder/moved-binary.dxf" "$folder/halves-binary.dxf" >/dev/null
# Without handles records are told apart by their places.
for name in halves moved; do
    awk 'NR % 2 { code = $1; line = $0; next } code != 5 && code != 105 { print line; print }' "$folder/$name.dxf" \
        >"$folder/$name-bare.dxf"
done
{
    echo "cp cp $drawing $output"
    echo "wc wc -l $drawing"
    echo "open $console -e REGEN $drawing"
    for name in convert erase merge paint; do
        echo "$name $console -s $folder/$name.scr -o $output $drawing"
    done
    echo "pick $console -s $folder/pick.scr $drawing"
    echo "picks $console -s $folder/picks.scr $drawing"
    echo "miss $console -s $folder/miss.scr $drawing"
    echo "same $console --compare $drawing $drawing"
    echo "moved $console --compare $drawing $folder/moved.dxf"
    echo "open-bare $console -e REGEN $folder/halves-bare.dxf"
    echo "moved-bare $console --compare $folder/halves-bare.dxf $folder/moved-bare.dxf"
    echo "open-binary $console -e REGEN $folder/halves-binary.dxf"
    echo "moved-binary $console --compare $folder/halves-binary.dxf $folder/moved-binary.dxf"
    echo "start $console -e REGEN"
} >"$folder/rows"
take_turns
head_of_table "$entities entities on 2 layers"
for name in convert erase merge paint; do
    row $name 4 1.6
done
printf '\nin openings of two drawings\n'
two() { awk -v one="$(median_of "$1")" 'BEGIN { print 2 * one }'; }
row same 2 0 "$(two open)"
row moved 2 0 "$(two open)"
row moved-bare 2 0 "$(two open-bare)"
row moved-binary 2 0 "$(two open-binary)"
printf '\n'
milliseconds start 10 "$(median_of start)"
milliseconds "first pick" 100 "$(awk -v a="$(median_of pick)" -v b="$(median_of open)" 'BEGIN { print a - b }')"
milliseconds "further pick" 5 \
    "$(awk -v a="$(median_of picks)" -v b="$(median_of pick)" -v n=$further 'BEGIN { print (a - b) / n }')"
milliseconds "empty pick" 0 "$(awk -v a="$(median_of miss)" -v b="$(median_of open)" 'BEGIN { print a - b }')"
exit "$failed"
