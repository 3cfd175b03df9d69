#!/bin/bash
# Installs the release build into an empty folder and asks the installed programs: they must find
# their libraries beside themselves, and the guide must have come along.
set -eu
cd "$(dirname "$0")/.."
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
cmake --install build/release --prefix "$place" >/dev/null
cd /
answer=$("$place/bin/velora" --eval '+ #40 #2')
[ "$answer" = "#42" ] || { echo "the installed program said: $answer" >&2; exit 1; }
[ -s "$place/share/velora/docs/guide/README.md" ] || { echo "the guide was not installed" >&2; exit 1; }
version=$(QT_QPA_PLATFORM=offscreen "$place/bin/velora-desktop" --version)
[ "$version" = "$("$place/bin/velora" --version)" ] ||
  { echo "the installed desktop program said: $version" >&2; exit 1; }
