# 32-bit ARM with floating point, by Debian's compiler (g++-arm-linux-gnueabihf); its programs run in QEMU.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(CMAKE_C_COMPILER arm-linux-gnueabihf-gcc)
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm)
set(CAMERA_OPTIMISATION -Os)
