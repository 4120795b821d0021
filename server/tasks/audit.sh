# shellcheck shell=bash
# Prints the audit: [--patient N] [--user NAME] [--since DATE] [--record KIND N]; or checks it for tampering: --verify
# [NUMBER HASH]. docs/users.md explains the output.
entry=PRINT
mev_patient='' mev_user_name='' mev_since='' mev_kind='' mev_record='' mev_kept=''
is_number() { [[ $1 =~ ^[0-9]{1,12}$ ]] || fail "Not a number: $1"; }
while [ $# -gt 0 ]; do
    case "$1" in
        --patient) is_number "${2:-}"; mev_patient=$2; shift 2 ;;
        --user) mev_user_name=${2:-}; shift; shift || fail "The user's name is missing." ;;
        --since)
            mev_since=${2:-}
            [[ $mev_since =~ ^[0-9]{4}-[0-9]{2}-[0-9]{2}(T[0-9]{2}:[0-9]{2}(:[0-9]{2})?Z?)?$ ]] \
                || fail "Write the date like 2026-11-21 or 2026-11-21T19:23:15Z, in UTC: $mev_since"
            date -d "${mev_since%%T*}" >/dev/null 2>&1 || fail "There is no such date: $mev_since"
            shift 2 ;;
        --record)
            mev_kind=${2:-} mev_record=${3:-}
            [[ " REP BMSR VIF VELD VAST VTXC VER REF REG USR CLS VST " == *" $mev_kind "* ]] \
                || fail "The kind of record is REP, BMSR, VIF, VELD, VAST, VTXC, VER, REF, REG, USR, CLS or VST: $mev_kind"
            is_number "$mev_record"; shift 3 ;;
        --verify)
            entry=VERIFY
            shift
            [ $# = 0 ] || { is_number "$1"; mev_kept="$1 ${2:-}"; shift $#; } ;;
        *) fail "Unknown argument: $1" ;;
    esac
done
export mev_patient mev_user_name mev_since mev_kind mev_record mev_kept
need_data
open_data
convert_data
run_routine $entry^MEVAUDITREPORT
