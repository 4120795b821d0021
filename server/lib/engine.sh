# The M engine and its environment. Needs $here, the server's folder, and $data, the data folder, which is the current one.

gtm_dist=$(ls -d /usr/lib/*/fis-gtm/V*_* 2>/dev/null | sort -V | tail -n 1)
[ -n "$gtm_dist" ] || fail "The M engine is not installed (Debian package fis-gtm)."
# Database and journals keep each other's full names in them. By this one they find each other wherever the folder is moved
# or copied to, and whatever characters its name has.
export gtm_dist mev_data=/proc/self/cwd
# A replicated database is recovered by those who replicate it (docs/scale.md), not by its first session, under its own name.
[ -e app.repl ] && export mev_data="$data" gtm_repl_instance="$data/app.repl"
export gtmgbldir="$mev_data/app.gld"
# The routines beside this program were compiled into one library, for the engine that did it. Another one compiles its own,
# with the data. The engine parts its folders by blanks, so it gets these by descriptors, which all programs below inherit.
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
    mkdir -p "$objects" 2>/dev/null || fail "The folder $objects cannot be made."
    exec 7<"$objects" 8<"$here/routines" || fail "The folders $objects and $here/routines cannot be read."
    export gtmroutines="/proc/self/fd/7(/proc/self/fd/8) $gtm_dist/libgtmutil.so"
fi
export gtm_chset=M gtm_tmp="$mev_data" gtm_log="$mev_data" gtm_snaptmpdir="$mev_data" gtm_baktmpdir="$mev_data"
export gtm_nocenable=1 gtm_etrap='ZHALT 9'
# Where no zone is named, the engine looks for it each time it asks what time it is, which costs more than a read.
export TZ=${TZ:-:/etc/localtime}
# The engine has no digest: a native library of the server's own, which the audit needs.
export mev_native="$here/native" GTMXC_digest="$here/native/digest.xc"
[ -e "$mev_native/digest.so" ] || fail "The server's library $mev_native/digest.so is missing: install the server again."

mupip() { "$gtm_dist/mupip" "$@" >>maintenance.log 2>&1; }
# run_routine ENTRY: runs M code of the server.
run_routine() { "$gtm_dist/mumps" -run "$1"; }
# log SENTENCE: for those who look after the server.
log() { printf '%(%F %T)T phserver: %s\n' -1 "$1" >>maintenance.log; }
