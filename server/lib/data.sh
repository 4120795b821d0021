# The data folder, which is the current one: creates the database, recovers it, and shares it. Needs lib/engine.sh.
. "$here/lib/lock.sh"
. "$here/lib/journal.sh"
. "$here/lib/backup.sh"

# The mark "creating" says that what lies here is unfinished and may go; it becomes the mark "created".
create_database() {
    progress 0 "Creating the database"
    touch creating || fail "The data folder $data cannot be written."
    rm -f app.gld app.dat app.mjl* maintenance.log
    "$gtm_dist/mumps" -run GDE >>maintenance.log 2>&1 <<'GDE'
change -segment DEFAULT -file_name="$mev_data/app.dat" -access_method=BG -block_size=4096 -allocation=4096 -extension_count=4096 -global_buffer_count=4096 -mutex_slots=1024 -lock_space=4096
change -region DEFAULT -key_size=1019 -record_size=1048576 -stdnull -qdbrundown -nostats
exit
GDE
    mupip create || fail "The database cannot be created in $data: is the disk full?"
    chmod 600 app.dat
    export mev_frames=$([ "$task" = serve ] && echo 1)
    run_routine CREATE^MEVSAMPLE 2>>maintenance.log || fail "The sample data cannot be created in $data: is the disk full?"
    begin_journal
    mv creating created || fail "The data folder $data cannot be written."
}

# A session that is killed while it gives blocks back leaves them marked as used. No record is touched by it, but the
# integrity check waits for the dead, and complains.
blocks_are_lost() {
    "$gtm_dist/mupip" dumpfhead -region DEFAULT 2>&1 </dev/null \
        | grep -qE '\.(kill_in_prog|abandoned_kills)"\)=[1-9]'
}

# Makes the maps once more, from the blocks that are in use. The mark goes last: an interrupted mending is begun again.
restore_maps() {
    printf '%s\n' "maps -restore_all" "change -fileheader -kill_in_prog=0 -abandoned_kills=0" exit \
        | "$gtm_dist/dse" >>maintenance.log 2>&1
}
give_lost_blocks_back() {
    blocks_are_lost || return 0
    with_progress "Giving unused space back" restore_maps
    ! blocks_are_lost || log "Blocks that killed sessions left are still marked as used."
}

# After a clean end a rundown is all; after a kill or a power loss the journal brings the database back. Then what the journals
# hold is not needed any more.
recover_database() {
    if [ ! -e replaying ] && mupip rundown -region DEFAULT; then
        journal_goes_on || begin_journal
    else
        with_progress "Recovering the database" recover \
            || fail "The database in $data cannot be recovered; see maintenance.log there, and docs/data.md for ways out."
        begin_journal
        rm -f rolled_bak_app.mjl* replaying
    fi
    give_lost_blocks_back
}
begin_journal() {
    mev_data=/proc/self/cwd
    start_journal || fail "The journal cannot be opened in $data: is the disk full?"
    remember_place
}

# own FILE...: what an administrator's task made is of the folder's owner, whose sessions need it
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
        fail "The database in $data is not marked as complete. If it comes from a backup, add app.gld and an empty file created."
    fi
    own *
    # What killed ones left: of a start, and of backups.
    for left in making-ready DEFAULT_*; do
        [ ! -e "$left" ] || rm -f "$left"
    done
}

# A folder that others can enter is closed, as ssh asks for its own.
guard_folder() {
    ((8#$1 & 8#77)) || return 0
    [ -O . ] || [ "$EUID" = 0 ] || fail "The data folder $data is open to others than its owner (mode $1), and belongs to another user."
    chmod go-rwx . || fail "The data folder $data is open to others than its owner (mode $1), and cannot be closed."
    log "The folder was open to others than its owner (mode $1); it is closed now."
}

# For what only looks at a database: a mistyped folder is not filled with a new one, sample people included.
need_data() {
    [ -e "$data/created" ] || [ -e "$data/app.dat" ] || fail "There is no database in $data."
}

# Who finds nobody else in the folder looks after it; then everyone shares it for life.
open_data() {
    local ignored mode
    { read -r mode ignored; read -r ignored place; } < <(stat -c '%a %d:%i' . app.dat 2>/dev/null)
    guard_folder "$mode"
    open_lock
    [ -e app.repl ] || ! lock -n -x || look_after
    share_lock
    [ -e created ] || fail "The creation of the data was interrupted. Try again."
}

# What sessions do at their start, for an administrator's task: data of an earlier version are converted.
convert_data() {
    local said
    said=$(run_routine READY^MEVDATAVERSION)
    [[ $said != *F0$'\n'* ]] || fail "${said##*F0$'\n'}"
}
