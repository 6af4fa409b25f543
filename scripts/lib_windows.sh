# Steps of the scripts for Windows programs: their builds, and Wine, which runs them. Needs lib.sh.

# use_wine PRESET: makes a separate Wine prefix in build/, once, and hides messages that do not matter to tests.
use_wine() {
  export WINEPREFIX=$root/build/wine-$1 WINEDEBUG=-all WINEDLLOVERRIDES='mscoree,mshtml,winemenubuilder.exe='
  [ "$1" = win64 ] || export WINEARCH=win32
  [ ! -f "$WINEPREFIX/system.reg" ] || return 0
  say "Setting up Wine for $1."
  mkdir -p "$WINEPREFIX"
  local log=$WINEPREFIX/setup.log
  # A program that crashes ends at once without showing a window. Windows need no display, because nobody looks at them.
  if ! { wineboot -i && wineserver -w && set_wine_driver null &&
    wine reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f; } >"$log" 2>&1 </dev/null; then
    cat "$log" >&2
    rm -rf "$WINEPREFIX"
    die "Wine could not be set up."
  fi
}

# set_wine_driver NAME: sets how Wine shows windows: null for nowhere, x11 for the display.
set_wine_driver() {
  wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d "$1" /f && wineserver -w
}

# run_wine_tests PRESET [CTEST ARGUMENT...]: runs the tests in their Wine prefix. For a subshell. The first program would
# start Wine's services, which may keep the pipe of its output open after its end, so that the test never ends.
run_wine_tests() {
  use_wine "$1"
  trap 'wineserver -k >/dev/null 2>&1 || true' EXIT
  # One that the set-up has left would not stay.
  { wineserver -w; wineserver -p; wine cmd /c exit; } >/dev/null 2>&1 </dev/null || true
  run_tests "$@"
}

# test_opengl PRESET: runs the tests of OpenGL on a virtual display, with the driver of this machine. For a subshell.
test_opengl() {
  local pipe=$WINEPREFIX/display server number
  rm -f "$pipe"
  mkfifo "$pipe"
  Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp 3>"$pipe" </dev/null >/dev/null 2>&1 &
  server=$!
  # shellcheck disable=SC2064
  trap "{ set_wine_driver null; kill $server; } >/dev/null 2>&1 || true" EXIT
  read -r number <"$pipe"
  export DISPLAY=:$number
  set_wine_driver x11 >/dev/null 2>&1 </dev/null
  run_tests "$1" -C display -R '^opengl-'
}

# True when the kernel can start a 32-bit program; tries the smallest possible one.
starts_32bit_programs() {
  local program=build/starts-32bit
  printf '.globl _start\n_start:\n movl $1, %%eax\n xorl %%ebx, %%ebx\n int $0x80\n' | as --32 -o $program.o - &&
    ld -m elf_i386 -o $program $program.o && $program
} 2>/dev/null

# Installs the 32-bit Wine if it is missing. Its packages may conflict with newer ones on the machine; then nothing is
# changed.
install_wine32() {
  [ "$(dpkg-query -W -f='${db:Status-Status}' wine32 2>/dev/null)" != installed ] || return 0
  local sudo= added=
  [ "$(id -u)" = 0 ] || sudo=sudo
  dpkg --print-foreign-architectures | grep -qx i386 || { $sudo dpkg --add-architecture i386 && added=yes; }
  if $sudo apt-get update &&
    $sudo env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends wine32:i386; then
    return 0
  fi
  [ -z "$added" ] || { $sudo dpkg --remove-architecture i386 && $sudo apt-get update; }
  return 1
} >/dev/null 2>&1 </dev/null

# test_windows [CTEST ARGUMENT...]: builds both targets, and runs their tests if the machine can. Without a way to run
# the 32-bit tests, it does not build them.
test_windows() {
  install_packages base windows
  build win64
  say "Running the tests of the 64-bit build."
  (run_wine_tests win64 "$@")
  if [ $# -eq 0 ]; then
    say "Running its tests of OpenGL on a virtual display."
    (use_wine win64 && test_opengl win64)
  fi
  local reason=
  if ! starts_32bit_programs; then
    reason="the kernel of this machine starts no 32-bit programs"
  elif say "Looking for the 32-bit Wine." && ! install_wine32; then
    reason="the 32-bit Wine cannot be installed here"
  fi
  if [ -n "$reason" ]; then
    # Then no program of this build can make the data set either.
    [ -f build/win32/build.ninja ] || build win32 help
    cmake --preset win32 -DQUILLMARSH_WINE=OFF </dev/null >/dev/null
    build win32 source/all host/all tools/all plugins/all
    say "The 32-bit programs were built, but not tested: $reason."
  else
    build win32
    say "Running the tests of the 32-bit build."
    (run_wine_tests win32 "$@")
  fi
}
