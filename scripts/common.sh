# What every script shares; to be read with `.` from a script one folder below the root.
set -eu
# After a signal too a script ends by its EXIT trap.
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM
root=$(CDPATH= cd -- "$(dirname -- "$0")/.." && pwd -P)

# Messages that are searched for and names of files are the same whatever the user's language.
export LC_ALL=C.UTF-8
# git refuses a tree of another user, which this one is under sudo, and a source archive is no part
# of a repository that it may have been unpacked in.
export GIT_CONFIG_COUNT=1 GIT_CONFIG_KEY_0=safe.directory GIT_CONFIG_VALUE_0="$root"
export GIT_CEILING_DIRECTORIES="${root%/*}"

# What is installed for whom. A script that calls others installs at its beginning what they need.
buildPackages='g++ cmake ninja-build python3 libgtest-dev'
testPackages="$buildPackages git"
lintPackages="$testPackages clang clang-format clang-tidy cppcheck"
fuzzPackages="$testPackages clang libclang-rt-14-dev"
crossPackages='g++-mingw-w64-x86-64-win32 mingw-w64-x86-64-dev cmark-gfm cmake ninja-build python3'
windowsPackages="$crossPackages wine64"

say() { printf '%s\n' "$*" >&2; }

# usage: prints the comment at the top of the script, for words that it does not know.
usage() {
  sed -n '2,/^[^#]/s/^# //p' "$0" >&2
  exit 2
}

# waitFor DESCRIPTOR: locks the file that is open there.
waitFor() {
  flock -w 1 "$1" || {
    say "Waiting for another run in this folder to end ..."
    flock "$1"
  }
}

# alone NAME: from here to its end the script is the only one in this tree that said so. What it
# starts and leaves running must not inherit descriptor 8.
alone() {
  mkdir -p "$root/build"
  exec 8>"$root/build/$1.run"
  waitFor 8
}

missingOf() {
  for package in $(printf '%s\n' "$@" | sort -u); do
    dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' ||
      printf ' %s' "$package"
  done
}

# install PACKAGE...: installs those that are missing, by apt.
install() {
  [ -n "$(missingOf "$@")" ] || return 0
  mkdir -p "$root/build"
  installMissing "$@" 9>"$root/build/install.lock" || exit 1
}

installMissing() {
  waitFor 9
  missing=$(missingOf "$@")
  [ -n "$missing" ] || return 0
  asRoot=
  if [ "$(id -u)" != 0 ]; then
    asRoot=sudo
    if ! command -v sudo >/dev/null; then
      say "What is missing cannot be installed without sudo. As root run:"
      sayHow "$missing"
      return 1
    fi
  fi
  say "Installing$missing ..."
  log=$root/build/install.log
  { $asRoot apt-get update &&
    $asRoot env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends \
      -o DPkg::Lock::Timeout=300 $missing; } >"$log" 2>&1 </dev/null || tail -n 20 "$log" >&2
  missing=$(missingOf "$@")
  [ -n "$missing" ] || return 0
  say "Could not install$missing. To try it by hand, as root run:"
  sayHow "$missing"
  return 1
}

sayHow() { say "  apt-get update && apt-get install -y --no-install-recommends$1"; }

# build PRESET: configures once, then builds what changed; quiet unless it fails.
build() {
  mkdir -p "$root/build"
  buildPreset "$1" 9>"$root/build/$1.lock" || exit 1
}

buildPreset() {
  waitFor 9
  folder=$root/build/$1
  # A tree that was moved is configured anew.
  if [ ! -f "$folder/build.ninja" ] ||
     ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$folder/CMakeCache.txt"; then
    say "Building $1 ..."
    rm -rf "$folder"
  fi
  (cd "$root" && { [ -f "$folder/build.ninja" ] || cmake --preset "$1"; } &&
    cmake --build --preset "$1") >"$folder.log" 2>&1 </dev/null || {
    cat "$folder.log" >&2
    return 1
  }
}

# runTests PRESET: runs the tests of a build and tells how many runs the cases came to.
runTests() { testPreset "$1" 9>"$root/build/$1.lock"; }

testPreset() {
  waitFor 9
  results=$root/build/$1/Testing/Temporary/LastTest.log
  rm -f "$results"
  status=0
  (cd "$root" && ctest --preset "$1" 8>&- 9>&-) || status=$?
  [ -f "$results" ] || : >"$results"
  awk -v host="$1" '/^[0-9]+ passed, [0-9]+ failed, [0-9]+ skipped/ {p += $1; f += $3; s += $5}
    END {printf "Cases on %s: %d passed, %d failed, %d skipped\n", host, p, f, s
         exit p == 0}' "$results" || status=1
  return $status
}
