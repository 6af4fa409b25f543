# The zip file for Windows: the installed files, and the licences of everything in it. The target `package` makes it.
# install_licence(NAME FILE...): installs the first of these files that exists. Without one, there is no package.
function(install_licence name)
  foreach(file ${ARGN})
    if(EXISTS "${file}")
      install(FILES "${file}" DESTINATION licences RENAME "${name}" COMPONENT quillmarsh-runtime)
      return()
    endif()
  endforeach()
  install(CODE "message(FATAL_ERROR \"The package needs ${name}, but none of these files exists: ${ARGN}\")"
    COMPONENT quillmarsh-runtime)
endfunction()

set(documents /usr/share/doc)
install_licence(compiler-runtime.txt
  "${documents}/gcc-mingw-w64-${CMAKE_SYSTEM_PROCESSOR}-posix-runtime/copyright"
  "${documents}/gcc-mingw-w64-x86-64-posix-runtime/copyright"
  "${documents}/gcc-mingw-w64-i686-posix-runtime/copyright")
install_licence(system-runtime.txt "${documents}/mingw-w64-common/copyright")
install_licence(vector-library.txt "${documents}/libhwy-dev/copyright")
install_licence(utf8-library.txt "${documents}/libutfcpp-dev/copyright")
install_licence(GPL-3.txt /usr/share/common-licenses/GPL-3)

if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  set(target win32)
else()
  set(target win64)
endif()
set(CPACK_GENERATOR ZIP)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_FILE_NAME "quillmarsh-${PROJECT_VERSION}-${target}")
# The files in the zip file have the time of the sources.
quillmarsh_build_epoch(quillmarsh_package_epoch)
set(CPACK_PROJECT_CONFIG_FILE "${PROJECT_BINARY_DIR}/cmake/package_time.cmake")
file(CONFIGURE OUTPUT "${CPACK_PROJECT_CONFIG_FILE}" CONTENT "set(ENV{SOURCE_DATE_EPOCH} ${quillmarsh_package_epoch})\n")
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/package")
include(CPack)
