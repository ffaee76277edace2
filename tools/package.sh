#!/usr/bin/env bash
# Builds the Debian package fiscorda_<version>_amd64.deb into the project's
# root: the program, the emulator, img/ and LoghiStandard/, the menu entry
# and its icon. Install it with: sudo apt install ./fiscorda_*.deb
#
# FISCORDA_PACKAGE_BUILD=<folder> packs from an existing build folder (e.g.
# build, RelWithDebInfo) instead of a Release build in build-package/.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/tools/install-deps.sh"
command -v dpkg-shlibdeps >/dev/null || {
  sudo_cmd=(); [ "$(id -u)" -ne 0 ] && sudo_cmd=(sudo)
  DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends dpkg-dev
}
build="${FISCORDA_PACKAGE_BUILD:-$root/build-package}"
case "$build" in /*) ;; *) build="$root/$build" ;; esac
launcher=()
command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
type=()
[ -n "${FISCORDA_PACKAGE_BUILD:-}" ] || type=(-DCMAKE_BUILD_TYPE=Release)
cmake -S "$root" -B "$build" "${type[@]}" -DCMAKE_SKIP_INSTALL_ALL_DEPENDENCY=ON "${launcher[@]}" >/dev/null
# Only what the package holds; the tests are not part of it.
cmake --build "$build" -j"$(nproc)" --target fiscorda fiscorda-emulator
(cd "$build" && cpack -G DEB -B "$build/packages" >/dev/null)
deb=$(ls -t "$build"/packages/fiscorda_*_amd64.deb | head -1)
cp "$deb" "$root/"
echo "$root/$(basename "$deb")"
