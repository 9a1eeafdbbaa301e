#!/usr/bin/env bash
# docs.sh: docs/api, the public headers as HTML. A declaration without a contract is an error.
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/setup.sh checks >&2
[ -f build/debug/build.ninja ] || cmake --preset debug >/dev/null
exec cmake --build build/debug --target docs
