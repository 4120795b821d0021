# Checks the database's integrity.
need_data
open_data
"$gtm_dist/mupip" integ -online -region DEFAULT 2>&1
status=$?
[ $status = 0 ] || ! blocks_are_lost \
    || echo "Killed sessions left blocks marked as used: this ends when all sessions have, and the next one begins."
exit $status
