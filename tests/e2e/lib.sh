# End-to-end harness: runs the real Quillet.exe (64-bit) under Wine on a
# virtual X display, in a Wine prefix whose drives the test defines, and reads
# back what a user or another program would see. Source it from a test:
#
#   source "$(dirname "$0")/lib.sh"
#   e2e_begin                      # work folder, clean-up trap, display
#   e2e_prefix_new                 # fresh prefix (copy of $E2E_TEMPLATE_PREFIX if given)
#   e2e_drive_sized e 1000 970 hd "DATA"; e2e_drives_apply
#   e2e_install Quillet.exe; e2e_start; e2e_wait_main_window
#   e2e_check_eq "Timer is 30" 30 "$(e2e_setting Timer)"
#
# Results are lines "PASS: <name>" and "FAIL: <name>: <what was seen>" on
# standard output; scripts/test.sh counts them. Everything started here
# (Wine servers, Xvfb, tmpfs mounts, programs) is undone on exit, also on failure.
#
# Environment read:
#   QUILLET_EXE          the program to test (default: build/win64/Quillet.exe)
#   E2E_TEMPLATE_PREFIX  a booted prefix to copy instead of running wineboot (~15 s)
#   E2E_KEEP=1           keep the work folder (logs, screenshots) for a look
#   E2E_TIMEOUT          seconds to wait for a window or a state (default 60)

E2E_REPO=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
QUILLET_EXE=${QUILLET_EXE:-$E2E_REPO/build/win64/Quillet.exe}
E2E_TIMEOUT=${E2E_TIMEOUT:-60}
# Wine names host files through the locale: without UTF-8 (as under `env -i`
# or in a bare container) a Windows file name outside ASCII cannot be made.
case ${LC_ALL:-${LC_CTYPE:-${LANG:-}}} in
  *UTF-8* | *utf8*) ;;
  *) export LC_ALL=C.UTF-8 ;;
esac
# ImageMagick by full path: `convert` may be something else on the PATH.
E2E_CONVERT=/usr/bin/convert-im6.q16
E2E_IMPORT=/usr/bin/import-im6.q16
E2E_DISPLAY_IMG=/usr/bin/display-im6.q16
# The settings store's registry root; the application is the executable's name.
E2E_SETTINGS_ROOT='HKCU\Software\VB and VBA Program Settings'

E2E_WORK=
E2E_PREFIXES=()
E2E_MOUNTS=()
E2E_PIDS=()
E2E_XVFB_PID=
E2E_PASSED=0
E2E_FAILED=0
declare -A E2E_DRIVE_TYPES=()

# ---------------------------------------------------------------- results

e2e_pass() { echo "PASS: $1"; E2E_PASSED=$((E2E_PASSED + 1)); }
e2e_fail() { echo "FAIL: $1: $2"; E2E_FAILED=$((E2E_FAILED + 1)); }

# e2e_check_eq NAME EXPECTED ACTUAL
e2e_check_eq() {
  if [[ $3 == "$2" ]]; then e2e_pass "$1"; else e2e_fail "$1" "expected '$2', got '$3'"; fi
}

# e2e_check NAME DETAIL-ON-FAILURE COMMAND...: passes when the command succeeds.
e2e_check() {
  local name=$1 detail=$2
  shift 2
  if "$@"; then e2e_pass "$name"; else e2e_fail "$name" "$detail"; fi
}

e2e_log() { echo "  .. $*" >&2; }

# e2e_wait_for SECONDS COMMAND...: polls until the command succeeds; 1 on time-out.
e2e_wait_for() {
  local deadline=$((SECONDS + $1))
  shift
  until "$@"; do
    ((SECONDS < deadline)) || return 1
    sleep 0.25
  done
}

# Closing line of one test script; its exit status tells whether all passed.
e2e_summary() {
  echo "e2e $(basename "$0"): $E2E_PASSED passed, $E2E_FAILED failed" >&2
  ((E2E_FAILED == 0))
}

# ---------------------------------------------------------------- life cycle

# Makes the work folder, arms the clean-up and starts a virtual display.
e2e_begin() {
  E2E_WORK=$(mktemp -d "${TMPDIR:-/tmp}/quillet-e2e.XXXXXX")
  trap e2e_cleanup EXIT
  trap 'exit 130' INT TERM HUP
  e2e_xvfb_start
}

