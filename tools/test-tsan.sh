#!/usr/bin/env bash
# Builds the audio tests with the thread sanitizer in build-tsan/ and runs the music thread's tests.
set -euo pipefail
cd "$(dirname "$0")/.."
cmake -S . -B build-tsan -DCMAKE_BUILD_TYPE=Debug -DNORVANE_TSAN=ON -DNORVANE_TOOLS=OFF
cmake --build build-tsan -j2 --target test_audio
cd build-tsan
ctest -R '^audio\.Music\.' --output-on-failure
