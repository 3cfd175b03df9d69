# Installs what is missing on a Debian machine. Sourced by ./run and ./test:
#   need run     what it takes to build and run the terminal program
#   need desktop what the native desktop program takes besides
#   need test    what the tests take besides
#   need windows what it takes to build the program for Windows and run it here
# Quiet when everything is there, so it costs next to nothing in the inner loop.

missing_packages() {
  for package in "$@"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || echo "$package"
  done
}

as_root() {
  if [ "$(id -u)" = 0 ]; then
    "$@"
  elif command -v sudo >/dev/null; then
    sudo "$@"
  else
    echo "Please install as root: $*" >&2
    return 1
  fi
}

has_display() {
  [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ]
}

need() {
  local packages="g++ cmake ninja-build libreadline-dev"
  case $1 in
    desktop) packages="$packages qt6-base-dev" ;;
    test) packages="$packages qt6-base-dev python3 libgtest-dev clang-format clang-tidy" ;;
    windows) packages="g++-mingw-w64-x86-64-posix cmake ninja-build wine wine64" ;;
  esac
  if ! command -v dpkg-query >/dev/null; then
    return 0 # another system: whoever builds here has seen to it
  fi
  local missing
  missing=$(missing_packages $packages)
  if [ -n "$missing" ]; then
    echo "Installing:" $missing >&2
    as_root apt-get update -qq >&2 &&
      as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
        $missing >&2
  fi
}

# configure PRESET: makes build/PRESET when it is not there, quietly.
configure() {
  if [ ! -f "build/$1/build.ninja" ]; then
    cmake --preset "$1" >"build.$1.log" 2>&1 || { cat "build.$1.log" >&2; rm -f "build.$1.log"; return 1; }
    rm -f "build.$1.log"
  fi
}

# build PRESET [TARGET...]: what is out of date; prints only when something fails.
build() {
  local preset=$1
  shift
  configure "$preset" || return 1
  local log="build/$preset/build.log"
  if [ -t 2 ]; then
    # At a terminal one line tells how far it is.
    cmake --build "build/$preset" --target "${@:-all}" 2>&1 | tee "$log" |
      while IFS= read -r line; do
        [[ $line =~ ^\[([0-9]+/[0-9]+)\] ]] && printf '\r%s built' "${BASH_REMATCH[1]}" >&2
      done
    local status=${PIPESTATUS[0]}
    grep -q '^\[' "$log" && echo >&2
  else
    cmake --build "build/$preset" --target "${@:-all}" >"$log" 2>&1
    local status=$?
  fi
  if [ "$status" -ne 0 ]; then
    grep -v '^\[' "$log" >&2
    return 1
  fi
}
