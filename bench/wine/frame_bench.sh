#!/usr/bin/env bash
# Frame-change cost of the GIF player in the Win32 host: frame_bench_win.exe
# (bench/wine/frame_bench_win.cpp, built with the win64 preset) steps and
# paints the spinner and a 1024 x 768 animation into a real window's back
# buffer, in a fresh prefix on a virtual display.
#
#   bash bench/wine/frame_bench.sh      (about half a minute)
#
# Prints, for each animation:
#   <name>: <us> us and <n> heap allocations a frame change (<us> us into the back buffer alone); GDI handles held: ...
# A frame change: one frame stepped, painted into the back buffer and the buffer copied to the window.
# Environment: FRAME_BENCH_EXE (default build/win64/frame_bench_win.exe), E2E_KEEP=1.
set -uo pipefail
source "$(dirname "$0")/lib.sh"

main() {
  local exe=${FRAME_BENCH_EXE:-$BENCH_DIR/../../build/win64/frame_bench_win.exe}
  [[ -f $exe ]] || { echo "frame bench: $exe is not built (win64 preset)" >&2; exit 1; }
  e2e_begin
  e2e_prefix_new
  local path
  path=$(bench_install_helper "$exe")
  cp "$BENCH_DIR/../../resources/spinner.gif" "$WINEPREFIX/drive_c/bench/"
  bench_machine_note
  (cd "$WINEPREFIX/drive_c" && wine "$path" 'C:\bench\spinner.gif') 2>/dev/null | tr -d '\r'
  local status=${PIPESTATUS[0]}
  ((status == 0)) || echo "frame bench: ended with status $status" >&2
  return "$status"
}

main "$@"
