# Completion of quillmoor-cli's command line in bash.

# A line for each command: its options.
_quillmoor_cli_commands='
list --all --json --salvage --code-page --help
icon --size --force --help
save --all --output --category --name --force --salvage --utf8 --code-page --help
strings --json --language --code-page --help
page --output --force --help
'

_quillmoor_cli() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} name options
    local commands='' found=''
    while read -r name options; do
        commands="$commands $name"
        [ "$name" != "${COMP_WORDS[1]}" ] || found=$options
    done <<<"$_quillmoor_cli_commands"
    case $before in
        -o | --output)
            local kind=-d
            [ "${COMP_WORDS[1]}" != page ] || kind=-f
            compopt -o filenames
            mapfile -t COMPREPLY < <(compgen "$kind" -- "$word")
            return
            ;;
        --size) mapfile -t COMPREPLY < <(compgen -W '16 32 48 128 256' -- "$word"); return ;;
        --category) mapfile -t COMPREPLY < <(compgen -W 'bitmap icon string binary' -- "$word"); return ;;
        --language | --code-page) return ;;
    esac
    if [ "$COMP_CWORD" -eq 1 ]; then
        mapfile -t COMPREPLY < <(compgen -W "$commands --help --version" -- "$word")
    elif [ "${word:0:1}" = - ]; then
        mapfile -t COMPREPLY < <(compgen -W "$found" -- "$word")
    else
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
    fi
}
complete -F _quillmoor_cli quillmoor-cli
