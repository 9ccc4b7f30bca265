#!/usr/bin/env bash
# Makes the Debian packages in build/package and checks them.
#
# usage: scripts/package.sh [--chroot]
#   --chroot  installs them with apt into a clean Debian 12 and runs the first example there (needs root)
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-dependencies.sh --package
scripts/build.sh package
rm -f build/package/*.deb
(cd build/package && cpack -G DEB >cpack.log 2>&1) || {
    tail -n 30 build/package/cpack.log >&2
    exit 1
}
lintian --fail-on error build/package/*.deb
ls build/package/*.deb
[[ ${1:-} == --chroot ]] || exit 0

# A folder that apt reads as an archive: the packages and their list.
archive=$(mktemp -d)
root=$archive/root
trap 'rm -rf "$archive"' EXIT
cp build/package/*.deb "$archive"
(cd "$archive" && dpkg-scanpackages --multiversion . >Packages 2>/dev/null)
chmod -R a+rX "$archive"
mmdebstrap --variant=apt --include=lanqor,lanqorengine-doc,mopac,xtb \
    --setup-hook="mkdir -p \"\$1$archive\" \"\$1/etc/apt/sources.list.d\"
        cp \"$archive\"/*.deb \"$archive/Packages\" \"\$1$archive\"
        echo \"deb [trusted=yes] copy:$archive ./\" >\"\$1/etc/apt/sources.list.d/lanqor.list\"" \
    bookworm "$root"
chroot "$root" sh -c 'cd /tmp && example=/usr/share/doc/LanqorEngine/examples/data &&
    lanqor sphere $example/eu_l2_rm1_opt.out &&
    lanqor run $example/eu_acac3_h2o.cif --charge 0 --spectrum $example/eu_acac3_h2o_emission.csv \
        --lifetime 0.45 --out example'
