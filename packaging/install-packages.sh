#!/bin/sh
# Installs through apt what is missing of the packages that the lists name. Usage: install-packages.sh LIST...
set -eu
missing=""
# Words are meant: a name a line, without the remark after it.
# shellcheck disable=SC2013
for package in $(cat "$@" | sed -e 's/#.*//' -e 's/ .*//'); do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "ok installed" || missing="$missing $package"
done
[ -n "$missing" ] || exit 0
command -v apt-get >/dev/null || { echo "Please install these packages:$missing"; exit 1; }
as_root=""
if [ "$(id -u)" != 0 ]; then
    command -v sudo >/dev/null || { echo "Please install as root:$missing"; exit 1; }
    as_root="sudo"
fi
echo "Installing:$missing"
$as_root env DEBIAN_FRONTEND=noninteractive sh -c \
    "apt-get update -qq && apt-get install -y -qq --no-install-recommends $missing" >/dev/null
