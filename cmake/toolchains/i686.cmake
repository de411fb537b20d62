# 32-bit x86, by Debian's compiler (g++-i686-linux-gnu); its programs run on x86-64 too (libc6-i386, lib32stdc++6).
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_C_COMPILER i686-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER i686-linux-gnu-g++)
# As shared libraries, the sanitizers would be missing where the programs run.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static-libasan -static-libubsan")
