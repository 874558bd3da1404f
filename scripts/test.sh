#!/usr/bin/env bash
# Installs what is missing, builds all four builds and runs every test: the
# native tests, the same under ASan/UBSan, the Wine tests and the end-to-end
# tests. Ends with the line "N passed, N failed"; exits 1 on any failure.
set -uo pipefail
cd "$(dirname "$0")/.."
repo=$PWD

bash scripts/setup.sh || { echo "0 passed, 1 failed"; exit 1; }

passed=0
failed=0
pass() { echo "PASS $1"; passed=$((passed + 1)); }
fail() { echo "FAIL $1"; failed=$((failed + 1)); }
stage() { echo "== $1 ($((SECONDS / 60))m$((SECONDS % 60))s)"; }

run=$(mktemp -d "${TMPDIR:-/tmp}/quillet-test.XXXXXX")
template=$run/template-prefix
boot_pid=
cleanup() {
  [[ -n $boot_pid ]] && kill "$boot_pid" 2>/dev/null
  WINEPREFIX=$template wineserver -k 2>/dev/null
  WINEPREFIX=$run/wine-tests wineserver -k 2>/dev/null
  [[ -n ${xvfb_pid:-} ]] && kill "$xvfb_pid" 2>/dev/null
  wait 2>/dev/null
  rm -rf --one-file-system "$run"
}
trap cleanup EXIT
trap 'exit 130' INT TERM HUP

# One booted Wine prefix for the whole run, made while the builds compile;
# every Wine test copies it rather than booting its own.
source tests/e2e/lib.sh
(e2e_prefix_boot "$template") >"$run/boot.log" 2>&1 &
boot_pid=$!

stage "build: native, asan, win64, win32"
declare -A built=()
while read -r verdict what preset rest; do
  [[ $what == build ]] || { echo "$verdict $what $preset $rest"; continue; }
  if [[ $verdict == PASS ]]; then pass "build $preset"; built[$preset]=1; else fail "build $preset $rest"; fi
done < <(bash scripts/build.sh native asan win64 win32 2>&1)

# The shipped program must be a 32-bit Windows GUI executable.
if [[ -n ${built[win32]:-} ]]; then
  kind=$(file -b build/win32/Quillet.exe 2>&1)
  if [[ $kind == "PE32 executable (GUI) Intel 80386"* ]]; then pass "win32 Quillet.exe is a 32-bit GUI program"
  else fail "win32 Quillet.exe is a 32-bit GUI program: file says: $kind"; fi
fi

# ctest_run NAME DIR: one count per test from ctest's summary line.
ctest_run() {
  local name=$1 dir=$2 log=$run/$1.ctest.log summary total bad
  if [[ -z ${built[$name]:-} ]]; then fail "$name tests: not built"; return; fi
  (cd "$dir" && ctest -j2 --output-on-failure --timeout 600) >"$log" 2>&1
  summary=$(grep -E '[0-9]+ tests? failed out of [0-9]+' "$log" | tail -n1)
  if [[ $summary =~ ([0-9]+)\ tests?\ failed\ out\ of\ ([0-9]+) ]]; then
    bad=${BASH_REMATCH[1]} total=${BASH_REMATCH[2]}
    passed=$((passed + total - bad))
    failed=$((failed + bad))
    echo "$name tests: $((total - bad)) passed, $bad failed"
    ((bad == 0)) || { grep -E '^\s*[0-9]+ - .*\((Failed|Timeout|SEGFAULT|Subprocess aborted|Exception|Not Run)' "$log" | sed 's/^/FAIL /'
                      grep -E 'ERROR: (Address|Leak)Sanitizer|runtime error:' "$log" | head -n 20; }
  else
    fail "$name tests: no ctest summary"
    tail -n 30 "$log" | sed 's/^/    /'
  fi
}

stage "native tests"
ctest_run native build/native
stage "native tests under ASan and UBSan"
ASAN_OPTIONS=${ASAN_OPTIONS:-detect_leaks=1:abort_on_error=1} \
UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1} \
  ctest_run asan build/asan

stage "waiting for the Wine prefix"
if wait "$boot_pid" && [[ -f $template/system.reg ]]; then
  export E2E_TEMPLATE_PREFIX=$template
else
  echo "note: the shared Wine prefix did not boot; each test boots its own ($(tail -c 300 "$run/boot.log"))"
fi
boot_pid=

stage "Wine tests (quillet_win_tests.exe)"
wine_tests=build/win64/quillet_win_tests.exe
if [[ -z ${built[win64]:-} ]]; then
  fail "Wine tests: win64 not built"
elif [[ ! -f $wine_tests ]]; then
  fail "Wine tests: $wine_tests was not built"
else
  log=$run/wine-tests.log
  (
    export WINEPREFIX=$run/wine-tests WINEARCH=win64 WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
    if [[ -n ${E2E_TEMPLATE_PREFIX:-} ]]; then cp -a "$E2E_TEMPLATE_PREFIX" "$WINEPREFIX"; else e2e_prefix_boot "$WINEPREFIX"; fi
    : >"$run/xvfb.display"
    Xvfb -displayfd 9 -screen 0 1280x1024x24 -nolisten tcp 9>"$run/xvfb.display" >/dev/null 2>&1 &
    xvfb=$!
    e2e_wait_for 30 grep -q '^[0-9]' "$run/xvfb.display"
    export DISPLAY=:$(head -n1 "$run/xvfb.display")
    timeout 600 wine "$wine_tests" 2>&1
    status=$?
    wineserver -k 2>/dev/null
    kill "$xvfb" 2>/dev/null
    exit $status
  ) >"$log" 2>&1
  status=$?
  sed -i "s/\r\$//" "$log"
  ok=$(sed -n 's/^.*\[  PASSED  \] \([0-9]\+\) tests\?\..*$/\1/p' "$log" | tail -n1)
  bad=$(sed -n 's/^.*\[  FAILED  \] \([0-9]\+\) tests\?, listed below.*$/\1/p' "$log" | tail -n1)
  if [[ -z $ok && -z $bad ]]; then
    fail "Wine tests: no GoogleTest summary (exit $status)"
    tail -n 30 "$log" | sed 's/^/    /'
  else
    passed=$((passed + ${ok:-0}))
    failed=$((failed + ${bad:-0}))
    echo "Wine tests: ${ok:-0} passed, ${bad:-0} failed"
    grep -E '^\[  FAILED  \] [A-Za-z_]' "$log" | sort -u | sed 's/^\[  FAILED  \] /FAIL wine /'
    if ((status != 0)) && [[ -z $bad || $bad == 0 ]]; then fail "Wine tests: exit status $status"; fi
  fi
  rm -rf --one-file-system "$run/wine-tests"
fi

stage "end-to-end tests"
for t in tests/e2e/test_*.sh; do
  log=$run/$(basename "$t").log
  QUILLET_EXE=$repo/build/win64/Quillet.exe bash "$t" 2>&1 | tee "$log" | grep -E '^(PASS|FAIL)'
  status=${PIPESTATUS[0]}
  ok=$(grep -c '^PASS' "$log")
  bad=$(grep -c '^FAIL' "$log")
  passed=$((passed + ok))
  failed=$((failed + bad))
  if ((status != 0 && bad == 0)); then
    fail "$t ended with status $status"
    tail -n 20 "$log" | sed 's/^/    /'
  fi
done

stage "done"
echo "$passed passed, $failed failed"
((failed == 0))
