#!/bin/sh
# Every public header stands alone as C99 and as C++.
set -u
root=$1 cc=$2 cxx=$3
bad=0
for header in "$root"/include/vels.h "$root"/include/vels/*.h; do
    name=${header#"$root"/include/}
    echo "#include \"$name\"" | $cc -std=c99 -pedantic -Wall -Wextra -Wstrict-prototypes -Werror \
        -I"$root/include" -fsyntax-only -x c - || { echo "$name: not plain C99"; bad=1; }
    echo "#include \"$name\"" | $cxx -std=c++11 -pedantic -Wall -Wextra -Werror \
        -I"$root/include" -fsyntax-only -x c++ - || { echo "$name: not plain C++"; bad=1; }
done
exit $bad
