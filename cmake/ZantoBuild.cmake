# How every part of the program is compiled: the language, the warnings and the arithmetic. Optimisation and hardening
# are left to the build type and to whoever builds.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Debug, Release, RelWithDebInfo, or None for no flags but your own" FORCE)
endif()
if(ZANTO_WERROR)
  set(CMAKE_COMPILE_WARNING_AS_ERROR ON)
endif()

# What is written anew for Windows has a source of its own, named so: Name${windows}.cpp.
set(windows)
if(WIN32)
  set(windows Windows)
endif()

add_library(zanto_options INTERFACE)
target_include_directories(zanto_options INTERFACE "${PROJECT_SOURCE_DIR}")
# No contraction: a fused multiply-add rounds once, and the analysis rounds twice.
target_compile_options(zanto_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -ffp-contract=off)
target_compile_definitions(zanto_options INTERFACE GL_GLEXT_PROTOTYPES)
if(WIN32)
  # Without the first three, OpenGL's headers bring all of windows.h, which takes common names such as "far".
  target_compile_definitions(zanto_options INTERFACE
    WINGDIAPI= APIENTRY= CALLBACK= WIN32_LEAN_AND_MEAN NOMINMAX _USE_MATH_DEFINES FREEGLUT_STATIC)
  add_library(zanto_binary_files STATIC "${PROJECT_SOURCE_DIR}/packaging/windows/binaryFiles.cpp")
  target_link_libraries(zanto_options INTERFACE zanto_binary_files)
endif()

if(ZANTO_SANITIZE)
  add_compile_definitions(ZANTO_SANITIZED)
  add_compile_options(-fsanitize=${ZANTO_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${ZANTO_SANITIZE})
endif()
if(ZANTO_COVERAGE)
  add_compile_options(--coverage)
  add_link_options(--coverage)
endif()

# zanto_room(NAME SOURCES a.cpp ... [PUBLIC lib ...] [PRIVATE lib ...])
# One static library for one folder, named zanto_NAME.
function(zanto_room name)
  cmake_parse_arguments(room "" "" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
  add_library(zanto_${name} STATIC ${room_SOURCES})
  target_link_libraries(zanto_${name} PUBLIC zanto_options ${room_PUBLIC} PRIVATE ${room_PRIVATE})
endfunction()

# Tests are compiled without optimisation: optimising GoogleTest's templates takes longer than everything else. The
# code under test is optimised as usual.
set(zanto_test_options -O0 -pthread)
if(ZANTO_SANITIZE MATCHES undefined)
  # For the same reason this sanitizer checks only the code under test.
  list(APPEND zanto_test_options -fno-sanitize=undefined)
endif()

# Compiles the headers that most tests include once.
function(zanto_test_headers)
  add_library(zanto_test_headers OBJECT "${PROJECT_SOURCE_DIR}/tests/support/testHeaders.cpp")
  target_link_libraries(zanto_test_headers PUBLIC zanto_options GTest::gmock
    $<$<PLATFORM_ID:Windows>:Boost::headers>)
  target_precompile_headers(zanto_test_headers PRIVATE
    <boost/bind/bind.hpp> <boost/signals2.hpp> <gmock/gmock.h> <gtest/gtest.h>
    $<$<PLATFORM_ID:Windows>:${PROJECT_SOURCE_DIR}/tests/support/environmentOnWindows.h>)
  target_compile_options(zanto_test_headers PRIVATE ${zanto_test_options})
endfunction()

# zanto_test(NAME SOURCES aTest.cpp ... LINK lib ... [LABEL label] [PREFIX text] [APART])
# One GoogleTest program, NAME_tests, which runs in the game's data folder. Each of its cases is a CTest test, whose
# name begins with the prefix, with the label "unit" if no other is given. With a sanitizer a process starts slowly, so
# there the whole program is one test, unless it is APART: a process can open the game window only once, so each case
# that does needs its own process.
function(zanto_test name)
  # clang's leak sanitizer sometimes crashes when it follows the memory of threads.
  set(environment ENVIRONMENT "ASAN_OPTIONS=intercept_tls_get_addr=0")
  cmake_parse_arguments(test "APART" "LABEL;PREFIX" "SOURCES;LINK" ${ARGN})
  if(NOT test_LABEL)
    set(test_LABEL unit)
  endif()
  add_executable(${name}_tests ${test_SOURCES})
  # Link libstdc++ first, so that no object that a double replaces is pulled in.
  target_link_libraries(${name}_tests PRIVATE GTest::gmock GTest::gtest_main stdc++ ${test_LINK})
  target_compile_options(${name}_tests PRIVATE ${zanto_test_options})
  target_precompile_headers(${name}_tests REUSE_FROM zanto_test_headers)
  if(ZANTO_SANITIZE AND NOT test_APART)
    add_test(NAME ${name}_tests COMMAND ${name}_tests WORKING_DIRECTORY "${PROJECT_SOURCE_DIR}/data")
    set_tests_properties(${name}_tests PROPERTIES LABELS ${test_LABEL} TIMEOUT 600 ${environment})
    return()
  endif()
  gtest_discover_tests(${name}_tests
    DISCOVERY_MODE PRE_TEST
    NO_PRETTY_VALUES
    TEST_PREFIX "${test_PREFIX}"
    WORKING_DIRECTORY "${PROJECT_SOURCE_DIR}/data"
    PROPERTIES LABELS ${test_LABEL} TIMEOUT 600 ${environment})
endfunction()
