# Cross compiler for the Windows builds; the preset says the machine: x86_64 or i686.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES QUILLMOOR_MACHINE)
set(CMAKE_SYSTEM_PROCESSOR ${QUILLMOOR_MACHINE})
set(prefix ${QUILLMOOR_MACHINE}-w64-mingw32)
# The posix flavour has C++ threads, which the test framework wants.
set(CMAKE_C_COMPILER ${prefix}-gcc-posix)
set(CMAKE_CXX_COMPILER ${prefix}-g++-posix)
set(CMAKE_RC_COMPILER ${prefix}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${prefix})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
