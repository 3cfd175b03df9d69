# Starts the native desktop program. Sourced by `./run desktop`, in the project's folder, behind
# scripts/install.sh, with the arguments that follow; it does not come back.

if ! has_display && [ -z "${QT_QPA_PLATFORM:-}" ]; then
  cat >&2 <<'END'
There is no display to show windows on. Log in with a desktop, or use ssh -X, and try again.
./run starts the terminal program.
END
  exit 2
fi

need desktop || exit 1
# A build made before Qt was there looks for it once more.
if [ -f build/release/build.ninja ] && ! grep -q velora-desktop build/release/build.ninja; then
  cmake --preset release >/dev/null || exit 1
fi
build release velora-desktop || exit 1
exec build/release/bin/velora-desktop "$@"
