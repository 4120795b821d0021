# One session.
open_data
mev_stream=pipe
[ -S /dev/stdin ] && mev_stream=socket
export mev_stream
exec "$gtm_dist/mumps" -run SERVE^MEVSERVE 2>>maintenance.log
