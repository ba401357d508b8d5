#!/bin/sh
# No include runs up the floors, and the core includes nothing of the tools.
set -u
cd "$1/src" || exit 2
# Ground first. A folder may include from its own floor number or a lower one; folders on one floor
# do not know each other.
floors="ext:0 objfile:1 record:2 names:2 charmap:3 ctype:4 string:5 collate:5 numeric:5 conv:5
        symbols:5 time:6 info:7 locale:8"
grep -rn '^ *# *include "' --include='*.h' --include='*.cpp' . | awk -v floors="$floors" '
BEGIN { n = split(floors, pairs, /[ \n]+/)
        for (i = 1; i <= n; ++i) { split(pairs[i], p, ":"); floor[p[1]] = p[2] } }
{   split($0, parts, ":"); split(parts[1], path, "/"); from = path[2]
    match($0, /"[^"]*"/); to = substr($0, RSTART + 1, RLENGTH - 2)
    split(to, target, "/")
    if (target[1] ~ /^vels(\.h)?$/) next
    ++seen
    if (!(from in floor)) { print $0 ": unknown floor " from; bad = 1 }
    else if (!(target[1] in floor)) { print $0 ": not a floor: " target[1]; bad = 1 }
    else if (from != target[1] && floor[target[1]] + 0 >= floor[from] + 0) {
        print $0 ": " from " must not include from " target[1]; bad = 1 } }
END { if (seen < 20) { print "only " seen " includes seen"; bad = 1 } exit bad }'
