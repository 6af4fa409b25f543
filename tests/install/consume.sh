#!/usr/bin/env bash
# Installs the build, moves the installed tree, and builds the example project against it as its users would.
# usage: consume.sh find_package|pkg_config|subproject SOURCE_DIR BUILD_DIR WORK_DIR CXX
set -euo pipefail
way=$1 source=$2 build=$3 work=$4 cxx=$5
rm -rf "$work"
mkdir -p "$work"
cp -R "$source/examples/embedding" "$work/project"

configure_and_build() {
  local launcher=()
  command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
  cmake -G Ninja -S "$work/project" -B "$work/build" -DCMAKE_CXX_COMPILER="$cxx" "${launcher[@]}" "$@" >"$work/log"
  cmake --build "$work/build" --target small-host greeter >>"$work/log"
}

install_and_move() {
  cmake --install "$build" --prefix "$work/first" >"$work/install.log"
  mv "$work/first" "$work/prefix"
  ! grep -rIlF -e "$build" -e "$work/first" "$work/prefix" || { echo "The installed files contain the path of the build."; exit 1; }
}

case $way in
  find_package)
    install_and_move
    configure_and_build -DCMAKE_PREFIX_PATH="$work/prefix"
    host=$work/build/small-host plugin=$work/build/greeter.so
    ;;
  pkg_config)
    install_and_move
    PKG_CONFIG_PATH=$(dirname "$(find "$work/prefix" -name quillmarsh.pc)")
    export PKG_CONFIG_PATH
    mkdir "$work/build"
    # shellcheck disable=SC2046
    "$cxx" -std=c++20 "$work/project/small_host.cpp" -o "$work/build/small-host" \
      $(pkg-config --cflags --libs quillmarsh-host)
    # shellcheck disable=SC2046
    "$cxx" -std=c++20 -fPIC -shared "$work/project/greeter.cpp" -o "$work/build/greeter.so" \
      $(pkg-config --cflags --libs quillmarsh)
    LD_LIBRARY_PATH=$(pkg-config --variable=libdir quillmarsh)
    export LD_LIBRARY_PATH
    host=$work/build/small-host plugin=$work/build/greeter.so
    ;;
  subproject)
    configure_and_build -DQUILLMARSH_SOURCE_DIR="$source" -DCMAKE_CXX_FLAGS=-O0 -DQUILLMARSH_PRECOMPILE_HEADERS=ON
    host=$work/build/small-host plugin=$work/build/greeter.so
    ;;
esac

"$host" "$plugin" >"$work/out"
printf 'Hello from frame %d\n' 1 2 3 | diff - "$work/out"

# The library has the right name, and exports only its own symbols.
library=$(ldd "$host" | sed -n 's/^.*libquillmarsh\.so\.[0-9.]* => \([^ ]*\).*/\1/p')
readelf -d "$library" | grep -q 'SONAME.*\[libquillmarsh\.so\.[0-9]*\.[0-9]*\]'
others=$(nm -DC --defined-only "$library" | cut -d' ' -f3- | grep -vE 'quillmarsh|^operator new(\[\])?\(unsigned long(, std::align_val_t)?\)' || true)
[ -z "$others" ] || { printf 'The library exports symbols that are not its own:\n%s\n' "$others"; exit 1; }
