# Shared by the scripts: sourced, not run. Sets `root` and moves there.
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root"

say() { printf '\n== %s\n' "$*"; }

# Installs the Debian packages that are missing; silent and quick when none is.
need_packages() {
    missing=
    for package in "$@"; do
        dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed ||
            missing="$missing $package"
    done
    [ -n "$missing" ] || return 0
    as_root=
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || {
            echo "These Debian packages are missing:$missing" >&2
            echo "Install them as root, then run this again." >&2
            exit 1
        }
        as_root="sudo -n"
    fi
    say "Installing$missing"
    export DEBIAN_FRONTEND=noninteractive
    # shellcheck disable=SC2086
    $as_root apt-get update -q >/dev/null
    # shellcheck disable=SC2086
    $as_root apt-get install -qq -y --no-install-recommends $missing >/dev/null
}

build_packages="g++ cmake ninja-build locales libcli11-dev libfmt-dev zlib1g-dev"
# The dictionaries are for the order of words.
dictionaries="wngerman wfrench wspanish wswedish hunspell-cs hunspell-hr hunspell-hu hunspell-kk
    hunspell-lt hunspell-ru hunspell-th hunspell-vi"
test_packages="libgtest-dev googletest g++-multilib g++-mingw-w64-i686 binutils iso-codes
    $dictionaries"
bench_packages="libbenchmark-dev libicu-dev libunistring-dev libutf8proc-dev wngerman hunspell-ru skkdic"
