#!/usr/bin/env bash
# check_format.sh [--fix]: every C++ file stands as .clang-format lays it out.
set -euo pipefail
cd "$(dirname "$0")/.."
mode=(--dry-run --Werror)
[ "${1:-}" = --fix ] && mode=(-i)
git ls-files -z '*.cpp' '*.h' | xargs -0 -r -n 40 -P 2 clang-format "${mode[@]}"
