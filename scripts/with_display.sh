#!/usr/bin/env bash
# Runs a command on a display of its own, of 1366x768 and with a window manager: with_display.sh COMMAND...
set -euo pipefail
if [ "$1" != --there ]; then
    exec xvfb-run --auto-servernum --server-args '-screen 0 1366x768x24' "$0" --there "$@"
fi
starting=$(mktemp)
openbox --startup "rm $starting" >/dev/null 2>&1 &
while [ -e "$starting" ]; do
    kill -0 $! # or it has failed
    sleep 0.1
done
xdotool mousemove 0 0 # where it points at nothing
"${@:2}"
