#!/usr/bin/env bash
# Compares the binary interface of the library with the one that is kept in abi/: what was there
# must still be there, additions are listed.
#
# usage: scripts/abi.sh [--update]
#   --update  keep the interface of this build as the new one, once the differences are wanted
#
# The exit status is that of abidiff: 0 equal, 4 changed, 8 with it changed incompatibly.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-dependencies.sh --abi
kept=abi/LanqorEngine.abi
build=build/abi
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DLANQOR_BUILD_TESTS=OFF \
    -DLANQOR_PLOTS=OFF >/dev/null
cmake --build "$build" --target LanqorEngine >/dev/null

# Only types of the installed headers count; those of Qt and Eigen are theirs.
abidw --suppressions abi/outside.suppr --headers-dir "$build/include/LanqorEngine" \
    --drop-private-types --no-corpus-path --no-show-locs --no-comp-dir-path \
    --exported-interfaces-only \
    --out-file "$build/LanqorEngine.abi" "$build/engine/libLanqorEngine.so"
if [[ ${1:-} == --update ]]; then
    cp "$build/LanqorEngine.abi" "$kept"
    exit 0
fi
abidiff --suppressions abi/outside.suppr "$kept" "$build/LanqorEngine.abi" &&
    echo "The binary interface is that of $kept."
