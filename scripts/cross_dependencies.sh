#!/bin/bash
# Builds what the tests and the command line need from outside for one target of the cross
# compilers, and installs it into build/deps/TARGET, where the toolchain files look:
# GoogleTest from the sources that its package installs, RapidCheck from its source package, and the
# header-only CLI11 and nlohmann-json as they are installed here. Quick when all of it is there.
# usage: scripts/cross_dependencies.sh linux-aarch64|linux-armv7|windows-x64|windows-x86
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
target=${1:-}
toolchain=$root/cmake/toolchains/$target.cmake
case $target in
  linux-aarch64 | linux-armv7 | windows-x64 | windows-x86) ;;
  *) sed -n 's/^# usage: /usage: /p' "$0" >&2; exit 2 ;;
esac
prefix=$root/build/deps/$target
sources=$root/build/deps/sources

# A prefix is good for as long as the packages and the compiler it was made from stay the same.
compiler=$(sed -n 's/^set(CMAKE_CXX_COMPILER \(.*\))$/\1/p; s/^set(tiltpole_mingw \(.*\))$/\1-g++-posix/p' \
  "$toolchain")
made_from=$("$compiler" -dumpfullversion -dumpmachine
  dpkg-query -W googletest libcli11-dev nlohmann-json3-dev
  sha256sum <"$0")
if [ "$(cat "$prefix/.made-from" 2>/dev/null)" = "$made_from" ]; then exit 0; fi

# apt with lists of its own, made from the machine's: the same places and suites, but sources.
# $1 is a sed expression that may choose another suite.
fetch_source() {
  local state=$sources/apt list
  rm -rf "$state"
  mkdir -p "$state/parts" "$state/lists/partial" "$state/cache/archives/partial"
  for list in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
    [ ! -f "$list" ] || sed -nE "s/^deb /deb-src /p" "$list" | sed -E "$1" \
      >"$state/parts/$(basename "$list" .list).list"
  done
  for list in /etc/apt/sources.list.d/*.sources; do
    [ ! -f "$list" ] || sed -E "s/^Types:.*/Types: deb-src/; $1" "$list" >"$state/parts/$(basename "$list")"
  done
  local apt=(apt-get -q -o Dir::Etc::SourceList=/dev/null -o "Dir::Etc::SourceParts=$state/parts"
    -o "Dir::State::lists=$state/lists" -o "Dir::Cache=$state/cache" -o APT::Sandbox::User=root)
  "${apt[@]}" update || true # a suite that cannot be had does not matter if the package is in another
  (cd "$sources" && "${apt[@]}" source --download-only --tar-only rapidcheck)
}

rapidcheck_source() {
  [ ! -f "$sources/rapidcheck/CMakeLists.txt" ] || return 0
  mkdir -p "$sources"
  rm -f "$sources"/rapidcheck_*
  # This machine's own suite first. Where its archive does not hold the file, the next release's.
  fetch_source '' || fetch_source 's/bookworm[a-z-]*( +bookworm[a-z-]*)*/trixie/'
  rm -rf "$sources/unpacked" "$sources/apt"
  mkdir "$sources/unpacked"
  tar -xf "$sources"/rapidcheck_*.orig.tar.* -C "$sources/unpacked"
  rm -rf "$sources/rapidcheck"
  if [ -f "$sources/unpacked/src/Check.cpp" ]; then # some releases are packed without a top folder
    mv "$sources/unpacked" "$sources/rapidcheck"
  else
    mv "$sources"/unpacked/*/ "$sources/rapidcheck"
  fi
}

build_and_install() { # name, source folder, further options
  local name=$1 source=$2
  shift 2
  local build=$root/build/deps/build/$target/$name
  local launcher=()
  if command -v ccache >/dev/null; then launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache); fi
  cmake -S "$source" -B "$build" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$toolchain" \
    -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$prefix" -DCMAKE_INSTALL_LIBDIR=lib \
    -DBUILD_SHARED_LIBS=OFF "${launcher[@]}" "$@"
  cmake --build "$build" --target install
  rm -rf "$build"
}

mkdir -p "$root/build/deps"
exec 9>"$root/build/deps/.lock" # two targets may be prepared at the same time
flock 9
rm -rf "$prefix"
mkdir -p "$prefix/include" "$prefix/share/cmake"
build_and_install googletest /usr/src/googletest -DBUILD_GMOCK=ON
rapidcheck_source
build_and_install rapidcheck "$sources/rapidcheck" -DRC_ENABLE_GTEST=ON -Wno-dev
cp -r /usr/include/CLI /usr/include/nlohmann "$prefix/include"
cp -r /usr/share/cmake/CLI11 /usr/share/cmake/nlohmann_json "$prefix/share/cmake"
printf '%s\n' "$made_from" >"$prefix/.made-from"
