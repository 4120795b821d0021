# shellcheck shell=bash
# The journals: their paths in the database, recovery from them, and which of them are kept. Needs lib/engine.sh.
: "${data?}" "${gtm_dist?}" "${mev_data?}"
# Device and inode of the database: now, and when the journal began (from the file "place").
place='' known_place=''

# While sessions run, the newest four of 32 MB each are kept, and those of the last two minutes: recovery reads further
# back if the newest ones were all written within a second.
# shellcheck disable=SC2089,SC2090 # the quotes are for mupip and for the shell that runs the command
journal_switch="-journal=enable,on,before_images,epoch_interval=30,autoswitchlimit=65536,filename=\"$mev_data/app.mjl\""
# shellcheck disable=SC2089,SC2090
mev_tidy='ls -t app.mjl_* 2>/dev/null | tail -n +4 | xargs -r -d "\n" -I{} find {} -mmin +1 -delete 2>/dev/null'
# The commands a session runs when it finds the journal closed, and now and then while it saves. They are quoted for
# bash; the user's own shell may not understand that.
printf -v mev_journal_on '%q set %q -region DEFAULT >>maintenance.log 2>&1' "$gtm_dist/mupip" "$journal_switch"
# shellcheck disable=SC2090
export mev_journal_on mev_tidy SHELL=/bin/bash

# Begins a journal without a predecessor, for a database that is closed and complete.
start_journal() {
    [ ! -e app.mjl ] || mv app.mjl "app.mjl_$EPOCHREALTIME" || return
    mupip set "$journal_switch" -region DEFAULT
}

# True if the journal of a cleanly closed database can be continued. One that ends in the future cannot: recovery uses
# its times to find the last checkpoint before the last save, and would find none. The offsets are those of the
# format GDSJNL28.
journal_continues() {
    local -a words
    [ "$known_place" = "$place" ] || return
    read -ra words < <(od -An -v -w204 -tu4 -N204 app.mjl 2>/dev/null)
    # "GDSJNL28"
    [ "${words[0]:-} ${words[1]:-}" = "1246970951 942820430" ] || return
    ((words[50] > EPOCHSECONDS)) || return 0
    log "The journal ends in the future: this computer's clock was set back. A new journal begins."
    return 1
}

# offset FIELD: the offset of a field in the engine's files
offset() { sed -n "/\"name\")=\"$1\"/{n;s/.*=//p}" "$gtm_dist/GTMDefinedTypesInitRelease.m"; }
# number FILE FIELD, text FILE FIELD, put FILE FIELD BYTES: reads or writes a field of a file's header
number() { od -An -v -tu4 -j "$(offset "$2")" -N 4 "$1" | tr -d ' '; }
text() { dd if="$1" bs=1 skip="$(offset "$2")" count=255 status=none | tr '\0' '\n' | head -n 1; }
put() { printf %b "$3" | dd of="$1" bs=1 seek="$(offset "$2")" conv=notrunc status=none; }
# put_text FILE FIELD LENGTH-FIELD TEXT
put_text() {
    local zeros
    printf -v zeros '\\0%.0s' $(seq $((256 - ${#4})))
    put "$1" "$2" "$4$zeros"
    put "$1" "$3" "$(printf '\\x%02x' ${#4})\0\0\0"
}

remember_place() { stat -c %d:%i app.dat >place; }

# A copied database still names the original's shared memory, which must stay untouched, and, if an earlier version made
# it, its journals by their full paths. A database of an earlier version that was not moved is recovered under those
# paths before it gets the new ones.
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
        [ -z "$before" ] || put_text "$name" jnl_file_header.prev_jnl_file_name \
            jnl_file_header.prev_jnl_file_name_length "$mev_data/${before##*/}"
    done
    log "The database was copied or moved here."
}

# Before it reads the journal, the engine writes out the memory of dead sessions. If one of them was killed while it was
# syncing the journal, the engine waits a minute or more for its lock and writes nothing meanwhile.
recover_backward() {
    local worker still=0 written before='' begun
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

# Removes the shared memory that the database names, if no process is attached: as after a power loss, every
# acknowledged save is in the journal. Another program's memory with the same number has another creation time.
drop_memory() {
    local id attached ctime named made
    named=$(number app.dat sgmnt_data.shmid) made=$(number app.dat sgmnt_data.gt_shm_ctime.ctime)
    while read -r _ id _ _ _ _ attached _ _ _ _ _ _ ctime _; do
        [ "$id $attached $ctime" = "$named 0 $made" ] || continue
        log "A killed session left a lock in the shared memory $id, which was removed."
        ipcrm -m "$id"
    done </proc/sysvipc/shm
}

# A journal that was closed because the disk was full has nothing to recover: every save is in the database.
recover() {
    if [ -e replaying ]; then
        replay
        return
    fi
    recover_backward || mupip rundown -region DEFAULT || recover_beginning || replay
}

# Earlier versions continued a journal after the clock was set back. If its header says that it begins after its last
# save, recovery works only with an earlier time in the header.
recover_beginning() {
    log "The journal's times go back."
    put app.mjl jnl_file_header.bov_timestamp '\1\0\0\0'
    mupip journal -recover -backward "*"
}
# Applies a journal without a checkpoint before its last save to the database again, if the database is sound. The file
# "replaying" stays until that is done; without it, the database would count as recovered.
replay() {
    log "The journal is applied to the database again."
    : >replaying || return
    mupip rundown -region DEFAULT -override
    mupip integ -region DEFAULT && mupip journal -recover -forward -nochecktn "$mev_data/app.mjl"
}

# Removes old journals and the engine's dumps, except the last few, which help to find errors.
tidy() {
    local -a journals=(app.mjl_*) dumps=(GTM_FATAL_ERROR*)
    # Recovery never reads further back than this start.
    ((${#journals[@]} < 4)) || ls -t app.mjl_* | tail -n +4 | xargs -r -d '\n' rm -f
    [ -e "${dumps[0]}" ] || return 0
    find . -maxdepth 1 -name 'GTM_FATAL_ERROR*' -mtime +6 -delete
    ls -t GTM_FATAL_ERROR* 2>/dev/null | tail -n +6 | xargs -r -d '\n' rm -f
}
