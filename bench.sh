#!/usr/bin/env bash
# Measures mortise beside its peers: installs the peers, builds with optimisation, runs every benchmark in one process,
# prints the table and writes bench/RESULTS.md and the plots. Options are passed on to the benchmark program, for
# instance --benchmark_filter=signals to look at one area (the written results then hold that area only).
set -euo pipefail
cd "$(dirname "$0")"
mkdir -p build
. scripts/packages.sh

install_packages $build_packages pkg-config libbenchmark-dev python3-matplotlib libsigc++-3.0-dev libboost-dev \
  qt6-base-dev libglib2.0-dev libuv1-dev libevent-dev libasio-dev libicu-dev libfmt-dev libabsl-dev libprotobuf-dev protobuf-compiler \
  libmsgpack-cxx-dev libcereal-dev libboost-serialization-dev libboost-filesystem-dev libpoco-dev

echo "== Building"
cmake --preset bench > build/bench-configure.log || { cat build/bench-configure.log; exit 1; }
cmake --build --preset bench

echo "== Measuring (some minutes)"
run=build/bench/run.json
build/bench/bench/mortise-bench --benchmark_repetitions="${MORTISE_BENCH_REPETITIONS:-5}" \
  --benchmark_min_time="${MORTISE_BENCH_MIN_TIME:-0.05}" --benchmark_enable_random_interleaving=true \
  --benchmark_out="$run" --benchmark_out_format=json "$@" > build/bench/run.log
/usr/bin/python3 bench/report.py "$run" bench/targets.json bench
