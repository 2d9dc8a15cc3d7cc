# Completion of the morvane command in bash: the command itself says which words may come next, so this never lags behind.
# shellcheck shell=bash
_morvane() {
    local word words=() answer current
    # bash takes the = of --option=value for a word.
    for word in "${COMP_WORDS[@]:1:COMP_CWORD}"; do
        [[ $word == = ]] || words+=("$word")
    done
    current=${COMP_WORDS[COMP_CWORD]}
    if [[ $current == = ]]; then
        words+=("")
        current=
    fi
    answer=$("${COMP_WORDS[0]/#\~/$HOME}" complete "${words[@]}" 2>/dev/null) || return
    if [[ $answer == *:files ]]; then
        answer=${answer%:files}
        compopt -o default 2>/dev/null  # file names, where no word fits
    fi
    mapfile -t COMPREPLY < <(compgen -W "$answer" -- "$current")
}
complete -F _morvane morvane
