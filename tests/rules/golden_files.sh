#!/bin/sh
# golden_files.sh PYTHON MODEL GOLDEN: a golden file is what its model writes.
set -eu
made=$(mktemp)
trap 'rm -f "$made"' EXIT
"$1" "$2" > "$made"
cmp "$made" "$3"
