# Completion for korv-inspect in fish: the program itself says what a word may become.
complete -c korv-inspect -f -a '(set -l words (commandline -opc); $words[1] complete $words[2..-1] "$(commandline -ct)" 2>/dev/null)'