e2e_cleanup() {
  local pid prefix i
  for pid in "${E2E_PIDS[@]}"; do kill "$pid" 2>/dev/null; done
  for prefix in "${E2E_PREFIXES[@]}"; do
    WINEPREFIX=$prefix wineserver -k 2>/dev/null
    WINEPREFIX=$prefix timeout 20 wineserver -w 2>/dev/null
  done
  for pid in "${E2E_PIDS[@]}"; do wait "$pid" 2>/dev/null; done
  if [[ -n $E2E_XVFB_PID ]]; then
    kill "$E2E_XVFB_PID" 2>/dev/null
    wait "$E2E_XVFB_PID" 2>/dev/null
  fi
  for ((i = ${#E2E_MOUNTS[@]} - 1; i >= 0; i--)); do
    umount "${E2E_MOUNTS[i]}" 2>/dev/null || umount -l "${E2E_MOUNTS[i]}" 2>/dev/null
  done
  if [[ -n $E2E_WORK && -d $E2E_WORK ]]; then
    if [[ ${E2E_KEEP:-} == 1 ]]; then
      echo "e2e: work folder kept: $E2E_WORK" >&2
    else
      rm -rf --one-file-system "$E2E_WORK"
    fi
  fi
}

# ---------------------------------------------------------------- display

# Starts Xvfb on a display number it picks itself; exports DISPLAY.
e2e_xvfb_start() {
  local fdfile=$E2E_WORK/xvfb.display
  : >"$fdfile"
  Xvfb -displayfd 9 -screen 0 1280x1024x24 -nolisten tcp 9>"$fdfile" >"$E2E_WORK/xvfb.log" 2>&1 &
  E2E_XVFB_PID=$!
  if ! e2e_wait_for 30 grep -q '^[0-9]' "$fdfile"; then
    echo "e2e: Xvfb did not start: $(cat "$E2E_WORK/xvfb.log")" >&2
    return 1
  fi
  export DISPLAY=:$(head -n1 "$fdfile")
}

# e2e_root_colour COLOUR: fills the X root with a colour. Wine paints the root
# black when it starts, so call this once Wine is up.
e2e_root_colour() {
  local png=$E2E_WORK/ground.png
  "$E2E_CONVERT" -size 16x16 "xc:$1" "$png"
  # `display` reports 1 after setting the root; the screenshot tells the truth.
  "$E2E_DISPLAY_IMG" -window root "$png" >/dev/null 2>&1 || true
}

# e2e_screenshot FILE: the whole screen as PNG.
e2e_screenshot() { "$E2E_IMPORT" -window root "$1"; }

# e2e_pixel FILE X Y: the colour at one pixel as #RRGGBB.
e2e_pixel() {
  "$E2E_CONVERT" "$1" -crop "1x1+$2+$3" +repage -depth 8 -format '#%[hex:p{0,0}]' info:- | cut -c1-7
}

# ---------------------------------------------------------------- Wine prefix

# Makes a fresh prefix under the work folder and exports WINEPREFIX for it.
e2e_prefix_new() {
  local prefix=$E2E_WORK/prefix$((${#E2E_PREFIXES[@]} + 1))
  E2E_PREFIXES+=("$prefix")
  export WINEPREFIX=$prefix WINEARCH=win64 WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
  if [[ -z ${E2E_TEMPLATE_PREFIX:-} || ! -f $E2E_TEMPLATE_PREFIX/system.reg ]]; then
    # Boot once, copy for every prefix after: a copy takes seconds, a boot ~15 s.
    E2E_TEMPLATE_PREFIX=$E2E_WORK/template
    e2e_prefix_boot "$E2E_TEMPLATE_PREFIX"
  fi
  cp -a "$E2E_TEMPLATE_PREFIX" "$prefix"
  E2E_DRIVE_TYPES=()
}

# Ends the current prefix (its processes and its folder) to free the disk.
e2e_prefix_done() {
  e2e_wine_stop
  rm -rf --one-file-system "$WINEPREFIX"
}

# e2e_prefix_boot DIR: creates a prefix from nothing and waits until its
# server has stopped, so that it can be copied or given drives.
e2e_prefix_boot() {
  WINEPREFIX=$1 WINEARCH=win64 WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml=" DISPLAY= \
    wineboot -i >/dev/null 2>&1
  WINEPREFIX=$1 wineserver -w
}

# Ends every process of the current prefix; the next Wine command starts a
# new server, which reads the drive links and types afresh.
e2e_wine_stop() {
  wineserver -k 2>/dev/null
  wineserver -w 2>/dev/null
}

# e2e_wine COMMAND...: a Wine command whose output is wanted, without the
# launcher's noise on standard error and without carriage returns.
e2e_wine() { wine "$@" 2>/dev/null | tr -d '\r'; }

# ---------------------------------------------------------------- drives

# Removes every drive letter but c: (z:, the host's root, above all), so the
# program sees only the drives the test defines.
e2e_drives_clear() {
  local link
  for link in "$WINEPREFIX"/dosdevices/[a-z]:; do
    [[ -L $link && ${link##*/} != c: ]] && rm -f "$link"
  done
  for link in "$WINEPREFIX"/dosdevices/[a-z]::; do
    [[ -L $link ]] && rm -f "$link"
  done
  E2E_DRIVE_TYPES=()
}

# e2e_drive LETTER DIR [TYPE [LABEL]]: links a folder as a drive.
# TYPE: hd, cdrom, floppy or network (Wine's names); LABEL: the volume label.
e2e_drive() {
  local letter=${1,,} dir=$2 type=${3:-} label=${4:-}
  mkdir -p "$dir"
  ln -sfn "$dir" "$WINEPREFIX/dosdevices/$letter:"
  [[ -n $type ]] && E2E_DRIVE_TYPES[$letter]=$type
  [[ -n $label ]] && printf '%s' "$label" >"$dir/.windows-label"
  return 0
}

# e2e_drive_sized LETTER TOTAL_MB USED_MB [TYPE [LABEL]]: a drive of an exact
# size: a tmpfs (needs root) with USED_MB taken by a file.
e2e_drive_sized() {
  local letter=${1,,} dir=$WINEPREFIX.drives/${1,,}
  mkdir -p "$dir"
  mount -t tmpfs -o "size=$2m" tmpfs "$dir" || return 1
  E2E_MOUNTS+=("$dir")
  if (($3 > 0)); then fallocate -l "$3m" "$dir/fill.bin" || return 1; fi
  e2e_drive "$letter" "$dir" "${4:-}" "${5:-}"
}

# e2e_three_drives: C: and two hard disks of exact sizes, E: "DATA" nearly
# full and F: "BACKUP" a fifth used; no other drive.
e2e_three_drives() {
  e2e_drives_clear
  e2e_drive_sized e 1000 970 hd "DATA" || return 1
  e2e_drive_sized f 500 100 hd "BACKUP" || return 1
  e2e_drives_apply
}

# e2e_drive_unplug LETTER / e2e_drive_plug LETTER DIR: while the program runs.
e2e_drive_unplug() { rm -f "$WINEPREFIX/dosdevices/${1,,}:"; }
e2e_drive_plug() { ln -sfn "$2" "$WINEPREFIX/dosdevices/${1,,}:"; }

# Writes the drive types and restarts the server so that they take effect.
e2e_drives_apply() {
  local letter
  for letter in "${!E2E_DRIVE_TYPES[@]}"; do
    wine reg add 'HKLM\Software\Wine\Drives' /v "$letter:" /d "${E2E_DRIVE_TYPES[$letter]}" /f >/dev/null 2>&1
  done
  e2e_wine_stop
}

# ---------------------------------------------------------------- the program

# e2e_install [NAME]: copies the program into the prefix as
# C:\Program Files\Quillet\NAME (default Quillet.exe) and makes it the current one.
e2e_install() {
  E2E_EXE_NAME=${1:-Quillet.exe}
  E2E_APP=${E2E_EXE_NAME%.*}
  E2E_PROGRAM_DIR=$WINEPREFIX/drive_c/Program\ Files/Quillet
  if [[ ! -f $QUILLET_EXE ]]; then
    echo "e2e: no program at $QUILLET_EXE (build the win64 preset)" >&2
    return 1
  fi
  mkdir -p "$E2E_PROGRAM_DIR"
  cp "$QUILLET_EXE" "$E2E_PROGRAM_DIR/$E2E_EXE_NAME"
}

# e2e_start: starts the current program in the background, message boxes
# logged; sets E2E_PID (a Unix pid that lives as long as the program) and E2E_LOG.
e2e_start() {
  E2E_RUNS=$((${E2E_RUNS:-0} + 1))
  E2E_LOG=$E2E_WORK/$E2E_APP.$E2E_RUNS.log
  (cd "$E2E_PROGRAM_DIR" && WINEDEBUG=-all,+msgbox exec wine "C:\\Program Files\\Quillet\\$E2E_EXE_NAME") \
    >"$E2E_LOG" 2>&1 &
  E2E_PID=$!
  E2E_PIDS+=("$E2E_PID")
}

e2e_running() { kill -0 "${1:-$E2E_PID}" 2>/dev/null; }

# e2e_wait_exit PID: waits until the process has ended; 1 if it still runs.
e2e_wait_exit() { e2e_wait_for "$E2E_TIMEOUT" eval "! kill -0 $1 2>/dev/null"; }

# Windows as Windows sees them, one line each (see winprobe.c): all top-level
# windows of processes running the current executable.
e2e_probe() {
  local probe=$E2E_WORK/winprobe.exe
  if [[ ! -f $probe ]]; then
    x86_64-w64-mingw32-gcc-posix -O2 -o "$probe" "$E2E_REPO/tests/e2e/winprobe.c" || return 1
  fi
  e2e_wine "$probe" "$E2E_EXE_NAME"
}

# e2e_field LINE KEY: one key=value field of a probe line.
e2e_field() {
  local re="(^| )$2=([^ ]*)"
  [[ $1 =~ $re ]] && printf '%s\n' "${BASH_REMATCH[2]}"
}

# Visible X windows of the current executable (the X class is its file name).
e2e_x_windows() {
  local class=${E2E_EXE_NAME//./\\.}
  xdotool search --onlyvisible --class "^$class\$" 2>/dev/null
}

# The main window is the side bar. Candidates are the visible, unowned
# top-level windows of the program; the bar keeps its card count as its title
# text, so a numeric title decides; otherwise the earliest made wins (the bar
# is the first window loaded; Wine numbers handles in creation order).
# Prints its probe line.
e2e_main_probe_line() {
  local line best= best_index=
  while IFS= read -r line; do
    [[ $(e2e_field "$line" visible) == 1 && $(e2e_field "$line" owner) == 0x0 ]] || continue
    (($(e2e_field "$line" width) > 1 && $(e2e_field "$line" height) > 1)) || continue
    if [[ $line =~ title=[0-9]+$ ]]; then
      printf '%s\n' "$line"
      return 0
    fi
    local index=$(($(e2e_field "$line" hwnd) & 0xffff))
    if [[ -z $best ]] || ((index < best_index)); then best=$line best_index=$index; fi
  done < <(e2e_probe)
  [[ -n $best ]] && printf '%s\n' "$best"
}

# e2e_wait_main_window: waits until the side bar shows on the X display;
# sets E2E_WIN (X window id, decimal) and E2E_MAIN (its probe line).
# Status 1 on time-out, 2 when the program ended first.
e2e_wait_main_window() {
  local deadline=$((SECONDS + E2E_TIMEOUT)) status
  E2E_WIN=
  E2E_MAIN=
  while :; do
    _e2e_find_main
    status=$?
    ((status == 1 && SECONDS < deadline)) || return $status
    sleep 0.25
  done
}

_e2e_find_main() {
  e2e_running || return 2
  [[ -n $(e2e_x_windows) ]] || return 1
  local line xid w
  line=$(e2e_main_probe_line) || return 1
  xid=$(e2e_field "$line" xid)
  for w in $(e2e_x_windows); do
    if ((w == xid)); then
      E2E_WIN=$w
      E2E_MAIN=$line
      return 0
    fi
  done
  return 1
}

# e2e_geometry WIN: "X Y WIDTH HEIGHT" of an X window, in pixels.
e2e_geometry() {
  xwininfo -id "$1" | sed -n \
    -e 's/^ *Absolute upper-left X: *\(-\?[0-9]*\)/\1/p' \
    -e 's/^ *Absolute upper-left Y: *\(-\?[0-9]*\)/\1/p' \
    -e 's/^ *Width: *\([0-9]*\)/\1/p' \
    -e 's/^ *Height: *\([0-9]*\)/\1/p' | paste -sd' '
}

# e2e_net_wm_state WIN: the window's _NET_WM_STATE atoms.
e2e_net_wm_state() { xprop -id "$1" _NET_WM_STATE; }

# ---------------------------------------------------------------- settings

# e2e_settings [APP [SECTION]]: "name<TAB>value" lines of the settings the
# program stored (default: the current executable's name, section Form1).
e2e_settings() {
  local app=${1:-$E2E_APP} section=${2:-Form1} line
  local re='^    (.*)    (REG_[A-Z_]+)(    (.*))?$'
  while IFS= read -r line; do
    [[ $line =~ $re ]] && printf '%s\t%s\n' "${BASH_REMATCH[1]}" "${BASH_REMATCH[4]}"
  done < <(e2e_wine reg query "$E2E_SETTINGS_ROOT\\$app\\$section")
}

# e2e_setting KEY [APP [SECTION]]: one value; status 1 when the key is absent.
e2e_setting() {
  local name value
  while IFS=$'\t' read -r name value; do
    if [[ ${name,,} == "${1,,}" ]]; then
      printf '%s\n' "$value"
      return 0
    fi
  done < <(e2e_settings "${2:-$E2E_APP}" "${3:-Form1}")
  return 1
}

e2e_has_setting() { e2e_setting "$@" >/dev/null; }

# e2e_set_setting KEY VALUE [APP [SECTION]]: stores a value before a start.
e2e_set_setting() {
  wine reg add "$E2E_SETTINGS_ROOT\\${3:-$E2E_APP}\\${4:-Form1}" /v "$1" /d "$2" /f >/dev/null 2>&1
}

# e2e_delete_setting KEY [APP [SECTION]]
e2e_delete_setting() {
  wine reg delete "$E2E_SETTINGS_ROOT\\${2:-$E2E_APP}\\${3:-Form1}" /v "$1" /f >/dev/null 2>&1
}

# ---------------------------------------------------------------- message boxes

# e2e_msgbox_texts [LOG]: the texts of the message boxes a run showed.
e2e_msgbox_texts() {
  sed -n 's/^.*trace:msgbox:MSGBOX_OnInit L"\(.*\)"\r\{0,1\}$/\1/p' "${1:-$E2E_LOG}"
}

# e2e_window_named TITLE: visible X windows whose name is exactly TITLE.
e2e_window_named() { xdotool search --onlyvisible --name "^$1\$" 2>/dev/null; }

# e2e_press_key WIN KEY: gives the window the focus and presses a key.
e2e_press_key() {
  xdotool windowfocus "$1" 2>/dev/null
  xdotool key "$2"
}

# ---------------------------------------------------------------- input and screen

# e2e_click X Y [BUTTON]: moves the pointer to a screen point and clicks.
e2e_click() {
  xdotool mousemove "$1" "$2"
  xdotool click "${3:-1}"
}

# e2e_mouse_move X Y: moves the pointer (no button).
e2e_mouse_move() { xdotool mousemove "$1" "$2"; }

# e2e_set_dpi DPI: the screen DPI Wine reports to the next program started
# (96 is 15 twips a pixel, 144 is 10). Stops the prefix's server to apply it.
e2e_set_dpi() {
  wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$1" /f >/dev/null 2>&1
  e2e_wine_stop
}

# ---------------------------------------------------------------- kept results

# e2e_log_dir: a folder for what a test keeps for a look after it ends
# (screenshots), outside the work folder that is removed on exit:
# $E2E_LOG_DIR, or ${TMPDIR:-/tmp}/quillet-e2e-logs/<test script name>.
e2e_log_dir() {
  local dir=${E2E_LOG_DIR:-${TMPDIR:-/tmp}/quillet-e2e-logs/$(basename "$0" .sh)}
  mkdir -p "$dir" && printf '%s\n' "$dir"
}

# e2e_count_colour FILE X Y W H COLOUR: how many pixels of the area have the colour.
e2e_count_colour() {
  "$E2E_CONVERT" "$1" -crop "$4x$5+$2+$3" +repage -fill black +opaque "$6" -fill white -opaque "$6" \
    -format '%[fx:round(mean*w*h)]' info:-
}

# e2e_wait_size WIN WIDTH HEIGHT [SECONDS]: waits until the X window has that
# size in pixels; 1 on time-out.
e2e_wait_size() {
  e2e_wait_for "${4:-$E2E_TIMEOUT}" eval "[[ \$(e2e_geometry $1 | cut -d' ' -f3-) == '$2 $3' ]]"
}

# e2e_start_and_wait NAME: starts the current program; PASS/FAIL for its window.
e2e_start_and_wait() {
  e2e_start
  local status=0
  e2e_wait_main_window || status=$?
  case $status in
    0) e2e_pass "$1: the side bar window shows" ;;
    2) e2e_fail "$1: the side bar window shows" "the program ended first; its output: $(tail -c 400 "$E2E_LOG")" ;;
    *) e2e_fail "$1: the side bar window shows" "no visible unowned window of the program within ${E2E_TIMEOUT}s; windows seen: $(e2e_probe | tr '\n' ';')" ;;
  esac
  return $status
}
