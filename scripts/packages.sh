# Sourced by the scripts at the root: install_packages NAME... installs the Debian packages that are missing, and says which.

install_packages() {
  local missing=() name
  for name in "$@"; do
    if [ "$(dpkg-query -W -f='${db:Status-Status}' "$name" 2>/dev/null)" != installed ]; then
      missing+=("$name")
    fi
  done
  if [ ${#missing[@]} -eq 0 ]; then
    return 0
  fi
  echo "== Installing: ${missing[*]}"
  local as_root=()
  if [ "$(id -u)" != 0 ]; then
    as_root=(sudo)
  fi
  # An index that is partly out of step still serves the packages that it knows.
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q update || echo "== The package index is not complete; going on with it"
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q install -y --no-install-recommends "${missing[@]}" > build/install.log 2>&1 || {
    tail -n 20 build/install.log
    echo "== Installing failed; build/install.log has it whole"
    return 1
  }
}

# What a build of the library and its tool needs.
build_packages="cmake ninja-build g++ libiberty-dev libcli11-dev"
