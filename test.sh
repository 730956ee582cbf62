#!/usr/bin/env bash
# Installs what is missing on a bare Debian 12, builds, and runs the tests.
#
#   ./test.sh              debug build with warnings as errors, all tests
#   ./test.sh --all        also: address, undefined-behaviour, leak and thread sanitizers, 32-bit ARM under qemu, clang with
#                          warnings as errors, clang-tidy, format check, API reference, 10 s of each fuzz target
#   ./test.sh --coverage   line coverage of src/ by the tests; fails below 95 %
#   ./test.sh --fuzz       2 minutes of each fuzz target
#
# The last lines are ctest's totals of the main run. The exit code is 0 only if every stage was.
set -u
cd "$(dirname "$0")" || exit 1
mkdir -p build
. scripts/packages.sh

mode=${1:-}
case "$mode" in
  "" | --all | --coverage | --fuzz) ;;
  -h | --help) sed -n '2,/^set/{/^set/d;s/^# \{0,1\}//;p}' "$0"; exit 0 ;;
  *) echo "test.sh: unknown argument $mode (try --help)" >&2; exit 2 ;;
esac

jobs=$(nproc)
packages="$build_packages libgtest-dev libgmock-dev pkg-config python3 python3-dateutil git graphviz gdb groff-base"
case "$mode" in
  --all) packages="$packages g++-arm-linux-gnueabihf qemu-user googletest clang clang-tidy clang-format libclang-rt-14-dev llvm doxygen" ;;
  --coverage) packages="$packages gcovr" ;;
  --fuzz) packages="$packages clang libclang-rt-14-dev llvm" ;;
esac
install_packages $packages || exit 1

report=()
failed=0

# stage NAME COMMAND...: runs it, keeps its result and time for the summary.
stage() {
  local name=$1 start=$SECONDS result=passed
  shift
  echo
  echo "== $name"
  if ! "$@"; then
    result=FAILED
    failed=1
  fi
  report+=("$(printf '%-42s %-7s %4d s' "$name" "$result" $((SECONDS - start)))")
  [ $result = passed ]
}

build() { # PRESET [TARGET...]
  local preset=$1
  shift
  cmake --preset "$preset" > "build/$preset-configure.log" 2>&1 || { cat "build/$preset-configure.log"; return 1; }
  cmake --build --preset "$preset" -j "$jobs" ${@:+--target "$@"} -- --quiet
}

tests() { # PRESET [ctest arguments]
  local preset=$1
  shift
  ctest --preset "$preset" -j "$jobs" "$@"
}

build_and_test() { # PRESET [ctest arguments]
  build "$1" && tests "$@"
}

# Only runnables, locks and the debug output are shared between threads.
threads() {
  build tsan mortise-tests-mp mortise-tests-pi && tests tsan -R '^(mp|pi)/'
}

main_run() {
  build dev || { echo "the build failed" > build/totals.log; return 1; }
  tests dev 2>&1 | tee build/totals.log
  return "${PIPESTATUS[0]}"
}

sources() { # what people wrote, in C++
  git ls-files -co --exclude-standard -- '*.h' '*.cpp'
}

format_check() {
  sources | xargs -r -d '\n' clang-format --dry-run -Werror
}

tidy() {
  cmake --preset clang > build/clang-configure.log 2>&1 || { cat build/clang-configure.log; return 1; }
  run-clang-tidy -quiet -p build/clang -j "$jobs" "$PWD/src/.*\.cpp" > build/clang-tidy.log 2>&1
  local result=$?
  grep -E '(warning|error):' build/clang-tidy.log | sort -u
  return $result
}

reference() {
  scripts/doxygen.sh
}

fuzz() { # SECONDS
  build fuzz || return 1
  local targets=(build/fuzz/fuzz/*Fuzz) found=0
  [ -x "${targets[0]}" ] || { echo "no fuzz target was built"; return 1; }
  printf '%s\n' "${targets[@]}" | xargs -P "$jobs" -n 1 scripts/fuzz-one.sh "$1" || found=1
  return $found
}

coverage() {
  build coverage || return 1
  find build/coverage -name '*.gcda' -delete
  tests coverage || return 1
  gcovr --root . --filter 'src/' --exclude-throw-branches --object-directory build/coverage --print-summary \
    --html-details build/coverage/report.html --fail-under-line 95 build/coverage
}

case "$mode" in
  --coverage) stage "Coverage" coverage ;;
  --fuzz) stage "Fuzzers, 120 s each" fuzz 120 ;;
  *) stage "Debug build and tests" main_run ;;
esac

if [ "$mode" = --all ]; then
  stage "Format" format_check
  stage "Address, leak and undefined behaviour" build_and_test asan
  stage "Threads" threads
  stage "32-bit ARM under qemu" build_and_test arm
  stage "clang" build_and_test clang -E '^rules/'
  stage "clang-tidy" tidy
  stage "API reference" reference
  stage "Fuzzers, 10 s each" fuzz 10
fi

echo
printf '%s\n' "${report[@]}"
if [ -f build/totals.log ] && [ "$mode" != --coverage ] && [ "$mode" != --fuzz ]; then
  echo
  sed -n '/tests passed,/,$p' build/totals.log
fi
exit $failed
