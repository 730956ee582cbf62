#!/bin/sh
# fetch-armhf-package.sh PACKAGE DIRECTORY
# Unpacks Debian's armhf build of PACKAGE into DIRECTORY. Sources and keys are those of this machine; index, cache and
# status are private to the call, so neither the machine's architectures nor its installed packages change.
set -eu
package=$1
target=$2
state=$(mktemp -d)
trap 'rm -rf "$state"' EXIT
mkdir -p "$state/lists/partial" "$state/cache/archives/partial" "$target"
: > "$state/status"

apt() {
  apt-get -q -o APT::Architecture=armhf -o APT::Architectures=armhf -o APT::Sandbox::User=root \
    -o Dir::State="$state" -o Dir::State::lists="$state/lists" -o Dir::State::status="$state/status" \
    -o Dir::Cache="$state/cache" -o Acquire::Languages=none -o Acquire::Retries=3 "$@"
}

# A mirror in the middle of a sync gives an index out of step. apt keeps the indexes that did fit, and one of them
# usually knows the package; if not, the next try finds the mirror further on.
for attempt in 1 2 3 4 5; do
  apt update || echo "fetch-armhf-package: index only partly fetched (attempt $attempt)" >&2
  if (cd "$state" && apt download "$package"); then
    dpkg-deb -x "$state"/"$package"_*.deb "$target"
    exit 0
  fi
  sleep $((attempt * 3))
done
echo "fetch-armhf-package: no armhf package $package to be had" >&2
exit 1
