#!/usr/bin/env bash
# Pictures of the main screens into docs/screenshots/, taken offscreen
# against the emulator that the program runs in its own process. Builds what
# it needs first (into build/, as tools/build.sh does).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
cmake -S "$root" -B "$root/build" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
nice -n 10 cmake --build "$root/build" -j2 --target screenshots fiscorda_data
mkdir -p "$root/docs/screenshots"
QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 "$root/build/bin/screenshots" "$root/docs/screenshots"
