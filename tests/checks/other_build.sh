#!/bin/sh
# other_build.sh ROOT PRESET DATA: configures and builds a preset and runs its tests.
set -eu
cd "$1"
preset=$2
cmake --preset "$preset" -D VELS_TEST_DATA_ROOT="$3" >/dev/null
cmake --build --preset "$preset" -- -j2
case $preset in
mingw32) ;; # nothing here can run it
tsan) ctest --preset tsan -j2 -R '^threads\.' --no-tests=error ;;
*) ctest --preset "$preset" -j2 --no-tests=error ;;
esac
