# Starts the desktop program for Windows in a Wine desktop window. Sourced by `./run windows`, in
# the project's folder, behind scripts/install.sh, with the arguments that follow; it does not come
# back.

if ! has_display; then
  cat >&2 <<'END'
There is no display to show windows on. Log in with a desktop, or use ssh -X, and try again;
or build the program with   cmake --preset windows && cmake --build build/windows
and start build/windows/bin/velora.exe on Windows. ./run starts the terminal program.
END
  exit 2
fi

need windows || exit 1
build windows velora || exit 1
export WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES="mscoree,mshtml="
exec wine explorer "/desktop=velora,${VELORA_SCREEN:-1280x900}" build/windows/bin/velora.exe "$@"
