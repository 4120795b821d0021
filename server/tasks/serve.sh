# shellcheck shell=bash
# Runs one session.
: "${gtm_dist?}"
open_data
mev_stream=pipe
[ -S /dev/stdin ] && mev_stream=socket
export mev_stream
exec "$gtm_dist/mumps" -run SERVE^MEVSESSION 2>>maintenance.log
