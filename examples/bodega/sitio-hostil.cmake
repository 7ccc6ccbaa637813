# SPDX-License-Identifier: MIT
# Runs the demo on a site file that is wrong: it must end with a failing status
# and say, on one line, the file, the place in it and what is wrong there.
#   cmake -DBODEGA=... -DARCHIVO=... -DESPERADO=... -P sitio-hostil.cmake
execute_process(COMMAND ${BODEGA} --sitio ${ARCHIVO} RESULT_VARIABLE estado ERROR_VARIABLE dicho OUTPUT_QUIET)
string(REGEX REPLACE "QStandardPaths: [^\n]*\n" "" dicho "${dicho}")
if(estado EQUAL 0 OR NOT dicho STREQUAL "${ARCHIVO}: ${ESPERADO}\n")
    message(FATAL_ERROR "status ${estado}, said: ${dicho}")
endif()
