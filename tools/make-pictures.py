#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Makes the instruction pictures of the journal change wizard.

Builds tools/make-pictures.cpp (a small Qt program that paints each picture
with QPainter and saves it as JPEG) and runs it, writing
  img/<KX90|KX90II|KX81>/{Estrazione,Cambio,Inserimento}_DGFE.jpg
  src/journal/pictures/{Estrazione,Cambio,Inserimento}_DGFE.jpg  (the defaults)
Needs g++, pkg-config and Qt 6 Gui (tools/install-deps.sh installs them).
"""
import os
import shlex
import subprocess
import sys
import tempfile

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))


def main():
    source = os.path.join(ROOT, "tools", "make-pictures.cpp")
    flags = subprocess.run(["pkg-config", "--cflags", "--libs", "Qt6Gui"],
                           check=True, capture_output=True, text=True).stdout
    with tempfile.TemporaryDirectory() as work:
        program = os.path.join(work, "make-pictures")
        subprocess.run(["g++", "-std=c++17", "-O1", "-fPIC", source, "-o", program] + shlex.split(flags),
                       check=True)
        env = dict(os.environ, QT_QPA_PLATFORM="offscreen")
        subprocess.run([program, os.path.join(ROOT, "img"), os.path.join(ROOT, "src", "journal", "pictures")],
                       check=True, env=env)


if __name__ == "__main__":
    sys.exit(main())
