# Completion for korv-inspect in bash: commands, options, formats, directories, and the names of the modules in the
# directories that the line names (in the current one as long as it names none).

# Names of the modules, "NAME" of NAME.yin, NAME@REVISION.yin and the like, in the directories of the line.
_korv_inspect_modules() {
    local -a dirs=()
    local i dir file name
    for ((i = 1; i + 1 < ${#COMP_WORDS[@]}; i++)); do
        case ${COMP_WORDS[i]} in
        -d | --dir | --install-path | --old | --new) ;;
        *) continue ;;
        esac
        dir=${COMP_WORDS[i + 1]}
        [[ $dir == = ]] && dir=${COMP_WORDS[i + 2]} # bash makes three words of --dir=DIR
        case $dir in
        [\"\']*) dir=${dir//[\"\']/} ;;
        *) dir=${dir//\\/} ;;
        esac
        dirs+=("${dir/#\~/$HOME}")
    done
    ((${#dirs[@]})) || dirs=(.)
    for i in "${dirs[@]}"; do
        for file in "$i"/*.yin "$i"/*.yang; do
            [[ -e $file ]] || continue
            name=${file##*/}
            name=${name%.yin}
            name=${name%.yang}
            printf '%s\n' "${name%%@*}"
        done
    done
}

_korv_inspect() {
    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD - 1]} command=${COMP_WORDS[1]}
    local commands="tree find walk dump enums modules check diff ids convert"
    local options="--verbose --load --install-path --recursive --format --config --no-config --help" formats="text json"
    COMPREPLY=()
    if [[ $cur == = ]]; then
        cur=""
    elif [[ $prev == = ]]; then
        prev=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    if ((COMP_CWORD == 1)); then
        mapfile -t COMPREPLY < <(compgen -W "$commands --help --version" -- "$cur")
        return
    fi
    case $command in
    tree) options+=" --dir --as --path --depth --full --own" formats+=" dot" ;;
    dump) options+=" --dir --as --augment --self --target" formats+=" csv" ;;
    check)
        options+=" --dir --as --all --strict --error --warn --off --baseline --write-baseline --rules"
        formats+=" github sarif junit gitlab"
        ;;
    diff) options+=" --old --new --dir --against --all --by --rules" ;;
    ids)
        options+=" --dir --as --all --registry --accept --range --by --classes --include --exclude --datatype"
        options+=" --first-class --dry-run"
        formats+=" csv"
        ;;
    convert) options="--config --no-config --output --to --dir --recursive --help" ;;
    find | walk | enums | modules) options+=" --dir --as" ;;
    *) return ;;
    esac
    case $prev in
    --to)
        mapfile -t COMPREPLY < <(compgen -W "yin yang" -- "$cur")
        return
        ;;
    --error | --warn | --off)
        mapfile -t COMPREPLY < <(compgen -W "$(korv-inspect check --rules --no-config 2>/dev/null | cut -d' ' -f1)" -- "$cur")
        return
        ;;
    -o | --output | --config | --baseline | --write-baseline | --registry)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$cur")
        return
        ;;
    -d | --dir | --install-path | --old | --new)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -d -- "$cur")
        return
        ;;
    --format)
        mapfile -t COMPREPLY < <(compgen -W "$formats" -- "$cur")
        return
        ;;
    --by)
        mapfile -t COMPREPLY < <(compgen -W "path id" -- "$cur")
        return
        ;;
    --classes)
        mapfile -t COMPREPLY < <(compgen -W "lists leaf-holders all" -- "$cur")
        return
        ;;
    ids)
        mapfile -t COMPREPLY < <(compgen -W "assign lock check list" -- "$cur")
        return
        ;;
    --path | --depth | --augment | --against | --range | --include | --exclude | --datatype | --first-class) return ;;
    esac
    if [[ $cur == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$cur")
    elif [[ $cur == */* || $command == convert ]]; then
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -d -- "$cur"; compgen -f -X '!*.yin' -- "$cur"; compgen -f -X '!*.yang' -- "$cur")
    else
        mapfile -t COMPREPLY < <(compgen -W "$(_korv_inspect_modules)" -- "$cur")
    fi
}

complete -F _korv_inspect korv-inspect
