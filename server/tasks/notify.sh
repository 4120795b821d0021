# shellcheck shell=bash
# Raises an event in all sessions that subscribe to it: EVENT [DATA]
need_data
open_data
export mev_event=${1:-} mev_event_data=${2:-}
run_routine NOTIFY^MEVEVENTS
