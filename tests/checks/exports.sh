#!/bin/sh
# The shared library shows exactly the functions that the headers declare VEL_API.
set -u
root=$1 library=$2
work=$(mktemp -d) || exit 2
trap 'rm -rf "$work"' EXIT
cat "$root"/include/vels/*.h | sed '/^ *#/d' | sed 's://.*::' | tr '\n' ' ' | sed 's:/\*[^*]*\*\+\([^/*][^*]*\*\+\)*/: :g' |
    grep -oE 'VEL_API [^;]*;' | sed -E 's/ *\(.*//; s/.*[ *]//' | sort -u >"$work/declared"
nm -D --defined-only "$library" | awk '$2 != "A" { sub(/@.*/, "", $3); print $3 }' | sort -u \
    >"$work/exported"
[ "$(wc -l <"$work/declared")" -ge 60 ] || { echo "only $(wc -l <"$work/declared") declarations found"; exit 1; }
diff "$work/declared" "$work/exported" && exit 0
echo "< declared in a header, > exported by the library"
exit 1
