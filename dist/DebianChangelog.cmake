# Turns CHANGELOG.md into the Debian changelog of the package, gzipped as
# Debian keeps it: each "## VERSION (YYYY-MM-DD)" section becomes one entry,
# its lines indented, its list items starred.
# cmake -DIN=CHANGELOG.md -DOUT=changelog.gz -DPACKAGE=NAME -DMAINTAINER="NAME <MAIL>"
#       -P DebianChangelog.cmake
file(STRINGS "${IN}" lines)
set(entries "")
set(entry "")
set(trailer "")
foreach(line IN LISTS lines)
  if(line MATCHES "^## ([^ ]+) \\(([0-9-]+)\\)$")
    string(APPEND entries "${entry}${trailer}")
    set(version "${CMAKE_MATCH_1}")
    execute_process(COMMAND date -u -R -d "${CMAKE_MATCH_2} 12:00"
      OUTPUT_VARIABLE date OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    set(entry "${PACKAGE} (${version}) unstable; urgency=medium\n\n")
    set(trailer "\n -- ${MAINTAINER}  ${date}\n\n")
  elseif(NOT version)
    # The title and what stands before the first release are the file's own.
  elseif(line STREQUAL "")
    string(APPEND entry "\n")
  elseif(line MATCHES "^- (.*)$")
    string(APPEND entry "  * ${CMAKE_MATCH_1}\n")
  elseif(line MATCHES "^  (.*)$")
    string(APPEND entry "    ${CMAKE_MATCH_1}\n")
  else()
    string(APPEND entry "  ${line}\n")
  endif()
endforeach()
string(APPEND entries "${entry}${trailer}")
# A blank line before the signature and between entries, never two in a row.
string(REGEX REPLACE "\n\n+" "\n\n" entries "${entries}")
string(REGEX REPLACE "\n+$" "\n" entries "${entries}")
get_filename_component(folder "${OUT}" DIRECTORY)
file(WRITE "${folder}/changelog" "${entries}")
execute_process(COMMAND gzip -9nf "${folder}/changelog" COMMAND_ERROR_IS_FATAL ANY)
