# The journals: the database's names for them, recovery from them, and how many there are. Needs lib/engine.sh.

# While sessions are at work: four of them, 32 MB each, and those of the last two minutes, which recovery may want to read: where
# the newest ones are of one second, it goes back further.
journal_switch="-journal=enable,on,before_images,epoch_interval=30,autoswitchlimit=65536,filename=\"$mev_data/app.mjl\""
mev_tidy='ls -t app.mjl_* 2>/dev/null | tail -n +4 | xargs -r -d "\n" -I{} find {} -mmin +1 -delete 2>/dev/null'
# What a session does when it finds the journal closed, and now and then while it saves; and the shell that it asks: the user's
# own may not read such quotes.
printf -v mev_journal_on '%q set %q -region DEFAULT >>maintenance.log 2>&1' "$gtm_dist/mupip" "$journal_switch"
export mev_journal_on mev_tidy SHELL=/bin/bash

# Begins a journal that knows of none before it. For a database that is closed and whole.
start_journal() {
    [ ! -e app.mjl ] || mv app.mjl "app.mjl_$EPOCHREALTIME" || return
    mupip set "$journal_switch" -region DEFAULT
}

# The journal of a database that was closed cleanly can be gone on with. One that ends ahead of now cannot: recovery looks for
# the last moment on the disk before the last save, by the times in the journal, and would find none. The times are read
# from the place where this kind of journal has them.
journal_goes_on() {
    local -a words
    [ "$known_place" = "$place" ] || return
    read -ra words < <(od -An -v -w204 -tu4 -N204 app.mjl 2>/dev/null)
    # "GDSJNL28"
    [ "${words[0]:-} ${words[1]:-}" = "1246970951 942820430" ] || return
    ((words[50] > EPOCHSECONDS)) || return 0
    log "The journal ends ahead of this computer's clock, which was set back. A new one begins."
    return 1
}

