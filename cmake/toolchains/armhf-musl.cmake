# 32-bit ARM with floating point, with musl; its programs run in QEMU.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(musl_target arm-linux-musleabihf)
set(zig_cpu -mcpu=cortex_a7)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm)
set(CAMERA_OPTIMISATION -Os)
include(${CMAKE_CURRENT_LIST_DIR}/musl_compiler.cmake)
