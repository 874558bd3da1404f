# shellcheck shell=bash
# Shared parts of the Wine benchmarks: the end-to-end harness (prefix, drives,
# display, clean-up) plus what a measurement needs on top of it: the helper
# programs, the Linux process behind a Windows program, its CPU time and
# resident memory, and polling of X windows. Source it from a benchmark.

BENCH_DIR=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=../../tests/e2e/lib.sh
source "$BENCH_DIR/../../tests/e2e/lib.sh"

BENCH_CC=x86_64-w64-mingw32-gcc-posix
# shellcheck disable=SC2034 # read by the benchmarks
BENCH_TICKS=$(getconf CLK_TCK)

# bench_helper NAME [LIBS...]: builds bench/wine/NAME.c into the work folder
# and prints the path of NAME.exe.
bench_helper() {
  local name=$1 exe=$E2E_WORK/$1.exe
  shift
  if [[ ! -f $exe ]]; then
    "$BENCH_CC" -O2 -Wall -Wextra -o "$exe" "$BENCH_DIR/$name.c" "$@" >&2 || return 1
  fi
  printf '%s\n' "$exe"
}

# bench_install_helper EXE: copies a helper program to C:\bench in the
# current prefix; prints its Windows path.
bench_install_helper() {
  mkdir -p "$WINEPREFIX/drive_c/bench"
  cp "$1" "$WINEPREFIX/drive_c/bench/"
  printf 'C:\\bench\\%s\n' "${1##*/}"
}

# bench_linux_pid EXE_NAME: the Linux pid of the Wine process that runs
# EXE_NAME in the current prefix (other people's prefixes may run the same
# program on this machine). Empty when there is none.
bench_linux_pid() {
  local dir cmd
  for dir in /proc/[0-9]*; do
    { cmd=$(tr '\0' ' ' <"$dir/cmdline"); } 2>/dev/null || continue
    [[ ${cmd,,} == *"\\${1,,} "* || ${cmd,,} == *"\\${1,,}" ]] || continue
    { tr '\0' '\n' <"$dir/environ" | grep -qxF "WINEPREFIX=$WINEPREFIX"; } 2>/dev/null || continue
    printf '%s\n' "${dir#/proc/}"
    return 0
  done
  return 1
}

# bench_wait_linux_pid EXE_NAME: waits (up to E2E_TIMEOUT) for that process.
bench_wait_linux_pid() {
  local deadline=$((SECONDS + E2E_TIMEOUT)) pid
  until pid=$(bench_linux_pid "$1"); do
    ((SECONDS < deadline)) || return 1
    sleep 0.05
  done
  printf '%s\n' "$pid"
}

# bench_cpu_ticks PID: user + system CPU time so far, in clock ticks.
bench_cpu_ticks() {
  local stat fields
  stat=$(<"/proc/$1/stat") || return 1
  # The command name may hold spaces; the fields after it are fixed.
  read -ra fields <<<"${stat##*) }"
  echo $((fields[11] + fields[12]))
}

# bench_rss_kb PID: resident memory in kB.
bench_rss_kb() { awk '/^VmRSS:/ { print $2 }' "/proc/$1/status"; }

# bench_x_geometries CLASS: "ID WIDTHxHEIGHT" of each visible X window whose
# class is exactly CLASS (an executable's name), one a line; one X client run.
bench_x_geometries() {
  local class=${1//./\\.}
  xdotool search --onlyvisible --class "^$class\$" getwindowgeometry %@ 2>/dev/null |
    awk '/^Window / { id = $2 } /Geometry:/ { print id, $2 }'
}

# bench_start NAME WINDOWS_PATH [ARGS...]: starts a program of the current
# prefix in the background; sets BENCH_PID (the launcher's pid). Not a job
# of this shell: bench_stop kills it, and the shell should not say so.
bench_start() {
  local name=$1
  shift
  (cd "$WINEPREFIX/drive_c" && exec wine "$@") >"$E2E_WORK/$name.$RANDOM.log" 2>&1 &
  BENCH_PID=$!
  disown "$BENCH_PID"
  E2E_PIDS+=("$BENCH_PID")
}

# bench_start_bar: e2e_start, likewise taken off this shell's jobs.
bench_start_bar() {
  e2e_start
  disown "$E2E_PID"
}

# bench_stop EXE_NAME: ends the program's process in the current prefix and
# waits until it and its windows are gone.
bench_stop() {
  local pid deadline=$((SECONDS + E2E_TIMEOUT))
  while pid=$(bench_linux_pid "$1"); do
    kill -KILL "$pid" 2>/dev/null
    ((SECONDS < deadline)) || return 1
    sleep 0.05
  done
  while [[ -n $(bench_x_geometries "$1") ]]; do
    ((SECONDS < deadline)) || return 1
    sleep 0.05
  done
}

# bench_now_ms: wall clock in milliseconds (with fractions).
bench_now_ms() {
  local t=${EPOCHREALTIME/[.,]/}
  printf '%s.%s\n' "${t:0:-3}" "${t: -3}"
}

# bench_median NUMBERS...: the median (mean of the middle two when even).
bench_median() {
  printf '%s\n' "$@" | sort -g | awk '{ v[NR] = $1 } END {
    if (NR % 2) print v[(NR + 1) / 2]; else print (v[NR / 2] + v[NR / 2 + 1]) / 2 }'
}

# bench_five_drives: c: and four 1000 MB drives d: to g: with some space
# used; the side bar then shows five cards. Call with no server running.
bench_five_drives() {
  local letter used=100
  e2e_drives_clear
  for letter in d e f g; do
    e2e_drive_sized "$letter" 1000 "$used" hd "DISK${letter^^}" || return 1
    used=$((used + 200))
  done
  e2e_drives_apply
}

# bench_machine_note: the load the numbers were taken under (the machine is
# shared; read figures against it).
bench_machine_note() {
  echo "machine: $(nproc) cores, load average $(cut -d' ' -f1-3 /proc/loadavg)"
}
