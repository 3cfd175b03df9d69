#!/bin/bash
# Installs the release build into an empty folder and asks the installed program a query: it must
# find its libraries beside itself.
set -eu
cd "$(dirname "$0")/.."
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
cmake --install build/release --prefix "$place" >/dev/null
cd /
answer=$("$place/bin/velora" --eval '+ #40 #2')
[ "$answer" = "#42" ] || { echo "the installed program said: $answer" >&2; exit 1; }
