# Sourced by the commands: makes sure that this machine has what the build needs.
# Talks on stderr. Installs Debian packages when it may, names them when it may not.

need_packages() {
  local missing=() package
  for package in "$@"; do
    [ "$(dpkg-query -W -f '${Status}' "$package" 2>/dev/null)" = "install ok installed" ] ||
      missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    if sudo -n true 2>/dev/null; then
      as_root=(sudo -n)
    else
      echo "These Debian packages are missing; install them and call again:" >&2
      echo "  apt-get install ${missing[*]}" >&2
      return 1
    fi
  fi
  echo "installing ${missing[*]}" >&2
  {
    "${as_root[@]}" apt-get update -q &&
      "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -q --no-install-recommends "${missing[@]}"
  } >&2
}

base_packages=(g++ cmake ninja-build libxml2-dev zlib1g-dev nlohmann-json3-dev libcli11-dev libgtest-dev
  libgmock-dev libjs-three)

# A browser, and what drives it in the tests of the page.
page_packages=(chromium chromium-driver python3-selenium fonts-dejavu-core)

# quietly COMMAND ...: runs it and shows what it printed only when it fails.
quietly() {
  local log status=0
  log=$(mktemp)
  "$@" >"$log" 2>&1 || status=$?
  [ $status -eq 0 ] || cat "$log" >&2
  rm -f "$log"
  return $status
}

# build PRESET [TARGET ...]: configures when needed and builds, quietly unless something fails.
build() {
  local preset=$1
  shift
  [ -f "build/$preset/build.ninja" ] || quietly cmake --preset "$preset" || return
  quietly cmake --build --preset "$preset" ${1:+--target "$@"}
}
