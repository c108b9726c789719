# SPDX-License-Identifier: Apache-2.0
# Completion of fixtop's words, options, cases and paths for bash: source this file.
# A path may be typed with backslashes or in quotes. It is best begun with a single quote, since it
# may hold double quotes.

_fixtop() {
    local word=${COMP_WORDS[1]} first=2 at text plain open
    local case= valued line option= values=0 view=()
    _fixtop_plain "${COMP_WORDS[COMP_CWORD]}"
    local current=$plain quote=$open
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        _fixtop_offer "$(_fixtop_words)"
        return
    fi
    # A group is followed by one of its words.
    if [[ $word == collect ]]; then
        if ((COMP_CWORD == 2)); then
            _fixtop_offer "$(_fixtop_words collect)"
            return
        fi
        word="collect ${COMP_WORDS[2]}" first=3
    fi
    if [[ $current == --* ]]; then
        _fixtop_offer "$(_fixtop_options $word)"
        return
    fi
    valued=" $(_fixtop_valued $word | tr '\n' ' ')"
    [[ $word == explain ]] && view=(--neutral)
    line=$word
    # What stands before and behind the case, without what is asked of the case itself.
    for ((at = first; at < COMP_CWORD; ++at)); do
        _fixtop_plain "${COMP_WORDS[at]}"
        text=$plain
        if ((values > 0)); then
            ((--values))
            case $option in
                --library | --map | --translate) view+=("$option" "$text") ;;
                *) line+=" $(_fixtop_held "$text")" ;;
            esac
            ((values == 0)) && option=
        elif [[ $text == --neutral ]]; then
            view+=(--neutral)
        elif [[ $text == --* ]]; then
            [[ $text != @(--library|--map|--translate) ]] && line+=" $text"
            if [[ $valued == *" $text "* ]]; then
                option=$text values=1
                [[ $text == --set ]] && values=2
            fi
        elif [[ -z $case && $text == @(demo|*.json|*.dwxmz) ]]; then
            case=$text
        else
            line+=" $(_fixtop_held "$text")"
        fi
    done
    if [[ -n $option && $option != @(--attr|--set) ]]; then
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
        return
    fi
    if [[ -z $case ]]; then
        mapfile -t COMPREPLY < <(compgen -W demo -- "$current"
            compgen -f -X '!*.json' -- "$current"
            compgen -f -X '!*.dwxmz' -- "$current"
            [[ $word == @(collect*|publish) ]] && compgen -f -X '!*.xml' -- "$current"
            compgen -d -S / -- "$current")
        return
    fi
    compopt -o nospace 2>/dev/null
    # A word that is not closed goes on to be held together.
    [[ $current == *[[:blank:]]* ]] && current="'$current"
    while IFS= read -r text; do
        case $quote in
            "'") ;;
            '"') text=$(sed 's/["\\$`]/\\&/g' <<<"$text") ;;
            *) printf -v text %q "$text" ;;
        esac
        COMPREPLY+=("$text")
    done < <(fixtop complete "$case" "${view[@]}" "$line $current" 2>/dev/null)
}

# `plain` is a word as the shell would hand it over, `open` the quote in it that is not closed.
_fixtop_plain() {
    local typed=$1 at c
    plain= open=
    for ((at = 0; at < ${#typed}; ++at)); do
        c=${typed:at:1}
        if [[ $c == "$open" ]]; then
            open=
        elif [[ -z $open && $c == [\"\'] ]]; then
            open=$c
        elif [[ $c == \\ && $open != "'" ]]; then
            ((++at))
            c=${typed:at:1}
            [[ -n $open && $c != [\"\\\$\`] ]] && plain+=\\
            plain+=$c
        else
            plain+=$c
        fi
    done
}

# A word as it is held together at the prompt of the program.
_fixtop_held() { [[ $1 == *[[:blank:]]* ]] && printf "'%s'" "$1" || printf %s "$1"; }
_fixtop_offer() { mapfile -t COMPREPLY < <(compgen -W "$1" -- "$current"); }

# They read the program's own help, so that they can't fall behind it.
_fixtop_words() { fixtop "$@" --help 2>/dev/null | sed -n '/^Subcommands:/,/^$/s/^  \([a-z-]\+\) .*/\1/p'; }
_fixtop_options() { fixtop "$@" --help 2>/dev/null | grep -o -- '--[a-z]\+' | sort -u; }
_fixtop_valued() { fixtop "$@" --help 2>/dev/null | sed -n 's/^  \(--[a-z]\+\) [A-Z][A-Z].*/\1/p'; }

complete -F _fixtop fixtop
