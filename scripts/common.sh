# What all scripts share. A script in a folder below the root reads it with `.`.
set -eu
# A script that a signal ends runs its EXIT trap, too.
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM
root=$(CDPATH= cd -- "$(dirname -- "$0")/.." && pwd -P)

# The scripts search messages of programs, so these must not depend on the user's language.
export LC_ALL=C.UTF-8
# git refuses a tree of another user, which this one is under sudo. And an unpacked source archive is
# not a part of the repository around it.
export GIT_CONFIG_COUNT=1 GIT_CONFIG_KEY_0=safe.directory GIT_CONFIG_VALUE_0="$root"
export GIT_CEILING_DIRECTORIES="${root%/*}"

# Debian has some programs in folders that a user's PATH lacks.
PATH=$PATH:/usr/sbin:/sbin:/usr/lib/wine

# Debian's packages, by their use. A script that calls others installs at its start what they need.
toolPackages='g++ cmake ninja-build nlohmann-json3-dev'
testPackages="$toolPackages python3 libgtest-dev python3-jsonschema git"
lintPackages="$testPackages clang clang-format clang-tidy cppcheck"
fuzzPackages="$testPackages clang libclang-rt-14-dev"
crossPackages='g++-mingw-w64-x86-64-win32 mingw-w64-x86-64-dev cmark-gfm cmake ninja-build python3 nlohmann-json3-dev'
windowsPackages="$crossPackages wine64"

# needsOf PACKAGE: what the package is needed for: programs, and files or modules after the program that
# finds them. They may come from another source, too.
needsOf() {
  case $1 in
    g++) echo "${CXX:-c++}" ;;
    ninja-build) echo ninja ;;
    libgtest-dev) echo "${CXX:-c++}:gtest/gtest.h" ;;
    nlohmann-json3-dev) echo "${CXX:-c++}:nlohmann/json.hpp" ;;
    python3-jsonschema) echo python3:jsonschema ;;
    libc6-dev) echo gcc:stdio.h ;;
    clang) echo clang++ ;;
    clang-tidy) echo clang-tidy run-clang-tidy ;;
    libclang-rt-14-dev) echo clang++:libclang_rt.fuzzer ;;
    g++-mingw-w64-x86-64-win32) echo x86_64-w64-mingw32-g++ x86_64-w64-mingw32-windres ;;
    mingw-w64-x86-64-dev) echo x86_64-w64-mingw32-g++:ddk/ntifs.h ;;
    wine64) echo "$(wine) wineserver" ;;
    time) echo /usr/bin/time ;;
    pciutils) echo lspci ;;
    *) echo "$1" ;;
  esac
}

# Newer Wine has one program for all Windows programs.
wine() { command -v wine64 || echo wine; }

# has NEED: whether this machine has it.
has() {
  command -v "${1%%:*}" >/dev/null || return 1
  case $1 in
    python3:*) python3 -c "import ${1#*:}" 2>/dev/null ;;
    *:*.h | *:*.hpp)
      printf '#if !__has_include(<%s>)\n#error\n#endif\n' "${1#*:}" |
        "${1%%:*}" -x c++ -fsyntax-only - >/dev/null 2>&1
      ;;
    *:*) ls "$("${1%%:*}" -print-runtime-dir)" 2>/dev/null | grep -qF "${1#*:}" ;;
  esac
}

say() { printf '%s\n' "$*" >&2; }

# usage: prints the comment at the top of the script, and ends it.
usage() {
  sed -n '2,/^[^#]/s/^# //p' "$0" >&2
  exit 2
}

# waitFor DESCRIPTOR: locks the file that is open as this descriptor.
waitFor() {
  flock -w 1 "$1" || {
    say "Waiting for another run in this folder to end ..."
    flock "$1"
  }
}

# alone NAME: waits until no other script in this tree holds the lock NAME, and holds it to its own end. A
# program that goes on after the script must not inherit descriptor 8.
alone() {
  mkdir -p "$root/build"
  exec 8>"$root/build/$1.run"
  waitFor 8
}

