#!/usr/bin/env bash
# Idle cost: the side bar with five drives at its shortest refresh (Timer=15)
# beside a bare keyed tool window of the same size (bare_window.c), both
# running in one Wine prefix at once. After both have settled, the CPU time
# of each one's Wine process over 60 s (utime + stime from /proc) and its
# resident memory (VmRSS) at the end.
#
#   bash bench/wine/idle_bench.sh       (as root; about 1.5 minutes)
#
# Prints:
#   idle cpu: side bar <%>, bare window <%>, difference <points> points, goal <= 0.1
#   idle memory: side bar <MB>, bare window <MB>, ratio <r>, goal <= 1.5
# Environment: QUILLET_EXE (default build/win64/Quillet.exe), IDLE_SECONDS
# (60), SETTLE_SECONDS (10: start-up work left out), E2E_KEEP=1.
set -uo pipefail
source "$(dirname "$0")/lib.sh"

IDLE_SECONDS=${IDLE_SECONDS:-60}
SETTLE_SECONDS=${SETTLE_SECONDS:-10}

percent() { awk -v t="$1" -v hz="$BENCH_TICKS" -v s="$2" 'BEGIN { printf "%.3f", t / hz / s * 100 }'; }
megabytes() { awk -v k="$1" 'BEGIN { printf "%.1f", k / 1024 }'; }

# window_kind EXE_NAME: styles and layering of the program's visible window.
window_kind() {
  E2E_EXE_NAME=$1 e2e_probe | grep -m1 ' visible=1 ' | grep -o 'style=.* alpha=[0-9]*'
}

main() {
  e2e_begin
  e2e_prefix_new
  bench_five_drives || exit 1
  e2e_install Quillet.exe || exit 1
  e2e_set_setting Timer 15
  local bare
  bare=$(bench_helper bare_window -mwindows) || exit 1
  bare=$(bench_install_helper "$bare")

  bench_start_bar
  e2e_wait_main_window || { echo "idle: the side bar did not show" >&2; exit 1; }
  local x y w h
  read -r x y w h <<<"$(e2e_geometry "$E2E_WIN")"
  # Beside the bar, same size.
  local bare_x=$((x + w + 40 > 1280 - w ? x - w - 40 : x + w + 40))
  bench_start bare_window "$bare" "$w" "$h" "$bare_x" "$y"
  local bar_pid bare_pid
  bar_pid=$(bench_wait_linux_pid Quillet.exe) || { echo "idle: no process of the side bar" >&2; exit 1; }
  bare_pid=$(bench_wait_linux_pid bare_window.exe) || { echo "idle: no process of the bare window" >&2; exit 1; }
  e2e_wait_for 30 eval '[[ -n $(bench_x_geometries bare_window.exe) ]]' ||
    { echo "idle: the bare window did not show" >&2; exit 1; }
  echo "side bar: ${w}x${h} px at $x,$y (pid $bar_pid); bare window: $(bench_x_geometries bare_window.exe | cut -d' ' -f2) px (pid $bare_pid)"
  echo "  side bar:    $(window_kind Quillet.exe)"
  echo "  bare window: $(window_kind bare_window.exe)"

  sleep "$SETTLE_SECONDS"
  local bar0 bare0 bar1 bare1 bar_rss bare_rss
  bar0=$(bench_cpu_ticks "$bar_pid") && bare0=$(bench_cpu_ticks "$bare_pid") || exit 1
  sleep "$IDLE_SECONDS"
  bar1=$(bench_cpu_ticks "$bar_pid") && bare1=$(bench_cpu_ticks "$bare_pid") ||
    { echo "idle: a program ended while measured" >&2; exit 1; }
  bar_rss=$(bench_rss_kb "$bar_pid")
  bare_rss=$(bench_rss_kb "$bare_pid")
  [[ -n $(bench_x_geometries Quillet.exe) ]] || echo "idle: note: the side bar's window is gone" >&2

  local bar_pc bare_pc
  bar_pc=$(percent $((bar1 - bar0)) "$IDLE_SECONDS")
  bare_pc=$(percent $((bare1 - bare0)) "$IDLE_SECONDS")
  bench_machine_note
  echo "over ${IDLE_SECONDS} s: side bar $((bar1 - bar0)) ticks, bare window $((bare1 - bare0)) ticks (${BENCH_TICKS} a second)"
  echo "idle cpu: side bar $bar_pc %, bare window $bare_pc %," \
    "difference $(awk -v a="$bar_pc" -v b="$bare_pc" 'BEGIN { printf "%.3f", a - b }') points, goal <= 0.1"
  echo "idle memory: side bar $(megabytes "$bar_rss") MB, bare window $(megabytes "$bare_rss") MB," \
    "ratio $(awk -v a="$bar_rss" -v b="$bare_rss" 'BEGIN { printf "%.2f", a / b }'), goal <= 1.5"
}

main "$@"
