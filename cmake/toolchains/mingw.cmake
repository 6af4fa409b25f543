# Common part of both targets. The including file sets `triple` and CMAKE_SYSTEM_PROCESSOR.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${triple}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triple}-g++-posix)
set(CMAKE_RC_COMPILER ${triple}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${triple})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)

# Runs the tests; scripts/test sets the folder of its registry and drives.
find_program(QUILLMARSH_WINE wine)
if(QUILLMARSH_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR "${QUILLMARSH_WINE}")
endif()
