# The data folder: creates the database, recovers it, and shares it. Needs lib/engine.sh.

journal="$data/app.mjl"

journal_switch="-journal=enable,on,before_images,epoch_interval=30,autoswitchlimit=262144,filename=\"$journal\""
switch_journal_on() { mupip set "$journal_switch" -region DEFAULT; }
# What a session does when it finds the journal closed, and the shell that it asks: the user's own may not read such quotes.
mev_journal_on=$(printf '%q set %q -region DEFAULT >>%q 2>&1' "$gtm_dist/mupip" "$journal_switch" "$data/maintenance.log")
export mev_journal_on SHELL=/bin/bash

# The mark "creating" says that what lies here is unfinished and may go; it becomes the mark "created".
create_database() {
    progress 0 "Creating the database"
    touch "$data/creating" || fail "The data folder $data cannot be written."
    rm -f "$data"/app.gld "$data"/app.dat "$data"/app.mjl* "$data"/maintenance.log
    "$gtm_dist/mumps" -run GDE >>"$data/maintenance.log" 2>&1 <<'GDE'
change -segment DEFAULT -file_name="$mev_data/app.dat" -access_method=BG -block_size=4096 -allocation=4096 -extension_count=4096 -global_buffer_count=4096 -mutex_slots=1024 -lock_space=4096
change -region DEFAULT -key_size=1019 -record_size=1048576 -stdnull -qdbrundown -nostats
exit
GDE
    mupip create || fail "The database cannot be created in $data: is the disk full?"
    chmod 600 "$data/app.dat"
    export mev_frames=$([ "$task" = serve ] && echo 1)
    run_routine CREATE^MEVSAMPLE 2>>"$data/maintenance.log" \
        || fail "The sample data cannot be created in $data: is the disk full?"
    switch_journal_on || fail "The journal cannot be opened in $data: is the disk full?"
    mv "$data/creating" "$data/created" || fail "The data folder $data cannot be written."
}

# A session that is killed while it gives blocks back leaves them marked as used. No record is touched by it, but the
# integrity check waits for the dead, and complains.
blocks_are_lost() {
    "$gtm_dist/mupip" dumpfhead -region DEFAULT 2>&1 </dev/null \
        | grep -qE '\.(kill_in_prog|abandoned_kills)"\)=[1-9]'
}

# Makes the maps anew from the blocks that are in use. The mark goes last: an interrupted mending is begun again.
restore_maps() {
    printf '%s\n' "maps -restore_all" "change -fileheader -kill_in_prog=0 -abandoned_kills=0" exit \
        | "$gtm_dist/dse" >>"$data/maintenance.log" 2>&1
}
give_lost_blocks_back() {
    blocks_are_lost || return
    with_progress "Giving unused space back" restore_maps
    ! blocks_are_lost || echo "phserver: Blocks that killed sessions left are still marked as used." >>"$data/maintenance.log"
}

# After a clean end a rundown is all; after a kill or a power loss the journal brings the database back.
recover_database() {
    mupip rundown -region DEFAULT && { give_lost_blocks_back; return; }
    # A full disk closes the journal; there is nothing to recover from it then, and all that was saved is in the database.
    with_progress "Recovering the database" mupip journal -recover -backward "*" \
        || mupip rundown -region DEFAULT || fail "The database in $data cannot be recovered; see maintenance.log there."
    switch_journal_on || fail "The journal cannot be opened in $data: is the disk full?"
    give_lost_blocks_back
}

# What is in the database needs no old journals; the newest three stay for those who look for a fault.
remove_old_journals() { ls -t "$data"/app.mjl_* 2>/dev/null | tail -n +4 | xargs -r -d '\n' rm -f; }

look_after() {
    if [ -e "$data/created" ]; then
        recover_database
        remove_old_journals
    elif [ -e "$data/creating" ] || [ ! -e "$data/app.dat" ]; then
        create_database
    else
        fail "The database in $data is not marked as complete. If it comes from a backup, add app.gld and an empty file created."
    fi
}

# lock OPTION...: true with the lock, false where others hold it.
lock() {
    flock -E 75 "$@" 9
    case $? in
        0) ;;
        75) return 1 ;;
        *) fail "The data folder $data cannot be locked. It must lie on a disk that has locks, best one of this machine." ;;
    esac
}

# For what only looks at a database: a mistyped folder is not filled with a new one, sample people included.
need_data() {
    [ -e "$data/created" ] || [ -e "$data/app.dat" ] || fail "There is no database in $data."
}

# Who finds nobody else in the folder looks after it; then everyone shares it for life.
open_data() {
    exec 9>"$data/lock" || fail "The data folder $data cannot be written."
    [ -e "$data/app.repl" ] || ! lock -n -x || look_after
    until lock -s -w 1; do
        progress 0 "Another session is making the data ready"
    done
    [ -e "$data/created" ] || fail "The creation of the data was interrupted. Try again."
}
