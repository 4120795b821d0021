# shellcheck shell=bash
# The lock on the data folder: its exclusive holder prepares the data; every session then shares it until it ends.
: "${data?}"

# lock OPTION...: true if the lock was taken, false if others hold it.
lock() {
    flock -E 75 "$@" 9
    case $? in
        0) ;;
        75) return 1 ;;
        *) fail "The data folder $data cannot be locked. It needs a disk with file locks, preferably a local one." ;;
    esac
}
open_lock() { exec 9>lock || fail "The data folder $data cannot be written."; }

# The processes that hold the exclusive lock, as far as this user can see them.
holders() {
    local file
    grep -lsE "FLOCK +ADVISORY +WRITE .*:$(stat -c %i lock) " /proc/[0-9]*/fdinfo/* | while read -r file; do
        file=${file#/proc/}
        echo "${file%%/*}"
    done | sort -nu
}

# tell_waiting TEXT: reports to the sessions that wait for this one. The counts of context switches show that the
# engine's programs are running: they stay the same in a stopped program and in one that waits for a dead disk.
tell_waiting() {
    local process name turns=
    for process in $(holders); do
        read -r name 2>/dev/null <"/proc/$process/comm" || continue
        [[ $name == @(mupip|mumps|dse|cp|sync) ]] \
            && turns+=" $(sed -n 's/.*ctxt_switches:\t/+/p' "/proc/$process/status" 2>/dev/null)"
    done
    echo "${1:-Creating the database} ${turns//$'\n'/ }" 2>/dev/null >making-ready
}

# Names the process that holds the lock, so that the administrator can end it.
accuse() {
    local process name state since
    process=$(holders | head -n 1)
    [ -n "$process" ] || { echo "a process that $(id -un) cannot see"; return; }
    read -r name 2>/dev/null <"/proc/$process/comm" || name=ended
    grep -q '^State:.*stopped' "/proc/$process/status" 2>/dev/null && state=", stopped"
    printf 'process %s (%s, user %s%s, since %(%F %T)T)' "$process" "$name" \
        "$(stat -c %U "/proc/$process" 2>/dev/null)" "${state:-}" \
        "$(stat -c %Y "/proc/$process" 2>/dev/null || echo -1)"
}

# Takes the shared lock; while waiting, passes on the progress of the session that holds it exclusively. A holder that
# reports nothing new for too long has hung.
share_lock() {
    local told='' before='' limit=${PHSERVER_LOCK_LIMIT:-60} since=$SECONDS
    lock -s -n && return
    until lock -s -w 1; do
        read -r told 2>/dev/null <making-ready
        [ "$told" = "$before" ] || since=$SECONDS
        before=$told
        told=${told%% +*}
        ((SECONDS - since < limit)) \
            || fail "The data in $data is locked by $(accuse), which has done nothing for $limit seconds. End it, then retry."
        progress 0 "Another session is making the data ready${told:+: $told}"
    done
}
