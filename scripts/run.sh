#!/usr/bin/env bash
# Installs what is missing, builds the 64-bit program and starts Quillet
# under Wine: on your X display when $DISPLAY answers (it keeps running
# there), otherwise on a virtual display (Xvfb), from which it keeps a
# screenshot and then stops. Either way it says where the screenshot is.
#   QUILLET_PREFIX      Wine prefix to use (default: .wine-run in the repository)
#   QUILLET_SCREENSHOT  where to write the screenshot (default: build/screenshot.png)
set -uo pipefail
cd "$(dirname "$0")/.."
repo=$PWD

bash scripts/setup.sh || exit 1
echo "run: building the 64-bit program (build/logs/win64.log)"
bash scripts/build.sh win64 || exit 1

source tests/e2e/lib.sh
export WINEPREFIX=${QUILLET_PREFIX:-$repo/.wine-run} WINEARCH=win64 WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
E2E_WORK=$(mktemp -d "${TMPDIR:-/tmp}/quillet-run.XXXXXX")
mode=virtual
cleanup() {
  if [[ $mode == virtual ]]; then
    wineserver -k 2>/dev/null
    wineserver -w 2>/dev/null
    [[ -n $E2E_XVFB_PID ]] && kill "$E2E_XVFB_PID" 2>/dev/null
  fi
  rm -rf "$E2E_WORK"
}
trap cleanup EXIT
trap 'exit 130' INT TERM HUP

if [[ ! -f $WINEPREFIX/system.reg ]]; then
  echo "run: making the Wine prefix $WINEPREFIX (once; about 20 s)"
  e2e_prefix_boot "$WINEPREFIX"
fi
# A new build replaces a running one: end this prefix's programs first.
wineserver -k 2>/dev/null
wineserver -w 2>/dev/null

# Under build/, which git ignores: a run leaves the checkout clean.
shot=${QUILLET_SCREENSHOT:-$repo/build/screenshot.png}
if [[ -n ${DISPLAY:-} ]] && xdpyinfo >/dev/null 2>&1; then
  mode=user
  echo "run: on your display $DISPLAY"
else
  e2e_xvfb_start || exit 1
  echo "run: no reachable X display; on a virtual one ($DISPLAY)"
fi

E2E_EXE_NAME=Quillet.exe
E2E_APP=Quillet
E2E_PROGRAM_DIR=$WINEPREFIX/drive_c/Program\ Files/Quillet
mkdir -p "$E2E_PROGRAM_DIR"
cp build/win64/Quillet.exe "$E2E_PROGRAM_DIR/"
E2E_LOG=$WINEPREFIX/quillet.log
(cd "$E2E_PROGRAM_DIR" && exec setsid wine 'C:\Program Files\Quillet\Quillet.exe') >"$E2E_LOG" 2>&1 &
E2E_PID=$!

if ! e2e_wait_main_window; then
  echo "run: Quillet's window did not show; its output ($E2E_LOG):"
  tail -n 20 "$E2E_LOG"
  exit 1
fi
echo "run: Quillet runs (Wine prefix $WINEPREFIX)"

# A desktop-like ground, so that the see-through parts of the bar show.
if [[ $mode == virtual ]]; then
  "$E2E_CONVERT" -size 1280x1024 gradient:'#5b86b0-#1f3447' "$E2E_WORK/ground.png"
  "$E2E_DISPLAY_IMG" -window root "$E2E_WORK/ground.png" >/dev/null 2>&1 || true
fi
sleep 3   # let the first refresh paint the cards

# The screenshot: the program's visible windows with a margin around them.
read -r sw sh < <(xdpyinfo | sed -n 's/^ *dimensions: *\([0-9]*\)x\([0-9]*\) pixels.*/\1 \2/p')
x0=$sw y0=$sh x1=0 y1=0
while IFS= read -r line; do
  [[ $(e2e_field "$line" visible) == 1 ]] || continue
  l=$(e2e_field "$line" left) t=$(e2e_field "$line" top)
  w=$(e2e_field "$line" width) h=$(e2e_field "$line" height)
  ((w > 1 && h > 1)) || continue
  ((l < x0)) && x0=$l
  ((t < y0)) && y0=$t
  ((l + w > x1)) && x1=$((l + w))
  ((t + h > y1)) && y1=$((t + h))
done < <(e2e_probe)
margin=24
x0=$((x0 - margin < 0 ? 0 : x0 - margin)) y0=$((y0 - margin < 0 ? 0 : y0 - margin))
x1=$((x1 + margin > sw ? sw : x1 + margin)) y1=$((y1 + margin > sh ? sh : y1 + margin))
mkdir -p "$(dirname "$shot")"
e2e_screenshot "$E2E_WORK/screen.png"
"$E2E_CONVERT" "$E2E_WORK/screen.png" -crop "$((x1 - x0))x$((y1 - y0))+$x0+$y0" +repage "$shot"
echo "run: screenshot written to $shot"

if [[ $mode == user ]]; then
  echo "run: Quillet stays open; to end it: WINEPREFIX='$WINEPREFIX' wineserver -k"
else
  echo "run: stopping Quillet and the virtual display"
fi
