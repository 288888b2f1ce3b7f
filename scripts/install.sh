#!/usr/bin/env bash
# Installs what is missing of the Debian packages for one purpose.
set -euo pipefail
purpose=${1:?usage: install.sh run|test|check|coverage|package|pictures}
cd "$(dirname "$0")"

missing=()
while read -r package purposes; do
    case "$package" in '' | '#'*) continue ;; esac
    [[ " $purposes " == *" $purpose "* ]] || continue
    state=$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null || true)
    [ "$state" = installed ] || missing+=("$package")
done <packages.txt
[ ${#missing[@]} -gt 0 ] || exit 0

echo "Installing: ${missing[*]}"
as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
