# Linux on ARM: for the programs that load and test Windows CE images. Its calling convention is the device's.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)

set(CMAKE_C_COMPILER arm-linux-gnueabi-gcc)
set(CMAKE_CXX_COMPILER arm-linux-gnueabi-g++)

set(CMAKE_FIND_ROOT_PATH /usr/arm-linux-gnueabi)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)

# Linked statically, programs run under the emulator without a folder of ARM libraries.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
# The oldest processor that this compiler's libraries run on, and the one that the emulator is told to be.
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm;-cpu;arm926)
