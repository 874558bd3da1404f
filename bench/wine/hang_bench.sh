#!/usr/bin/env bash
# Hang benchmark: how long the side bar takes to answer a message while one of
# its drives hangs for 10 s on every space query (a FUSE folder whose statfs
# sleeps, linked as F:). A second program (ping_window.c) sends WM_NULL to the
# bar every 20 ms from the moment it has a window, through the fresh start and
# two refreshes (Timer=15, the shortest), and times each answer.
#
#   bash bench/wine/hang_bench.sh       (as root; about 2 minutes)
#
# Two runs. First as on Windows, where a hanging drive holds up only the
# threads that query it: the pinger keeps F:\ open so that the Wine server
# asks the drive only once, before the bar starts. Then as Wine does it
# unaided: the server itself calls statfs whenever the drive is opened anew
# and every Wine program stalls with it; the pinger's own control window
# tells that part from the bar's own.
#
# Prints:
#   hang: worst answer <ms> ms over <n> messages (fresh start + 2 refreshes), goal < 100 ms (...)
#   hang, Wine server stalled too: worst answer <ms> ms over <n> messages, of which the bar's own <ms> ms (...)
# Environment: QUILLET_EXE (default build/win64/Quillet.exe), HANG_SECONDS
# (statfs sleep, 10), PING_SECONDS (measuring time a run, 36), E2E_KEEP=1.
set -uo pipefail
source "$(dirname "$0")/lib.sh"

HANG_SECONDS=${HANG_SECONDS:-10}
PING_SECONDS=${PING_SECONDS:-36}
REFRESH_SECONDS=15
SLOW_LETTER=f
FUSE_PID=

need_fuse() {
  if ! /usr/bin/python3 -c 'import fusepy' 2>/dev/null || ! command -v fusermount >/dev/null; then
    { apt-get install -y fuse3 python3-fusepy || { apt-get update && apt-get install -y fuse3 python3-fusepy; }; } >/dev/null 2>&1 ||
      { echo "hang: cannot install fuse3 and python3-fusepy" >&2; return 1; }
  fi
  [[ -c /dev/fuse ]] || { echo "hang: no /dev/fuse on this machine" >&2; return 1; }
}

# mount_slow_drive DIR: the FUSE folder, served by a background Python process.
mount_slow_drive() {
  mkdir -p "$1"
  /usr/bin/python3 "$BENCH_DIR/slow_fs.py" "$1" "$HANG_SECONDS" >"$E2E_WORK/slow_fs.log" 2>&1 &
  FUSE_PID=$!
  E2E_MOUNTS+=("$1")
  if ! e2e_wait_for 15 mountpoint -q "$1"; then
    echo "hang: the FUSE folder did not mount: $(cat "$E2E_WORK/slow_fs.log")" >&2
    return 1
  fi
}

cleanup() {
  e2e_cleanup # Wine first, then the mounts (the FUSE one among them)
  if [[ -n $FUSE_PID ]]; then
    kill "$FUSE_PID" 2>/dev/null
    wait "$FUSE_PID" 2>/dev/null
  fi
}

statfs_count() { grep -c '^statfs' "$E2E_WORK/slow_fs.log"; }

# measure NAME [HOLD_PATH]: a fresh start of the bar under the pinger; the
# pinger's report goes to $E2E_WORK/NAME.txt.
measure() {
  local out=$E2E_WORK/$1.txt asked_before
  e2e_wine_stop
  # The pinger waits for the bar's first window, so it starts first.
  (cd "$WINEPREFIX/drive_c" && exec wine "$PING" Quillet.exe "$PING_SECONDS" ${2:+"$2"}) \
    >"$out" 2>"$E2E_WORK/$1.log" &
  local ping_pid=$!
  E2E_PIDS+=("$ping_pid")
  e2e_wait_for 60 grep -q '^ready' "$out" || { echo "hang: the pinger did not start" >&2; return 1; }
  asked_before=$(statfs_count)
  bench_start_bar
  wait "$ping_pid"
  ASKED=$(($(statfs_count) - asked_before))
  SUMMARY=$(grep '^ping:' "$out")
  if [[ -z $SUMMARY || $SUMMARY == *"no window"* ]]; then
    echo "hang: no measurement: $(tr '\n' ' ' <"$out") $(tail -c 400 "$E2E_WORK/$1.log")"
    return 1
  fi
  echo "$1: drive $SLOW_LETTER asked $ASKED times while measured"
  sed 's/^/  /' "$out"
}

main() {
  need_fuse || exit 1
  e2e_begin
  trap cleanup EXIT
  e2e_prefix_new
  e2e_drives_clear
  e2e_drive_sized e 1000 400 hd "DATA" || exit 1
  mount_slow_drive "$WINEPREFIX.drives/slow" || exit 1
  e2e_drive "$SLOW_LETTER" "$WINEPREFIX.drives/slow" hd
  e2e_drives_apply
  e2e_install Quillet.exe || exit 1
  e2e_set_setting Timer "$REFRESH_SECONDS"
  PING=$(bench_helper ping_window -lwinmm) || exit 1
  PING=$(bench_install_helper "$PING")
  bench_machine_note
  echo "drive $SLOW_LETTER: every statfs sleeps ${HANG_SECONDS} s"

  # As on Windows: the drive hangs only the threads that query it.
  measure held "${SLOW_LETTER^^}:\\" || exit 1
  local worst n control
  worst=$(e2e_field "$SUMMARY" worst_ms)
  n=$(e2e_field "$SUMMARY" messages)
  control=$(e2e_field "$SUMMARY" control_worst_ms)

  # As Wine does it unaided: the server's own statfs stalls every program.
  measure unheld || exit 1
  echo "hang: worst answer $worst ms over $n messages (fresh start + 2 refreshes), goal < 100 ms" \
    "(another program's window: worst $control ms)"
  echo "hang, Wine server stalled too: worst answer $(e2e_field "$SUMMARY" worst_ms) ms over" \
    "$(e2e_field "$SUMMARY" messages) messages, of which the bar's own $(e2e_field "$SUMMARY" own_worst_ms) ms" \
    "(another program's window: worst $(e2e_field "$SUMMARY" control_worst_ms) ms)"
}

main "$@"
