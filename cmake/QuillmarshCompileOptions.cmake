# Compile and link options for everything that this repository builds. Projects that use the library get none of them.

# The relative path from the build to the sources: a compiler cache that several checkouts share uses relative names.
file(RELATIVE_PATH quillmarsh_way_to_sources "${PROJECT_BINARY_DIR}" "${PROJECT_SOURCE_DIR}/")

add_library(quillmarsh-options INTERFACE)
target_compile_features(quillmarsh-options INTERFACE cxx_std_20)
target_compile_options(quillmarsh-options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor
  # The same as GCC's default for C++.
  $<$<CXX_COMPILER_ID:Clang>:-Wno-sign-conversion>
  # Results are the same to the last bit in every build; source locations are relative to the repository root.
  -ffp-contract=off
  "-fmacro-prefix-map=${PROJECT_SOURCE_DIR}/="
  "$<$<BOOL:${quillmarsh_way_to_sources}>:-fmacro-prefix-map=${quillmarsh_way_to_sources}=>")
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # At -O3 this compiler wrongly warns of overlaps in its own std::string.
  target_compile_options(quillmarsh-options INTERFACE $<$<CONFIG:Release>:-Wno-restrict>)
endif()
if(NOT WIN32)
  # A unique symbol would keep a plug-in loaded that has a copy of it.
  target_compile_options(quillmarsh-options INTERFACE $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)
endif()
if(QUILLMARSH_WERROR)
  target_compile_options(quillmarsh-options INTERFACE -Werror)
endif()
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  target_compile_options(quillmarsh-options INTERFACE -msse2 -mfpmath=sse)
endif()
if(QUILLMARSH_SANITIZE)
  # For all targets of this build, because instrumented and plain code do not mix.
  add_compile_options(-fsanitize=${QUILLMARSH_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${QUILLMARSH_SANITIZE})
endif()
if(MINGW)
  # Keeps the time of linking out of the programs.
  add_link_options(-Wl,--no-insert-timestamp)
endif()

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
