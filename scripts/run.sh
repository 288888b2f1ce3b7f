#!/usr/bin/env bash
# Starts a simulated unit and the controller. Without a display it plays a session against the unit
# instead and leaves pictures of the windows in out/.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install.sh run
scripts/build.sh release KVNController KVNSimulator KVNSession

bin=build/release/bin
port_link=$bin/ports/com7
address=127.0.0.1
tcp=(--tcp "$address:23")

children=()
finish() {
    trap - EXIT INT TERM
    kill "${children[@]}" 2>/dev/null || true
    wait 2>/dev/null || true
}
trap finish EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

# Returns when the simulator offers its serial port, or fails when it has ended.
await_simulator() {
    while [ ! -L "$port_link" ]; do
        kill -0 "$simulator" 2>/dev/null || return 1
        sleep 0.05
    done
}

start_simulator() {
    rm -f "$port_link"
    "$bin/KVNSimulator" --serial "$port_link" "$@" &
    simulator=$!
    children=("$simulator")
    await_simulator
}

if ! start_simulator "${tcp[@]}"; then
    echo "Port 23 on $address cannot be bound here: going on with the serial port alone."
    tcp=()
    start_simulator
fi

if [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    mkdir -p out
    # The offscreen platform warns about every window that it cannot raise.
    QT_QPA_PLATFORM=offscreen QT_LOGGING_RULES='default.warning=false' "$bin/KVNSession" out \
        ${tcp:+"$address"}
    exit
fi

echo "1. Click \"Find/Connect/Control Corvane\"."
if [ ${#tcp[@]} -gt 0 ]; then
    echo "2. Choose \"Serial Port\" and then Comm7, or \"Ethernet\" and the address $address."
else
    echo "2. Choose \"Serial Port\" and then Comm7."
fi
echo "3. Click \"Connect\"; the panel opens. Closing the start window ends everything."

"$bin/KVNController" &
children+=("$!")
wait -n "${children[@]}"
