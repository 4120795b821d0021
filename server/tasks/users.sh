# Users, their keys and classes. docs/users.md tells of them.
users_help() {
    cat <<'END'
  --users [list]                                    all users
  --users add "LAST,FIRST" ["DESCRIPTION"]
  --users disable|enable "LAST,FIRST"
  --users keys "LAST,FIRST" [+KEY|-KEY ...]         gives and takes keys; without one, shows the user
  --users class "LAST,FIRST" CLASS|+CLASS|-         into a class, into a new one, into none
  --users block|unblock "LAST,FIRST"|CLASS          the editing of reproductive histories
END
}
case "${1:-list}" in
    add) ;;
    help | --help)
        users_help
        exit 0 ;;
    *) [ -n "${mev_empty:-}" ] || need_data ;;
esac
# Who adds users wants no sample people in a database that is made only now.
export mev_empty=1
open_data
convert_data
# As one text, a word in each line, which the routine takes as data only.
printf -v mev_words '%s\n' "$@"
mev_words=${mev_words%$'\n'}
[ $# -gt 0 ] || mev_words=list
for word in "$@"; do
    [[ $word != *$'\n'* ]] || fail "A word holds a line end."
done
[ ${#mev_words} -lt 2000 ] || fail "These words are too long."
mev_administrator="administrator ($(id -un)${SUDO_USER:+, by sudo from $SUDO_USER})"
export mev_words mev_administrator
said=$(run_routine ADMIN^MEVUSERADMIN) || fail "$said"
printf '%s\n' "$said"
