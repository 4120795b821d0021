# Users, their keys and classes: [list] | add NAME [DESCRIPTION] | disable NAME | enable NAME | keys NAME [+KEY|-KEY ...]
# | class NAME [CLASS|+CLASS|-] | block NAME|CLASS | unblock NAME|CLASS. docs/users.md tells of them.
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
said=$(run_routine ADMIN^MEVUSERS) || fail "$said"
printf '%s\n' "$said"
