#!/bin/sh
# Every example of the guide gives what stands below it. An example is a line "$ command" in a
# fenced block; the lines up to the next one, or to the end of the block, are its output.
set -u
root=$1 tool=$2
CORVANEDIR=$3 LC_ALL=C.UTF-8
export CORVANEDIR LC_ALL
unset VEL_PATH VEL_ALL VEL_LANG
least=40
work=$(mktemp -d) || exit 2
trap 'rm -rf "$work"' EXIT
mkdir "$work/bin" && ln -s "$tool" "$work/bin/vel"
PATH=$work/bin:$PATH

# The blocks as they should be, and the commands alone.
awk '/^```/ { inside = !inside; next } inside' "$root/docs/guide.md" >"$work/expected"
grep '^\$ ' "$work/expected" >"$work/commands"
cd "$work" || exit 2
while IFS= read -r line; do
    printf '%s\n' "$line"
    sh -c "${line#??}" 2>&1 </dev/null
done <commands >actual

count=$(wc -l <commands)
[ "$count" -ge $least ] || { echo "only $count examples found"; exit 1; }
diff -u expected actual && exit 0
echo "- in docs/guide.md, + what the tool says"
exit 1
