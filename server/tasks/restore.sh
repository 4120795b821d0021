# Puts a backup in the place of the data, which stay in a folder beside them: --restore FOLDER
source=${1:-}
[ -n "$source" ] || fail "No folder of a backup was named (--restore FOLDER)."
[[ $source == /* ]] || source=$started_in/$source
[ ! -e app.repl ] || fail "The data in $data are replicated; docs/scale.md tells how to restore them."
[ -s "$source/manifest" ] || fail "The folder $source holds no finished backup."
open_lock
lock -n -x || fail "Sessions are at work in $data. End them first."
[ ! -e switching ] || finish_restore

# Proved before anything is touched. What an interrupted restore left in "restoring" is made once more.
(cd -- "$source" && sha256sum --quiet --strict -c manifest) >&2 || fail "The backup in $source is not what it was: its checksums differ."
prepare() {
    rm -rf restoring
    mkdir restoring && cp -- "$source/app.dat" "$source/app.gld" restoring/ && : >restoring/created \
        && own restoring && sync restoring/* restoring || return
    integ_of restoring
}
with_progress "Restoring a backup" prepare \
    || { rm -rf restoring; fail "The backup is not sound, or cannot be copied to $data: is the disk full?"; }

# The old data go into a folder beside, if there are any.
aside=
if [ -e app.dat ]; then
    printf -v aside '%s.before-restore-%(%Y-%m-%d-%H%M%S)T' "$data" -1
    mkdir -- "$aside" && own "$aside" || { rm -rf restoring; fail "The folder $aside for the present data cannot be made."; }
fi
echo "old $aside" >switching.new && own switching.new && sync switching.new && mv switching.new switching \
    || fail "The data folder $data cannot be written."
rm -f making-ready
finish_restore
own *
echo "The data in $data are those of the backup in $source.${aside:+ What was there is in $aside.}"
