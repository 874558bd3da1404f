#!/usr/bin/env bash
# Files dropped on a drive card, end to end: an OLE drop from another program
# copies the file to the drive's root; a second drop of the same file, this
# time posted as WM_DROPFILES, asks before overwriting, and No keeps the old
# file; a third, answered Yes, replaces it while the copy splash hangs beside
# the pointer; a folder over a folder replaces it whole. Which handler does
# what is the headless tests' business.
set -uo pipefail
source "$(dirname "$0")/lib.sh"

ASK='already exists do you want overwrite\?'  # a pattern: the ? is literal
# Card 2's drive icon in window pixels: its picture starts at 35 + 43, the
# icon (38 x 47) at its left edge; the point is clear of the meter bar.
ICON_X=15
ICON_Y=$((35 + 43 + 20))
SPLASH=32   # the splash is the spinner's size, in pixels
GAP=13      # 200 twips below right of the pointer

# drop MODE X Y PATH...: the probe program drops the files on a screen point.
drop() {
  local probe=$E2E_WORK/drop_files.exe
  if [[ ! -f $probe ]]; then
    x86_64-w64-mingw32-gcc-posix -O2 -o "$probe" "$E2E_REPO/tests/e2e/drop_files.c" -lole32 -luuid || return 1
  fi
  e2e_wine "$probe" "$@"
}

content() { cat "$1" 2>/dev/null || echo '<none>'; }

# answer KEY: waits for the question and answers it from the keyboard.
answer() {
  local box
  e2e_wait_for 15 eval '[[ -n $(e2e_window_named "$ASK") ]]' || return 1
  box=$(e2e_window_named "$ASK" | head -n1)
  e2e_press_key "$box" "$1"
  e2e_wait_for 15 eval '[[ -z $(e2e_window_named "$ASK") ]]'
}

# The splash: a visible window of the program of the spinner's size; prints
# its X id and geometry "X Y W H".
splash_window() {
  local w g
  for w in $(e2e_x_windows); do
    g=$(e2e_geometry "$w")
    [[ $(cut -d' ' -f3- <<<"$g") == "$SPLASH $SPLASH" ]] && { echo "$w $g"; return 0; }
  done
  return 1
}

file_drop() {
  local t="file drop" x y px py target src shot splash sx sy
  e2e_prefix_new
  e2e_drives_clear
  e2e_drive_sized e 100 0 hd "DATA" || { e2e_fail "$t: drives" "could not make the test drive"; return; }
  e2e_drives_apply
  target=$WINEPREFIX.drives/e/report.txt
  src=$WINEPREFIX/drive_c/drop/report.txt
  mkdir -p "${src%/*}" && echo first >"$src"
  e2e_install Quillet.exe || { e2e_fail "$t: program" "no Quillet.exe to test"; return; }
  e2e_start_and_wait "$t" || return
  read -r x y _ _ <<<"$(e2e_geometry "$E2E_WIN")"
  px=$((x + ICON_X)) py=$((y + ICON_Y))

  drop ole "$px" "$py" 'C:\drop\report.txt' >/dev/null
  e2e_wait_for 10 test -f "$target"
  e2e_check_eq "$t: an OLE drop on the E: card copies the file to E:\\" first "$(content "$target")"

  echo second >"$src"
  sleep 1.5  # the splash of the first copy has gone
  drop post "$px" "$py" 'C:\drop\report.txt' >/dev/null
  e2e_check "$t: a WM_DROPFILES of a file that is there asks" "no '$ASK' box" answer n
  e2e_check_eq "$t: the question names the file" 'E:\\report.txt\r\n\r\n' \
    "$(e2e_msgbox_texts | tail -n1)"
  e2e_check_eq "$t: No keeps the old file" first "$(content "$target")"

  drop ole "$px" "$py" 'C:\drop\report.txt' >/dev/null
  e2e_check "$t: the third drop asks" "no '$ASK' box" answer y
  e2e_wait_for 3 splash_window >/dev/null
  shot=$(e2e_log_dir)/splash.png
  e2e_screenshot "$shot"
  echo "screenshot: $shot"
  if splash=$(splash_window); then
    read -r _ sx sy _ _ <<<"$splash"
    e2e_check "$t: the splash hangs below right of the pointer" "at $sx,$sy, pointer at $px,$py" \
      test $((sx - px - GAP)) -ge -1 -a $((sx - px - GAP)) -le 1 -a $((sy - py - GAP)) -ge -1 -a $((sy - py - GAP)) -le 1
  else
    e2e_fail "$t: the splash shows" "no ${SPLASH}x$SPLASH window of the program"
  fi
  e2e_wait_for 10 eval '[[ $(content "$target") == second ]]'
  e2e_check_eq "$t: Yes replaces the file" second "$(content "$target")"
  e2e_check "$t: the splash closes a second after the copy" "still there after 3 s: $(splash_window)" \
    e2e_wait_for 3 eval '! splash_window >/dev/null'

  # A folder over a folder of its name: the old one goes first, read-only files too.
  local pics=$WINEPREFIX.drives/e/pics
  mkdir -p "${src%/*}/pics/sub" "$pics" && echo a >"${src%/*}/pics/a.txt" && echo b >"${src%/*}/pics/sub/b.txt"
  echo old >"$pics/old.txt" && chmod a-w "$pics/old.txt"
  drop ole "$px" "$py" 'C:\drop\pics' >/dev/null
  e2e_check "$t: a folder that is there asks" "no '$ASK' box" answer y
  e2e_wait_for 10 test -f "$pics/sub/b.txt"
  e2e_check_eq "$t: the folder is copied whole, the old one gone" "a b <none>" \
    "$(content "$pics/a.txt") $(content "$pics/sub/b.txt") $(content "$pics/old.txt")"
  e2e_prefix_done
}

e2e_begin || { e2e_fail "harness" "no virtual display"; exit 1; }
file_drop
e2e_summary
