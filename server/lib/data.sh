# shellcheck shell=bash
# The data folder, which is the current folder: creates, recovers, and shares the database. Needs lib/engine.sh.
: "${here?}" "${data?}" "${gtm_dist?}" "${task?}"
# shellcheck source=lock.sh
. "$here/lib/lock.sh" || exit 1
# shellcheck source=journal.sh
. "$here/lib/journal.sh" || exit 1
# shellcheck source=backup.sh
. "$here/lib/backup.sh" || exit 1

# The file "creating" marks an unfinished database, which may be deleted; it is renamed "created" at the end.
create_database() {
    progress 0 "Creating the database"
    touch creating || fail "The data folder $data cannot be written."
    rm -f app.gld app.dat app.mjl* maintenance.log
    "$gtm_dist/mumps" -run GDE >>maintenance.log 2>&1 <<'GDE'
change -segment DEFAULT -file_name="$mev_data/app.dat" -access_method=BG -block_size=4096
change -segment DEFAULT -allocation=4096 -extension_count=4096 -global_buffer_count=4096
change -segment DEFAULT -mutex_slots=1024 -lock_space=4096
change -region DEFAULT -key_size=1019 -record_size=1048576 -stdnull -qdbrundown -nostats
exit
GDE
    mupip create || fail "The database cannot be created in $data: is the disk full?"
    chmod 600 app.dat
    export mev_frames=
    [ "$task" != serve ] || mev_frames=1
    run_routine CREATE^MEVSAMPLE 2>>maintenance.log \
        || fail "The sample data cannot be created in $data: is the disk full?"
    begin_journal
    mv creating created || fail "The data folder $data cannot be written."
}

# A session that is killed while it frees blocks leaves them marked as used. No record is damaged, but the integrity
# check waits for the dead session and then reports an error.
blocks_are_lost() {
    "$gtm_dist/mupip" dumpfhead -region DEFAULT 2>&1 </dev/null \
        | grep -qE '\.(kill_in_prog|abandoned_kills)"\)=[1-9]'
}

# Rebuilds the block maps from the blocks in use. Clears the counters last, so that an interrupted repair starts again.
restore_maps() {
    printf '%s\n' "maps -restore_all" "change -fileheader -kill_in_prog=0 -abandoned_kills=0" exit \
        | "$gtm_dist/dse" >>maintenance.log 2>&1
}
give_lost_blocks_back() {
    blocks_are_lost || return 0
    with_progress "Reclaiming unused space" restore_maps
    ! blocks_are_lost || log "Blocks that killed sessions left are still marked as used."
}

# After a clean end, a rundown is enough; after a kill or a power loss, the database is recovered from the journal,
# which is no longer needed afterwards.
recover_database() {
    if [ ! -e replaying ] && mupip rundown -region DEFAULT; then
        journal_continues || begin_journal
    else
        with_progress "Recovering the database" recover \
            || fail "The database in $data cannot be recovered; see its maintenance.log, and docs/data.md."
        begin_journal
        rm -f rolled_bak_app.mjl* replaying
    fi
    give_lost_blocks_back
}
begin_journal() {
    # shellcheck disable=SC2034 # exported by lib/engine.sh; adopt may have changed it
    mev_data=/proc/self/cwd
    start_journal || fail "The journal cannot be opened in $data: is the disk full?"
    remember_place
}

# own FILE...: gives files that root has created to the folder's owner, whose sessions need them
own() { [ "$EUID" != 0 ] || [ -O . ] || chown -R --reference=. -- "$@"; }

look_after() {
    local left
    [ ! -e switching ] || finish_restore
    if [ -e created ]; then
        adopt
        recover_database
        tidy
    elif [ -e creating ] || [ ! -e app.dat ]; then
        with_progress "" create_database || exit 1
    else
        fail "The database in $data is not marked as complete. If it is a copy, add app.gld and an empty file created."
    fi
    own ./*
    # Left by a killed start or backup.
    for left in making-ready DEFAULT_*; do
        [ ! -e "$left" ] || rm -f "$left"
    done
}

# Closes a folder that other users can enter.
guard_folder() {
    ((8#$1 & 8#77)) || return 0
    [ -O . ] || [ "$EUID" = 0 ] \
        || fail "The data folder $data is open to other users than its owner (mode $1) and belongs to another user."
    chmod go-rwx . || fail "The data folder $data is open to other users than its owner (mode $1) and cannot be closed."
    log "The folder was open to other users than its owner (mode $1); it is closed now."
}

# For tasks that only read a database: a mistyped folder name must not create a new one.
need_data() {
    [ -e "$data/created" ] || [ -e "$data/app.dat" ] || fail "There is no database in $data."
}

# The only process in the folder prepares the data; then all share the lock until they end.
open_data() {
    local mode
    { read -r mode _; read -r _ place; } < <(stat -c '%a %d:%i' . app.dat 2>/dev/null)
    guard_folder "$mode"
    open_lock
    [ -e app.repl ] || ! lock -n -x || look_after
    share_lock
    [ -e created ] || fail "The creation of the data was interrupted. Retry."
}

# Converts the data of an earlier version, as a session does when it starts, for an administrator's task.
convert_data() {
    local said
    said=$(run_routine READY^MEVDATAVERSION)
    [[ $said != *F0$'\n'* ]] || fail "${said##*F0$'\n'}"
}
