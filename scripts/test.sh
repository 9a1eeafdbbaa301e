#!/usr/bin/env bash
# test.sh [CTEST-OPTION...]: builds everything and runs every test.
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/build.sh release
exec ctest --preset release --parallel "$(nproc)" --output-on-failure "$@"
