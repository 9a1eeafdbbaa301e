#!/usr/bin/env bash
# build.sh PRESET [TARGET...]: sets up the machine, configures once, builds. Output is shown when it fails.
set -euo pipefail
cd "$(dirname "$0")/.."
preset=${1:?preset}
shift

./scripts/setup.sh >&2
log=$(mktemp)
trap 'rm -f "$log"' EXIT
[ -f "build/$preset/build.ninja" ] || cmake --preset "$preset" >"$log" 2>&1 || { cat "$log" >&2; exit 1; }
targets=()
for target in "$@"; do targets+=(--target "$target"); done
echo "building ($preset) ..." >&2
cmake --build --preset "$preset" "${targets[@]}" >"$log" 2>&1 || { cat "$log" >&2; exit 1; }
