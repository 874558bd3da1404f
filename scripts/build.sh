#!/usr/bin/env bash
# Configures and builds the given CMake presets (default: all four) side by
# side under one shared make job pool, so the machine's cores are used once
# and not once per build. Logs go to build/logs/<preset>.log.
# Prints "PASS build <preset>" or "FAIL build <preset>" for each; exits 1 if any failed.
set -uo pipefail
cd "$(dirname "$0")/.."

presets=("$@")
((${#presets[@]})) || presets=(native asan win64 win32)
jobs=${QUILLET_JOBS:-2}
logs=build/logs
mkdir -p "$logs"

# Configure in parallel: each is a single-threaded run of compiler checks.
for p in "${presets[@]}"; do
  rm -f "$logs/$p.rc"
  ( cmake --preset "$p" >"$logs/$p.log" 2>&1 || echo configure >"$logs/$p.rc" ) &
done
wait

# One make with a job server; each build is a recursive $(MAKE) sharing it.
mk=$(mktemp)
trap 'rm -f "$mk"' EXIT
{
  printf 'all:'
  for p in "${presets[@]}"; do [[ -e $logs/$p.rc ]] || printf ' %s' "$p"; done
  printf '\n'
  for p in "${presets[@]}"; do
    printf '%s:\n\t@$(MAKE) --no-print-directory -C build/%s >>%s/%s.log 2>&1 || echo build >%s/%s.rc\n' \
      "$p" "$p" "$logs" "$p" "$logs" "$p"
  done
} >"$mk"
make -j"$jobs" -f "$mk" all

failed=0
for p in "${presets[@]}"; do
  if [[ -e $logs/$p.rc ]]; then
    echo "FAIL build $p ($(cat "$logs/$p.rc") step; last lines of $logs/$p.log:)"
    tail -n 25 "$logs/$p.log" | sed 's/^/    /'
    failed=1
  else
    echo "PASS build $p"
  fi
done
exit $failed
