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
endfunction()
