#compdef korv-inspect
# Completion for korv-inspect in zsh: the program itself says what a word may become.
local -a found whole open
found=("${(@f)$("${(Q)words[1]/#\~/$HOME}" complete "${(@Q)words[2,CURRENT]}" 2>/dev/null)}")
found=("${(@)found%%$'\t'*}")
whole=("${(@)found:#(|*/)}")
open=("${(@M)found:#*/}") # steps of a path: more follows
compadd -a whole
compadd -S '' -a open
