#!/usr/bin/env bash
# Installs the build, and checks that GDB loads the library's printers automatically and shows values.
# usage: debugger.sh SOURCE_DIR BUILD_DIR WORK_DIR CXX
set -euo pipefail
source=$1 build=$2 work=$3 cxx=$4
command -v gdb >/dev/null || { echo "GDB is not installed, so nothing is tested."; exit 77; }
rm -rf "$work"
mkdir -p "$work"
cmake --install "$build" --prefix "$work/prefix" >"$work/install.log"
libraries=$(dirname "$(find "$work/prefix" -name libquillmarsh.so)")
"$cxx" -std=c++20 -g -O0 -I"$work/prefix/include" "$source/tests/support/printed_values.cpp" -o "$work/values" \
  -L"$libraries" -lquillmarsh "-Wl,-rpath,$libraries"

line=$(grep -n 'stop here' "$source/tests/support/printed_values.cpp" | cut -d: -f1)
show=()
for name in vector same rotation colour matrix wide uid count title image base; do
  show+=(-ex "output $name" -ex 'echo \n')
done
gdb -batch -nx -iex "set auto-load safe-path /" \
  -iex "set auto-load scripts-directory $work/prefix/share/gdb/auto-load" -ex "break printed_values.cpp:$line" -ex run \
  "${show[@]}" "$work/values" >"$work/out" 2>"$work/log" </dev/null || { cat "$work/out" "$work/log"; exit 1; }
if grep -q "ptrace: Operation not permitted" "$work/log"; then
  echo "Tracing processes is not allowed here, so nothing is tested."
  exit 77
fi
sed -n '/stop here/,$p' "$work/out" | tail -n +2 | sed 's/at 0x[0-9a-f]*/at PLACE/' | diff - <(cat <<'WANTED'
(1.5, -2, 0.100000001)
(1.5, -2, 0.100000001)
(0, 0, 0, 1)
(1, 2, 3, 255)
{row 0 = (1, 2), row 1 = (3, 4)}
"Gü😀"
[00000001-00000002-00000003-00ABCDEF]
count = 7
title = "a b"
3 x 4 L8 at PLACE
3 x 4 L8 at PLACE
WANTED
)
