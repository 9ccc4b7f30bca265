#!/usr/bin/env bash
# Builds the documentation, without a network, into build/docs/site: the pages of docs/, those of
# the commands, and beside them the reference of the library by Doxygen.
#
# usage: scripts/docs.sh [--slow]
#   --slow  also runs every shell block of the pages, the slow ones included
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-dependencies.sh --docs
log=$(mktemp)
trap 'rm -f "$log"' EXIT
# quietly COMMAND...: its output only when it fails.
quietly() {
    "$@" >"$log" 2>&1 || {
        grep -E 'warning|WARNING|error' "$log" >&2 || tail -n 20 "$log" >&2
        exit 1
    }
}
quietly cmake --preset release
# A warning of Doxygen fails the target.
quietly cmake --build --preset release --target lanqor_manual docs

manual=build/release/cli/manual
pages=build/docs/pages
rm -rf build/docs
mkdir -p "$pages/commands" "$pages/site"
cp docs/*.md "$pages"
cp docs/site/* "$pages/site"
cp CHANGELOG.md "$pages/changelog.md"

# A page of a command: what the program tells of itself, then an example that is run.
for page in "$manual"/lanqor-*.md; do
    name=$(basename "$page")
    example=docs/commands/$name
    [[ -f $example ]] || {
        echo "$example is missing: an example run of the command" >&2
        exit 1
    }
    { cat "$page"; echo; cat "$example"; } >"$pages/commands/$name"
done
# The list of commands by task, as "lanqor --help" shows it.
{
    printf '# Commands\n'
    build/release/cli/lanqor --help | awk '
        /^[A-Z].*:$/ { sub(/:$/, ""); printf "\n## %s\n\n| | |\n| --- | --- |\n", $0; next }
        /^  / {
            name = $1
            if ($1 == "fit") name = $1 " " $2
            text = substr($0, 3 + length(name))
            sub(/^ +/, "", text)
            file = name
            gsub(/ /, "-", file)
            printf "| [lanqor %s](commands/lanqor-%s.md) | %s |\n", name, file, text
        }'
} >"$pages/commands.md"

quietly mkdocs build --quiet --strict --config-file docs/mkdocs.yml
# Debian's theme asks for jQuery by another name than that of the file it has.
cp /usr/share/javascript/jquery/jquery.min.js build/docs/site/js/jquery-3.6.0.min.js
cp -r build/release/docs/html build/docs/site/reference
{
    printf 'var lanqorSearchIndex = '
    cat build/docs/site/search/search_index.json
} >build/docs/site/search/index.js
echo "The documentation is build/docs/site/index.html."

if [[ ${1:-} == --slow ]]; then
    tests/docs/run_blocks.py --slow . build/release/cli build/docs/scratch \
        README.md docs/*.md docs/commands/*.md
fi
