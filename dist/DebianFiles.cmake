# Run by CPack on the files it is about to package, to leave them as Debian's
# own tools do: the manual page compressed, without a time stamp so builds
# repeat, and the binaries, already stripped, without the compiler's notes.
file(GLOB_RECURSE pages "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*/share/man/man*/*.[1-9]")
foreach(page IN LISTS pages)
  execute_process(COMMAND gzip -9n "${page}" COMMAND_ERROR_IS_FATAL ANY)
endforeach()
file(GLOB_RECURSE binaries "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*/bin/*"
     "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*.so")
foreach(binary IN LISTS binaries)
  execute_process(COMMAND objcopy --remove-section=.comment --remove-section=.note "${binary}"
                  COMMAND_ERROR_IS_FATAL ANY)
endforeach()
