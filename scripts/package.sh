#!/usr/bin/env bash
# Makes the archive that runs from any folder, build/package/CorvaneController-VERSION-Linux-ARCH.tar.gz,
# and checks it.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install.sh run
scripts/install.sh package
scripts/build.sh release KVNController KVNSimulator KVNSession
rm -rf build/package
cpack --config build/release/CPackConfig.cmake >build/package.log 2>&1 || {
    cat build/package.log
    exit 1
}
rm -r build/package/_CPack_Packages
scripts/with_display.sh scripts/check_package.sh build/package/*.tar.gz
ls -sh build/package/*.tar.gz
