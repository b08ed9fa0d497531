# SPDX-License-Identifier: Apache-2.0
_nuvctl() {
    local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} words=''
    if [ "$COMP_CWORD" -eq 1 ]; then
        words='address channel cmd decode emit encode endpoints events log opclass send validate
               --help --help-all --version'
    elif [ "$previous" = --format ]; then
        words='hex pcap'
    elif [ "$previous" = --region ]; then
        words='global europe'
    elif [ "$previous" = --band ]; then
        words='2.4 5 6 60'
    elif [ "$previous" = --width ]; then
        words='5 10 20 40 80 80+80 160 320 2160'
    elif [ "$previous" = --type ]; then
        words='association_request reassociation_request measurement_report neighbor_report
               btm_query btm_request btm_response'
    elif [[ $word == -* ]]; then
        case ${COMP_WORDS[1]} in
            decode) words='--pretty --summary --type --help --help-all' ;;
            encode) words='--format --output --help --help-all' ;;
            address) words='--contains --pretty --help --help-all' ;;
            channel) words='--frequency --band --number --width --center --help --help-all' ;;
            opclass) words='--region --table --help --help-all' ;;
            endpoints) words='--access --help --help-all' ;;
            log) words='--follow --help --help-all' ;;
            cmd) words='--help --help-all' ;;
            emit) words='--help --help-all' ;;
            events) words='--help --help-all' ;;
            send) words='--help --help-all' ;;
            validate) words='--help --help-all' ;;
        esac
    elif [[ $COMP_CWORD -eq 2 && ${COMP_WORDS[1]} == @(cmd|send) ]]; then
        words=$(nuvctl endpoints 2>/dev/null | sed -n 's/^{"name":"\([^"]*\)","alive":true.*/\1/p')
    elif [[ ${COMP_WORDS[1]} == log ]]; then
        words=$(compgen -G '/dev/shm/nuvlog.*' | sed 's|^/dev/shm/nuvlog\.||')
    elif [[ ${COMP_WORDS[1]} == @(address|channel|opclass|cmd|emit|endpoints|events|send) ]]; then
        return
    else
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
        compopt -o filenames
        return
    fi
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
}
complete -F _nuvctl nuvctl
