# Completion for korv-inspect in fish: the program itself says what a word may become.
function __korv_inspect_complete
    set -l words (commandline -opc)
    set -l current (commandline -ct | string trim -l -c '"\'' | string replace -ra '\\\\(.)' '$1')
    $words[1] complete $words[2..-1] "$current" 2>/dev/null
end
complete -c korv-inspect -f -a '(__korv_inspect_complete)'
