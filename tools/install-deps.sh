#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Installs what building and testing Fiscorda needs on Debian 12, when missing.
# With package names as arguments: installs those instead, when missing.
set -euo pipefail
packages=(g++ cmake make qt6-base-dev qt6-serialport-dev libpugixml-dev libgl-dev fonts-liberation qt6-translations-l10n poppler-utils libqt6svg6 locales)
# The manual pages and the PNG icons are made at build time.
packages+=(scdoc librsvg2-bin)
# The printing test runs a CUPS scheduler of its own with the CUPS-PDF driver
# (which brings Ghostscript); no system service is started or used.
packages+=(cups printer-driver-cups-pdf)
if [ $# -gt 0 ]; then packages=("$@"); fi
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  echo "Installing: ${missing[*]}"
  sudo_cmd=()
  [ "$(id -u)" -ne 0 ] && sudo_cmd=(sudo)
  "${sudo_cmd[@]}" apt-get update -qq
  DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
# The tests run under C.UTF-8 and under the technicians' it_IT.UTF-8; one
# test needs a locale whose money has its own decimal separator (ru_UA).
if [ $# -eq 0 ]; then
  locale -a | grep -qix 'C.utf8' || { echo "C.UTF-8 is missing" >&2; exit 1; }
  for l in it_IT ru_UA; do
    if ! locale -a | grep -qix "$l.utf8"; then
      sudo_cmd=()
      [ "$(id -u)" -ne 0 ] && sudo_cmd=(sudo)
      "${sudo_cmd[@]}" localedef -i "$l" -f UTF-8 "$l.UTF-8"
    fi
  done
fi
