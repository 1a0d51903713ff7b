#compdef korv-inspect
# Completion for korv-inspect in zsh: the program itself says what a word may become.
local -a found whole shown open
local candidate
found=("${(@f)$("${(Q)words[1]/#\~/$HOME}" complete "${(@Q)words[2,CURRENT-1]}" "${(Q)PREFIX}" 2>/dev/null)}")
for candidate in "${(@)found:#}"; do
    if [[ ${candidate%%$'\t'*} == */ ]]; then
        open+=("${candidate%%$'\t'*}") # a step of a path: more follows
    else
        whole+=("${candidate%%$'\t'*}")
        shown+=("${candidate/$'\t'/  }")
    fi
done
compadd -d shown -a whole
compadd -S '' -a open
