# Completion of mivora for fish.

complete -c mivora -f

function __mivora_command
    complete -c mivora -n __fish_use_subcommand -a $argv[1] -d $argv[2]
end
__mivora_command agenda "Print today's meetings, the next one and its countdown"
__mivora_command events "Print a line whenever a meeting is due, joined, started or ended"
__mivora_command detect "Print the join link of an event's texts"
__mivora_command join "Join the meeting of the panel, or else the next one with a link"
__mivora_command snooze "Hide the panel for a minute"
__mivora_command dismiss "Hide the panel of this meeting"
__mivora_command copy "Copy the join link of the meeting that would be joined"
__mivora_command show "Show today's meetings in a small window"
__mivora_command settings "Open the settings"
__mivora_command title "Hide titles in the tray and on the panel, or show them again"
__mivora_command quit "End the running program"
__mivora_command defaults "Read and write the settings store"
__mivora_command access "Show, give or take back the permission to read your calendars"
__mivora_command calendars "Subscribe to calendars by their addresses, and list these calendars"
functions -e __mivora_command
complete -c mivora -s h -l help -d "Print help"
complete -c mivora -n __fish_use_subcommand -l version -d "Print the version"

complete -c mivora -n "__fish_seen_subcommand_from agenda events detect" -l json -d "Print JSON"
complete -c mivora -n "__fish_seen_subcommand_from agenda" -l follow -d "Print again whenever something changes"
complete -c mivora -n "__fish_seen_subcommand_from agenda" -l all -d "Show what the settings leave out too"
complete -c mivora -n "__fish_seen_subcommand_from agenda" -l at -x -d "Show the agenda of this time (RFC 3339)"
complete -c mivora -n "__fish_seen_subcommand_from agenda" -l calendars -x -a "(__fish_complete_directories)" \
    -d "Read this folder instead of your own"
complete -c mivora -n "__fish_seen_subcommand_from detect" -l url -x -d "The event's URL"
complete -c mivora -n "__fish_seen_subcommand_from detect" -l location -x -d "The event's location"
complete -c mivora -n "__fish_seen_subcommand_from detect" -l notes -x -d "The event's notes"
complete -c mivora -n "__fish_seen_subcommand_from settings" -a "general calendars"
complete -c mivora -n "__fish_seen_subcommand_from title" -a "hide show toggle"
complete -c mivora -n "__fish_seen_subcommand_from access" -a "status allow reset"
complete -c mivora -n "__fish_seen_subcommand_from calendars" -a "list add remove rename"
complete -c mivora -n "__fish_seen_subcommand_from calendars" -l name -x -d "The name of an added calendar"

set -l actions list read write delete
set -l keys showTitle titleWidth hideTitleWhileInhibited leadMinutes panelCorner remindWithoutLink joinHotKey disabledCalendarIDs \
    ignoredTitles ignoreUnanswered ignoreWithoutOthers browserServices hasCompletedOnboarding addresses
set -l in_defaults "__fish_seen_subcommand_from defaults"
complete -c mivora -n "$in_defaults; and not __fish_seen_subcommand_from $actions" -a "$actions"
complete -c mivora -n "$in_defaults; and __fish_seen_subcommand_from read write delete
    and not __fish_seen_subcommand_from $keys" -a "$keys"
set -l is_value_of "$in_defaults; and __fish_seen_subcommand_from write; and __fish_seen_subcommand_from"
complete -c mivora -n "$is_value_of showTitle hideTitleWhileInhibited remindWithoutLink ignoreUnanswered ignoreWithoutOthers hasCompletedOnboarding" -a "true false"
complete -c mivora -n "$is_value_of leadMinutes" -a "0 1 2 5"
complete -c mivora -n "$is_value_of panelCorner" -a "topLeft topRight bottomLeft bottomRight"
