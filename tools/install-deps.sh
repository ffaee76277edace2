#!/usr/bin/env bash
# Installs what building and testing Fiscorda needs on Debian 12, when missing.
# With package names as arguments: installs those instead, when missing.
set -euo pipefail
packages=(g++ cmake make qt6-base-dev qt6-serialport-dev libpugixml-dev libgl-dev fonts-liberation qt6-translations-l10n poppler-utils libqt6svg6)
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
