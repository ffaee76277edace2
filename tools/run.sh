#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Installs what is missing, builds, starts the bundled printer emulator on
# loopback and Fiscorda connected to it over TCP. With a display the printer
# is the training printer's window (fiscorda-printer), else the console
# emulator. The printer stops when Fiscorda ends; its memory stays in
# build/bin/emulator-state.json.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/tools/install-deps.sh"
"$root/tools/build.sh"
bin="$root/build/bin"
if [ ! -e "$bin/Settings.xml" ]; then
  printf '%s' '<settings><mode>TCP</mode><comnumber>1</comnumber><comsettings>9600,n,8,1</comsettings><tcpport>4660</tcpport><ipaddress>127.0.0.1</ipaddress><timeoutack>-1</timeoutack><timeoutop>-1</timeoutop><maxnreparti>40</maxnreparti></settings>' > "$bin/Settings.xml"
fi
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ] && [ -x "$bin/fiscorda-printer" ]; then
  # The window keeps its own settings; by default it listens on 127.0.0.1:4660
  # with its state and paper beside Fiscorda (here build/bin), as below.
  "$bin/fiscorda-printer" &
else
  "$bin/fiscorda-emulator" --tcp 127.0.0.1:4660 --state "$bin/emulator-state.json" --paper "$bin/emulator-paper.txt" </dev/null &
fi
emulator=$!
trap 'kill $emulator 2>/dev/null || true' EXIT
sleep 0.5
"$bin/fiscorda"
