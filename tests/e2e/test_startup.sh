#!/usr/bin/env bash
# Start-up of the side bar, end to end: what only the real program shows. The
# first run's window (place and styles) and its settings
# in the real registry, and a second start turned away by the running one;
# what shows through the bar is the cards test's business.
# What start-up makes of stored settings or a renamed executable is the
# headless start-up tests' business.
set -uo pipefail
source "$(dirname "$0")/lib.sh"

TWIPS_PER_PIXEL=15           # Xvfb under Wine: 96 DPI
WS_CAPTION=$((0x00C00000))
WS_SYSMENU=$((0x00080000))

# A small machine: C:, a 1000 MB disk E: with 970 MB used, and an empty CD-ROM D:.
give_drives() {
  e2e_drives_clear
  e2e_drive_sized e 1000 970 hd "DATA" || return 1
  e2e_drive d "$WINEPREFIX.drives/no-disc" cdrom
  rmdir "$WINEPREFIX.drives/no-disc"
  e2e_drives_apply
}


# wait_settings_written: start-up saves LB as its last key; then all are there.
wait_settings_written() { e2e_wait_for "$E2E_TIMEOUT" e2e_has_setting LB "$@"; }

# check_position NAME LEFT_TWIPS TOP_TWIPS
check_position() {
  local geometry x y
  geometry=$(e2e_geometry "$E2E_WIN")
  read -r x y _ _ <<<"$geometry"
  e2e_check_eq "$1: window left at $2 twips" $(($2 / TWIPS_PER_PIXEL)) "$x"
  e2e_check_eq "$1: window top at $3 twips" $(($3 / TWIPS_PER_PIXEL)) "$y"
}

check_width() {
  local w
  read -r _ _ w _ <<<"$(e2e_geometry "$E2E_WIN")"
  # 2350 twips is 156.7 pixels; the form rounds to whole pixels.
  e2e_check_eq "$1: window 2350 twips wide" 157 "$w"
}

first_run_and_second_start() {
  local t="first run"
  e2e_prefix_new
  give_drives || { e2e_fail "$t: drives" "could not make the test drives"; return; }
  e2e_install Quillet.exe || { e2e_fail "$t: program" "no Quillet.exe to test"; return; }
  e2e_start_and_wait "$t" || return

  if wait_settings_written; then e2e_pass "$t: settings written"; else
    e2e_fail "$t: settings written" "no LB key after ${E2E_TIMEOUT}s; stored: $(e2e_settings | tr '\t\n' '=;')"
  fi
  # Which defaults start-up writes is the headless tests' business; here, that they reach the registry.
  e2e_check_eq "$t: Timer is 30" 30 "$(e2e_setting Timer)"
  e2e_check_eq "$t: LB is E" E "$(e2e_setting LB)"

  check_position "$t" 1320 5655
  check_width "$t"

  local state style exstyle
  state=$(e2e_net_wm_state "$E2E_WIN")
  e2e_check "$t: a tool window, not in the task bar" "_NET_WM_STATE is: $state" \
    grep -q _NET_WM_STATE_SKIP_TASKBAR <<<"$state"
  style=$(e2e_field "$E2E_MAIN" style)
  e2e_check "$t: no title bar" "window style $style has caption bits" \
    test $((style & WS_CAPTION)) -eq 0
  e2e_check "$t: no system menu" "window style $style has WS_SYSMENU" \
    test $((style & WS_SYSMENU)) -eq 0
  e2e_check_eq "$t: borderless (client = window width)" \
    "$(e2e_field "$E2E_MAIN" width)" "$(e2e_field "$E2E_MAIN" client_width)"


  second_start
  e2e_prefix_done
}


second_start() {
  local t="second start" first_pid=$E2E_PID first_win=$E2E_WIN first_log=$E2E_LOG box
  e2e_start
  local second_pid=$E2E_PID second_log=$E2E_LOG
  if e2e_wait_for "$E2E_TIMEOUT" grep -q 'MSGBOX_OnInit' "$second_log"; then
    e2e_check_eq "$t: message text" "Previous Instance Already Open" "$(e2e_msgbox_texts "$second_log" | head -n1)"
  else
    e2e_fail "$t: message text" "no message box; the second program $(e2e_running "$second_pid" && echo "still runs" || echo "ended"); its output: $(tail -c 300 "$second_log")"
  fi
  box=
  e2e_wait_for 15 eval 'box=$(e2e_window_named Information | head -n1); [[ -n $box ]]'
  e2e_check "$t: message titled Information" "no visible window named 'Information'" test -n "$box"
  [[ -n $box ]] && e2e_press_key "$box" Return
  e2e_check "$t: the second program ends" "it still runs after the message" e2e_wait_exit "$second_pid"
  e2e_check "$t: the first program still runs" "it ended" e2e_running "$first_pid"
  local windows
  windows=$(e2e_x_windows)
  e2e_check "$t: the first window still shows" "window $first_win gone; visible: $windows" \
    grep -qx "$first_win" <<<"$windows"
  E2E_PID=$first_pid E2E_WIN=$first_win E2E_LOG=$first_log
}

e2e_begin || { e2e_fail "harness" "no virtual display"; exit 1; }
first_run_and_second_start
e2e_summary
