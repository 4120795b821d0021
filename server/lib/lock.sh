# The lock on the data folder: who has it alone makes the data ready, all sessions share it for life.

# lock OPTION...: true with the lock, false where others hold it.
lock() {
    flock -E 75 "$@" 9
    case $? in
        0) ;;
        75) return 1 ;;
        *) fail "The data folder $data cannot be locked. It must lie on a disk that has locks, best one of this machine." ;;
    esac
}
open_lock() { exec 9>lock || fail "The data folder $data cannot be written."; }

# The processes that hold the lock alone, as far as this user sees them.
holders() {
    local file
    for file in $(grep -lsE "FLOCK +ADVISORY +WRITE .*:$(stat -c %i lock) " /proc/[0-9]*/fdinfo/*); do
        file=${file#/proc/}
        echo "${file%%/*}"
    done | sort -nu
}

# tell_waiting TEXT: for the sessions that wait for this one. The engine's programs count their turns: who is stopped, or waits
# for a disk that never answers, has none.
tell_waiting() {
    local process name turns=
    for process in $(holders); do
        read -r name 2>/dev/null <"/proc/$process/comm" || continue
        [[ $name == @(mupip|mumps|dse|cp|sync) ]] && turns+=" $(sed -n 's/.*ctxt_switches:\t/+/p' "/proc/$process/status" 2>/dev/null)"
    done
    echo "${1:-Creating the database} "$turns 2>/dev/null >making-ready
}

# What keeps the others out, for a person to end it.
accuse() {
    local process name state since
    process=$(holders | head -n 1)
    [ -n "$process" ] || { echo "a process that $(id -un) cannot see"; return; }
    read -r name 2>/dev/null <"/proc/$process/comm" || name=ended
    grep -q '^State:.*stopped' "/proc/$process/status" 2>/dev/null && state=", stopped"
    printf 'process %s (%s, user %s%s, since %(%F %T)T)' "$process" "$name" "$(stat -c %U "/proc/$process" 2>/dev/null)" \
        "${state:-}" "$(stat -c %Y "/proc/$process" 2>/dev/null || echo -1)"
}

# Shares the lock, and repeats meanwhile what the session does that has it alone. Who tells nothing new for too long has hung.
share_lock() {
    local told= before= limit=${PHSERVER_LOCK_LIMIT:-60} since=$SECONDS
    lock -s -n && return
    until lock -s -w 1; do
        read -r told 2>/dev/null <making-ready
        [ "$told" = "$before" ] || since=$SECONDS
        before=$told
        told=${told%% +*}
        ((SECONDS - since < limit)) \
            || fail "The data in $data are kept locked by $(accuse), which has done nothing for $limit seconds. End it, and try again."
        progress 0 "Another session is making the data ready${told:+: $told}"
    done
}