# missingOf PACKAGE...: prints the packages that this machine lacks, wholly or in part.
missingOf() {
  for package in $(printf '%s\n' "$@" | sort -u); do
    for need in $(needsOf "$package"); do
      has "$need" || { printf ' %s' "$package"; break; }
    done
  done
}

# install PACKAGE...: installs by apt the packages that are missing, or says what root has to install.
install() {
  [ -n "$(missingOf "$@")" ] || return 0
  mkdir -p "$root/build"
  installMissing "$@" 9>"$root/build/install.lock" || exit 1
}

installMissing() {
  waitFor 9
  missing=$(missingOf "$@")  # after another run may have installed it
  [ -n "$missing" ] || return 0
  asRoot=
  [ "$(id -u)" = 0 ] || asRoot=sudo
  if has apt-get && has "${asRoot:-env}"; then
    say "Installing$missing ..."
    log=$root/build/install.log
    { $asRoot apt-get update &&
      $asRoot env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends \
        -o DPkg::Lock::Timeout=300 $missing; } >"$log" 2>&1 </dev/null || tail -n 20 "$log" >&2
    missing=$(missingOf "$@")
    [ -n "$missing" ] || return 0
  fi
  say "Missing here:"
  for package in $missing; do
    for need in $(needsOf "$package"); do
      has "$need" || say "  $need, in Debian's package $package"
    done
  done
  say "As root run:"
  say "  apt-get update && apt-get install -y --no-install-recommends$missing"
  return 1
}

# phase TEXT COMMAND...: runs the command, which prints nothing, and prints TEXT and the time in one line.
phase() {
  inPhase=yes
  printf '%s ... ' "$1" >&2
  began=$(date +%s)
  shift
  "$@"
  say "$(($(date +%s) - began)) s"
  inPhase=
}

# build PRESET [TARGET...]: configures if needed, then builds the targets or everything. Prints nothing
# unless it fails. Targets are programs, which need no test library.
build() {
  mkdir -p "$root/build"
  buildPreset "$@" 9>"$root/build/$1.lock" || exit 1
}

buildPreset() {
  waitFor 9
  name=$1
  shift
  folder=$root/build/$name
  # A tree that was moved is configured anew.
  if [ ! -f "$folder/build.ninja" ] ||
     ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$folder/CMakeCache.txt"; then
    [ -n "${inPhase-}" ] || say "Building $name ..."
    rm -rf "$folder"
    configure=yes
  elif [ "$root/CMakePresets.json" -nt "$folder/build.ninja" ] ||
       { [ $# = 0 ] && grep -qx 'BUILD_TESTING:[A-Z]*=OFF' "$folder/CMakeCache.txt"; }; then
    configure=yes
  else
    configure=
  fi
  (cd "$root" && { [ -z "$configure" ] || cmake --preset "$name" ${1:+-DBUILD_TESTING=OFF}; } &&
    cmake --build --preset "$name" ${1:+--target "$@"}) >"$folder.log" 2>&1 </dev/null || {
    [ -z "${inPhase-}" ] || say
    cat "$folder.log" >&2
    return 1
  }
}

# runTests PRESET: runs the tests of a build, and prints how many runs the cases were.
runTests() { testPreset "$1" 9>"$root/build/$1.lock"; }

testPreset() {
  waitFor 9
  results=$root/build/$1/Testing/Temporary/LastTest.log
  rm -f "$results"
  status=0
  began=$(date +%s)
  say "Tests of $1:"
  (cd "$root" && ctest --preset "$1" -j "$(nproc)" 8>&- 9>&-) || status=$?
  [ -f "$results" ] || : >"$results"
  awk -v host="$1" '/^[0-9]+ passed, [0-9]+ failed, [0-9]+ skipped/ {p += $1; f += $3; s += $5}
    END {printf "Cases on %s: %d passed, %d failed, %d skipped\n", host, p, f, s
         exit p == 0}' "$results" || status=1
  say "Tests of $1: $(($(date +%s) - began)) s"
  return $status
}
