# What both targets have in common; `triple` and CMAKE_SYSTEM_PROCESSOR are set by who includes this.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${triple}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triple}-g++-posix)
set(CMAKE_RC_COMPILER ${triple}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${triple})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)

# Runs the tests; scripts/test says which folder it keeps its registry and drives in.
find_program(QUILLMARSH_WINE wine)
if(QUILLMARSH_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR "${QUILLMARSH_WINE}")
endif()
