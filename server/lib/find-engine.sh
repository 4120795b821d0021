# shellcheck shell=bash
# Sets gtm_dist to the folder of the newest installed M engine. Needs lib/frames.sh.

gtm_dist=$(printf '%s\n' /usr/lib/*/fis-gtm/V*_* | sort -V | tail -n 1)
[ -d "$gtm_dist" ] || fail "The M engine is not installed (Debian package fis-gtm)."
