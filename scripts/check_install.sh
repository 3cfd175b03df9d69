#!/bin/bash
# Installs the sanitized build, which has every program, into an empty folder and asks the installed
# programs: they must find their libraries beside themselves, and the guide must have come along.
set -eu
cd "$(dirname "$0")/.."
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
cmake --install build/debug --prefix "$place" >/dev/null
cd /
answer=$("$place/bin/velora" --eval '+ #40 #2')
[ "$answer" = "#42" ] || { echo "the installed program said: $answer" >&2; exit 1; }
[ -s "$place/share/velora/docs/guide/README.md" ] || { echo "the guide was not installed" >&2; exit 1; }
# The toolkit's own libraries keep what they have until the end, which is no leak of ours.
version=$(ASAN_OPTIONS=detect_leaks=0 QT_QPA_PLATFORM=offscreen "$place/bin/velora-desktop" --version)
[ "${version##* }" = "$("$place/bin/velora" --version | sed 's/.* //')" ] ||
  { echo "the installed desktop program said: $version" >&2; exit 1; }
