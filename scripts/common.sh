# What every script shares; to be read with `.` from a script whose folder is scripts/.
set -eu
# After a signal too a script ends by its EXIT trap.
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM
root=$(CDPATH= cd -- "$(dirname -- "$0")/.." && pwd)

# git refuses a tree of another user, which this one is under sudo.
export GIT_CONFIG_COUNT=1 GIT_CONFIG_KEY_0=safe.directory GIT_CONFIG_VALUE_0="$root"

say() { printf '%s\n' "$*" >&2; }

# install PACKAGE...: installs those that are missing, by apt.
install() {
  missing=
  for package in "$@"; do
    dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' ||
      missing="$missing $package"
  done
  [ -n "$missing" ] || return 0
  say "Installing$missing ..."
  asRoot=
  if [ "$(id -u)" != 0 ]; then
    asRoot=sudo
    if ! command -v sudo >/dev/null; then
      say "There is no sudo; as root run: apt-get install$missing"
      exit 1
    fi
  fi
  log=$(mktemp)
  if ! { $asRoot apt-get update &&
         $asRoot env DEBIAN_FRONTEND=noninteractive \
           apt-get install -y --no-install-recommends $missing; } >"$log" 2>&1 </dev/null; then
    tail -n 20 "$log" >&2
    rm -f "$log"
    say "Could not install$missing"
    exit 1
  fi
  rm -f "$log"
}

# build PRESET: configures once, then builds what changed; quiet unless it fails.
build() {
  [ -f "$root/build/$1/build.ninja" ] || say "Building $1 ..."
  mkdir -p "$root/build"
  log="$root/build/$1.log"
  if ! (cd "$root" && { [ -f "build/$1/build.ninja" ] || cmake --preset "$1"; } &&
        cmake --build --preset "$1") >"$log" 2>&1 </dev/null; then
    cat "$log" >&2
    exit 1
  fi
}

# runTests PRESET: runs the tests of a build and tells how many runs the cases came to.
runTests() {
  status=0
  (cd "$root" && ctest --preset "$1") || status=$?
  awk -v host="$1" '/^[0-9]+ passed, [0-9]+ failed, [0-9]+ skipped/ {p += $1; f += $3; s += $5}
    END {printf "Cases on %s: %d passed, %d failed, %d skipped\n", host, p, f, s}' \
    "$root/build/$1/Testing/Temporary/LastTest.log"
  return $status
}
