# Strips a program after its link; what a debugger needs goes to .debug/PROGRAM.debug beside it, where gdb looks.
# Not in place, because zig's objcopy needs another file to write.
function(split_debug_file program)
  set(file $<TARGET_FILE:${program}>)
  set(debug $<TARGET_FILE_DIR:${program}>/.debug/${program}.debug)
  add_custom_command(TARGET ${program} POST_BUILD VERBATIM
    COMMAND ${CMAKE_COMMAND} -E make_directory $<TARGET_FILE_DIR:${program}>/.debug
    COMMAND ${CMAKE_OBJCOPY} --only-keep-debug ${file} ${debug}
    COMMAND ${CMAKE_OBJCOPY} --strip-all --add-gnu-debuglink=${debug} ${file} ${file}.stripped
    COMMAND ${CMAKE_COMMAND} -E rename ${file}.stripped ${file})
endfunction()
