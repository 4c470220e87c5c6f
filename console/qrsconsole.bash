# Completion of qrsconsole's command line, for bash: options, what each of them takes, drawings.
#   Installed as share/bash-completion/completions/qrsconsole; or: source qrsconsole.bash

_qrsconsole_options="-h --help --version --list -s --script -e --execute -o --output --in-place --backup --converter -p --plugin
    --no-module --system --settings --support --codepage --language --timeout --keep-going --strict --warnings --report --info --compare --json
    --check --rules --references --repair --dry-run --pipes --form --to
    --plot --plot-compare --layout --paper --dpi --black"

# The module's commands, then the host's.
_qrsconsole_commands="CleanOvraLayTag CloseSelLayer ConvertLayer EraseSelLayer FrozenLayer FrozenViewLayer LockSelLayer OpenLayer
    OpenSelLayer SetAllPipeLayOpen UnFrozenAllLayer UnFrozenViewAllLayer UnLockSelLayer cztk dcsz drsz gpsbs gxfz gxgd gxsz hbtc jcjk
    sfxc tbds tcdc tckz tctq xxyh xxyh2 yshf
    OPEN NEW QSAVE SAVEAS CLOSE QUIT EXIT ARX CHPROP LIST SELECT LAYER VPLAYER LAYOUT -LAYER -LINETYPE -STYLE -VPLAYER -LAYOUT PICTURES U REGEN REGENALL ZOOM
    MSPACE PSPACE PLOTFILE SETVAR STANDARD HELP"

# _qrsconsole_files WORD PATTERN: folders, and files whose name matches; upper and lower case do not matter.
_qrsconsole_files() {
    local name
    compopt -o filenames 2>/dev/null
    COMPREPLY=()
    while IFS= read -r name; do
        # shellcheck disable=SC2053  # the pattern is meant as one
        [[ -d $name || ${name,,} == $2 ]] && COMPREPLY+=("$name")
    done < <(compgen -f -- "$1")
}

# _qrsconsole_names WORD NAMES: the names that begin with the word, in whatever case, as they are written.
_qrsconsole_names() {
    local name
    COMPREPLY=()
    for name in $2; do
        [[ ${name,,} == "${1,,}"* ]] && COMPREPLY+=("$name")
    done
}

_qrsconsole() {
    local word=${COMP_WORDS[COMP_CWORD]} option="" before=""
    ((COMP_CWORD > 1)) && before=${COMP_WORDS[COMP_CWORD - 1]}
    # The shell takes --option=value apart at the sign.
    if [[ $word == = ]]; then
        option=$before word=""
    elif [[ $before == = ]]; then
        option=${COMP_WORDS[COMP_CWORD - 2]}
    elif [[ $before == -* ]]; then
        option=$before
    fi
    # The second of two drawings.
    ((COMP_CWORD > 2)) && [[ ${COMP_WORDS[COMP_CWORD - 2]} == --?(plot-)compare ]] && option=--compare

    case $option in
        -s | --script) _qrsconsole_files "$word" "*.scr" ;;
        -e | --execute) _qrsconsole_names "$word" "$_qrsconsole_commands" ;;
        -p | --plugin) _qrsconsole_files "$word" "*.@(so|dll)" ;;
        -o | --output | --info | --compare | --plot-compare) _qrsconsole_files "$word" "*.@(dxf|dwg)" ;;
        --plot) _qrsconsole_files "$word" "*.@(svg|pdf|png)" ;;
        --paper) _qrsconsole_names "$word" "A0 A1 A2 A3 A4 fit" ;;
        --list | --settings | --report | --rules | --repair | --to) _qrsconsole_files "$word" "*" ;;
        --system | --support) _qrsconsole_files "$word" "" ;;
        --language) _qrsconsole_names "$word" "zh en" ;;
        --codepage) _qrsconsole_names "$word" "932 936 949 950 1250 1251 1252" ;;
        --backup | --timeout | --converter | --layout | --dpi) COMPREPLY=() ;;
        --form) _qrsconsole_names "$word" "text json html csv" ;;
        --keep-going)
            if [[ $before == = || ${COMP_WORDS[COMP_CWORD]} == = ]]; then
                _qrsconsole_names "$word" "all drawings"
            else
                option=""
            fi
            ;;
        *) option="" ;;
    esac
    [[ -n $option ]] && return
    if [[ $word == -* ]]; then
        _qrsconsole_names "$word" "$_qrsconsole_options"
    else
        _qrsconsole_files "$word" "*.@(dxf|dwg)"
    fi
}

complete -F _qrsconsole qrsconsole
