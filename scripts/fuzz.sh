#!/usr/bin/env bash
# fuzz.sh [RUNS] [TARGET...]: builds the libFuzzer targets (clang, address and undefined-behaviour sanitizers) and
# gives each RUNS inputs (default 1000000), grown from tests/fuzz/corpus. Findings stay in build/fuzz/findings.
# Targets: bar_tables model_json sap2000
set -euo pipefail
cd "$(dirname "$0")/.."

runs=${1:-1000000}
shift || true
targets=("$@")
[ ${#targets[@]} -gt 0 ] || targets=(bar_tables model_json sap2000)

options=()
if command -v ccache >/dev/null; then options+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache); fi
cmake --preset fuzz "${options[@]}" >/dev/null
cmake --build --preset fuzz --target "${targets[@]/#/fuzz_}"

mkdir -p build/fuzz/findings
for target in "${targets[@]}"; do
  corpus=build/fuzz/corpus/$target   # what the fuzzer finds interesting, kept from run to run
  mkdir -p "$corpus"
  echo "$target: $runs inputs"
  "build/fuzz/tests/fuzz/fuzz_$target" -runs="$runs" -max_len=400 -timeout=10 -print_final_stats=1 -verbosity=1 \
    -dict="tests/fuzz/dict/$target.dict" -artifact_prefix="build/fuzz/findings/$target-" \
    "$corpus" "tests/fuzz/corpus/$target" 2>&1 | tail -n 12
done
