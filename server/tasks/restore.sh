# shellcheck shell=bash
# Replaces the data with a backup and keeps the old data in a folder beside it: --restore FOLDER
: "${data?}" "${started_in?}"
source=${1:-}
[ -n "$source" ] || fail "Name the folder of the backup: --restore FOLDER."
[[ $source == /* ]] || source=$started_in/$source
[ ! -e app.repl ] || fail "The data in $data is replicated; docs/scale.md describes how to restore it."
[ -s "$source/manifest" ] || fail "The folder $source contains no complete backup."
open_lock
lock -n -x || fail "Sessions are running in $data. End them first."
[ ! -e switching ] || finish_restore

# Checks the backup before anything is changed. The copy that an interrupted restore left in "restoring" is made again.
(cd -- "$source" && sha256sum --quiet --strict -c manifest) >&2 \
    || fail "The backup in $source was changed: its checksums differ."
prepare() {
    rm -rf restoring
    mkdir restoring && cp -- "$source/app.dat" "$source/app.gld" restoring/ && : >restoring/created \
        && own restoring && sync restoring/* restoring || return
    integ_of restoring
}
with_progress "Restoring a backup" prepare \
    || { rm -rf restoring; fail "The backup is corrupt or cannot be copied to $data: is the disk full?"; }

# The old data, if there is any, moves into a folder beside the data folder.
aside=
if [ -e app.dat ]; then
    printf -v aside '%s.before-restore-%(%Y-%m-%d-%H%M%S)T' "$data" -1
    mkdir -- "$aside" && own "$aside" \
        || { rm -rf restoring; fail "The folder $aside for the old data cannot be created."; }
fi
echo "old $aside" >switching.new && own switching.new && sync switching.new && mv switching.new switching \
    || fail "The data folder $data cannot be written."
rm -f making-ready
finish_restore
own ./*
echo "The backup in $source was restored to $data.${aside:+ The old data is in $aside.}"
