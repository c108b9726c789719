# SPDX-License-Identifier: Apache-2.0
# Completion of fixtop's words, cases and paths for bash: source this file.
# A path is best begun with a single quote, since it may hold double quotes.

_fixtop() {
    local current=${COMP_WORDS[COMP_CWORD]} word=${COMP_WORDS[1]} case=${COMP_WORDS[2]}
    local quoted='' candidates candidate
    [[ $current == \'* ]] && quoted=yes
    current=${current#\'}
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        mapfile -t COMPREPLY < <(compgen -W "$(_fixtop_words)" -- "$current")
        return
    fi
    if [[ $current == --* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$(_fixtop_options "$word")" -- "$current")
        return
    fi
    if ((COMP_CWORD == 2)); then
        mapfile -t COMPREPLY < <(compgen -W demo -- "$current"
            compgen -f -X '!*.json' -- "$current"
            compgen -f -X '!*.dwxmz' -- "$current"
            compgen -d -S / -- "$current")
        return
    fi
    compopt -o nospace 2>/dev/null
    local earlier="${COMP_WORDS[*]:3:COMP_CWORD-3}"
    mapfile -t candidates < <(fixtop complete "$case" "$word $earlier $current" 2>/dev/null)
    for candidate in "${candidates[@]}"; do
        [[ -n $quoted ]] || printf -v candidate %q "$candidate"
        COMPREPLY+=("$candidate")
    done
}

# Both read the program's own help, so that they can't fall behind it.
_fixtop_words() { fixtop --help 2>/dev/null | sed -n '/^Subcommands:/,/^$/s/^  \([a-z-]\+\) .*/\1/p'; }
_fixtop_options() { fixtop "$1" --help 2>/dev/null | grep -o -- '--[a-z]\+' | sort -u; }

complete -F _fixtop fixtop
