#!/bin/sh
# usage: exported_symbols.sh LIBRARY
# Fails when the library exports a symbol that is not of one of our classes, or none at all.
set -eu
library=$1
symbols=$(nm --dynamic --defined-only --extern-only --demangle --format=posix "$library" |
          sed 's/ [A-Za-z] [0-9a-f].*$//')
foreign=$(printf '%s\n' "$symbols" | grep -v 'Lanqor' || true)
if [ -n "$foreign" ]; then
    printf 'exported, but not ours:\n%s\n' "$foreign"
    exit 1
fi
printf '%s\n' "$symbols" | grep -q 'LanqorInputData::readMopacOutFile' || {
    echo 'LanqorInputData::readMopacOutFile is not exported'
    exit 1
}
soname=$(readelf -d "$library" | sed -n 's/.*SONAME.*\[\(.*\)\]/\1/p')
[ "$soname" = libLanqorEngine.so.1 ] || { echo "soname is \"$soname\""; exit 1; }
