# SPDX-License-Identifier: GPL-3.0-or-later
# How every target of Veltrix is compiled, and the functions that declare a floor and its tests.
include(GoogleTest)

add_library(veltrix_options INTERFACE)
target_compile_options(veltrix_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
    # The models must give the same bits on every compiler and at every optimisation level.
    -ffp-contract=off -fno-fast-math
    $<$<BOOL:${VELTRIX_WARNINGS_AS_ERRORS}>:-Werror>)
target_compile_definitions(veltrix_options INTERFACE
    QT_NO_KEYWORDS QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_FOREACH
    QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(VELTRIX_SANITIZERS)
    target_compile_options(veltrix_options INTERFACE
        -fsanitize=${VELTRIX_SANITIZERS} -fno-omit-frame-pointer -fno-sanitize-recover=undefined
        # g++ 12 takes the sanitizers' own instructions in std::variant for uninitialised reads.
        $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
    target_link_options(veltrix_options INTERFACE -fsanitize=${VELTRIX_SANITIZERS})
endif()

# How many times longer a test may take than it does without sanitizers.
set(VELTRIX_PATIENCE 1)
if(VELTRIX_SANITIZERS MATCHES "thread")
    set(VELTRIX_PATIENCE 6)
elseif(VELTRIX_SANITIZERS)
    set(VELTRIX_PATIENCE 3)
endif()

# veltrix_include_root(<target> <name> <folder>)
# Lets whoever links <target> write "<name>/<file>.h" for the files of <folder>, and shows nothing else: the root
# holds one link to that folder. The system's own include folders come after it.
function(veltrix_include_root target name folder)
    set(root ${CMAKE_BINARY_DIR}/include/${name})
    file(MAKE_DIRECTORY ${root})
    file(CREATE_LINK ${folder} ${root}/${name} SYMBOLIC)
    target_include_directories(${target} PUBLIC ${root})
endfunction()

# veltrix_precompile(<target> <headers...>)
# Precompiles headers of other libraries for a target. The compiled header differs from build tree to build tree though
# nothing in it does; the sum beside it is what the compiler cache looks at instead, so that trees share what they compile.
function(veltrix_precompile target)
    if(NOT VELTRIX_PRECOMPILE_HEADERS)
        return()
    endif()
    target_precompile_headers(${target} PRIVATE ${ARGN})
    file(GENERATE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/CMakeFiles/${target}.dir/cmake_pch.hxx.gch.sum
        CONTENT "${ARGN} Qt ${Qt6_VERSION}, ${CMAKE_CXX_COMPILER_VERSION}, $<TARGET_PROPERTY:${target},COMPILE_OPTIONS>\n")
endfunction()

# veltrix_floor(<name> DEPENDS <targets...> USES <targets...> SOURCES <files...>)
# Declares the library veltrix_<name>. A floor sees only itself and the floors it lists: what its headers need under
# DEPENDS, which whoever links it sees too, and what only its own files need under USES. Any other include does not
# compile. Includes are written "<floor>/<file>.h".
function(veltrix_floor name)
    cmake_parse_arguments(arg "" "" "DEPENDS;USES;SOURCES;PRECOMPILE" ${ARGN})
    add_library(veltrix_${name} STATIC ${arg_SOURCES})
    set_target_properties(veltrix_${name} PROPERTIES AUTOMOC ON AUTORCC ON)
    veltrix_include_root(veltrix_${name} ${name} ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(veltrix_${name} PUBLIC veltrix_options ${arg_DEPENDS} PRIVATE ${arg_USES})
    if(arg_PRECOMPILE)
        veltrix_precompile(veltrix_${name} ${arg_PRECOMPILE})
    endif()
endfunction()

# veltrix_tests(<name> DEPENDS <targets...> SOURCES <files...>)
# Declares the test program veltrix_<name>_tests; every test of it becomes a CTest test.
function(veltrix_tests name)
    cmake_parse_arguments(arg "" "" "DEPENDS;SOURCES" ${ARGN})
    add_executable(veltrix_${name}_tests ${arg_SOURCES})
    set_target_properties(veltrix_${name}_tests PROPERTIES AUTOMOC ON)
    target_link_libraries(veltrix_${name}_tests PRIVATE veltrix_test_support ${arg_DEPENDS})
    veltrix_precompile(veltrix_${name}_tests
        <gmock/gmock.h> <gtest/gtest.h> <QString> <QList> <optional> <vector> <memory>)
    math(EXPR timeout "120 * ${VELTRIX_PATIENCE}")
    gtest_discover_tests(veltrix_${name}_tests DISCOVERY_MODE PRE_TEST
        PROPERTIES TIMEOUT ${timeout} ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
endfunction()
