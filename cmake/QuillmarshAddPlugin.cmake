# quillmarsh_add_plugin(NAME SOURCE...)
#
# Adds a plug-in library: a loadable module NAME (NAME.so, NAME.dll) that links against quillmarsh::quillmarsh and
# exports only its entry point. Works in this tree, in a project that contains it, and with the installed package.
function(quillmarsh_add_plugin name)
  add_library(${name} MODULE ${ARGN})
  target_link_libraries(${name} PRIVATE quillmarsh::quillmarsh)
  target_compile_features(${name} PRIVATE cxx_std_20)
  set_target_properties(${name} PROPERTIES
    PREFIX ""
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
  if(NOT WIN32)
    # Also hides the standard library's templates. A symbol that GCC makes unique would keep the plug-in loaded.
    set(map "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/quillmarsh-plugin.map")
    target_link_options(${name} PRIVATE "LINKER:--version-script=${map}")
    set_property(TARGET ${name} APPEND PROPERTY LINK_DEPENDS "${map}")
    target_compile_options(${name} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)
  endif()
endfunction()

# quillmarsh_name_companions(NAME PLUGIN...)
#
# Writes a file beside the plug-in NAME from which the host learns which other plug-ins to load with it, such as
# standard_look and input_desktop. Install it with the plug-in.
function(quillmarsh_name_companions name)
  list(JOIN ARGN "\n" companions)
  file(GENERATE OUTPUT "$<TARGET_FILE_DIR:${name}>/$<TARGET_FILE_BASE_NAME:${name}>.plugins" CONTENT "${companions}\n")
endfunction()
