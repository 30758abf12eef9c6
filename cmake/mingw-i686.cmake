# 32-bit Windows with Debian's mingw-w64. MINGW_THREADS: win32 (what the product is built with) or posix.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR i686)
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES MINGW_THREADS)

set(CMAKE_C_COMPILER i686-w64-mingw32-gcc-${MINGW_THREADS})
set(CMAKE_CXX_COMPILER i686-w64-mingw32-g++-${MINGW_THREADS})
set(CMAKE_RC_COMPILER i686-w64-mingw32-windres)

set(CMAKE_FIND_ROOT_PATH /usr/i686-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)

# Everything beside the system's own DLLs is linked in: the programs run where no compiler is installed.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")

# Runs the tests on the machine that builds them.
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../tools/wine)
