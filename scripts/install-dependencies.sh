#!/usr/bin/env bash
# Installs the Debian packages that building, testing and the demo need; only what is missing.
#
# usage: scripts/install-dependencies.sh [--abi | --bench | --docs | --lint | --package]
#   --abi     also what scripts/abi.sh uses
#   --bench   also what the benchmarks compare with
#   --docs    also what scripts/docs.sh uses
#   --lint    also what scripts/lint.sh uses
#   --package also what scripts/package.sh uses
set -euo pipefail

packages=(
    build-essential cmake ninja-build pkg-config
    qtbase5-dev libeigen3-dev libboost-dev libnlopt-dev
    gemmi-dev tao-pegtl-dev libtomlplusplus-dev
    # pictures of the lanqor program
    libqwt-qt5-dev libqt5svg5-dev fonts-dejavu-core
    # outside programs that lanqor starts, and one that tests check written files with
    mopac xtb openbabel
    # sources of the German locale in which a test runs the program
    locales
    # checks the manual pages; reads a result in the documentation
    groff jq
    # a screen for the window of examples/frontend
    xvfb xauth
    # validates results by their schemas
    python3-jsonschema
    # reads the installed headers for the test of the exported symbols
    python3-clang binutils
)
if [[ ${1:-} == --bench ]]; then
    packages+=(libbenchmark-dev libgsl-dev python3-scipy)
elif [[ ${1:-} == --abi ]]; then
    packages+=(abigail-tools)
elif [[ ${1:-} == --docs ]]; then
    packages+=(mkdocs doxygen)
elif [[ ${1:-} == --lint ]]; then
    packages+=(git clang-format clang-tidy)
elif [[ ${1:-} == --package ]]; then
    packages+=(lintian mmdebstrap dpkg-dev)
fi

missing=()
for package in "${packages[@]}"; do
    status=$(dpkg-query --show --showformat '${db:Status-Status}' "$package" 2>/dev/null || true)
    [[ $status == installed ]] || missing+=("$package")
done
[[ ${#missing[@]} -eq 0 ]] && exit 0

as_root=()
if [[ $(id -u) -ne 0 ]]; then
    command -v sudo >/dev/null || {
        echo "These packages are missing; install them as root: ${missing[*]}" >&2
        exit 1
    }
    as_root=(sudo)
fi
echo "Installing: ${missing[*]}"
log=$(mktemp)
trap 'rm -f "$log"' EXIT
export DEBIAN_FRONTEND=noninteractive
if ! { "${as_root[@]}" apt-get update &&
       "${as_root[@]}" apt-get install --yes --no-install-recommends "${missing[@]}"; } >"$log" 2>&1
then
    tail -n 30 "$log" >&2
    exit 1
fi
