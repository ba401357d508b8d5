#!/bin/sh
# all_pairs.sh ROOT VELC: every supported pair of locale and code set compiles, and the strict reader
# and the library's own loader accept every object.
set -eu
velc=$2
supported=/usr/share/i18n/SUPPORTED
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$velc" pack --all --quiet -o "$work/data"
"$velc" pack --all --dry-run -o "$work/data" | awk '{ print $2, $4, $1 }' >"$work/plan"

# "de_DE.UTF-8@euro UTF-8" is the source de_DE@euro in UTF-8.
awk '{ name = $1; sub(/\.[^@]*/, "", name); print name, $2 }' "$supported" >"$work/pairs"
pairs=0
while read -r source charmap; do
    file=$(awk -v s="$source" -v c="$charmap" '$1 == s && $2 == c { print $3; exit }' "$work/plan")
    [ -n "$file" ] && [ -s "$work/data/$file" ] || { echo "no object for $source in $charmap"; exit 1; }
    pairs=$((pairs + 1))
done <"$work/pairs"
[ "$pairs" -ge 500 ] || { echo "only $pairs pairs in $supported"; exit 1; }
echo "$pairs pairs compiled"
"$velc" check "$work/data"
