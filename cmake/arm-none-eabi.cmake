# Windows CE on ARM: Debian's bare-metal compiler, set to the device's ABI. What makes Windows CE images of
# its ELF files is in platform/device.
set(CMAKE_SYSTEM_NAME Generic)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)

set(CMAKE_C_COMPILER arm-none-eabi-gcc)
set(CMAKE_CXX_COMPILER arm-none-eabi-g++)
set(CMAKE_ASM_COMPILER arm-none-eabi-gcc)

# The oldest device has an ARMv4T. 16-bit wide characters, plain char that is signed and enumerations of at
# least the size of int are what the system's functions expect.
set(abi "-march=armv4t -marm -mfloat-abi=soft -fshort-wchar -fsigned-char -fno-short-enums")
set(CMAKE_C_FLAGS_INIT "${abi}")
set(CMAKE_CXX_FLAGS_INIT "${abi} -fno-threadsafe-statics")
set(CMAKE_ASM_FLAGS_INIT "-march=armv4t")
