#!/usr/bin/env bash
# fuzz-one.sh SECONDS PROGRAM: runs one fuzz target from its seeds. New inputs stay in the build tree; a finding is kept
# there too and fails the run.
set -u
seconds=$1
program=$2
name=$(basename "$program")
seeds=$(find fuzz -type d -name "${name%Fuzz}" | head -n 1)
work=build/fuzz/work/$name
mkdir -p "$work/corpus" "$work/findings"
if [ -z "$seeds" ]; then
  echo "$name: no seeds"
  exit 1
fi
if "$program" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -artifact_prefix="$work/findings/" \
  "$work/corpus" "$seeds" > "$work/log" 2>&1; then
  echo "$name: $(grep -E '^Done ' "$work/log" | tail -n 1)"
else
  tail -n 40 "$work/log"
  echo "$name: FINDING in $work/findings"
  exit 1
fi
