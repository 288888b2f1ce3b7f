#!/usr/bin/env bash
# Checks an archive that package.sh has made: check_package.sh ARCHIVE. It is unpacked, what it tells
# the desktop is validated, and its programs are played with nothing but what they carry. Needs a display.
set -euo pipefail
archive=$(realpath "${1:?usage: check_package.sh ARCHIVE}")
cd "$(dirname "$0")/.."
name=$(basename "$archive" .tar.gz)
version=${name#*-}
version=${version%%-*}
title="Corvane Controller ${version%.*}"

own=$(mktemp -d)
trap 'rm -rf "$own"' EXIT
unpacked="$own/Ordner für unterwegs/$name"
mkdir "$(dirname "$unpacked")"
tar -xzf "$archive" -C "$(dirname "$unpacked")"

fail() {
    echo "$name: $*" >&2
    exit 1
}

desktop-file-validate "$unpacked"/share/applications/*.desktop
# The name begins with no domain that is known, because there is none.
appstreamcli validate --no-net --strict --override cid-maybe-not-rdns=pedantic \
    "$unpacked"/share/metainfo/*.xml
for page in "$unpacked"/share/man/man1/*; do
    findings=$(man --warnings -E UTF-8 -l -Tutf8 -Z "$page" 2>&1 >/dev/null)
    [ -z "$findings" ] || fail "$findings"
done

# Runs a program of the archive from elsewhere: play PLATFORM PROGRAM ARGUMENT... The environment is
# bare, and the dynamic linker writes down what is loaded.
play() {
    (cd / && exec env -i PATH=/usr/bin:/bin LANG=C.UTF-8 HOME="$own" XDG_RUNTIME_DIR="$own" \
        DISPLAY="$DISPLAY" XAUTHORITY="${XAUTHORITY:-}" QT_QPA_PLATFORM="$1" \
        LD_DEBUG=files LD_DEBUG_OUTPUT="$own/loaded" "$unpacked/$2" "${@:3}")
}

[ "$(play none KVNController --version)" = "KVNController $version" ] || fail "another version"
grep -qx "# $title" README.md || fail "another version than in README.md"

# A session, and with it both links, on the windows of the archive.
cmake --install build/release --component session --prefix "$unpacked" >/dev/null
play offscreen KVNSession "$own/pictures" >/dev/null || fail "the session failed"

# The controller itself, left by its window.
play xcb KVNController &
controller=$!
SECONDS=0
until wmctrl -lx | grep -q "KVNController\.KVNController .* $title\$"; do
    [ "$SECONDS" -lt 60 ] || fail "the controller shows no window"
    kill -0 "$controller" 2>/dev/null || fail "the controller ended without a window"
    sleep 0.1
done
wmctrl -c "$title"
wait "$controller" || fail "the controller ended with status $?"

# The system gives the C library, with what this looks users up with, and those of the compiler, and
# nothing else. What the programs start, such as a message bus, is the system's too.
grep -lF "initialize program: $unpacked/" "$own"/loaded.* | xargs -d '\n' cat >"$own/log"
sed -n 's,.*file=\([^ ]*\) .* by [^ ]*/libnss_.*,/\1,p' "$own/log" >"$own/for-users"
foreign=$(sed -n 's/.*calling init: //p' "$own/log" | sort -u | grep -vF "$unpacked/" |
    grep -vE '/(ld-linux[-a-z0-9_]*|lib(c|m|resolv|gcc_s|stdc\+\+|nss_[a-z]+))\.so\.[0-9]+$' |
    grep -vFf "$own/for-users" || true)
[ -z "$foreign" ] || fail "not carried: $foreign"
echo "$name runs with what it carries."
