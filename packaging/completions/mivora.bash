# Completion of mivora for bash.

# The values that a setting can have, as far as they can be listed.
_mivora_values() {
    case $1 in
        showTitle | hideTitleWhileInhibited | remindWithoutLink | ignoreUnanswered | ignoreWithoutOthers | hasCompletedOnboarding) echo "true false" ;;
        leadMinutes) echo "0 1 2 5" ;;
        panelCorner) echo "topLeft topRight bottomLeft bottomRight" ;;
    esac
}

_mivora_complete() {
    mapfile -t COMPREPLY < <(compgen -W "$1" -- "${COMP_WORDS[COMP_CWORD]}")
}

_mivora_keys="showTitle titleWidth hideTitleWhileInhibited leadMinutes panelCorner remindWithoutLink joinHotKey disabledCalendarIDs
    ignoredTitles ignoreUnanswered ignoreWithoutOthers browserServices hasCompletedOnboarding addresses"

_mivora_defaults() {
    case $COMP_CWORD,${COMP_WORDS[2]} in
        2,*) _mivora_complete "list read write delete --help" ;;
        3,read | 3,write | 3,delete) _mivora_complete "$_mivora_keys" ;;
        4,write) _mivora_complete "$(_mivora_values "${COMP_WORDS[3]}")" ;;
    esac
}

_mivora_agenda() {
    case ${COMP_WORDS[COMP_CWORD - 1]} in
        --at) _mivora_complete "$(date -Iseconds)" ;;
        --calendars) mapfile -t COMPREPLY < <(compgen -d -- "${COMP_WORDS[COMP_CWORD]}") ;;
        *) _mivora_complete "--json --follow --all --at --calendars --help" ;;
    esac
}

_mivora() {
    COMPREPLY=()
    if [ "$COMP_CWORD" -eq 1 ]; then
        _mivora_complete "agenda events detect join snooze dismiss copy show settings title quit defaults access calendars --help --version"
        return
    fi
    case ${COMP_WORDS[1]} in
        agenda) _mivora_agenda ;;
        events) _mivora_complete "--json --help" ;;
        detect)
            case ${COMP_WORDS[COMP_CWORD - 1]} in
                --url | --location | --notes) ;;
                *) _mivora_complete "--json --url --location --notes --help" ;;
            esac
            ;;
        title) [ "$COMP_CWORD" -gt 2 ] || _mivora_complete "hide show toggle --help" ;;
        settings) [ "$COMP_CWORD" -gt 2 ] || _mivora_complete "general calendars --help" ;;
        access) [ "$COMP_CWORD" -gt 2 ] || _mivora_complete "status allow reset --help" ;;
        calendars)
            case $COMP_CWORD,${COMP_WORDS[2]} in
                2,*) _mivora_complete "list add remove rename --help" ;;
                *,add) _mivora_complete "--name --help" ;;
            esac
            ;;
        defaults) _mivora_defaults ;;
        join | snooze | dismiss | copy | show | quit) _mivora_complete "--help" ;;
    esac
}

complete -o filenames -F _mivora mivora
