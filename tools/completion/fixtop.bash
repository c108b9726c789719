# SPDX-License-Identifier: Apache-2.0
# Completion of fixtop's words, cases and paths for bash: source this file.
# A path is best begun with a single quote, since it may hold double quotes.

_fixtop() {
    local current=${COMP_WORDS[COMP_CWORD]} word=${COMP_WORDS[1]} at
    local quoted='' candidates candidate
    [[ $current == \'* ]] && quoted=yes
    current=${current#\'}
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        mapfile -t COMPREPLY < <(compgen -W "$(_fixtop_words)" -- "$current")
        return
    fi
    # A group is followed by one of its words.
    if [[ $word == collect ]]; then
        if ((COMP_CWORD == 2)); then
            mapfile -t COMPREPLY < <(compgen -W "$(_fixtop_words collect)" -- "$current")
            return
        fi
        word="collect ${COMP_WORDS[2]}"
    fi
    if [[ $current == --* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$(_fixtop_options $word)" -- "$current")
        return
    fi
    # What follows the case are paths in it.
    for ((at = 2; at < COMP_CWORD; ++at)); do
        [[ ${COMP_WORDS[at]} == @(demo|*.json|*.dwxmz) ]] && break
    done
    if ((at >= COMP_CWORD)); then
        mapfile -t COMPREPLY < <(compgen -W demo -- "$current"
            compgen -f -X '!*.json' -- "$current"
            compgen -f -X '!*.dwxmz' -- "$current"
            [[ $word == @(collect*|publish) ]] && compgen -f -X '!*.xml' -- "$current"
            compgen -d -S / -- "$current")
        return
    fi
    compopt -o nospace 2>/dev/null
    local earlier="${COMP_WORDS[*]:at+1:COMP_CWORD-at-1}"
    mapfile -t candidates < <(fixtop complete "${COMP_WORDS[at]}" "$word $earlier $current" 2>/dev/null)
    for candidate in "${candidates[@]}"; do
        [[ -n $quoted ]] || printf -v candidate %q "$candidate"
        COMPREPLY+=("$candidate")
    done
}

# Both read the program's own help, so that they can't fall behind it.
_fixtop_words() { fixtop "$@" --help 2>/dev/null | sed -n '/^Subcommands:/,/^$/s/^  \([a-z-]\+\) .*/\1/p'; }
_fixtop_options() { fixtop "$@" --help 2>/dev/null | grep -o -- '--[a-z]\+' | sort -u; }

complete -F _fixtop fixtop
