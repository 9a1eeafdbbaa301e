#!/usr/bin/env bash
# lint.sh [FILE...]: clang-tidy, with the checks of .clang-tidy, over the files named, else over all of src and apps.
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/setup.sh checks >&2
[ -f build/debug/compile_commands.json ] || cmake --preset debug >/dev/null
files=("$@")
[ ${#files[@]} -gt 0 ] || mapfile -t files < <(git ls-files 'src/*.cpp' 'apps/*.cpp')

log=$(mktemp)
trap 'rm -f "$log"' EXIT
# Suppressed warnings of system headers are counted on the error stream: only an error shows it.
if ! printf '%s\0' "${files[@]}" | xargs -0 -n 4 -P "$(nproc)" clang-tidy -p build/debug --quiet >"$log" 2>&1; then
  grep -vE 'warnings? generated|Suppressed|Use -header-filter|warnings? treated as errors?' "$log" >&2
  exit 1
fi
