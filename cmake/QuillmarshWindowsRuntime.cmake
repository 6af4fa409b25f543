# The compiler's run-time libraries, beside the programs of the build and in the package. All modules share them, so
# that exceptions can pass from one module to another.
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  set(quillmarsh_unwinder libgcc_s_dw2-1.dll)
else()
  set(quillmarsh_unwinder libgcc_s_seh-1.dll)
endif()
# Strips the debug information, which is nine tenths of their size.
set(quillmarsh_runtime_directory "${PROJECT_BINARY_DIR}/runtime")
file(MAKE_DIRECTORY "${quillmarsh_runtime_directory}")
set(quillmarsh_runtime_libraries)
foreach(name libstdc++-6.dll libwinpthread-1.dll ${quillmarsh_unwinder})
  execute_process(COMMAND "${CMAKE_CXX_COMPILER}" "-print-file-name=${name}"
    OUTPUT_VARIABLE file OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(NOT EXISTS "${file}")
    message(FATAL_ERROR "The compiler does not provide ${name}.")
  endif()
  execute_process(COMMAND "${CMAKE_STRIP}" -o "${quillmarsh_runtime_directory}/${name}" "${file}"
    COMMAND_ERROR_IS_FATAL ANY)
  list(APPEND quillmarsh_runtime_libraries "${quillmarsh_runtime_directory}/${name}")
endforeach()
if(CMAKE_RUNTIME_OUTPUT_DIRECTORY)
  file(COPY ${quillmarsh_runtime_libraries} DESTINATION "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
endif()
if(QUILLMARSH_INSTALL)
  install(FILES ${quillmarsh_runtime_libraries} DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT quillmarsh-runtime)
endif()
