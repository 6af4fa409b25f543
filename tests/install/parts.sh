#!/usr/bin/env bash
# Installs each component by itself, and looks at what is in it.
# usage: parts.sh BUILD_DIR WORK_DIR CXX
set -euo pipefail
build=$1 work=$2 cxx=$3
rm -rf "$work"
mkdir -p "$work"
fail() { printf '%s\n' "$*"; exit 1; }
list() { (cd "$work/$1" && find . ! -type d | sort); }

cmake --install "$build" --prefix "$work/whole" >"$work/install.log"
for part in runtime development documentation; do
  cmake --install "$build" --component "quillmarsh-$part" --prefix "$work/$part" >>"$work/install.log"
done
# The debugger's script stands below a folder that contains the prefix.
diff <(list whole | sed 's|/whole/|/PREFIX/|') \
  <({ list runtime; list development | sed 's|/development/|/PREFIX/|'; list documentation; } | sort) ||
  fail "The components together are not the whole."

others=$(list runtime | grep -E '\.(h|a|cmake|pc|cpp)$|/libquillmarsh\.so$' || true)
[ -z "$others" ] || fail "Files for development are in the run time:" $others
others=$(list documentation | grep -v '^./share/doc/quillmarsh/' || true)
[ -z "$others" ] || fail "Not among the documents:" $others
for document in LICENSE README.md CHANGELOG.md; do
  [ -s "$work/runtime/share/doc/quillmarsh/$document" ] || fail "The run time lacks $document."
done

# A program finds the library's data from there.
"$cxx" -std=c++20 -I"$work/development/include" -x c++ - -o "$work/data" \
  -x none "$(find "$work/runtime" -name 'libquillmarsh.so.*.*.*')" <<'END'
#include <quillmarsh/basetools/filesystem.h>
#include <iostream>
int main() { std::cout << quillmarsh::file_system::FindDataFile("gui_std_tiletexture_set0.tif"); }
END
found=$(LD_LIBRARY_PATH=$(dirname "$(find "$work/runtime" -name 'libquillmarsh.so.*.*.*')") "$work/data")
[ "$found" = "$work/runtime/share/quillmarsh/gui_std_tiletexture_set0.tif" ] || fail "The tile set is at '$found'."

# The run time is enough to run.
echo greet | "$work/runtime/bin/quillmarsh-host" --video none --no-start-script >"$work/out"
grep -q 'Hello from the workbench!' "$work/out" || fail "$(cat "$work/out")"
"$work/runtime/bin/qmdp" --version >/dev/null
echo greet | "$work/runtime/bin/quillmarsh-view" --video none --no-start-script --plugin workbench --script - >"$work/out"
grep -q 'Hello from the workbench!' "$work/out" || fail "$(cat "$work/out")"

# The data set is there, and no file of it is damaged.
samples=("$work"/runtime/share/quillmarsh/samples/*.{png,jpg,bmp,tif,qmdp.*} "$work"/runtime/share/quillmarsh/samples/formats/*)
[ ${#samples[@]} -ge 20 ] || fail "Samples are missing: ${samples[*]}"
"$work/runtime/bin/qmdp" verify "${samples[@]}" >"$work/out" || fail "$(cat "$work/out")"

# A desktop finds the program, its icon, and the types of files that it opens.
share=$work/runtime/share
entry=$share/applications/quillmarsh-view.desktop
read -r program _ < <(sed -n 's/^Exec=//p' "$entry")
[ -x "$work/runtime/bin/$program" ] || fail "The desktop entry starts '$program'."
[ -s "$share/icons/hicolor/scalable/apps/$(sed -n 's/^Icon=//p' "$entry").svg" ] || fail "The icon is missing."
types=$(sed -n 's/^MimeType=//p' "$entry" | tr ';' '\n' | grep quillmarsh | sort)
diff <(sed -n 's/.*mime-type type="\([^"]*\)".*/\1/p' "$share/mime/packages/quillmarsh-view.xml" | sort) - <<<"$types" ||
  fail "The desktop entry and the description of types have different types."
for file in "$share"/metainfo/*.xml "$share"/mime/packages/*.xml "$share"/icons/hicolor/scalable/apps/*.svg; do
  ! command -v xmllint >/dev/null || xmllint --noout "$file" || fail "$file is no XML."
done
for program in "$work"/runtime/bin/quillmarsh-*; do
  name=$(basename "$program")
  [ -s "$share/man/man1/$name.1" ] || fail "$name has no manual page."
  bash -c ". '$share/bash-completion/completions/$name' && complete -p $name" >/dev/null || fail "$name completes nothing."
done

# Programs refuse a library of the other build type at once. This one says that it is of that type.
"$cxx" -std=c++20 -shared -fPIC -I"$work/development/include" -x c++ - -o "$work/other.so" <<'END'
#include <quillmarsh/basetools/libraryinfo.h>
quillmarsh::library_info::LibraryVersion quillmarsh::library_info::GetLibraryVersion()
{
    return {QUILLMARSH_VERSION_MAJOR, QUILLMARSH_VERSION_MINOR, QUILLMARSH_VERSION_BUILD, !QUILLMARSH_ASSERTIONS};
}
END
for program in 'quillmarsh-host --frames 1' 'qmdp --version'; do
  # shellcheck disable=SC2086
  ! LD_PRELOAD=$work/other.so "$work/runtime/bin/"$program >"$work/out" 2>&1 ||
    fail "$program runs with a library of the other build type."
  grep -q 'compiled for version .* of the library, and runs with' "$work/out" || fail "$program: $(cat "$work/out")"
done

# Programs find the library by a relative path, and nothing else has a path.
library=$(find "$work/runtime" -name 'libquillmarsh.so.*.*.*')
for file in "$work"/runtime/bin/*; do
  readelf -d "$file" | grep -qE 'RUNPATH.*\[\$ORIGIN/\.\./[^:]*\]' || fail "$file has no path to the library."
done
plugins=("$(dirname "$library")"/quillmarsh/plugins/*.so)
[ ${#plugins[@]} -ge 7 ] || fail "Plug-ins are missing: ${plugins[*]}"
for file in "$library" "${plugins[@]}"; do
  ! readelf -d "$file" | grep -E 'R(UN)?PATH' || fail "$file has a path."
  # The dynamic loader never unloads a library of which it uses such a symbol.
  ! nm -DC --defined-only "$file" | grep -E ' u ' || fail "$file has unique symbols."
done
for file in "${plugins[@]}"; do
  symbols=$(nm -D --defined-only "$file" | cut -d' ' -f2-)
  [ "$symbols" = 'T QuillmarshGetPluginLibrary' ] || fail "$file exports more than its entry point: $symbols"
done
