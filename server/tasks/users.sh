# shellcheck shell=bash
# Manages users, their keys, and their classes: docs/users.md.
users_help() {
    cat <<'END'
  --users [list]                                    lists all users
  --users add "LAST,FIRST" ["DESCRIPTION"]
  --users disable|enable "LAST,FIRST"
  --users keys "LAST,FIRST" [+KEY|-KEY ...]         grants and revokes keys; shows the user if none is given
  --users class "LAST,FIRST" CLASS|+CLASS|-         puts the user into a class, a new class, or none
  --users block|unblock "LAST,FIRST"|CLASS          forbids or allows editing reproductive histories
END
}
case "${1:-list}" in
    add) ;;
    help | --help)
        users_help
        exit 0 ;;
    *) [ -n "${mev_empty:-}" ] || need_data ;;
esac
# A database that is created here gets no sample patients and users.
export mev_empty=1
open_data
convert_data
# The words are passed one per line; the routine treats them as data only.
printf -v mev_words '%s\n' "$@"
mev_words=${mev_words%$'\n'}
[ $# -gt 0 ] || mev_words=list
for word in "$@"; do
    [[ $word != *$'\n'* ]] || fail "A word contains a line break."
done
[ ${#mev_words} -lt 2000 ] || fail "These words are too long."
mev_administrator="administrator ($(id -un)${SUDO_USER:+, by sudo from $SUDO_USER})"
export mev_words mev_administrator
said=$(run_routine ADMIN^MEVUSERADMIN) || fail "$said"
printf '%s\n' "$said"
