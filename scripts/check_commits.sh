#!/usr/bin/env bash
# check_commits.sh [BASE]: a commit that deletes files names each of them in its message, by its name or by the folder that
# goes with it: a merge gone wrong deletes in silence. Looks at the commits after BASE, else after the last one that changed
# this script. A moved file is not a deleted one. Of a history that is cut off (a shallow clone) what is there is looked at.
set -euo pipefail
cd "$(dirname "$0")/.."
base=${1:-}
[ -n "$base" ] || base=$(git log -1 --format=%H -- scripts/check_commits.sh)
range=HEAD
if [ -n "$base" ] && git merge-base --is-ancestor "$base" HEAD 2>/dev/null; then range=$base..HEAD; fi

# Whether the message names the file or one of the folders above it.
is_named() {
  local message=$1 path=$2
  grep -qwF -- "$(basename "$path")" <<<"$message" && return
  while path=$(dirname "$path"); [ "$path" != . ]; do
    grep -qF -- "$path" <<<"$message" && return
  done
  return 1
}

silent=0
while read -r commit; do
  message=$(git log -1 --format=%B "$commit")
  while IFS= read -r path; do
    is_named "$message" "$path" && continue
    echo "commit ${commit:0:10} deletes $path and does not say so: $(git log -1 --format=%s "$commit")" >&2
    silent=1
  done < <(git -c core.quotePath=false diff-tree --no-commit-id --name-only --diff-filter=D -r -M "$commit")
done < <(git rev-list --no-merges "$range")
exit "$silent"
