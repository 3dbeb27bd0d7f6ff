#!/usr/bin/env bash
# Builds the Debian package into build/package and checks it: packaging policy, desktop entry, AppStream data.
# usage: scripts/package.sh
set -euo pipefail
cd "$(dirname "$0")/.."
build=build/package
scripts/install-packages.sh build package >&2
mkdir -p "$build"
echo "Building..." >&2
if ! { cmake --preset release -B "$build" -DPX_BUILD_TESTS=OFF -DPX_BUILD_BENCH=OFF && cmake --build "$build"; } \
    >"$build/build.log" 2>&1; then
    tail -n 30 "$build/build.log" >&2
    echo "The build failed; all of it is in $build/build.log." >&2
    exit 1
fi
rm -f "$build"/*.deb
(cd "$build" && umask 022 && cpack -G DEB >package.log 2>&1) || { cat "$build/package.log" >&2; exit 1; }
package=$(ls "$build"/*.deb)

desktop-file-validate resources/desktop/platterdex.desktop
appstreamcli validate --no-net resources/desktop/net.tonal_yard.platterdex.metainfo.xml >&2
lintian --fail-on error,warning "$package" >&2
echo "The package is $package; apt install ./$(basename "$package") installs it."
