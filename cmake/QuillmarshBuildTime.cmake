# The time that a build tells as its own. The same sources tell the same time, whenever and wherever they are built:
# SOURCE_DATE_EPOCH where the environment has it; otherwise the last commit of the calling project; in an archive of
# this repository, the commit that the archive was made from. Without all of these it is the first time that a zip can
# hold.

# quillmarsh_build_epoch(VARIABLE): that time, in seconds since 1970.
function(quillmarsh_build_epoch variable)
  set(epoch "$ENV{SOURCE_DATE_EPOCH}")
  if(NOT epoch MATCHES "^[0-9]+$")
    find_program(QUILLMARSH_GIT git)
    mark_as_advanced(QUILLMARSH_GIT)
    if(QUILLMARSH_GIT)
      execute_process(COMMAND "${QUILLMARSH_GIT}" log -1 --format=%ct -- .
        WORKING_DIRECTORY "${PROJECT_SOURCE_DIR}"
        OUTPUT_VARIABLE epoch OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    endif()
  endif()
  set(archived "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/commit_time.txt")
  if(NOT epoch MATCHES "^[0-9]+$" AND EXISTS "${archived}")
    file(STRINGS "${archived}" epoch LIMIT_COUNT 1)
  endif()
  if(NOT epoch MATCHES "^[0-9]+$")
    set(epoch 315532800)
  endif()
  set(${variable} ${epoch} PARENT_SCOPE)
endfunction()

# quillmarsh_build_timestamp(VARIABLE): that time as a text, "2026-01-31 23:59:59 UTC".
function(quillmarsh_build_timestamp variable)
  quillmarsh_build_epoch(epoch)
  set(before "$ENV{SOURCE_DATE_EPOCH}")
  set(ENV{SOURCE_DATE_EPOCH} ${epoch})
  string(TIMESTAMP timestamp "%Y-%m-%d %H:%M:%S UTC" UTC)
  set(ENV{SOURCE_DATE_EPOCH} "${before}")
  set(${variable} "${timestamp}" PARENT_SCOPE)
endfunction()

# quillmarsh_stamp_plugin(NAME): the sources of the plug-in see that text as QUILLMARSH_PLUGIN_TIMESTAMP, for the
# PluginInfo of their descriptors.
function(quillmarsh_stamp_plugin name)
  quillmarsh_build_timestamp(timestamp)
  target_compile_definitions(${name} PRIVATE "QUILLMARSH_PLUGIN_TIMESTAMP=\"${timestamp}\"")
endfunction()
