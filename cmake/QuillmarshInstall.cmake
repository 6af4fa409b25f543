# Install rules: a relocatable package with its CMake and pkg-config descriptions.
include(CMakePackageConfigHelpers)

set(quillmarsh_cmake_dir "${CMAKE_INSTALL_LIBDIR}/cmake/quillmarsh")

install(TARGETS quillmarsh quillmarsh-host-library EXPORT quillmarshTargets
  RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}"
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
  ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
  INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
install(DIRECTORY "${PROJECT_SOURCE_DIR}/include/quillmarsh" "${PROJECT_BINARY_DIR}/include/quillmarsh"
  DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}"
  FILES_MATCHING PATTERN "*.h" PATTERN "platform/${quillmarsh_other_system}" EXCLUDE)
install(EXPORT quillmarshTargets NAMESPACE quillmarsh:: DESTINATION "${quillmarsh_cmake_dir}")

configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/quillmarshConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/cmake/quillmarshConfig.cmake" INSTALL_DESTINATION "${quillmarsh_cmake_dir}"
  PATH_VARS quillmarsh_plugin_dir)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/cmake/quillmarshConfigVersion.cmake"
  COMPATIBILITY SameMinorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/cmake/quillmarshConfig.cmake"
  "${PROJECT_BINARY_DIR}/cmake/quillmarshConfigVersion.cmake"
  "${PROJECT_SOURCE_DIR}/cmake/QuillmarshAddPlugin.cmake"
  "${PROJECT_SOURCE_DIR}/cmake/QuillmarshBuildTime.cmake"
  DESTINATION "${quillmarsh_cmake_dir}")

# The pkg-config files compute their prefix, so that the installed tree can be moved.
file(RELATIVE_PATH quillmarsh_pc_prefix "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
string(REGEX REPLACE "/$" "" quillmarsh_pc_prefix "${quillmarsh_pc_prefix}")
foreach(module quillmarsh quillmarsh-host)
  configure_file("${PROJECT_SOURCE_DIR}/cmake/${module}.pc.in" "${PROJECT_BINARY_DIR}/cmake/${module}.pc" @ONLY)
  install(FILES "${PROJECT_BINARY_DIR}/cmake/${module}.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
endforeach()

if(NOT WIN32)
  # GDB loads a script from the library's full path below its own script folder. That path is known at installation.
  set(quillmarsh_gdb_dir
    "\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_DATADIR}/gdb/auto-load\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}")
  install(CODE "file(INSTALL \"${PROJECT_SOURCE_DIR}/debugger/gdb_printers.py\"
    DESTINATION \"${quillmarsh_gdb_dir}\" RENAME $<TARGET_FILE_NAME:quillmarsh>-gdb.py)")
endif()

if(MINGW AND PROJECT_IS_TOP_LEVEL)
  include(QuillmarshWindowsPackage)
endif()
