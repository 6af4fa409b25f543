# Shared steps of the daily scripts. All messages go to standard error.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"
jobs=${QUILLMARSH_JOBS:-$(nproc)}
# Makes the compiler cache compare the sources of precompiled headers.
export CCACHE_SLOPPINESS=${CCACHE_SLOPPINESS:-pch_defines,time_macros}

say() { printf '%s\n' "$*" >&2; }
die() { say "$*"; exit 1; }

# install_packages GROUP...: installs the missing Debian packages of these groups.
install_packages() {
  local wanted missing
  wanted=$(awk -v groups=" $* " '!/^#/ && index(groups, " " $1 " ") { print $2 }' scripts/packages | sort -u)
  command -v dpkg-query >/dev/null || { say "This is not a Debian system. Make sure that these packages are installed: "$wanted; return; }
  missing=$(comm -23 <(printf '%s\n' $wanted) \
    <(dpkg-query -W -f='${db:Status-Status} ${Package}\n' $wanted 2>/dev/null | sed -n 's/^installed //p' | sort -u))
  [ -n "$missing" ] || return 0
  say "Installing:" $missing
  local sudo=
  [ "$(id -u)" = 0 ] || sudo=sudo
  local log
  log=$(mktemp)
  if ! { $sudo apt-get update &&
    $sudo env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends $missing; } </dev/null >"$log" 2>&1
  then
    tail -n 20 "$log" >&2
    rm -f "$log"
    die "The packages could not be installed."
  fi
  rm -f "$log"
}

# build PRESET [TARGET...]: configures if needed, and builds. Prints messages only when there is work to do or a
# failure.
build() {
  local preset=$1 log
  shift
  local targets=("$@")
  [ ${#targets[@]} -gt 0 ] || targets=(all)
  log=$(mktemp)
  if [ ! -f "build/$preset/build.ninja" ]; then
    say "Configuring $preset."
    local launcher=()
    command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
    if ! cmake --preset "$preset" "${launcher[@]}" </dev/null >"$log" 2>&1; then
      cat "$log" >&2
      rm -f "$log" "build/$preset/CMakeCache.txt"
      die "Configuring $preset failed."
    fi
  fi
  if ninja -C "build/$preset" -n "${targets[@]}" </dev/null 2>/dev/null | grep -cE '\] (Building|Linking)' >/dev/null; then
    say "Building $preset."
  fi
  if ! ninja -C "build/$preset" -j "$jobs" "${targets[@]}" </dev/null >"$log" 2>&1; then
    grep -vE '^\[[0-9]+/[0-9]+\] (Building|Linking|Creating)|^ninja: Entering' "$log" >&2
    rm -f "$log"
    die "Building $preset failed."
  fi
  rm -f "$log"
}

# run_tests PRESET [CTEST ARGUMENT...]: prints the summary on success, and the failures otherwise.
run_tests() {
  local preset=$1 log
  shift
  log=$(mktemp)
  if ctest --preset "$preset" -j "$jobs" "$@" </dev/null >"$log" 2>&1; then
    grep -E '\*\*\*|tests passed|Total Test time|not run|Skipped' "$log"
    rm -f "$log"
  else
    grep -vE '^ *[0-9]+/[0-9]+ Test +#[0-9]+: .* Passed|^ *Start ' "$log"
    rm -f "$log"
    die "Tests of $preset failed."
  fi
}
