# SPDX-License-Identifier: GPL-3.0-or-later
# Compiles the scoring witness with g++ and clang, with and without optimisation, and compares what
# the programs print, byte for byte, with each other and with the witness of the build itself.
#
# Variables: WITNESS (that program), SOURCES, INCLUDES, OPTIONS (lists), QT_CORE, WORK_FOLDER.
cmake_minimum_required(VERSION 3.25)

find_program(GNU NAMES g++-12 g++)
find_program(CLANG NAMES clang++-16 clang++)
foreach(compiler GNU CLANG)
    if(NOT ${compiler})
        message(FATAL_ERROR "The models are compared between g++ and clang++, but ${compiler} is not "
            "installed. scripts/setup installs both (packages g++ and clang-16).")
    endif()
endforeach()

set(flags -std=c++20 -fPIC -ffp-contract=off ${OPTIONS})
foreach(folder ${INCLUDES})
    list(APPEND flags -I${folder})
endforeach()
file(MAKE_DIRECTORY ${WORK_FOLDER})

# Started as a pipeline so that they run side by side; none of them reads or prints anything.
execute_process(
    COMMAND ${GNU} -O0 ${flags} ${SOURCES} ${QT_CORE} -o ${WORK_FOLDER}/gnu-O0
    COMMAND ${GNU} -O2 ${flags} ${SOURCES} ${QT_CORE} -o ${WORK_FOLDER}/gnu-O2
    COMMAND ${CLANG} -O2 ${flags} ${SOURCES} ${QT_CORE} -o ${WORK_FOLDER}/clang-O2
    RESULTS_VARIABLE statuses
    ERROR_VARIABLE errors)
if(NOT statuses STREQUAL "0;0;0")
    message(FATAL_ERROR "The witness does not compile (${statuses}):\n${errors}")
endif()

function(run_witness program output)
    execute_process(COMMAND ${program} OUTPUT_FILE ${output} RESULT_VARIABLE status)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "${program} ended with ${status}")
    endif()
    file(SIZE ${output} size)
    if(size LESS 1000000)
        message(FATAL_ERROR "${program} printed only ${size} bytes")
    endif()
endfunction()

run_witness(${WITNESS} ${WORK_FOLDER}/build.txt)
foreach(name gnu-O0 gnu-O2 clang-O2)
    run_witness(${WORK_FOLDER}/${name} ${WORK_FOLDER}/${name}.txt)
    execute_process(
        COMMAND ${CMAKE_COMMAND} -E compare_files ${WORK_FOLDER}/build.txt ${WORK_FOLDER}/${name}.txt
        RESULT_VARIABLE different)
    if(different)
        message(SEND_ERROR "The models give other bits with ${name}: compare "
            "${WORK_FOLDER}/build.txt and ${WORK_FOLDER}/${name}.txt")
    endif()
endforeach()
