#!/usr/bin/env bash
# Installs what is missing, builds, and takes one europium complex from a crystal structure and a
# spectrum to its emission quantum yield, and another from a MOPAC output step by step.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-dependencies.sh
scripts/build.sh release -DLANQOR_BUILD_TESTS=OFF

lanqor=build/release/cli/lanqor
complex=examples/data/eu_l2_rm1_opt.out
ligands=examples/data/eu_l2_zindos_excerpt.orcout
results=$(mktemp -d)
trap 'rm -rf "$results"' EXIT

# run ARGUMENT...: shows a command, then its results; its messages only when it fails.
run() {
    printf '\n$ lanqor %s\n\n' "${*//"$results"\//}"
    "$lanqor" "$@" 2>"$results/messages" || {
        cat "$results/messages" >&2
        exit 1
    }
}

echo
echo "[Eu(acac)3(H2O)] from a crystal and a spectrum, both made for this example, to its yield:"
spectrum=examples/data/eu_acac3_h2o_emission.csv
printf '\n$ lanqor run %s\n\n' "examples/data/eu_acac3_h2o.cif --charge 0 --spectrum $spectrum --lifetime 0.45"
"$lanqor" run examples/data/eu_acac3_h2o.cif --charge 0 --spectrum "$spectrum" --lifetime 0.45 \
    --jobs 2 --out build/demo
echo "The page with drawings, intervals and citations: build/demo/report.html"

echo
echo "[Eu(C26H14N2O4)2]-, geometry by MOPAC (RM1, sparkle ion):"
run sphere "$complex"

echo
echo "Intensity parameters; charge factors and polarisabilities are illustrative values:"
run omega "$complex" --g O=0.8,N=1.1 --alpha O=2.5,N=3.5 --report "$results/omega.txt"

echo
echo "Quantum yield; donor states from an ORCA ZINDO/S calculation of the ligands:"
run yield "$complex" --excited "$ligands" --omega-report "$results/omega.txt"
