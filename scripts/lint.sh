#!/usr/bin/env bash
# Formatting of every source file, and clang-tidy on those that differ from a base commit.
#
# usage: scripts/lint.sh [--format | --all | BASE]
#   --format  formatting only
#   --all     clang-tidy on every source file
#   BASE      a commit; origin/main unless told
set -euo pipefail
cd "$(dirname "$0")/.."
base=${1:-origin/main}

scripts/install-dependencies.sh --lint
mapfile -t sources < <(git ls-files '*.h' '*.cpp')
clang-format --dry-run -Werror "${sources[@]}"

if [[ $base == --format ]]; then
    exit 0
elif [[ $base == --all ]]; then
    mapfile -t changed < <(git ls-files 'engine/*.cpp' 'cli/*.cpp' 'tools/*.cpp')
else
    mapfile -t changed < <(git diff --name-only --diff-filter=d "$base" -- \
        'engine/*.cpp' 'cli/*.cpp' 'tools/*.cpp')
fi
[[ ${#changed[@]} -eq 0 ]] && exit 0
scripts/build.sh release
printf '%s\n' "${changed[@]}" |
    xargs --max-procs="$(nproc)" --max-args=4 clang-tidy --quiet -p build/release
