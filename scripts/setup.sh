#!/usr/bin/env bash
# Installs what building, running and testing qvxFEM needs on Debian 12 and is not there yet; does nothing the
# second time. Says what it does; needs root or sudo only when something is missing.
set -euo pipefail

packages=(
  g++ cmake ninja-build        # toolchain
  libfmt-dev                   # narrow formatting
  libutfcpp-dev                # UTF-8 <-> wide text
  nlohmann-json3-dev           # model and results files
  libcli11-dev                 # command line
  libopenblas-dev              # BLAS
  libgtest-dev libgmock-dev    # tests
  libmpfr-dev                  # reference arithmetic of the double128 tests
  clang-format                 # layout check
)

missing=()
for package in "${packages[@]}"; do
  dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed || missing+=("$package")
done
if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

as_root=()
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo >/dev/null || { echo "setup: run as root or install sudo; missing: ${missing[*]}" >&2; exit 1; }
  as_root=(sudo)
fi
echo "setup: installing ${missing[*]}"
install() { "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${missing[@]}"; }
log=$(mktemp)
trap 'rm -f "$log"' EXIT
if ! { "${as_root[@]}" apt-get update && install; } >"$log" 2>&1; then
  cat "$log" >&2
  echo "setup: installation failed, see above" >&2
  exit 1
fi
echo "setup: done"
