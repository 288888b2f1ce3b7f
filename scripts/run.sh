#!/usr/bin/env bash
# Starts a simulated unit and the controller, in a folder of their own that is removed in the end.
# Without a display it plays a session against such a unit instead, checks it and leaves pictures of
# the windows in out/.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install.sh run
scripts/build.sh release KVNController KVNSimulator KVNSession

bin=build/release/bin
address=127.0.0.1
tcp=(--tcp "$address:23")
own=$(mktemp -d build/release/run.XXXXXX)

children=()
finish() {
    trap - EXIT INT TERM
    kill "${children[@]}" 2>/dev/null || true
    wait 2>/dev/null || true
    rm -rf "$own"
}
trap finish EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

if [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    TMPDIR=$PWD/$own QT_QPA_PLATFORM=offscreen "$bin/KVNSession" out
    exit
fi

# The device that a COM number stands for where there is no link.
device_of() {
    if [ "$1" -ge 13 ]; then
        echo "/dev/ttyACM$(($1 - 13))"
    elif [ "$1" -ge 5 ]; then
        echo "/dev/ttyUSB$(($1 - 5))"
    else
        echo "/dev/ttyS$(($1 - 1))"
    fi
}

# The first COM number that hides none of the machine's devices.
free_com() {
    for com in 7 8 9 10 11 12 13 14 15 16 17 18 19 20 6 5 4 3 2 1; do
        [ -e "$(device_of "$com")" ] || break
    done
    echo "$com"
}

com=$(free_com)
port_link=$own/ports/com$com

# Returns when the simulator offers its serial port, or fails when it has ended.
start_simulator() {
    "$bin/KVNSimulator" --serial "$port_link" "$@" &
    simulator=$!
    children=("$simulator")
    while [ ! -L "$port_link" ]; do
        kill -0 "$simulator" 2>/dev/null || return 1
        sleep 0.05
    done
}

if ! start_simulator "${tcp[@]}"; then
    echo "Port 23 on $address cannot be bound here: going on with the serial port alone."
    tcp=()
    start_simulator
fi

echo "1. Click \"Find/Connect/Control Corvane\"."
if [ ${#tcp[@]} -gt 0 ]; then
    echo "2. Choose \"Serial Port\" and then Comm$com, or \"Ethernet\" and the address $address."
else
    echo "2. Choose \"Serial Port\" and then Comm$com."
fi
echo "3. Click \"Connect\"; the panel opens. Closing the start window ends everything."
echo "Units saved in this controller are for trying and go with it; $bin/KVNController keeps its own."

# The controller keeps its files, and looks for ports, where it lies.
cp "$bin/KVNController" "$own"
"$own/KVNController" &
children+=("$!")
wait -n "${children[@]}"
