# Backups: what makes a whole one, and putting one in place. Needs lib/engine.sh.

# integ_of FOLDER: the database there, which nobody has open, is sound
integ_of() { (cd -- "$1" && "$gtm_dist/mupip" integ -file app.dat </dev/null) >>maintenance.log 2>&1; }

# The file that says that a backup is whole; it is written last. Its lines without "#" are what sha256sum reads.
write_manifest() {
    (cd -- "$1" && {
        printf '# Personal Health, data of %(%FT%T%z)T\n' -1
        echo "# server $version, engine ${gtm_dist##*/}, $(stat -c %s app.dat) bytes"
        sha256sum app.dat app.gld
    } >manifest.part && sync app.dat app.gld manifest.part && mv manifest.part manifest && sync .)
}

# Moves the old data out and the restored ones in, under the lock that nobody else shares. The mark "switching" says how far this
# has come; who finds it goes on from there.
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
    place=restored
}
