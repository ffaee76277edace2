#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Installs what is missing, builds, and runs every test headless.
#
#   tools/test.sh              the normal build in build/
#   tools/test.sh --sanitize   the same tests built with AddressSanitizer and
#                              UndefinedBehaviorSanitizer, in build-asan/
#
# Extra arguments go to ctest (e.g. -R tst_xmlsettings).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
sanitize=0
ctest_args=()
for a in "$@"; do
  case "$a" in
    --sanitize) sanitize=1 ;;
    *) ctest_args+=("$a") ;;
  esac
done
"$root/tools/install-deps.sh"
if [ "$sanitize" -eq 0 ]; then
  "$root/tools/build.sh"
  cd "$root/build"
else
  build="$root/build-asan"
  launcher=()
  command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
  # No optimisation beyond -O1: quick to build, and the reports stay readable.
  cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG="-g -O1" \
    -DFISCORDA_SANITIZE=ON "${launcher[@]}" >/dev/null
  cmake --build "$build" -j"$(nproc)"
  cd "$build"
  # Any report fails the test that caused it. Qt's own libraries are not
  # instrumented; what they leak at exit belongs to them (tools/lsan.supp).
  export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1:detect_stack_use_after_return=1:strict_init_order=1"
  export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
  export LSAN_OPTIONS="suppressions=$root/tools/lsan.supp:print_suppressions=0"
fi
export QT_QPA_PLATFORM=offscreen
LANG=C.UTF-8 LC_ALL=C.UTF-8 ctest --output-on-failure -j"$(nproc)" "${ctest_args[@]}"
if [ "$sanitize" -eq 0 ]; then
  # The same tests once more in the technicians' locale: a comma for the
  # decimals, Qt's own texts in Italian.
  echo "again under it_IT.UTF-8"
  LANG=it_IT.UTF-8 LC_ALL=it_IT.UTF-8 ctest --output-on-failure -j"$(nproc)" "${ctest_args[@]}"
fi
