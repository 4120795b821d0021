# One session.
open_data
mev_stream=pipe
[ -S /dev/stdin ] && mev_stream=socket
export mev_stream
exec "$gtm_dist/mumps" -run SERVE^MEVSESSION 2>>maintenance.log
