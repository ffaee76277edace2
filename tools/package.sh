#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Builds the Debian package fiscorda_<version>_amd64.deb into the project's
# root: the programs, img/ and LoghiStandard/, the menu entries and icons,
# the manual pages, the AppStream metadata, the copyright and the changelog.
# Install it with: sudo apt install ./fiscorda_*.deb
#
#   tools/package.sh           build the package
#   tools/package.sh --check   build it, then check it with lintian,
#                              appstreamcli validate and desktop-file-validate;
#                              fails on any lintian error or warning
#
# FISCORDA_PACKAGE_BUILD=<folder> packs from an existing build folder (e.g.
# build, RelWithDebInfo) instead of a Release build in build-package/.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
check=0
[ "${1:-}" = --check ] && check=1
"$root/tools/install-deps.sh"
# The tools that make and check the package: dpkg-shlibdeps, scdoc for the
# manual pages, rsvg-convert for the icons, and the checkers.
tools=(dpkg-dev scdoc librsvg2-bin)
[ "$check" -eq 1 ] && tools+=(lintian appstream desktop-file-utils)
"$root/tools/install-deps.sh" "${tools[@]}"
build="${FISCORDA_PACKAGE_BUILD:-$root/build-package}"
case "$build" in /*) ;; *) build="$root/$build" ;; esac
launcher=()
command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
type=()
[ -n "${FISCORDA_PACKAGE_BUILD:-}" ] || type=(-DCMAKE_BUILD_TYPE=Release)
cmake -S "$root" -B "$build" "${type[@]}" -DCMAKE_SKIP_INSTALL_ALL_DEPENDENCY=ON "${launcher[@]}" >/dev/null
# Only what the package holds; the tests are not part of it.
targets=(fiscorda fiscorda-emulator fiscorda_package_files)
grep -q '^fiscorda-printer:' <(cmake --build "$build" --target help 2>/dev/null | sed 's/^\.\.\. //;s/ .*//;s/$/:/') &&
  targets+=(fiscorda-printer)
cmake --build "$build" -j"$(nproc)" --target "${targets[@]}"
rm -f "$build"/packages/fiscorda_*.deb
(cd "$build" && cpack -G DEB -B "$build/packages" >/dev/null)
deb=$(ls -t "$build"/packages/fiscorda_*_amd64.deb | head -1)
cp "$deb" "$root/"
deb="$root/$(basename "$deb")"
echo "$deb"
[ "$check" -eq 1 ] || exit 0

# --- The checks --------------------------------------------------------------
# lintian: no error, no warning. What it still says is informational:
#   I: hardening-no-bindnow             built with CMake's usual link flags
#      (no -z now); the programs load no untrusted code
#   I: hardening-no-fortify-functions   no call that _FORTIFY_SOURCE could
#      check was found (Qt does the string and memory work)
#   I: binary-has-unneeded-section .comment   CPack strips with plain strip,
#      which keeps the compiler's version note; it costs a few bytes
#   I: spelling-error-in-binary POSSIBILE   an Italian word of the interface
#      taken for misspelt English
status=0
echo "== lintian"
out=$(lintian --display-info --tag-display-limit 0 "$deb" 2>&1) || true
[ -n "$out" ] && echo "$out"
if grep -qE '^[EW]: ' <<<"$out"; then
  echo "lintian: errors or warnings above"
  status=1
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
dpkg-deb -x "$deb" "$work"
echo "== appstreamcli validate --no-net"
for f in "$work"/usr/share/metainfo/*.xml; do
  appstreamcli validate --no-net "$f" || status=1
done
echo "== desktop-file-validate"
for f in "$work"/usr/share/applications/*.desktop; do
  desktop-file-validate "$f" && echo "$(basename "$f"): ok" || status=1
done
exit "$status"
