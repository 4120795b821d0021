# shellcheck shell=bash
# The M engine and its environment. Needs $here, the server's folder, and $data, the current data folder.
: "${here?}" "${data?}"

# shellcheck source=find-engine.sh
. "$here/lib/find-engine.sh" || exit 1
# Database and journals store each other's full path. This one stays valid wherever the folder is moved or copied to,
# and whatever characters its name has.
export gtm_dist mev_data=/proc/self/cwd
# The first session does not recover a replicated database (docs/scale.md); such a database keeps its own path.
[ -e app.repl ] && export mev_data="$data" gtm_repl_instance="$data/app.repl"
export gtmgbldir="$mev_data/app.gld"
# The library beside this program serves only the version of the engine that compiled it. Another version compiles the
# routines into the data folder. The engine separates folder names by blanks, so they are passed as descriptors, which
# all programs below inherit.
version=
read -r version 2>/dev/null <"$here/version"
export mev_version=$version
engine=
read -r engine 2>/dev/null <"$here/objects/engine"
if [ "$engine" = "${gtm_dist##*/}" ] && [ -e "$here/objects/server.so" ]; then
    exec 7<"$here/objects"
    export gtmroutines="/proc/self/fd/7/server.so $gtm_dist/libgtmutil.so"
else
    objects="$here/objects"
    [ "$engine" = "${gtm_dist##*/}" ] || objects="$data/objects/$version"
    mkdir -p "$objects" 2>/dev/null || fail "The folder $objects cannot be created."
    exec 7<"$objects" 8<"$here/routines" || fail "The folders $objects and $here/routines cannot be read."
    export gtmroutines="/proc/self/fd/7(/proc/self/fd/8) $gtm_dist/libgtmutil.so"
fi
export gtm_chset=M gtm_tmp="$mev_data" gtm_log="$mev_data" gtm_snaptmpdir="$mev_data" gtm_baktmpdir="$mev_data"
export gtm_nocenable=1 gtm_etrap='ZHALT 9'
# Without a time zone in the environment, the engine looks it up for every time, which takes longer than a read.
export TZ=${TZ:-:/etc/localtime}
# The native library computes the audit's digests, which the engine cannot.
export mev_native="$here/native" GTMXC_digest="$here/native/digest.xc"
[ -e "$mev_native/digest.so" ] \
    || fail "The server's library $mev_native/digest.so is missing: install the server again."

mupip() { "$gtm_dist/mupip" "$@" >>maintenance.log 2>&1; }
# run_routine ENTRY: runs M code of the server.
run_routine() { "$gtm_dist/mumps" -run "$1"; }
# log SENTENCE: for administrators.
log() { printf '%(%F %T)T phserver: %s\n' -1 "$1" >>maintenance.log; }
