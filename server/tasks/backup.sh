# shellcheck shell=bash
# Copies the data of one moment into a new or empty folder while sessions run: --backup FOLDER
: "${data?}" "${gtm_dist?}" "${started_in?}"
target=${1:-}
[ -n "$target" ] || fail "Name the folder for the backup: --backup FOLDER."
[[ $target == /* ]] || target=$started_in/$target
[ -e created ] || fail "There is no data in $data to back up."
mkdir -p -- "$target" && [ -d "$target" ] && [ -z "$(ls -A -- "$target")" ] \
    || fail "The folder $target is not empty or cannot be created."
target=$(cd -- "$target" && pwd -P)
case "$target/" in "$data/"*) fail "The folder $target is inside the data folder." ;; esac
open_data

# An unfinished backup has no file "manifest" and cannot be restored.
give_up() {
    rm -f "$target"/{app.dat,app.gld,says,manifest.part}
    fail "$1"
}
trap 'give_up "The backup was interrupted."' INT TERM HUP
exec 5<"$target" || fail "The folder $target cannot be read."
"$gtm_dist/mupip" backup -online -replace DEFAULT /proc/self/fd/5/app.dat >"$target/says" 2>&1 \
    && cp app.gld "$target/" \
    || { cat "$target/says" >&2; give_up "The data cannot be copied to $target: is the disk full?"; }
integ_of "$target" || give_up "The copy in $target is corrupt. Check the database with --check."
rm -f "$target/says"
write_manifest "$target" || give_up "The disk of $target is full."
echo "The data of $data was copied to $target and checked."
