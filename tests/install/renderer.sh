#!/usr/bin/env bash
# Follows docs/writing-a-renderer.md with the installed library, and looks at the picture.
# usage: renderer.sh SOURCE_DIR BUILD_DIR WORK_DIR CXX
set -euo pipefail
source=$1 build=$2 work=$3 cxx=$4
rm -rf "$work"
mkdir -p "$work"
cmake --install "$build" --prefix "$work/prefix" >"$work/log"
cp -R "$work/prefix/share/doc/quillmarsh/plugins/video_null" "$work/my_renderer"
cd "$work/my_renderer"

# The blocks of the page, in their order: each changes a file or adds to one.
python3 - "$work/prefix/share/doc/quillmarsh/docs/writing-a-renderer.md" <<'END'
import pathlib
import re
import subprocess
import sys

blocks = re.findall(r"^```(\w+)\n(.*?)^```", pathlib.Path(sys.argv[1]).read_text(), re.M | re.S)
pathlib.Path("CMakeLists.txt").write_text("".join(text for kind, text in blocks if kind == "cmake"))
for kind, text in blocks:
    if kind == "diff":
        subprocess.run(["patch", "-p1", "--fuzz=0"], input=text, text=True, check=True, stdout=subprocess.DEVNULL)
    elif kind == "cpp":
        pathlib.Path("rectangle.cpp").write_text(text)
END

launcher=()
command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
cmake -G Ninja -B build -DCMAKE_CXX_COMPILER="$cxx" "${launcher[@]}" -DCMAKE_PREFIX_PATH="$work/prefix" >>"$work/log"
cmake --build build >>"$work/log"
printf 'var screenshot.format BMP\nvar screenshot.folder %s\nscreenshot -imm\n' "$work/" >"$work/shot.txt"
"$work/prefix/bin/quillmarsh-host" --headless 320x240 --plugin "$PWD/build/rectangle.so" \
  --video "$PWD/build/my_renderer.so" --script "$work/shot.txt" --frames 3 >"$work/out" 2>&1 ||
  { cat "$work/out"; exit 1; }

"$work/prefix/bin/qmdp" convert "$work"/screenshot.0000.color.* "$work/picture.bmp" --overwrite >>"$work/log"
python3 - "$work/picture.bmp" <<'END'
import struct
import sys

data = open(sys.argv[1], "rb").read()
begin, = struct.unpack_from("<I", data, 10)
width, height = struct.unpack_from("<ii", data, 18)
bytes_per_pixel = struct.unpack_from("<H", data, 28)[0] // 8
row_size = (width * bytes_per_pixel + 3) // 4 * 4


def pixel(x, y):
    row = height - 1 - y if height > 0 else y
    at = begin + row * row_size + x * bytes_per_pixel
    return tuple(data[at:at + 3])[::-1]


blue, orange = (0, 0, 128), (255, 160, 0)
seen = {place: pixel(*place) for place in [(40, 30), (159, 109), (39, 30), (160, 109), (40, 29), (159, 110)]}
assert (width, abs(height)) == (320, 240), (width, height)
assert list(seen.values()) == [orange, orange, blue, blue, blue, blue], seen
END
