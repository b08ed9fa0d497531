# SPDX-License-Identifier: Apache-2.0
_nuvctl() {
    local word=${COMP_WORDS[COMP_CWORD]}
    if [ "$COMP_CWORD" -eq 1 ]; then
        mapfile -t COMPREPLY < <(compgen -W 'decode --help --version' -- "$word")
    elif [[ $word == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W '--pretty --summary --help' -- "$word")
    else
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
        compopt -o filenames
    fi
}
complete -F _nuvctl nuvctl
