# Run by CPack on the files it is about to package: the manual page goes in
# compressed, as Debian keeps them, without a time stamp so builds repeat.
file(GLOB_RECURSE pages "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*/share/man/man*/*.[1-9]")
foreach(page IN LISTS pages)
  execute_process(COMMAND gzip -9n "${page}" COMMAND_ERROR_IS_FATAL ANY)
endforeach()
