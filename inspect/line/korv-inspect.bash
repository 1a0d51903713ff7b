# Completion for korv-inspect in bash: the program itself says what a word may become.
_korv_inspect() {
    local line=${COMP_LINE:0:COMP_POINT} word current strip= isQuoted=
    local -a words
    read -a words <<<"$line" # with the backslashes of the line resolved
    [[ $line == *[[:space:]] ]] && words+=("")
    [[ ${words[-1]} == [\'\"]* ]] && isQuoted=1
    words=("${words[@]//[\"\']/}")
    current=${words[-1]}
    [[ $isQuoted ]] || strip=${current%"${current##*[:=]}"} # bash takes what is behind ":" and "=" for a word of its own
    COMPREPLY=()
    while IFS=$'\t' read -r word _; do
        word=${word#"$strip"}
        if [[ ! $isQuoted ]]; then
            printf -v word %q "$word"
            word=${word//\\,/,}
        fi
        COMPREPLY+=("$word")
    done < <("${words[0]/#\~/$HOME}" complete "${words[@]:1}" 2>/dev/null)
    if ((${#COMPREPLY[@]} == 1)) && [[ ${COMPREPLY[0]} == */ ]]; then
        compopt -o nospace 2>/dev/null # a step of a path: more follows
    fi
}

complete -F _korv_inspect korv-inspect
