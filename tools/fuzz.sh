#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Builds the libFuzzer targets of fuzz/ with clang into build-fuzz/ and runs
# them, niced, one after the other.
#
#   tools/fuzz.sh [--time SECONDS] [--update-corpus] [--build-only|--no-build] [target ...]
#
# Targets are the names of fuzz/<library>/fuzz_<name>.cpp; none named: all.
# Each run starts from fuzz/corpus/<name>/ and works in build-fuzz/corpus/<name>/.
# --update-corpus makes fuzz/corpus/<name>/ the fewest inputs of the corpus
# and the run that reach every line of code they reach (libFuzzer's merge
# counting edges only), beside the named seeds, which always stay.
# --corpus-only does that from the last run's inputs, without running.
# A finding is left in build-fuzz/findings/<name>/ and the script fails.
# One line per run (target, seconds, executions, coverage, findings) is
# appended to build-fuzz/fuzz-runs.txt.
# fuzz/<library>/fuzz_<name>.options, when there is one, holds more libFuzzer
# flags for that target, one a line ('#' starts a comment).
# The fuzzers run at nice 19 so that they can share a working machine; for a
# measured run on an idle one, FUZZ_NICE=0.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
seconds=600
update=0
build_first=1
targets=()
while [ $# -gt 0 ]; do
  case "$1" in
    --time) seconds=$2; shift 2 ;;
    --update-corpus) update=1; shift ;;
    --build-only) seconds=0; shift ;;
    --no-build) build_first=0; shift ;;
    --corpus-only) update=2; build_first=0; shift ;;
    -h|--help) sed -n '2,/^set -e/p' "$0" | sed '$d'; exit 0 ;;
    *) targets+=("$1"); shift ;;
  esac
done
if [ ${#targets[@]} -eq 0 ]; then
  for f in "$root"/fuzz/*/fuzz_*.cpp; do
    n=$(basename "$f" .cpp); targets+=("${n#fuzz_}")
  done
fi

build="$root/build-fuzz"
if [ "$build_first" -eq 1 ]; then
  "$root/tools/install-fuzz-deps.sh"
  launcher=()
  command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
# -O1 with line tables: instrumented code builds twice as fast as at -O2 and
# the fuzzer's reports still name the lines.
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++-14 \
  -DCMAKE_CXX_FLAGS_RELWITHDEBINFO="-O1 -gline-tables-only" -DFISCORDA_FUZZ=ON "${launcher[@]}" >/dev/null
cmake --build "$build" -j"${FUZZ_BUILD_JOBS:-2}" --target "${targets[@]/#/fuzz_}"
fi
[ "$seconds" -gt 0 ] || exit 0

export ASAN_OPTIONS=${ASAN_OPTIONS:-detect_leaks=1:abort_on_error=1}
# The committed corpus: named seeds (the files we made and the findings
# kept) and the edge-minimal set of everything else; the merge names inputs
# by the SHA-1 of their content.
update_corpus() {
  local t=$1 work="$build/corpus/$t" fresh="$build/corpus-min/$t" dest="$root/fuzz/corpus/$t"
  local before; before=$(ls "$dest" 2>/dev/null | wc -l)
  rm -rf "$fresh"; mkdir -p "$fresh" "$dest"
  nice -n 19 "$build/bin/fuzz_$t" -merge=1 -use_counters=0 "$fresh" "$dest" "$work" >>"$build/findings/$t.log" 2>&1
  find "$dest" -type f -regextype posix-extended -regex '.*/[0-9a-f]{40}' -delete
  for f in "$dest"/*; do
    [ -f "$f" ] && rm -f "$fresh/$(sha1sum "$f" | cut -d' ' -f1)"
  done
  cp "$fresh"/* "$dest/" 2>/dev/null || true
  echo "  fuzz/corpus/$t: $before files, now $(ls "$dest" | wc -l), $(du -sb "$dest" | cut -f1) bytes"
}

export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}
export QT_QPA_PLATFORM=offscreen
status=0
for t in "${targets[@]}"; do
  if [ "$update" -eq 2 ]; then
    update_corpus "$t"
    continue
  fi
  work="$build/corpus/$t"
  findings="$build/findings/$t"
  mkdir -p "$work" "$findings"
  cp -n "$root/fuzz/corpus/$t/"* "$work/" 2>/dev/null || true
  log="$build/findings/$t.log"
  start=$(date +%s)
  rc=0
  extra=()
  for o in "$root"/fuzz/*/fuzz_"$t".options; do
    [ -f "$o" ] && while read -r flag; do extra+=("$flag"); done < <(sed -e 's/#.*//' -e '/^[[:space:]]*$/d' "$o")
  done
  nice -n "${FUZZ_NICE:-19}" "$build/bin/fuzz_$t" -max_total_time="$seconds" -print_final_stats=1 -timeout=25 \
    "${extra[@]}" -artifact_prefix="$findings/" "$work" >"$log" 2>&1 || rc=$?
  took=$(( $(date +%s) - start ))
  execs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -1)
  found=$(find "$findings" -type f | wc -l)
  cov=$(grep -o 'cov: [0-9]* ft: [0-9]*' "$log" | tail -1)
  line="$(date -u +%F\ %H:%M) $t ${took}s ${execs:-?} executions, ${cov:-cov: ?}, $found findings (exit $rc), load $(cut -d' ' -f1-3 /proc/loadavg)"
  echo "$line" | tee -a "$build/fuzz-runs.txt"
  if [ "$rc" -ne 0 ] || [ "$found" -ne 0 ]; then
    status=1
    tail -40 "$log"
    continue
  fi
  if [ "$update" -eq 1 ]; then
    update_corpus "$t"
  fi
done
exit $status
