#!/bin/sh
# The library needs the C library alone, has no static constructors and no trace of the C++ runtime.
set -u
root=$1 library=$2 archive=$3
bad=0
needed=$(readelf -d "$library" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' | grep -vE '^(libc\.so|ld-linux)')
[ -z "$needed" ] || { echo "needs $needed"; bad=1; }
runtime=$(nm -D --undefined-only "$library" | grep -E '_Zn|_Zd|__cxa_(throw|allocate|guard|pure)|__gxx|_ZNSo|_ZSt')
[ -z "$runtime" ] || { echo "takes from the C++ runtime: $runtime"; bad=1; }
constructors=$(readelf -SW "$archive" 2>/dev/null | grep -E '\.(init_array|ctors)')
[ -z "$constructors" ] || { echo "static constructors: $constructors"; bad=1; }
nm -D --defined-only "$library" | grep -q vel_setextfunc || { echo "not the library: $library"; bad=1; }
exit $bad
