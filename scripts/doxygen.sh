#!/usr/bin/env bash
# Builds the reference of all classes and functions into build/reference/html. A warning fails.
set -eu
cd "$(dirname "$0")/.."
mkdir -p build/reference
doxygen Doxyfile
echo "reference: build/reference/html/index.html"
