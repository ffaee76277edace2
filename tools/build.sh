#!/usr/bin/env bash
# Configures and builds Fiscorda, the emulator, the tests and the benchmark into build/.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
cmake -S "$root" -B "$root/build" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$root/build" -j"$(nproc)"
