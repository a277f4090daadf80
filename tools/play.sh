#!/usr/bin/env bash
# Installs what is missing, builds the game and installs it under /usr, where it looks for its
# data (the program in /usr/games, the data in /usr/share/games/vantorix), then starts it as the
# calling user: settings and highscores go to ~/.vantorix/.
set -euo pipefail
cd "$(dirname "$0")/.."
bash tools/install-deps.sh
cmake -S . -B build-release -DCMAKE_BUILD_TYPE=Release -DNORVANE_TESTS=OFF -DNORVANE_TOOLS=OFF
cmake --build build-release -j"$(nproc)"
SUDO=""
[ "$(id -u)" -eq 0 ] || SUDO=sudo
$SUDO cmake --install build-release --prefix /usr
exec /usr/games/vantorix
