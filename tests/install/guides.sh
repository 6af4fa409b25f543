#!/usr/bin/env bash
# Follows the guides with the installed library, outside the sources.
# usage: guides.sh SOURCE_DIR BUILD_DIR WORK_DIR CXX
set -euo pipefail
source=$1 build=$2 work=$3
rm -rf "$work"
mkdir -p "$work/home"
cmake --install "$build" --prefix "$work/prefix" >"$work/install.log"

unset "${!XDG_@}" QUILLMARSH_PLUGIN_PATH
export HOME=$work/home CXX=$4 CMAKE_GENERATOR=Ninja PATH=$work/prefix/bin:$PATH
command -v ccache >/dev/null && export CMAKE_CXX_COMPILER_LAUNCHER=ccache
PKG_CONFIG_PATH=$(dirname "$(find "$work/prefix" -name quillmarsh.pc)")
export PKG_CONFIG_PATH
# Programs that were linked by pkg-config have no path to the library.
LD_LIBRARY_PATH=$(pkg-config --variable=libdir quillmarsh)
export LD_LIBRARY_PATH

# The installed documents have what the guides start from.
cd "$work/prefix/share/doc/quillmarsh"
for page in writing-a-plugin writing-a-gui writing-a-driver using-the-library; do
  python3 "$source/tests/install/follow.py" "docs/$page.md" "$source" "$work/prefix"
done

# With headers of the other build type, the page's plug-in is one that the host refuses.
config=$work/prefix/include/quillmarsh/platform/config.h
sed -i '/^#define QUILLMARSH_ASSERTIONS/ y/01/10/' "$config"
cmake --build "$HOME/lantern/build" >>"$work/install.log"
! quillmarsh-host --plugin "$HOME/lantern/build/lantern.so" --frames 1 >"$work/refused" 2>&1
grep -q "it was built with version" "$work/refused"
