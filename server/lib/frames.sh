# shellcheck shell=bash
# Messages of the scripts: frames to a session's client (docs/protocol.md), plain lines to an administrator.
# A script that serves a session sets task=serve.

# frame BODY: writes one reply frame, the body's length in eight digits and then the body.
frame() { printf '%08d%s' "${#1}" "$1"; }

# progress PERCENT TEXT: for a session's client only.
progress() { [ "${task:-}" != serve ] || frame "P$1"$'\n'"$2"; }

# with_progress TEXT COMMAND...: reports every few seconds that the command is running, because clients give up on a
# silent server. TEXT is empty for a command that reports its own progress.
with_progress() {
    local text=$1 ticks=0
    shift
    [ -z "$text" ] || progress 0 "$text"
    tell_waiting "$text"
    "$@" <&0 &
    while sleep 0.2 && kill -0 $! 2>/dev/null; do
        ((++ticks % 20)) && continue
        [ -z "$text" ] || progress 0 "$text"
        tell_waiting "$text"
    done
    wait $!
}

# fail SENTENCE: exits with an error message, on standard error and, in a session, as a frame.
fail() {
    echo "${0##*/}: $1" >&2
    if [ "${task:-}" = serve ]; then
        frame "F0"$'\n'"$1"
        # Closing a socket with unread bytes discards what was sent: wait until the client has gone.
        [ ! -S /dev/stdin ] || timeout 2 cat >/dev/null
    fi
    exit 1
}
