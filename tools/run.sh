#!/usr/bin/env bash
# Installs what is missing, builds, starts the bundled printer emulator on
# loopback and Fiscorda connected to it over TCP. The emulator stops when
# Fiscorda ends; its memory stays in build/bin/emulator-state.json.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/tools/install-deps.sh"
"$root/tools/build.sh"
bin="$root/build/bin"
if [ ! -e "$bin/Settings.xml" ]; then
  printf '%s' '<settings><mode>TCP</mode><comnumber>1</comnumber><comsettings>9600,n,8,1</comsettings><tcpport>4660</tcpport><ipaddress>127.0.0.1</ipaddress><timeoutack>-1</timeoutack><timeoutop>-1</timeoutop><maxnreparti>40</maxnreparti></settings>' > "$bin/Settings.xml"
fi
"$bin/fiscorda-emulator" --tcp 127.0.0.1:4660 --state "$bin/emulator-state.json" --paper "$bin/emulator-paper.txt" </dev/null &
emulator=$!
trap 'kill $emulator 2>/dev/null || true' EXIT
sleep 0.5
"$bin/fiscorda"
