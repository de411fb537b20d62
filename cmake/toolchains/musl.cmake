# x86-64 with musl. Its static programs run on any x86-64.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(musl_target x86_64-linux-musl)
include(${CMAKE_CURRENT_LIST_DIR}/musl_compiler.cmake)
