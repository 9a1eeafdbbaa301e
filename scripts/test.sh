#!/usr/bin/env bash
# test.sh [CTEST-OPTION...]: builds everything with its assertions live and runs every test.
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/build.sh debug
exec ctest --preset debug --parallel "$(nproc)" --output-on-failure "$@"
