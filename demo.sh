#!/usr/bin/env bash
# Installs what a bare Debian 12 lacks, builds, and runs two programs on something real. The line watcher reads a recursive listing
# of /usr through a pipe, beside the package manager's log. The plant shows figures of this machine by modules, one of which is
# removed while it runs and comes back. At the end of each there is the graph of the work that was done, as dot and as SVG.
set -eu
cd "$(dirname "$0")"
mkdir -p build
. scripts/packages.sh
install_packages $build_packages graphviz

echo "== Building"
cmake --preset release > build/release-configure.log 2>&1 || { cat build/release-configure.log; exit 1; }
cmake --build --preset release -j "$(nproc)" --target linewatch plant -- --quiet

# A machine whose packages were all there from the start may have no log yet; the list of them is as good.
log=/var/log/dpkg.log
[ -s "$log" ] || log=/var/lib/dpkg/status

echo "== Watching a listing of /usr and $log"
mkdir -p build/demo
ls -lR /usr 2>/dev/null | build/release/examples/linewatch --graph build/demo/work.dot - "$log"
echo "== The graph of the work is in build/demo/work.dot and build/demo/work.svg"

echo "== Running a plant of four modules for nine seconds: the meter is removed after three and comes back after six"
build/release/examples/plant --seconds 9 --remove meter --limit cpu=50 --limit memory=1 --graph build/demo/plant.dot
echo "== The graphs of the work and of the components are in build/demo: plant.dot, plant-components.dot, and both as SVG"