# offset FIELD: where the engine's programs have it in its files
offset() { sed -n "/\"name\")=\"$1\"/{n;s/.*=//p}" "$gtm_dist/GTMDefinedTypesInitRelease.m"; }
# number FILE FIELD, text FILE FIELD, put FILE FIELD BYTES: one field of a file's header
number() { od -An -v -tu4 -j "$(offset "$2")" -N 4 "$1" | tr -d ' '; }
text() { dd if="$1" bs=1 skip="$(offset "$2")" count=255 status=none | tr '\0' '\n' | head -n 1; }
put() { printf "$3" | dd of="$1" bs=1 seek="$(offset "$2")" conv=notrunc status=none; }
# put_text FILE FIELD LENGTH-FIELD TEXT
put_text() {
    local zeros
    printf -v zeros '\\0%.0s' $(seq $((256 - ${#4})))
    put "$1" "$2" "$4$zeros"
    put "$1" "$3" "$(printf '\\x%02x' ${#4})\0\0\0"
}

remember_place() { stat -c %d:%i app.dat >place; }

# A copy names what belongs to the original: the memory of its sessions, which this must not touch, and its journals, where
# that was made by a version that called them by their full names. Such a database that is where it was is recovered under
# these names before it gets the new ones.
adopt() {
    local name before
    known_place=
    read -r known_place 2>/dev/null <place
    [ "$known_place" != "$place" ] || return 0
    name=$(text app.dat sgmnt_data.jnl_file_name)
    [ "$name" != "$data/app.mjl" ] || { mev_data=$data; return; }
    put app.dat sgmnt_data.semid '\xff\xff\xff\xff'
    put app.dat sgmnt_data.shmid '\xff\xff\xff\xff'
    put app.dat sgmnt_data.gt_sem_ctime.ctime '\0\0\0\0\0\0\0\0'
    put app.dat sgmnt_data.gt_shm_ctime.ctime '\0\0\0\0\0\0\0\0'
    [[ $name == /*/app.mjl && $name != "$mev_data/app.mjl" ]] || return 0
    put_text app.dat sgmnt_data.jnl_file_name sgmnt_data.jnl_file_len "$mev_data/app.mjl"
    for name in app.mjl*; do
        [ -e "$name" ] || continue
        put_text "$name" jnl_file_header.data_file_name jnl_file_header.data_file_name_length "$mev_data/app.dat"
        before=$(text "$name" jnl_file_header.prev_jnl_file_name)
        [ -z "$before" ] || put_text "$name" jnl_file_header.prev_jnl_file_name jnl_file_header.prev_jnl_file_name_length \
            "$mev_data/${before##*/}"
    done
    log "The database was copied or moved here."
}

# The engine's program writes the dead sessions' memory out before it reads the journal, and waits there a minute or more for the
# lock of one that was killed while it had the journal written to the disk. It writes nothing then.
recover_backward() {
    local worker still=0 written before= begun
    begun=$(recoveries_begun)
    "$gtm_dist/mupip" journal -recover -backward "*" >>maintenance.log 2>&1 &
    worker=$!
    while sleep 0.1 && kill -0 $worker 2>/dev/null && [ "$(recoveries_begun)" = "$begun" ]; do
        written=$(sed -n 's/^wchar: //p' /proc/$worker/io 2>/dev/null)
        [ -n "$written" ] && [ "$written" = "$before" ] && ((++still)) || still=0
        before=$written
        if [ $still = 20 ]; then
            kill -9 $worker
            wait $worker 2>/dev/null
            drop_memory && mupip journal -recover -backward "*"
            return
        fi
    done
    wait $worker
}
recoveries_begun() { grep -c 'Backward processing started' maintenance.log; }

# Removes the memory that the database names, if nobody is attached to it: all that was acknowledged is in the journal too, as
# after a power loss. A number that was given to another program's memory meanwhile has another time.
drop_memory() {
    local key id permissions size creator last attached uid gid cuid cgid atime dtime ctime rest named made
    named=$(number app.dat sgmnt_data.shmid) made=$(number app.dat sgmnt_data.gt_shm_ctime.ctime)
    while read -r key id permissions size creator last attached uid gid cuid cgid atime dtime ctime rest; do
        [ "$id $attached $ctime" = "$named 0 $made" ] || continue
        log "A killed session left a lock in the memory $id; it is removed."
        ipcrm -m "$id"
    done </proc/sysvipc/shm
}

# A closed journal, of a disk that was full, has nothing to recover from: all that was saved is in the database.
recover() {
    if [ -e replaying ]; then
        replay
        return
    fi
    recover_backward || mupip rundown -region DEFAULT || recover_beginning || replay
}

# What earlier versions did to a journal when the clock was set back. One that begins, by its header, after its last save is
# recovered from when the header says less.
recover_beginning() {
    log "The journal's times go back."
    put app.mjl jnl_file_header.bov_timestamp '\1\0\0\0'
    mupip journal -recover -backward "*"
}
# One without a moment on the disk before its last save is written once more over the database, where that is sound. The mark
# lasts until then: without it the database would pass for recovered.
replay() {
    log "What the journal holds is written over the database."
    : >replaying || return
    mupip rundown -region DEFAULT -override
    mupip integ -region DEFAULT && mupip journal -recover -forward -nochecktn "$mev_data/app.mjl"
}

# Old journals and the engine's dumps, of which the last few stay for those who look for a fault.
tidy() {
    local -a journals=(app.mjl_*) dumps=(GTM_FATAL_ERROR*)
    # Nothing goes back behind this moment.
    ((${#journals[@]} < 4)) || ls -t app.mjl_* | tail -n +4 | xargs -r -d '\n' rm -f
    [ -e "${dumps[0]}" ] || return 0
    find . -maxdepth 1 -name 'GTM_FATAL_ERROR*' -mtime +6 -delete
    ls -t GTM_FATAL_ERROR* 2>/dev/null | tail -n +6 | xargs -r -d '\n' rm -f
}
