#!/usr/bin/env bash
# setup.sh [checks]: installs what building, running and testing qvxFEM needs on Debian 12 and is not there yet; does
# nothing the second time. Says what it does; needs root or sudo only when something is missing.
# checks: what scripts/lint.sh and scripts/docs.sh need too.
set -euo pipefail
cd "$(dirname "$0")/.."

packages=(
  g++ cmake ninja-build        # toolchain
  libfmt-dev                   # narrow formatting
  libutfcpp-dev                # UTF-8 <-> wide text
  nlohmann-json3-dev           # model and results files
  libcli11-dev                 # command line
  libopenblas-dev              # BLAS
  libmumps-seq-dev             # direct sparse solver
  libgtest-dev libgmock-dev    # tests
  libmpfr-dev                  # reference arithmetic of the double128 tests
  python3-jsonschema           # validator of the schema tests
  clang-format                 # layout check
)
[ "${1:-}" != checks ] || packages+=(clang-tidy doxygen)

# The routine pardiso comes with Intel's library, in Debian's non-free component: runtime packages only, 0.2 GB. It is
# wanted, not needed: without it the engine uses MUMPS. QVXFEM_PARDISO=0 leaves it out.
pardiso_packages=(libmkl-rt libmkl-core libmkl-gnu-thread libmkl-def libmkl-avx2 libmkl-avx512 libgomp1)
no_pardiso_stamp=build/.no-pardiso

installed() { dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null | grep -qx installed; }

as_root=()
if [ "$(id -u)" -ne 0 ]; then
  as_root=(sudo)
fi
log=$(mktemp)
trap 'rm -f "$log"' EXIT

# Runs a command as root with its output in the log.
quietly() { "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive "$@" >>"$log" 2>&1; }

need_root() {
  [ ${#as_root[@]} -eq 0 ] || command -v sudo >/dev/null || { echo "setup: run as root or install sudo; missing: $*" >&2; exit 1; }
}

missing=()
for package in "${packages[@]}"; do
  installed "$package" || missing+=("$package")
done
if [ ${#missing[@]} -gt 0 ]; then
  need_root "${missing[*]}"
  echo "setup: installing ${missing[*]}"
  if ! { quietly apt-get update && quietly apt-get install -y --no-install-recommends "${missing[@]}"; }; then
    cat "$log" >&2
    echo "setup: installation failed, see above" >&2
    exit 1
  fi
fi

# The address of the Debian archive this machine already uses.
debian_archive() {
  { cat /etc/apt/sources.list /etc/apt/sources.list.d/*.list 2>/dev/null | awk '$1 == "deb" { for (i = 2; i <= NF; ++i) if ($i ~ /^https?:/) { print $i; exit } }'
    cat /etc/apt/sources.list.d/*.sources 2>/dev/null | awk '$1 == "URIs:" { print $2; exit }'; } | head -n 1
}

install_pardiso() {
  if [ -z "$(apt-cache madison libmkl-rt 2>/dev/null)" ]; then
    local archive codename
    archive=$(debian_archive)
    codename=$(. /etc/os-release && echo "${VERSION_CODENAME:-}")
    [ -n "$archive" ] && [ -n "$codename" ] || return 1
    echo "setup: adding Debian's non-free component for Intel's library (PARDISO)"
    printf 'Types: deb\nURIs: %s\nSuites: %s\nComponents: non-free\nSigned-By: /usr/share/keyrings/debian-archive-keyring.gpg\n' \
      "$archive" "$codename" | "${as_root[@]}" tee /etc/apt/sources.list.d/qvxfem-non-free.sources >/dev/null || return 1
    quietly apt-get update || return 1
  fi
  quietly apt-get install -y --no-install-recommends "${pardiso_packages[@]}"
}

if [ "${QVXFEM_PARDISO:-1}" != 0 ] && ! installed libmkl-rt && [ ! -e "$no_pardiso_stamp" ]; then
  if { [ ${#as_root[@]} -eq 0 ] || command -v sudo >/dev/null; } && install_pardiso; then
    echo "setup: PARDISO installed"
  else
    echo "setup: PARDISO cannot be installed here, the sparse solver will be MUMPS"
    mkdir -p "$(dirname "$no_pardiso_stamp")" && touch "$no_pardiso_stamp"
  fi
fi
