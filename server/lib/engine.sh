# The M engine and its environment. Needs $here, the server's folder, and $data, the data folder.

gtm_dist=$(ls -d /usr/lib/*/fis-gtm/V*_* 2>/dev/null | sort -V | tail -n 1)
[ -n "$gtm_dist" ] || fail "The M engine is not installed (Debian package fis-gtm)."
# The objects beside this program serve the engine that compiled them only; another one compiles its own with the data.
objects="$here/objects"
[ "$(cat "$objects/engine" 2>/dev/null)" = "${gtm_dist##*/}" ] || objects="$data/objects"
mkdir -p "$objects" 2>/dev/null || fail "The folder $objects cannot be made."
export gtm_dist mev_data="$data"
export gtmgbldir="$data/app.gld"
# The engine parts its folders by blanks, so it gets these by descriptors, which all programs below inherit.
exec 7<"$objects" 8<"$here/routines" || fail "The folders $objects and $here/routines cannot be read."
export gtmroutines="/proc/self/fd/7(/proc/self/fd/8) $gtm_dist/libgtmutil.so"
# Where no zone is named, the engine looks for it each time it asks what time it is, which costs more than a read.
export TZ=${TZ:-:/etc/localtime}
export gtm_chset=M gtm_tmp="$data" gtm_log="$data" gtm_snaptmpdir="$data" gtm_nocenable=1 gtm_etrap='ZHALT 9'
# The engine has no digest: a native library of the server's own, which the audit needs.
export mev_native="$here/native" GTMXC_digest="$here/native/digest.xc"
[ -e "$mev_native/digest.so" ] || fail "The server's library $mev_native/digest.so is missing: install the server again."
# A replicated database is recovered by those who replicate it (docs/scale.md), not by its first session.
[ -e "$data/app.repl" ] && export gtm_repl_instance="$data/app.repl"

mupip() { "$gtm_dist/mupip" "$@" >>"$data/maintenance.log" 2>&1; }
# run_routine ENTRY: runs M code of the server.
run_routine() { "$gtm_dist/mumps" -run "$1"; }
