#!/usr/bin/env bash
# Makes every picture anew: the sizes of the program's icon, and the pictures of the documents, which a
# played session leaves.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install.sh run
scripts/install.sh pictures

icons=packaging/icons/hicolor
for side in 16 22 24 32 48 64 128 256; do
    mkdir -p "$icons/${side}x$side/apps"
    rsvg-convert --width "$side" --height "$side" \
        --output "$icons/${side}x$side/apps/local.corvane.controller.png" \
        "$icons/scalable/apps/local.corvane.controller.svg"
done

scripts/build.sh release KVNSession
rm -rf out/pictures
QT_QPA_PLATFORM=xcb scripts/with_display.sh build/release/bin/KVNSession out/pictures >/dev/null
while read -r step picture; do
    cp out/pictures/??-"$step".png "docs/pictures/$picture.png"
done <<'END'
left          start
connected     connect
selected      panel
preset-chosen presets
unit-picked   units
END
