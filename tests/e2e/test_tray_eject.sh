#!/usr/bin/env bash
# The tray icon and the eject button end to end, in a dry run that moves no
# medium: the icon stands in Wine's tray and goes with Exit, its menu takes
# keys and hides and shows the bar, and the eject button that comes out on a
# removable drive's card asks for that drive's eject.
set -uo pipefail
source "$(dirname "$0")/lib.sh"

GROUND='#2E8B57'
DRY_RUN_WIN='C:\quillet-dry-run.txt'

map_state() { xwininfo -id "$1" 2>/dev/null | sed -n 's/^ *Map State: //p'; }

# e2e_wait_for with a command that must print a given text.
wait_state() { e2e_wait_for "$3" eval "[[ \$(map_state $1) == $2 ]]"; }

tray_window() { e2e_window_named "Wine System Tray" | head -n1; }

# The program's pop-up menu is up (the system's menu class).
menu_up() { e2e_probe | grep 'class=#32768' | grep -q ' visible=1 '; }

# Right press on the icon, then keys in its menu once it is up.
menu_keys() {
  local attempt
  for attempt in 1 2 3; do
    e2e_click $((TX + 10)) $((TY + 10)) 3
    e2e_wait_for 3 menu_up && break
  done
  sleep 0.3
  xdotool key "$@"
}

tray_and_eject() {
  local t="tray" x y dry shot
  e2e_prefix_new
  e2e_drives_clear
  e2e_drive_sized f 64 16 floppy "STICK" || { e2e_fail "$t: drives" "could not make the test drive"; return; }
  e2e_drives_apply
  e2e_install Quillet.exe || { e2e_fail "$t: program" "no Quillet.exe to test"; return; }
  dry=$WINEPREFIX/drive_c/quillet-dry-run.txt
  rm -f "$dry"
  export QUILLET_DRY_RUN=$DRY_RUN_WIN
  e2e_start_and_wait "$t" || return
  e2e_root_colour "$GROUND"
  sleep 0.5

  local tray=
  e2e_wait_for 10 eval '[[ -n $(tray_window) ]]'
  tray=$(tray_window)
  e2e_check "$t: the icon stands in Wine's tray" "no tray window" test -n "$tray"
  [[ -n $tray ]] || return
  read -r TX TY _ _ <<<"$(e2e_geometry "$tray")"
  shot=$(e2e_log_dir)/tray.png
  e2e_screenshot "$shot"

  # Down four times and Return: "Hide/Show" hides the bar, the same again shows it.
  menu_keys Down Down Down Down Return
  if wait_state "$E2E_WIN" IsUnMapped 5; then e2e_pass "$t: the menu's Hide/Show hides the bar"
  else e2e_fail "$t: the menu's Hide/Show hides the bar" "map state $(map_state "$E2E_WIN")"; fi
  sleep 0.5
  menu_keys Down Down Down Down Return
  if wait_state "$E2E_WIN" IsViewable 5; then e2e_pass "$t: Hide/Show again shows it"
  else e2e_fail "$t: Hide/Show again shows it" "map state $(map_state "$E2E_WIN")"; fi

  # The removable drive's card (the second): hover brings out its eject button.
  t="eject"
  read -r x y _ _ <<<"$(e2e_geometry "$E2E_WIN")"
  local before=$(e2e_log_dir)/before-eject.png
  e2e_screenshot "$before"
  e2e_mouse_move $((x + 80)) $((y + 100))
  e2e_mouse_move $((x + 82)) $((y + 100))
  sleep 0.7
  shot=$(e2e_log_dir)/eject-button.png
  e2e_screenshot "$shot"
  echo "screenshot: $shot"
  # The button's plate, at the card's right, changes what the card showed there.
  local changed
  changed=$("$E2E_CONVERT" "$before" "$shot" -crop "30x20+$((x + 117))+$((y + 84))" +repage \
    -compose difference -composite -colorspace gray -threshold 0 -format '%[fx:round(mean*w*h)]' info:-)
  e2e_check "$t: the eject button shows on the stick's card" "$changed of 600 pixels changed" \
    test "$changed" -ge 300
  e2e_click $((x + 135)) $((y + 95))
  e2e_wait_for 5 grep -q 'eject F:' "$dry"
  e2e_check_eq "$t: a click asks for the stick's eject" "eject F:" "$(tr -d '\r' <"$dry" 2>/dev/null | tail -n1)"

  # Exit from the menu: the icon goes with the program.
  t="tray"
  menu_keys Down Down Down Down Down Return
  if e2e_wait_exit "$E2E_PID"; then e2e_pass "$t: Exit ends the program"
  else e2e_fail "$t: Exit ends the program" "still running"; fi
  sleep 1
  e2e_check "$t: the icon went with Exit" "the tray still shows" test -z "$(e2e_window_named 'Wine System Tray')"
  unset QUILLET_DRY_RUN
  e2e_prefix_done
}

e2e_begin || { e2e_fail "harness" "no virtual display"; exit 1; }
tray_and_eject
e2e_summary
