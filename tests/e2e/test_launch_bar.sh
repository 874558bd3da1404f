#!/usr/bin/env bash
# The launch bar end to end: a first run shows it beside the side bar with a
# "Launch Bar" folder beside the program; plus, minus and a restart give its
# three heights; a program dropped on a slot is saved as a key and a bitmap
# and starts on a click; Ctrl with a click empties the slot; the cross keeps
# the bar away at the next start. Which handler does what is the headless
# tests' business; here, what a real screen and the real shell do.
set -uo pipefail
source "$(dirname "$0")/lib.sh"

GROUND='#4682B4'  # root colour behind the see-through bars
WIDTH=32          # 480 twips
# Heights in pixels: one slot at load (1125 twips), three after two adds
# (2040), three at load (1995).
ONE=75 THREE_ADDED=136 THREE_LOADED=133
# Controls in window pixels at 15 twips a pixel.
PLUS_X=5 MINUS_X=16 CROSS_X=27 BUTTON_Y=13
SLOT_X=15 SLOT_Y=(0 33 63 93)  # the middle of slots 1 to 3, 29 pixels high
SLOT_TOP=(0 19 49 79)

# The launch bar: the program's visible window of its width; prints its X id.
bar_window() {
  local w
  for w in $(e2e_x_windows); do
    [[ $(e2e_geometry "$w" | cut -d' ' -f3) == "$WIDTH" ]] && { echo "$w"; return 0; }
  done
  return 1
}

bar_height() { local w; w=$(bar_window) && e2e_geometry "$w" | cut -d' ' -f4; }

# A click on a button of the bar; a second one at once would be a double click.
click_button() {
  e2e_click "$1" "$2"
  sleep 0.7
}

drop() {
  local probe=$E2E_WORK/drop_files.exe
  if [[ ! -f $probe ]]; then
    x86_64-w64-mingw32-gcc-posix -O2 -o "$probe" "$E2E_REPO/tests/e2e/drop_files.c" -lole32 -luuid || return 1
  fi
  e2e_wine "$probe" "$@"
}

# The width and height of a bitmap file, from its header.
bitmap_size() {
  [[ -f $1 ]] || { echo '<none>'; return; }
  echo "$(od -An -tu4 -j18 -N4 "$1" | tr -d ' ')x$(od -An -tu4 -j22 -N4 "$1" | tr -d ' ')"
}

notepad_windows() { xdotool search --onlyvisible --name 'Notepad' 2>/dev/null; }

restart() {
  e2e_wine_stop
  e2e_wait_exit "$E2E_PID" >/dev/null
  e2e_start_and_wait "$1" || return 1
  e2e_root_colour "$GROUND"
}

launch_bar() {
  local t="launch bar" bar x y w h folder bmp shot
  e2e_prefix_new
  e2e_three_drives || { e2e_fail "$t: drives" "could not make the test drives"; return; }
  e2e_install Quillet.exe || { e2e_fail "$t: program" "no Quillet.exe to test"; return; }
  e2e_start_and_wait "$t" || return
  e2e_root_colour "$GROUND"
  folder=$E2E_PROGRAM_DIR/Launch\ Bar
  e2e_wait_for 10 bar_window >/dev/null
  if ! bar=$(bar_window); then
    e2e_fail "$t: a first run shows the bar" "no window $WIDTH pixels wide; windows: $(e2e_probe | tr '\n' ';')"
    return
  fi
  read -r x y w h <<<"$(e2e_geometry "$bar")"
  # 3670, 6180 twips: the bar's right edge and its first card's top.
  e2e_check "$t: a first run shows the bar at 3670, 6180 twips, 480 x 1125" "at $x,$y ${w}x$h" \
    test $((x - 245)) -ge -1 -a $((x - 245)) -le 0 -a "$y" -eq 412 -a "$h" -eq "$ONE"
  e2e_check "$t: a Launch Bar folder stands beside the program" "none in $E2E_PROGRAM_DIR" test -d "$folder"

  click_button $((x + PLUS_X)) $((y + BUTTON_Y))
  click_button $((x + PLUS_X)) $((y + BUTTON_Y))
  e2e_wait_for 5 eval '[[ $(bar_height) == $THREE_ADDED ]]'
  e2e_check_eq "$t: two adds grow it by two slots and 45 twips" "$THREE_ADDED" "$(bar_height)"
  click_button $((x + MINUS_X)) $((y + BUTTON_Y))
  e2e_check_eq "$t: a remove leaves the height" "$THREE_ADDED" "$(bar_height)"
  e2e_check_eq "$t: the count is saved" 2 "$(e2e_setting launch)"
  click_button $((x + PLUS_X)) $((y + BUTTON_Y))

  # Three real programs in the column.
  local slot=1 program
  for program in 'C:\windows\notepad.exe' 'C:\windows\regedit.exe' 'C:\windows\system32\winecfg.exe'; do
    drop ole $((x + SLOT_X)) $((y + SLOT_Y[slot])) "$program" >/dev/null
    e2e_wait_for 10 test -f "$folder/$slot.bmp"
    slot=$((slot + 1))
  done
  e2e_check_eq "$t: the dropped program is saved under its key" 'C:\windows\notepad.exe' "$(e2e_setting 1Lanuch)"
  e2e_check_eq "$t: its picture is a 29 x 29 bitmap" 29x29 "$(bitmap_size "$folder/1.bmp")"
  e2e_check_eq "$t: the third slot has its program" 'C:\windows\system32\winecfg.exe' "$(e2e_setting 3Lanuch)"
  e2e_mouse_move $((x + 100)) $((y + 200))
  sleep 0.5
  shot=$(e2e_log_dir)/three_slots.png
  e2e_screenshot "$shot"
  echo "screenshot: $shot"
  for slot in 1 2 3; do
    e2e_check_eq "$t: slot $slot shows no desktop" 0 \
      "$(e2e_count_colour "$shot" $((x + 1)) $((y + SLOT_TOP[slot])) 29 29 "$GROUND")"
  done

  e2e_click $((x + SLOT_X)) $((y + SLOT_Y[1]))
  e2e_check "$t: a click on the slot starts Notepad" "no Notepad window" e2e_wait_for 20 eval '[[ -n $(notepad_windows) ]]'
  local n
  for n in $(notepad_windows); do xdotool windowclose "$n" 2>/dev/null; done

  xdotool mousemove $((x + SLOT_X)) $((y + SLOT_Y[1])) keydown ctrl click 1 keyup ctrl
  e2e_wait_for 5 eval '! test -f "$folder/1.bmp"'
  e2e_check "$t: Ctrl with a click empties the slot" "1.bmp still there, key $(e2e_setting 1Lanuch)" \
    eval '! test -f "$folder/1.bmp" && ! e2e_has_setting 1Lanuch'

  restart "$t: restart" || return
  e2e_wait_for 10 bar_window >/dev/null
  e2e_check_eq "$t: a restart gives the height of three slots" "$THREE_LOADED" "$(bar_height)"
  read -r x y _ _ <<<"$(e2e_geometry "$(bar_window)")"
  e2e_click $((x + CROSS_X)) $((y + BUTTON_Y))
  e2e_wait_for 5 eval '! bar_window >/dev/null'
  e2e_check_eq "$t: the cross saves the bar as off" D "$(e2e_setting LB)"
  restart "$t: second restart" || return
  sleep 2
  e2e_check "$t: the cross keeps the bar away at the next start" "a bar window: $(bar_window)" \
    eval '! bar_window >/dev/null'
  e2e_prefix_done
}

e2e_begin || { e2e_fail "harness" "no virtual display"; exit 1; }
launch_bar
e2e_summary
