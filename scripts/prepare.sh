# Sourced by run and test: packages that are missing, and the build folder.

QUORL_BUILD="${QUORL_BUILD:-build/release}"
QUORL_BIN="$PWD/$QUORL_BUILD/bin"

PACKAGES=(
  g++ python3 cmake ninja-build pkg-config ccache lld
  libfmt-dev libcli11-dev nlohmann-json3-dev libpugixml-dev libcairo2-dev libzstd-dev libxxhash-dev
  libboost-dev libgtest-dev libgmock-dev librapidcheck-dev libbenchmark-dev fonts-dejavu-core
)

# What the checks of ./test --all need beside them.
ALL_PACKAGES=(clang-14 clang-format-14 clang-tidy-14 libclang-rt-14-dev)

prepare_packages() {
  local missing=()
  for package in "${PACKAGES[@]}"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q '^install ok installed' || missing+=("$package")
  done
  [ "${#missing[@]}" -eq 0 ] && return 0
  echo "Installing: ${missing[*]}"
  local as_root=()
  [ "$(id -u)" -eq 0 ] || as_root=(sudo)
  "${as_root[@]}" apt-get update -qq
  DEBIAN_FRONTEND=noninteractive "${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# Builds without a word on standard output, which belongs to the program that is about to run.
build_targets() {
  # What the tests' precompiled header takes to be cached.
  export CCACHE_BASEDIR="$PWD" CCACHE_NOHASHDIR=1
  export CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
  local quiet=(--quiet)
  if [ -f "$QUORL_BUILD/build.ninja" ] &&
    cmake --build "$QUORL_BUILD" --target "$@" -- -n 2>/dev/null | grep -q 'no work to do'; then
    return 0
  fi
  if [ ! -f "$QUORL_BUILD/build.ninja" ]; then
    echo "Building in $QUORL_BUILD; the first time takes some minutes." >&2
    quiet=()
    cmake --preset "${QUORL_PRESET:-release}" -B "$QUORL_BUILD" >&2
  fi
  cmake --build "$QUORL_BUILD" --parallel "$(nproc)" --target "$@" -- "${quiet[@]}" >&2
}
