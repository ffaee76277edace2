#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Installs what fuzzing needs beyond the normal build (clang 14 and its
# libFuzzer runtime, Debian 12), when missing. The corpus replays of the
# ordinary test run need none of it.
set -euo pipefail
exec "$(dirname "$0")/install-deps.sh" clang-14 libfuzzer-14-dev
