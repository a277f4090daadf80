#!/usr/bin/env bash
# Installs what is missing, builds with the sanitizers and runs every test under a virtual display.
# -noreset: by default Xvfb resets when its last client leaves and refuses the next one meanwhile.
# until-pass:2: the end-to-end tests type into a shared virtual display, where a stray pointer or a
# slow frame now and then costs a keystroke; a test that fails twice is a real failure.
set -euo pipefail
cd "$(dirname "$0")/.."
bash tools/install-deps.sh
cmake -S . -B build-test -DCMAKE_BUILD_TYPE=Debug -DNORVANE_SANITIZE=ON \
  -DNORVANE_FS_ROOT="$PWD/build-test/fsroot"
cmake --build build-test -j"$(nproc)"
cd build-test
xvfb-run -a -s "-screen 0 1024x768x24 -noreset" ctest -j"$(nproc)" --output-on-failure --repeat until-pass:2
