#!/usr/bin/env bash
# The hover strip end to end: the pointer on the uptime strip brings out the
# five quick buttons and the pin and widens the bar; the red pin keeps all of
# it across a start; a quick button under the pointer lights up and shows its
# tip, and both go when the pointer leaves. Which handler does what is the
# headless tests' business; here, what a real screen shows.
set -uo pipefail
source "$(dirname "$0")/lib.sh"

GROUND='#2E8B57'   # root colour behind the see-through bar
HOT_FRAME='#000080' # the frame of a quick button under the pointer
# Controls in window pixels at 15 twips a pixel: "name:x:y:width:height".
BUTTONS=("lumbutton1:4:4:17:17" "lumbutton2:24:4:17:17" "lumbutton3:44:4:17:17" "lumbutton4:65:4:17:17"
  "lumbutton5:87:4:17:17")
PIN="Image26:112:5:16:16"
SIDE=("CMD_POWER:141:21:13:13" "Image12:157:23:16:16" "Image10:159:112:16:16" "Image17:159:129:16:16"
  "Image18:160:144:16:16")
NARROW=157 # 2350 twips
WIDE=176   # 2640 twips


# check_drawn TEST SHOT WX WY OPAQUE CONTROL...: each control shows its face
# (OPAQUE: no desktop pixel inside its one-pixel inset) or its picture (at
# least a quarter of its pixels not the desktop).
check_drawn() {
  local t=$1 shot=$2 wx=$3 wy=$4 opaque=$5 control name x y w h ground
  shift 5
  for control in "$@"; do
    IFS=: read -r name x y w h <<<"$control"
    if ((opaque)); then
      ground=$(e2e_count_colour "$shot" $((wx + x + 1)) $((wy + y + 1)) $((w - 2)) $((h - 2)) "$GROUND")
      e2e_check_eq "$t: $name's face is drawn (desktop pixels in it)" 0 "$ground"
    else
      ground=$(e2e_count_colour "$shot" $((wx + x)) $((wy + y)) "$w" "$h" "$GROUND")
      e2e_check "$t: $name's picture is drawn" "$ground of $((w * h)) pixels show the desktop" \
        test $((ground * 4)) -le $((w * h * 3))
    fi
  done
}

# A visible tool-tip window of the program: its probe line.
tip_window() { e2e_probe | grep 'class=tooltips_class32' | grep ' visible=1 '; }

start_bar() {
  local t=$1
  e2e_install Quillet.exe || { e2e_fail "$t: program" "no Quillet.exe to test"; return 1; }
  e2e_start_and_wait "$t" || return 1
  # The desktop colour once the program runs: its start may paint the root.
  e2e_root_colour "$GROUND"
  sleep 0.5
}

hover_strip() {
  local t="hover strip" shot x y
  e2e_prefix_new
  e2e_three_drives || { e2e_fail "$t: drives" "could not make the test drives"; return; }
  start_bar "$t" || return
  e2e_wait_size "$E2E_WIN" "$NARROW" 169 10
  read -r x y _ _ <<<"$(e2e_geometry "$E2E_WIN")"
  # Onto the uptime strip: the bar widens for the strip and the side buttons.
  # A window just shown may miss the first motion, so the pointer goes on moving.
  local step widened=
  for ((step = 0; step < 10; step++)); do
    e2e_mouse_move $((x + 40 + step)) $((y + 27))
    if e2e_wait_size "$E2E_WIN" "$WIDE" 169 1; then widened=1; break; fi
  done
  if [[ -n $widened ]]; then e2e_pass "$t: the bar widens under the pointer"
  else e2e_fail "$t: the bar widens under the pointer" "geometry $(e2e_geometry "$E2E_WIN")"; fi
  shot=$(e2e_log_dir)/hover-strip.png
  e2e_screenshot "$shot"
  echo "screenshot: $shot"
  check_drawn "$t" "$shot" "$x" "$y" 1 "${BUTTONS[@]}"
  check_drawn "$t" "$shot" "$x" "$y" 0 "$PIN" "${SIDE[@]}"
  # Two seconds on, the hover ends: narrow again, the buttons gone with the gray pin.
  if e2e_wait_size "$E2E_WIN" "$NARROW" 169 5; then e2e_pass "$t: the hover ends narrow"
  else e2e_fail "$t: the hover ends narrow" "geometry $(e2e_geometry "$E2E_WIN")"; fi
  shot=$(e2e_log_dir)/hover-ended.png
  e2e_screenshot "$shot"
  local ground
  ground=$(e2e_count_colour "$shot" $((x + 4)) $((y + 4)) 125 17 "$GROUND")
  e2e_check_eq "$t: the buttons' row shows the desktop again" $((125 * 17)) "$ground"
  e2e_prefix_done
}

red_pin_and_tip() {
  local t="red pin" shot x y frame
  e2e_prefix_new
  e2e_three_drives || { e2e_fail "$t: drives" "could not make the test drives"; return; }
  e2e_set_setting pt 2
  start_bar "$t" || return
  if e2e_wait_size "$E2E_WIN" "$WIDE" 169 10; then e2e_pass "$t: the bar starts wide"
  else e2e_fail "$t: the bar starts wide" "geometry $(e2e_geometry "$E2E_WIN")"; fi
  read -r x y _ _ <<<"$(e2e_geometry "$E2E_WIN")"
  e2e_mouse_move 1200 900
  sleep 0.5
  shot=$(e2e_log_dir)/red-pin.png
  e2e_screenshot "$shot"
  echo "screenshot: $shot"
  check_drawn "$t" "$shot" "$x" "$y" 1 "${BUTTONS[@]}"
  check_drawn "$t" "$shot" "$x" "$y" 0 "$PIN" "${SIDE[@]}"
  frame=$(e2e_count_colour "$shot" $((x + 4)) $((y + 4)) 17 17 "$HOT_FRAME")
  e2e_check_eq "$t: the lock button is unlit away from the pointer" 0 "$frame"

  # A second on the lock button: lit, and its tip shows.
  e2e_mouse_move $((x + 11)) $((y + 11))
  e2e_mouse_move $((x + 12)) $((y + 12))
  sleep 1.5
  shot=$(e2e_log_dir)/lock-hovered.png
  e2e_screenshot "$shot"
  frame=$(e2e_count_colour "$shot" $((x + 4)) $((y + 4)) 17 17 "$HOT_FRAME")
  e2e_check "$t: the lock button lights under the pointer" "$frame pixels of its frame colour" test "$frame" -ge 48
  local tip
  tip=$(tip_window)
  e2e_check "$t: a tool tip of the program shows over the lock button" "windows: $(e2e_probe | tr '\n' ';')" \
    test -n "$tip"
  # Off the bar: the light and the tip go.
  e2e_mouse_move 1200 900
  sleep 0.7
  shot=$(e2e_log_dir)/lock-left.png
  e2e_screenshot "$shot"
  frame=$(e2e_count_colour "$shot" $((x + 4)) $((y + 4)) 17 17 "$HOT_FRAME")
  e2e_check_eq "$t: the lock button is unlit once the pointer left" 0 "$frame"
  tip=$(tip_window)
  e2e_check "$t: the tip is gone once the pointer left" "$tip" test -z "$tip"
  e2e_prefix_done
}

e2e_begin || { e2e_fail "harness" "no virtual display"; exit 1; }
hover_strip
red_pin_and_tip
e2e_summary
