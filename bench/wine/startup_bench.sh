#!/usr/bin/env bash
# Start-up time: from starting the process to the side bar on screen with its
# five cards (mapped, 600 + 5 x 645 = 3825 twips = 255 px high at 96 DPI),
# against a bare keyed tool window of the same size (bare_window.c) mapped at
# its size. Both start in one Wine prefix whose server stays up, in turns
# (the order swaps each round), after one start of each that is not counted
# (the bar's first run writes its settings). The X display is polled about
# every 10 ms, so times are good to about that.
#
#   bash bench/wine/startup_bench.sh    (as root; about 1.5 minutes)
#
# Prints: startup: side bar median <ms> ms, bare window median <ms> ms, ratio <r> (<n> starts each), goal <= 1.1
# Environment: QUILLET_EXE (default build/win64/Quillet.exe), STARTUP_ROUNDS
# (5), E2E_KEEP=1.
set -uo pipefail
source "$(dirname "$0")/lib.sh"

ROUNDS=${STARTUP_ROUNDS:-5}
CARDS=5
TWIPS_PER_PIXEL=15
BAR_HEIGHT=$(((600 + 645 * CARDS) / TWIPS_PER_PIXEL))
BAR_PATH='C:\Program Files\Quillet\Quillet.exe'
BARE_PATH=
WINDOW_SIZE=

# wait_mapped CLASS SIZE: polls until a visible window of the class is
# SIZE ("157x255"); 1 after E2E_TIMEOUT seconds.
wait_mapped() {
  local deadline=$((SECONDS + E2E_TIMEOUT))
  until bench_x_geometries "$1" | grep -q " $2\$"; do
    ((SECONDS < deadline)) || return 1
    sleep 0.01
  done
}

# time_start bar|bare: starts one, prints the milliseconds until it showed,
# ends it again.
time_start() {
  local class t0 t1
  t0=$(bench_now_ms)
  if [[ $1 == bar ]]; then
    class=Quillet.exe
    bench_start Quillet "$BAR_PATH"
  else
    class=bare_window.exe
    bench_start bare_window "$BARE_PATH" "${WINDOW_SIZE%x*}" "${WINDOW_SIZE#*x}" "$BARE_LEFT" "$BARE_TOP"
  fi
  if ! wait_mapped "$class" "$WINDOW_SIZE"; then
    echo "startup: $class did not show at $WINDOW_SIZE: $(bench_x_geometries "$class" | tr '\n' ' ')" >&2
    return 1
  fi
  t1=$(bench_now_ms)
  bench_stop "$class" || { echo "startup: $class did not end" >&2; return 1; }
  awk -v a="$t0" -v b="$t1" 'BEGIN { printf "%.0f\n", b - a }'
}

main() {
  e2e_begin
  e2e_prefix_new
  bench_five_drives || exit 1
  e2e_install Quillet.exe || exit 1
  BARE_PATH=$(bench_helper bare_window -mwindows) || exit 1
  BARE_PATH=$(bench_install_helper "$BARE_PATH")
  wineserver -p # one server throughout: no start pays for booting it

  # First run, not counted; it tells where the bar sits and how wide it is.
  bench_start_bar
  e2e_wait_main_window || { echo "startup: the side bar did not show" >&2; exit 1; }
  local w
  read -r BARE_LEFT BARE_TOP w _ <<<"$(e2e_geometry "$E2E_WIN")"
  WINDOW_SIZE=${w}x$BAR_HEIGHT
  wait_mapped Quillet.exe "$WINDOW_SIZE" || { echo "startup: the bar never showed $CARDS cards ($WINDOW_SIZE px)" >&2; exit 1; }
  bench_stop Quillet.exe
  time_start bare >/dev/null || exit 1

  local bar=() bare=() round t
  for ((round = 1; round <= ROUNDS; round++)); do
    local order=(bar bare)
    ((round % 2 == 0)) && order=(bare bar)
    for t in "${order[@]}"; do
      local ms
      ms=$(time_start "$t") || exit 1
      if [[ $t == bar ]]; then bar+=("$ms"); else bare+=("$ms"); fi
    done
  done

  local bar_median bare_median
  bar_median=$(bench_median "${bar[@]}")
  bare_median=$(bench_median "${bare[@]}")
  bench_machine_note
  echo "side bar ($WINDOW_SIZE px, $CARDS cards) ms: ${bar[*]}"
  echo "bare window ($WINDOW_SIZE px) ms: ${bare[*]}"
  local bar_best bare_best
  bar_best=$(printf '%s\n' "${bar[@]}" | sort -n | head -n1)
  bare_best=$(printf '%s\n' "${bare[@]}" | sort -n | head -n1)
  echo "best: side bar $bar_best ms, bare window $bare_best ms," \
    "ratio $(awk -v a="$bar_best" -v b="$bare_best" 'BEGIN { printf "%.2f", a / b }')"
  echo "startup: side bar median $bar_median ms, bare window median $bare_median ms," \
    "ratio $(awk -v a="$bar_median" -v b="$bare_median" 'BEGIN { printf "%.2f", a / b }')" \
    "($ROUNDS starts each), goal <= 1.1"
}

main "$@"
