#!/usr/bin/env bash
# Runs the README's two commands in a minimal Debian 12 root, as on a new
# machine: whatever setup.sh forgets to install shows here. As root.
#   scripts/fresh-check.sh [WORK]      (default WORK: /var/tmp/quillet-fresh)
# The pristine root is kept in WORK/base and copied for each check; the logs
# are WORK/run.log and WORK/test.log.
set -euo pipefail
repo=$(cd "$(dirname "$0")/.." && pwd)
work=${1:-/var/tmp/quillet-fresh}
base=$work/base
root=$work/root

# The mirror this machine itself uses.
mirror=$(sed -n -e 's/^URIs: *\(http[^ ]*debian\)$/\1/p' -e 's/^deb  *\(http[^ ]*debian\)  *bookworm .*/\1/p' \
  /etc/apt/sources.list /etc/apt/sources.list.d/* 2>/dev/null | head -n1 || true)
mirror=${mirror:-http://deb.debian.org/debian}

if [[ ! -x $base/usr/bin/apt-get ]]; then
  command -v debootstrap >/dev/null || DEBIAN_FRONTEND=noninteractive apt-get install -y debootstrap
  rm -rf "$base"
  debootstrap --variant=minbase bookworm "$base" "$mirror"
fi

rm -rf --one-file-system "$root"
cp -a "$base" "$root"
cp /etc/resolv.conf "$root/etc/resolv.conf"
git clone -q "$repo" "$root/root/quillet"

# run_in_root LOG COMMAND: one README command in the root, in its own mount
# and process namespaces, with a clean environment and no standard input.
run_in_root() {
  local log=$1 command=$2
  unshare --mount --pid --fork bash -s "$root" "$command" >"$log" 2>&1 <<'EOF'
set -e
root=$1
mount --make-rprivate /
mount --rbind /dev "$root/dev"
mount -t tmpfs tmpfs "$root/dev/shm"
mount -t proc proc "$root/proc"
mount -t sysfs sysfs "$root/sys"
mount -t tmpfs tmpfs "$root/tmp"
exec chroot "$root" /usr/bin/env -i HOME=/root CI=true TERM=dumb \
  PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin \
  /bin/bash -c "cd /root/quillet && time ( $2 )" </dev/null
EOF
}

status=0
echo "fresh: bash scripts/run.sh (log: $work/run.log)"
run_in_root "$work/run.log" "bash scripts/run.sh" || status=1
tail -n 6 "$work/run.log"
echo "fresh: bash scripts/test.sh (log: $work/test.log)"
run_in_root "$work/test.log" "bash scripts/test.sh" || status=1
grep -E '^(FAIL|[0-9]+ passed, [0-9]+ failed)' "$work/test.log" || true
tail -n 4 "$work/test.log"
exit $status
