# SPDX-License-Identifier: GPL-3.0-or-later
# Compiles a file with one include, as often as there are headers. ALLOWED has to be found, so that a failure of the
# others is the failure that is meant; of each of FORBIDDEN the compiler has to say that there is no such file.
file(MAKE_DIRECTORY ${WORK_FOLDER})
list(FILTER INCLUDES EXCLUDE REGEX "^$")
list(REMOVE_DUPLICATES INCLUDES)
list(TRANSFORM INCLUDES PREPEND -I OUTPUT_VARIABLE folders)

function(compile header result_name output_name)
    string(MAKE_C_IDENTIFIER "${header}" name)
    set(file ${WORK_FOLDER}/${name}.cpp)
    file(WRITE ${file} "#include <${header}>\n")
    execute_process(
        COMMAND ${COMPILER} -std=c++20 -fPIC -fsyntax-only ${folders} ${file}
        RESULT_VARIABLE result OUTPUT_QUIET ERROR_VARIABLE output)
    set(${result_name} ${result} PARENT_SCOPE)
    set(${output_name} "${output}" PARENT_SCOPE)
endfunction()

compile(${ALLOWED} result output)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "${ALLOWED} does not compile, so nothing can be said of the others:\n${output}")
endif()
foreach(header IN LISTS FORBIDDEN)
    compile(${header} result output)
    string(FIND "${output}" "${header}: No such file or directory" gcc)
    string(FIND "${output}" "'${header}' file not found" clang)
    if(result EQUAL 0)
        message(SEND_ERROR "${header} compiles here.")
    elseif(gcc EQUAL -1 AND clang EQUAL -1)
        message(SEND_ERROR "${header} fails, but not because it is out of sight:\n${output}")
    endif()
endforeach()
