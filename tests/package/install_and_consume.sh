#!/bin/sh
# usage: install_and_consume.sh SOURCE_DIR BUILD_DIR SCRATCH_DIR COMPILER_FLAGS [packages]
# Installs into an empty prefix, or unpacks the Debian packages there; then builds and runs examples/consumer against it twice: by
# find_package and by pkg-config.
set -eu
source_dir=$1
build_dir=$2
scratch=$3
flags=$4
rm -rf "$scratch"
mkdir -p "$scratch"
prefix=$scratch/prefix
example=$source_dir/examples/data/eu_l2_rm1_opt.out

if [ "${5:-}" = packages ]; then
    (cd "$build_dir" && cpack -G DEB -B "$scratch/packages") > "$scratch/install.log" 2>&1
    for package in "$scratch"/packages/*.deb; do
        dpkg-deb -x "$package" "$scratch/root"
    done
    [ "$(ls "$scratch"/packages/*.deb | wc -l)" = 5 ]
    prefix=$scratch/root/usr
else
    # The prefix is stated again at installation, as a packager would.
    cmake --install "$build_dir" --prefix "$prefix" > "$scratch/install.log"
fi
test -d "$prefix/share/LanqorEngine/EnergyLevels4f"
test -f "$prefix/share/man/man1/lanqor-fit-omega.1.gz"
test -f "$prefix/share/bash-completion/completions/lanqor"
test -f "$prefix/share/doc/LanqorEngine/examples/data/eu_l2_rm1_opt.out"

cmake -S "$source_dir/examples/consumer" -B "$scratch/consumer" \
    -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_FLAGS="$flags" > "$scratch/configure.log"
cmake --build "$scratch/consumer" > "$scratch/build.log"
by_cmake=$("$scratch/consumer/consumer" "$example")
printf '%s\n' "$by_cmake"
printf '%s\n' "$by_cmake" | grep -q 'coordination number 6'

pc_file=$(find "$prefix" -name LanqorEngine.pc)
PKG_CONFIG_PATH=$(dirname "$pc_file")
export PKG_CONFIG_PATH
# shellcheck disable=SC2046,SC2086
c++ -std=c++17 -fPIC $flags "$source_dir/examples/consumer/main.cpp" -o "$scratch/by_pkgconfig" \
    $(pkg-config --cflags --libs LanqorEngine)
libdir=$(dirname "$(find "$prefix" -name libLanqorEngine.so)")
by_pkgconfig=$(LD_LIBRARY_PATH=$libdir "$scratch/by_pkgconfig" "$example")
[ "$by_cmake" = "$by_pkgconfig" ]

"$prefix/bin/lanqor" --version
# It finds its tables beside itself.
"$prefix/bin/lanqor" levels --ion Tb --max-energy 3000 | grep -q '2037.49 *5 *7F5'
