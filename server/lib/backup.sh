# shellcheck shell=bash
# Checking, marking and restoring backups. Needs lib/engine.sh.
: "${data?}" "${gtm_dist?}" "${version?}"

# integ_of FOLDER: true if the database there is sound; no process may have it open
integ_of() { (cd -- "$1" && "$gtm_dist/mupip" integ -file app.dat </dev/null) >>maintenance.log 2>&1; }

# The manifest marks a backup as complete and is written last. sha256sum reads its lines without "#".
write_manifest() {
    (cd -- "$1" && {
        printf '# Personal Health, data of %(%FT%T%z)T\n' -1
        echo "# server $version, engine ${gtm_dist##*/}, $(stat -c %s app.dat) bytes"
        sha256sum app.dat app.gld
    } >manifest.part && sync app.dat app.gld manifest.part && mv manifest.part manifest && sync .)
}

# Moves the old data out and the restored data in, under the exclusive lock. The file "switching" records the progress;
# the next process that finds it continues from there.
finish_restore() {
    local phase aside file
    read -r phase aside <switching
    if [ "$phase" = old ]; then
        for file in *; do
            [[ $file == @(lock|restoring|switching*) ]] && continue
            if [ -n "$aside" ]; then mv -- "$file" "$aside/"; else rm -rf -- "$file"; fi \
                || fail "The old data cannot be moved to $aside."
        done
        echo "new $aside" >switching.new && own switching.new && sync . && mv switching.new switching \
            || fail "The data folder $data cannot be written."
    fi
    for file in restoring/*; do
        [ ! -e "$file" ] || mv -- "$file" . || fail "The data folder $data cannot be written."
    done
    sync .
    rm -rf restoring switching
    # shellcheck disable=SC2034 # for adopt in lib/journal.sh: differs from the place in the file
    place=restored
}
