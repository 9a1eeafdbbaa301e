#!/usr/bin/env bash
# run.sh [MODEL] [OPTION...]: builds the command line and analyses a model; an example when none is named.
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
"$here/scripts/build.sh" release qvxfem_app
[ $# -gt 0 ] || set -- "$here/examples/office_frame.json"
exec "$here/build/release/apps/qvxfem/qvxfem" run "$@"
