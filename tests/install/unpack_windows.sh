#!/usr/bin/env bash
# Packs the Windows build, unpacks it in an empty Wine prefix, starts the host there, and builds the example project against it.
# usage: unpack_windows.sh SOURCE_DIR BUILD_DIR WORK_DIR TOOLCHAIN_FILE
set -euo pipefail
source=$1 build=$2 work=$3 toolchain=$4
rm -rf "$work"
mkdir -p "$work"

(cd "$build" && cpack -B "$work/package") >"$work/log"
zip=$(echo "$work"/package/quillmarsh-*.zip)
(cd "$build" && cpack -B "$work/again") >>"$work/log"
cmp "$zip" "$work/again/$(basename "$zip")" || { echo "The package contains the time of packing."; exit 1; }

export WINEPREFIX=$work/wine WINEDEBUG=-all WINEDLLOVERRIDES='mscoree,mshtml,winemenubuilder.exe='
trap 'wineserver -k; rm -rf "$WINEPREFIX"' EXIT
wineboot -i >>"$work/log" 2>&1
unzip -q "$zip" -d "$WINEPREFIX/drive_c"
name=$(basename "$zip" .zip)
installed=$WINEPREFIX/drive_c/$name
! grep -rIlF -e "$build" -e "$source" "$installed" || { echo "The package contains the path of the build."; exit 1; }
for file in LICENSE share/quillmarsh/gui_std_tiletexture_set0.tif share/quillmarsh/samples/body.qmdp.volume licences/compiler-runtime.txt licences/system-runtime.txt licences/vector-library.txt; do
  [ -s "$installed/$file" ] || { echo "The package lacks $file."; exit 1; }
done

# Starts the host in another folder, where it finds none of its files.
cd "$WINEPREFIX/drive_c"
printf 'greet\nlist-commands\n' | wine "C:\\$name\\bin\\quillmarsh-host.exe" >"$work/out"
grep -q 'Hello from the workbench!' "$work/out" || { cat "$work/out"; exit 1; }
echo greet | wine "C:\\$name\\bin\\quillmarsh-view.exe" --video none --plugin workbench --script - >"$work/out"
grep -q 'Hello from the workbench!' "$work/out" || { cat "$work/out"; exit 1; }

launcher=()
command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
cmake -G Ninja -S "$source/examples/embedding" -B "$work/build" -DCMAKE_TOOLCHAIN_FILE="$toolchain" \
  -Dquillmarsh_ROOT="$installed" -DCMAKE_FIND_ROOT_PATH_MODE_PACKAGE=BOTH "${launcher[@]}" >>"$work/log"
cmake --build "$work/build" --target small-host greeter >>"$work/log"
cp "$work/build/small-host.exe" "$work/build/greeter.dll" "$installed/bin"
wine "C:\\$name\\bin\\small-host.exe" "C:\\$name\\bin\\greeter.dll" | tr -d '\r' >"$work/out"
printf 'Hello from frame %d\n' 1 2 3 | diff - "$work/out"
