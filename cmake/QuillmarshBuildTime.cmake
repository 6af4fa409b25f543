# The time of build that programs show. The same sources always give the same time: SOURCE_DATE_EPOCH from the
# environment, or else the time of the last commit of the calling project; in an archive of this repository, the time of
# the archived commit. Without any of these it is the earliest time that a zip file can store.

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

# quillmarsh_build_timestamp(VARIABLE): that time as a text, such as "2026-01-31 23:59:59 UTC".
function(quillmarsh_build_timestamp variable)
  quillmarsh_build_epoch(epoch)
  set(before "$ENV{SOURCE_DATE_EPOCH}")
  set(ENV{SOURCE_DATE_EPOCH} ${epoch})
  string(TIMESTAMP timestamp "%Y-%m-%d %H:%M:%S UTC" UTC)
  set(ENV{SOURCE_DATE_EPOCH} "${before}")
  set(${variable} "${timestamp}" PARENT_SCOPE)
endfunction()

# quillmarsh_stamp_plugin(NAME): defines QUILLMARSH_PLUGIN_TIMESTAMP as that text in the sources of a plug-in, for the
# PluginInfo of its descriptors.
function(quillmarsh_stamp_plugin name)
  quillmarsh_build_timestamp(timestamp)
  target_compile_definitions(${name} PRIVATE "QUILLMARSH_PLUGIN_TIMESTAMP=\"${timestamp}\"")
endfunction()
