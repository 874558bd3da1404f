#!/usr/bin/env bash
# Installs the Debian packages that building, running and testing Quillet
# need, and only those that are missing (so a ready machine needs no network).
set -euo pipefail

packages=(
  # builds: native, sanitized, and the Windows cross builds
  cmake make g++ g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix
  googletest libgtest-dev libgmock-dev libgif-dev
  # running the program: 64-bit Wine on a real or virtual X display
  wine wine64 xvfb x11-utils xdotool imagemagick
  # what the scripts themselves call
  procps file mount util-linux coreutils findutils grep sed
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done

if ((${#missing[@]} == 0)); then
  echo "setup: all ${#packages[@]} packages present"
  exit 0
fi

echo "setup: installing ${missing[*]}"
sudo=()
if ((EUID != 0)); then
  command -v sudo >/dev/null || { echo "setup: run as root (or install sudo) to install: ${missing[*]}" >&2; exit 1; }
  sudo=(sudo)
fi
export DEBIAN_FRONTEND=noninteractive
"${sudo[@]}" apt-get update -q
"${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q "${missing[@]}" </dev/null
