#!/bin/bash
# Installs the packages that are missing, through apt; does nothing at all when none is.
# usage: scripts/install_packages.sh [--checks|--every-target]
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
lists=("$here/packages-base.txt")
case ${1:-} in
  --checks) lists+=("$here/packages-checks.txt") ;;
  --every-target) lists+=("$here/packages-checks.txt" "$here/packages-every-target.txt") ;;
esac
command -v dpkg-query >/dev/null || {
  echo "install_packages.sh knows Debian's package names only; needed are those in ${lists[*]}" >&2
  exit 1
}

as_root() {
  if [ "$(id -u)" = 0 ]; then "$@"; else sudo -n "$@"; fi
}

missing_of() {
  local package
  for package in "$@"; do
    # Not to be mistaken: a package that others only mention is "not-installed".
    case " $(dpkg-query -W -f '${db:Status-Status} ' "$package" 2>/dev/null)" in
      *' installed '*) ;;
      *) echo "$package" ;;
    esac
  done
}

apt_install() {
  as_root env DEBIAN_FRONTEND=noninteractive apt-get -q -y --no-install-recommends --no-remove \
    install "$@"
}

# One part of the lists that cannot be had just now need not matter: installing will tell.
apt_update() { as_root apt-get -q update || true; }

mapfile -t wanted < <(sed -E 's/[[:space:]]*#.*//; /^$/d' "${lists[@]}")
mapfile -t missing < <(missing_of "${wanted[@]}")
if [ ${#missing[@]} -gt 0 ]; then
  echo "installing: ${missing[*]}"
  apt_install "${missing[@]}" || { apt_update && apt_install "${missing[@]}"; }
fi

if ! locale -a 2>/dev/null | grep -qix 'de_DE\.utf-\?8'; then
  as_root localedef -i de_DE -f UTF-8 de_DE.UTF-8 ||
    echo "no de_DE.UTF-8 here: the tests of a comma-decimal locale will be skipped" >&2
fi

# A 32-bit Wine is welcome, not needed: where it cannot be installed beside what is there, the
# programs of 32-bit Windows are only built. Tried once a day.
tried=$here/../build/.tried-wine32
if [ "${1:-}" = --every-target ] && [ -n "$(missing_of wine32:i386)" ] &&
  [ -z "$(find "$tried" -mtime -1 2>/dev/null)" ]; then
  mkdir -p "$(dirname "$tried")"
  touch "$tried"
  if ! dpkg --print-foreign-architectures | grep -qx i386; then
    as_root dpkg --add-architecture i386
    apt_update
  fi
  apt_install wine32:i386 >"$tried" 2>&1 ||
    echo "no 32-bit Wine can be installed here (see build/.tried-wine32)" >&2
fi
