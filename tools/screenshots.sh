#!/usr/bin/env bash
# Takes the README's and the AppStream metainfo's screenshots with the game's own screenshot key:
# the title menu and a few seconds of single player A, at the default 800 x 600.
#   tools/screenshots.sh [PROGRAM [OUTDIR]]    # defaults: /usr/games/vantorix, docs/screenshots
# The program must find its data (an installed package, or a build whose NORVANE_FS_ROOT has it).
set -euo pipefail
program=$(realpath "${1:-/usr/games/vantorix}")
out=$(realpath -m "${2:-$(dirname "$0")/../docs/screenshots}")
mkdir -p "$out"
work=$(mktemp -d)
trap 'kill $game $server 2>/dev/null || true; rm -rf "$work"' EXIT

exec 3< <(Xvfb -displayfd 1 -nolisten tcp -screen 0 1024x768x24 2>/dev/null)
server=$!
read -r display <&3
export DISPLAY=":$display"
(cd "$work" && ALSOFT_DRIVERS=null exec "$program" >/dev/null 2>&1) &
game=$!
xdotool windowfocus --sync "$(xdotool search --sync --onlyvisible --name Vantorix | head -1)"
xdotool mousemove 799 599  # the game draws its own pointer: keep it in the corner

shot() {
  xdotool key F12
  sleep 1
  cp "$work/screenshot.png" "$out/$1.png"
}
sleep 10  # the title menu loads its images first
shot title
xdotool key Return
sleep 3
xdotool keydown space keydown Left
sleep 0.8
xdotool keyup Left
sleep 0.7
shot game
xdotool keyup space
echo "Wrote $out/title.png and $out/game.png"
