# SPDX-License-Identifier: Apache-2.0
_nuvctl() {
    local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} words=''
    if [ "$COMP_CWORD" -eq 1 ]; then
        words='decode encode --help --version'
    elif [ "$previous" = --format ]; then
        words='hex pcap'
    elif [[ $word == -* ]]; then
        case ${COMP_WORDS[1]} in
            decode) words='--pretty --summary --help' ;;
            encode) words='--format --output --help' ;;
        esac
    else
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
        compopt -o filenames
        return
    fi
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
}
complete -F _nuvctl nuvctl
