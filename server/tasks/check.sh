# shellcheck shell=bash
# Checks the database's integrity.
: "${gtm_dist?}"
need_data
open_data
"$gtm_dist/mupip" integ -online -region DEFAULT 2>&1
status=$?
[ $status = 0 ] || ! blocks_are_lost \
    || echo "Killed sessions left blocks marked as used. A session that starts after all others have ended frees them."
exit $status
