# SPDX-License-Identifier: MIT
# cmake -DLUPDATE=... -DSOURCE_DIR=... -DCATALOGUE=name.ts -DFOLDERS="a b" -DWORK_DIR=... -P CheckTranslation.cmake
#
# Brings a copy of the catalogue up to date with the sources and fails when a text is then without a finished
# translation, or when the copy is no longer the tracked catalogue, which is not touched.
separate_arguments(folders UNIX_COMMAND "${FOLDERS}")
file(MAKE_DIRECTORY "${WORK_DIR}")
set(copy "${WORK_DIR}/${CATALOGUE}")
configure_file("${SOURCE_DIR}/translations/${CATALOGUE}" "${copy}" COPYONLY)
execute_process(
    COMMAND "${LUPDATE}" -locations none -no-obsolete -I . ${folders} -ts "${copy}"
    WORKING_DIRECTORY "${SOURCE_DIR}"
    RESULT_VARIABLE result
    OUTPUT_VARIABLE output
    ERROR_VARIABLE output)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "lupdate failed: ${output}")
endif()

file(READ "${copy}" text)
string(REPLACE ";" "," text "${text}")
string(REGEX MATCHALL "<message[ >]" messages "${text}")
list(LENGTH messages total)
if(total EQUAL 0)
    message(FATAL_ERROR "${CATALOGUE}: no text found in ${FOLDERS}")
endif()
# Behind a source text may stand comments, then its translation.
string(REGEX MATCHALL
    "<source>[^<]*</source>[ \n]*(<[a-z]*comment>[^<]*</[a-z]*comment>[ \n]*)*<translation( type=\"unfinished\"[ />]|></translation>|/>)"
    open "${text}")
list(LENGTH open count)
foreach(entry IN LISTS open)
    string(REGEX REPLACE "<source>([^<]*)</source>.*" "\\1" entry "${entry}")
    message("not translated: ${entry}")
endforeach()
if(count GREATER 0)
    message(FATAL_ERROR "${CATALOGUE}: ${count} of ${total} texts are not translated; run update-translations")
endif()
file(SHA256 "${copy}" updated)
file(SHA256 "${SOURCE_DIR}/translations/${CATALOGUE}" tracked)
if(NOT updated STREQUAL tracked)
    message(FATAL_ERROR "${CATALOGUE} is not as the sources have it; run update-translations")
endif()
message("${CATALOGUE}: all ${total} texts are translated")
