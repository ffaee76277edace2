#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Pictures of the main screens into docs/screenshots/ (at 100 %) and
# docs/screenshots/200/ (at 200 %, QT_SCALE_FACTOR=2), taken offscreen on a
# screen of 3840x2160 against the emulator that the program runs in its own
# process. Builds what it needs first (into build/, as tools/build.sh does).
# The PNGs are squeezed with optipng when it is installed.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
cmake -S "$root" -B "$root/build" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
nice -n 10 cmake --build "$root/build" -j2 --target screenshots fiscorda_data
platform="offscreen:configfile=$root/tools/offscreen-uhd.json"
for scale in 1 2; do
  folder="$root/docs/screenshots"
  [ "$scale" = 1 ] || folder="$folder/${scale}00"
  mkdir -p "$folder"
  QT_QPA_PLATFORM="$platform" QT_SCALE_FACTOR=$scale LC_ALL=C.UTF-8 "$root/build/bin/screenshots" "$folder"
  if command -v optipng >/dev/null; then optipng -quiet -o2 "$folder"/*.png; fi
done
