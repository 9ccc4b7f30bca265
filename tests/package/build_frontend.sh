#!/bin/sh
# usage: build_frontend.sh SOURCE_DIR BUILD_DIR SCRATCH_DIR
# Builds examples/frontend against an installation and drives its window on a virtual screen.
set -eu
source_dir=$1
build_dir=$2
scratch=$3
rm -rf "$scratch"
mkdir -p "$scratch"
cmake --install "$build_dir" --prefix "$scratch/prefix" > "$scratch/install.log"
cmake -S "$source_dir/examples/frontend" -B "$scratch/build" \
    -DCMAKE_PREFIX_PATH="$scratch/prefix" -DCMAKE_CXX_FLAGS="-Wall -Wextra -Werror" \
    -DFRONTEND_DRIVER="$source_dir/tests/package/driveFrontend.cpp" > "$scratch/configure.log"
cmake --build "$scratch/build"
xvfb-run --auto-servernum "$scratch/build/driver" \
    "$source_dir/examples/data/eu_l2_rm1_opt.out" "$scratch"
