#!/usr/bin/env bash
# Builds and tests everything: optimised, then with the address and undefined-behaviour
# sanitizers. Installs what is missing first.
#
# LANQOR_CORPUS_DIR     folder of further real program outputs (tests that need it skip without)
# LANQOR_REFERENCE_DIR  folder of further reference values (likewise)
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-dependencies.sh
options=(
    -DLANQOR_BUILD_TESTS=ON
    "-DLANQOR_CORPUS_DIR=${LANQOR_CORPUS_DIR:-}"
    "-DLANQOR_REFERENCE_DIR=${LANQOR_REFERENCE_DIR:-}"
)
for preset in release sanitize; do
    scripts/build.sh "$preset" "${options[@]}"
    (cd "build/$preset" && ctest --output-on-failure --parallel "$(nproc)")
done
