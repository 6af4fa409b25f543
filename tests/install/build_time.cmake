# Checks where the time of a build comes from: cmake -DSOURCE=... -DWORK=... -P build_time.cmake
function(expect what found wanted)
  if(NOT found STREQUAL wanted)
    message(SEND_ERROR "${what}: ${found} instead of ${wanted}")
  endif()
endfunction()

file(REMOVE_RECURSE "${WORK}")
file(COPY "${SOURCE}/cmake/QuillmarshBuildTime.cmake" DESTINATION "${WORK}/cmake")
include("${WORK}/cmake/QuillmarshBuildTime.cmake")
set(PROJECT_SOURCE_DIR "${WORK}/project")
file(WRITE "${PROJECT_SOURCE_DIR}/main.cpp" "")
unset(ENV{SOURCE_DATE_EPOCH})
# The folders above must not matter.
set(ENV{GIT_CEILING_DIRECTORIES} "${WORK}")

quillmarsh_build_timestamp(found)
expect("without git" "${found}" "1980-01-01 00:00:00 UTC")

file(WRITE "${WORK}/cmake/commit_time.txt" "1000000000\n")
quillmarsh_build_timestamp(found)
expect("archive" "${found}" "2001-09-09 01:46:40 UTC")

find_program(GIT git)
if(GIT)
  set(ENV{GIT_COMMITTER_DATE} "1200000000 +0500")
  foreach(arguments "init;-q" "add;." "-c;user.name=a;-c;user.email=a;commit;-q;-m;first")
    execute_process(COMMAND "${GIT}" ${arguments} WORKING_DIRECTORY "${PROJECT_SOURCE_DIR}" COMMAND_ERROR_IS_FATAL ANY)
  endforeach()
  quillmarsh_build_timestamp(found)
  expect("commit" "${found}" "2008-01-10 21:20:00 UTC")
endif()

set(ENV{SOURCE_DATE_EPOCH} 1)
quillmarsh_build_timestamp(found)
expect("environment" "${found}" "1970-01-01 00:00:01 UTC")
