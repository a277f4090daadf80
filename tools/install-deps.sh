#!/usr/bin/env bash
# Installs every Debian 12 package the build, the tests and the asset tools need.
set -euo pipefail
PACKAGES=(
  build-essential cmake pkg-config
  libsdl1.2-dev libsdl-image1.2-dev libgl1-mesa-dev libglu1-mesa-dev
  libopenal-dev libopenal1 libvorbis-dev libexpat1-dev libpng-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  xvfb xauth libgl1-mesa-dri xdotool
  python3 python3-pil python3-numpy sox vorbis-tools fonts-dejavu-core
  dpkg-dev lintian appstream desktop-file-utils man-db libsdl1.2-compat
)
missing=()
for p in "${PACKAGES[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  SUDO=""
  [ "$(id -u)" -eq 0 ] || SUDO=sudo
  $SUDO apt-get update
  DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y --no-install-recommends "${missing[@]}"
fi
