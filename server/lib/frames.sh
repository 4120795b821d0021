# What the scripts say: in frames to a session's client (docs/protocol.md), in plain lines to an administrator.

# frame BODY: writes one answer frame, the body's length in eight digits and then the body.
frame() { printf '%08d%s' "${#1}" "$1"; }

# progress PERCENT TEXT: for a session's client alone.
progress() { [ "$task" != serve ] || frame "P$1"$'\n'"$2"; }

# with_progress TEXT COMMAND...: says every few seconds that the command is at work; a silent server is taken for dead. What
# names its own progress gets an empty text.
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

# fail SENTENCE: ends with a sentence for the user: in a frame for a session, on standard error in any case.
fail() {
    echo "phserver: $1" >&2
    [ "$task" = serve ] && frame "F0"$'\n'"$1"
    # A socket that is closed with bytes unread takes back what was sent: waits until the client has gone.
    [ "$task" = serve ] && [ -S /dev/stdin ] && timeout 2 cat >/dev/null
    exit 1
}
