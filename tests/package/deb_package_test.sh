#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# The Debian package of a build tree: it is made by CPack from what is built, unpacked into a
# temporary root, and the unpacked programs and files are what an installation gets.
# Usage: deb_package_test.sh BUILD_DIR VERSION
set -euo pipefail
build=$1
version=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() { echo "FAIL: $*" >&2; exit 1; }

(cd "$build" && cpack -G DEB -B "$work/out" >"$work/cpack.log" 2>&1) || { cat "$work/cpack.log" >&2; fail "cpack"; }
deb=$(ls "$work"/out/morvane-egse_"$version"_*.deb 2>/dev/null | head -1)
[ -n "$deb" ] || fail "no morvane-egse_${version}_*.deb in $(ls "$work/out")"

root="$work/root"
dpkg-deb -x "$deb" "$root"
for path in usr/bin/morvane-egse usr/bin/morvane-cli usr/bin/morvane-sim \
            usr/share/applications/morvane-egse.desktop \
            usr/share/icons/hicolor/scalable/apps/morvane-egse.svg \
            usr/share/metainfo/org.morvane.egse.metainfo.xml \
            usr/share/bash-completion/completions/morvane-cli \
            usr/share/bash-completion/completions/morvane-sim; do
  [ -e "$root/$path" ] || fail "$path is not in the package"
done
if command -v help2man >/dev/null; then
  for program in morvane-egse morvane-cli morvane-sim; do
    [ -e "$root/usr/share/man/man1/$program.1.gz" ] || [ -e "$root/usr/share/man/man1/$program.1" ] ||
      fail "no man page of $program"
  done
fi

printed=$("$root/usr/bin/morvane-cli" --version)
[ "$printed" = "morvane-cli $version" ] || fail "the unpacked morvane-cli printed '$printed'"

# The dependencies were computed from the binaries: the Qt libraries among them.
depends=$(dpkg-deb -f "$deb" Depends)
case "$depends" in *libqt6widgets6*) ;; *) fail "Depends lacks the Qt Widgets library: $depends" ;; esac
grep -q '^Exec=morvane-egse' "$root/usr/share/applications/morvane-egse.desktop" || fail "the menu entry's command"
echo "ok: $(basename "$deb"), Depends: $depends"
