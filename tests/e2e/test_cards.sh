#!/usr/bin/env bash
# The drive cards of the side bar, end to end: with three drives the bar is
# as tall as three cards, the cards' art is opaque, and around it the desktop
# shows through the keyed window with no key colour left on screen. What the
# cards say and where each part sits in twips is the headless tests' business;
# here, what the real program puts on a real screen.
set -uo pipefail
source "$(dirname "$0")/lib.sh"

TWIPS_PER_PIXEL=15   # Xvfb under Wine: 96 DPI
GROUND='#2E8B57'     # root colour behind the see-through bar
KEY_COLOUR='#C000C0' # the bar's key colour: never on screen itself
CARDS=3
# Card i's picture in window pixels: from 35 + 43 (i - 1), 48 high, 156 wide
# (twips: top -120 + 645 i, height 720, width 2340).
CARD_FIRST_TOP=35
CARD_STEP=43
CARD_HEIGHT=48
CARD_WIDTH=156

# px TWIPS: to whole pixels as the host rounds (half away from zero; all positive here).
px() { echo $((($1 * 2 + TWIPS_PER_PIXEL) / (2 * TWIPS_PER_PIXEL))); }



# The bar's height is its header (600 twips) and 645 twips a card.
check_size() {
  local t=$1 width height want_w want_h
  want_w=$(px 2350)
  want_h=$(px $((600 + 645 * CARDS)))
  # The cards are made before the window shows; allow the host a moment to apply the size.
  e2e_wait_size "$E2E_WIN" "$want_w" "$want_h" 10
  read -r _ _ width height <<<"$(e2e_geometry "$E2E_WIN")"
  e2e_check_eq "$t: window 2350 twips wide" "$want_w" "$width"
  e2e_check_eq "$t: window $((600 + 645 * CARDS)) twips high for $CARDS cards" "$want_h" "$height"
}

# Window areas away from every card, label and button: the desktop shows in
# every pixel there. "name:x:y:width:height" in window pixels (157 x 169):
# the uptime strip is at 4..138 x 22..33, the power button at 141..153 x
# 21..33, the cards at 0..155 from y 35 on, the handle strip at column 156,
# rows 48..110.
OUTSIDE_AREAS=(
  "band above the uptime strip, with both top corners:0:0:157:21"
  "strip left of the uptime label:0:22:4:12"
  "gap between the uptime label and the power button:139:21:2:13"
  "strip right of the power button:154:21:2:13"
  "row between the uptime label and the first card:0:34:157:1"
  "column right of the cards, above the handle:156:0:1:48"
  "column right of the cards, below the handle, with the bottom-right corner:156:111:1:58"
)

check_see_through() {
  local t=$1 shot=$2 x=$3 y=$4 area name ax ay aw ah count key i top sw sh
  for area in "${OUTSIDE_AREAS[@]}"; do
    IFS=: read -r name ax ay aw ah <<<"$area"
    count=$(e2e_count_colour "$shot" $((x + ax)) $((y + ay)) "$aw" "$ah" "$GROUND")
    e2e_check_eq "$t: the desktop shows through the $name (${aw}x$ah at $ax,$ay)" $((aw * ah)) "$count"
  done
  # Inside each card's picture, its centre and all around it, the art is
  # opaque: no pixel shows the desktop (3 pixels in from each edge, clear of
  # rounded corners).
  for ((i = 1; i <= CARDS; i++)); do
    top=$((CARD_FIRST_TOP + CARD_STEP * (i - 1)))
    count=$(e2e_count_colour "$shot" $((x + 3)) $((y + top + 3)) $((CARD_WIDTH - 6)) $((CARD_HEIGHT - 6)) "$GROUND")
    e2e_check_eq "$t: card $i is opaque (pixels of the desktop in it)" 0 "$count"
  done
  read -r sw sh <<<"$("$E2E_CONVERT" "$shot" -format '%w %h' info:-)"
  key=$(e2e_count_colour "$shot" 0 0 "$sw" "$sh" "$KEY_COLOUR")
  e2e_check_eq "$t: no key-coloured pixel on screen" 0 "$key"
}

three_cards() {
  local t="three drives"
  e2e_prefix_new
  e2e_three_drives || { e2e_fail "$t: drives" "could not make the test drives"; return; }
  e2e_install Quillet.exe || { e2e_fail "$t: program" "no Quillet.exe to test"; return; }
  e2e_start_and_wait "$t" || return
  check_size "$t"

  local shot x y
  shot=$(e2e_log_dir)/cards.png
  e2e_root_colour "$GROUND"
  sleep 0.5
  e2e_screenshot "$shot"
  echo "screenshot: $shot"
  # The harness's own premise: a corner far from any window has the colour.
  if [[ $(e2e_pixel "$shot" 1275 1019) != "$GROUND" ]]; then
    e2e_fail "$t: root coloured" "corner pixel is $(e2e_pixel "$shot" 1275 1019), not $GROUND"
    return
  fi
  read -r x y _ _ <<<"$(e2e_geometry "$E2E_WIN")"
  check_see_through "$t" "$shot" "$x" "$y"
  e2e_prefix_done
}

e2e_begin || { e2e_fail "harness" "no virtual display"; exit 1; }
three_cards
e2e_summary
