# Install rules: a relocatable package with its CMake and pkg-config descriptions. Its components are quillmarsh-runtime,
# quillmarsh-development and quillmarsh-documentation.
include(CMakePackageConfigHelpers)

set(quillmarsh_cmake_dir "${CMAKE_INSTALL_LIBDIR}/cmake/quillmarsh")

install(TARGETS quillmarsh quillmarsh-host-library EXPORT quillmarshTargets
  RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT quillmarsh-runtime
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT quillmarsh-runtime NAMELINK_COMPONENT quillmarsh-development
  ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT quillmarsh-development
  INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
install(DIRECTORY "${PROJECT_SOURCE_DIR}/include/quillmarsh" "${PROJECT_BINARY_DIR}/include/quillmarsh"
  DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" COMPONENT quillmarsh-development
  FILES_MATCHING PATTERN "*.h" PATTERN "platform/${quillmarsh_other_system}" EXCLUDE)
install(EXPORT quillmarshTargets NAMESPACE quillmarsh:: DESTINATION "${quillmarsh_cmake_dir}"
  COMPONENT quillmarsh-development)

install(DIRECTORY "${PROJECT_SOURCE_DIR}/data/" DESTINATION "${quillmarsh_data_dir}" COMPONENT quillmarsh-runtime)

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
  "${PROJECT_SOURCE_DIR}/cmake/quillmarsh-plugin.map"
  DESTINATION "${quillmarsh_cmake_dir}" COMPONENT quillmarsh-development)

# The pkg-config files compute their prefix, so that the installed tree can be moved.
file(RELATIVE_PATH quillmarsh_pc_prefix "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
string(REGEX REPLACE "/$" "" quillmarsh_pc_prefix "${quillmarsh_pc_prefix}")
foreach(module quillmarsh quillmarsh-host)
  configure_file("${PROJECT_SOURCE_DIR}/cmake/${module}.pc.in" "${PROJECT_BINARY_DIR}/cmake/${module}.pc" @ONLY)
  install(FILES "${PROJECT_BINARY_DIR}/cmake/${module}.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig"
    COMPONENT quillmarsh-development)
endforeach()

if(NOT WIN32)
  # GDB loads a script from the library's full path below its own script folder. That path is known at installation.
  set(quillmarsh_gdb_dir
    "\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_DATADIR}/gdb/auto-load\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}")
  install(CODE "file(INSTALL \"${PROJECT_SOURCE_DIR}/debugger/gdb_printers.py\"
    DESTINATION \"${quillmarsh_gdb_dir}\" RENAME $<TARGET_FILE_NAME:quillmarsh>-gdb.py)"
    COMPONENT quillmarsh-development)
endif()

# Documents, in the folders that they have in the sources, so that the links between them lead somewhere.
if(WIN32)
  set(quillmarsh_documents .)
else()
  set(quillmarsh_documents "${CMAKE_INSTALL_DOCDIR}")
endif()
install(FILES "${PROJECT_SOURCE_DIR}/LICENSE" "${PROJECT_SOURCE_DIR}/README.md" "${PROJECT_SOURCE_DIR}/CHANGELOG.md"
  DESTINATION "${quillmarsh_documents}" COMPONENT quillmarsh-runtime)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/docs" DESTINATION "${quillmarsh_documents}"
  COMPONENT quillmarsh-documentation FILES_MATCHING PATTERN "*.md" PATTERN "*.json" PATTERN "*.svg" PATTERN "*.png")
install(DIRECTORY "${PROJECT_SOURCE_DIR}/examples" DESTINATION "${quillmarsh_documents}"
  COMPONENT quillmarsh-documentation)
# The plug-ins from which the guides begin.
install(DIRECTORY "${PROJECT_SOURCE_DIR}/plugins/template" "${PROJECT_SOURCE_DIR}/plugins/video_null"
  DESTINATION "${quillmarsh_documents}/plugins" COMPONENT quillmarsh-documentation)

if(MINGW AND PROJECT_IS_TOP_LEVEL)
  include(QuillmarshWindowsPackage)
endif()
