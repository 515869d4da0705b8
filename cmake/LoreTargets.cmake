# One target for each folder below src/, so that a folder can reach only what its line names.

add_library(lore_flags INTERFACE)
target_compile_options(lore_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 sees overlapping copies in the joining of strings once it has put it inline.
  target_compile_options(lore_flags INTERFACE $<$<CONFIG:Release>:-Wno-restrict>)
endif()
if(LORE_SANITIZE)
  target_compile_options(lore_flags INTERFACE -fsanitize=${LORE_SANITIZE} -fno-omit-frame-pointer
                                              -fno-sanitize-recover=all)
  target_link_options(lore_flags INTERFACE -fsanitize=${LORE_SANITIZE})
endif()
if(LORE_FUZZ)
  target_compile_options(lore_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

# lore_precompile(target header...)            compiles headers once for all files of a target,
# lore_precompile(target REUSE_FROM other)     or takes those of another one that has the same flags.
function(lore_precompile target)
  if(NOT LORE_PRECOMPILE)
    return()
  endif()
  if(ARGV1 STREQUAL REUSE_FROM)
    target_precompile_headers(${target} REUSE_FROM ${ARGV2})
  else()
    target_precompile_headers(${target} PRIVATE ${ARGN})
  endif()
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    target_compile_options(${target} PRIVATE -fpch-preprocess)  # for ccache
  else()
    target_compile_options(${target} PRIVATE "SHELL:-Xclang -fno-pch-timestamp")
  endif()
endfunction()

# lore_leave_out_exceptions(source...): with LORE_COUNT_BRANCHES, files that throw and catch nothing themselves are
# compiled without what only an exception runs: the branches that take apart what was half made count as any other.
function(lore_leave_out_exceptions)
  foreach(source IN LISTS ARGN)
    file(STRINGS ${source} uses REGEX "(^|[^a-z])try {|throw std::|style_parser|nlohmann|boost" LIMIT_COUNT 1)
    if(NOT uses)
      set_property(SOURCE ${source} APPEND PROPERTY COMPILE_OPTIONS -fno-exceptions)
    endif()
  endforeach()
endfunction()

# lore_library(folder [DEPENDS target...] [PRIVATE target...]): every .cpp of src/<folder> but main.cpp as the static
# library lore_<folder>; a name that ends in _avx2 is compiled for processors that have it.
function(lore_library folder)
  cmake_parse_arguments(ARG "" "" "DEPENDS;PRIVATE" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.h)
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
  set(units ${sources})
  list(FILTER units INCLUDE REGEX "\\.cpp$")
  if(LORE_COUNT_BRANCHES)
    lore_leave_out_exceptions(${units})
  endif()
  set(wide ${units})
  list(FILTER wide INCLUDE REGEX "_avx2\\.cpp$")
  if(wide AND CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64|amd64")
    set_property(SOURCE ${wide} APPEND PROPERTY COMPILE_OPTIONS -mavx2)
  endif()
  if(units)
    add_library(lore_${folder} STATIC ${sources})
    target_include_directories(lore_${folder} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(lore_${folder} PUBLIC ${ARG_DEPENDS} PRIVATE ${ARG_PRIVATE} lore_flags)
  else()
    add_library(lore_${folder} INTERFACE)
    target_include_directories(lore_${folder} INTERFACE ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(lore_${folder} INTERFACE ${ARG_DEPENDS})
  endif()
endfunction()

# lore_qt_library(name [FOLDERS folder...] [DEPENDS target...] [PRIVATE target...]): every .cpp of these folders, else
# of the one that asks, but main.cpp as the static library lore_<name>, in which classes may have signals.
function(lore_qt_library name)
  cmake_parse_arguments(ARG "" "" "FOLDERS;DEPENDS;PRIVATE" ${ARGN})
  set(patterns *.cpp *.h)
  if(ARG_FOLDERS)
    list(TRANSFORM ARG_FOLDERS APPEND /*.cpp OUTPUT_VARIABLE patterns)
    list(TRANSFORM ARG_FOLDERS APPEND /*.h OUTPUT_VARIABLE headers)
    list(APPEND patterns ${headers})
  endif()
  file(GLOB sources CONFIGURE_DEPENDS ${patterns})
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
  qt_add_library(lore_${name} STATIC ${sources})
  set_target_properties(lore_${name} PROPERTIES AUTOMOC ON)
  if(LORE_PRECOMPILE AND CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # It sees endless ones too where headers are precompiled.
    target_compile_options(lore_${name} PRIVATE "$<$<CONFIG:Release>:-Wno-array-bounds;-Wno-stringop-overflow>")
  endif()
  target_include_directories(lore_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(lore_${name} PUBLIC ${ARG_DEPENDS} PRIVATE ${ARG_PRIVATE} lore_flags)
endfunction()

# lore_program(name target...): main.cpp of the folder that asks as a program, installed beside the others.
function(lore_program name)
  add_executable(${name} main.cpp)
  target_link_libraries(${name} PRIVATE ${ARGN} lore_flags)
  install(TARGETS ${name} RUNTIME DESTINATION ${LORE_PROGRAM_DIR})
endfunction()

# lore_define_where_used(name value source...): defines a text for the files that name it; the others compile alike in
# every checkout.
function(lore_define_where_used name value)
  foreach(source IN LISTS ARGN)
    file(STRINGS ${source} uses REGEX ${name} LIMIT_COUNT 1)
    if(uses)
      set_property(SOURCE ${source} APPEND PROPERTY COMPILE_DEFINITIONS ${name}="${value}")
    endif()
  endforeach()
endfunction()

# lore_tests(folder [OWN_FLAGS] [SHARDS count] [DEPENDS target...]): every *_test.cpp of tests/<folder> as the program
# test_<folder>. With flags of its own, such as those that Qt asks for, it can't share the precompiled headers.
# A long one is run in shards, which go side by side. The time limit is for what hangs: a slow machine with sanitizers
# takes ten times as long as a fast one.
function(lore_tests folder)
  cmake_parse_arguments(ARG "OWN_FLAGS" "SHARDS" "DEPENDS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.h)
  if(NOT sources)
    return()
  endif()
  add_executable(test_${folder} ${sources})
  target_include_directories(test_${folder} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  lore_define_where_used(LORE_TEST_DATA ${PROJECT_SOURCE_DIR}/tests/data ${sources})
  target_link_libraries(test_${folder} PRIVATE ${ARG_DEPENDS} GTest::gmock GTest::gtest_main lore_flags)
  # Tests are compiled more often than they run.
  target_compile_options(test_${folder} PRIVATE -O0)
  if(NOT ARG_OWN_FLAGS)
    lore_precompile(test_${folder} REUSE_FROM test_headers)
  endif()
  if(NOT ARG_SHARDS)
    add_test(NAME ${folder} COMMAND test_${folder})
    set_tests_properties(${folder} PROPERTIES TIMEOUT 1800 LABELS core)
    return()
  endif()
  math(EXPR last "${ARG_SHARDS} - 1")
  foreach(shard RANGE ${last})
    add_test(NAME ${folder}.shard_${shard} COMMAND test_${folder})
    set_tests_properties(${folder}.shard_${shard} PROPERTIES TIMEOUT 1800 LABELS core
                         ENVIRONMENT "GTEST_TOTAL_SHARDS=${ARG_SHARDS};GTEST_SHARD_INDEX=${shard}")
  endforeach()
endfunction()

# lore_script_test(name script [LABEL label] [TIMEOUT seconds] [ARGS argument...]): a script of Python below tests/.
function(lore_script_test name script)
  cmake_parse_arguments(ARG "" "LABEL;TIMEOUT" "ARGS" ${ARGN})
  add_test(NAME ${name} COMMAND Python3::Interpreter ${PROJECT_SOURCE_DIR}/tests/${script} ${ARG_ARGS})
  if(ARG_LABEL)
    set_tests_properties(${name} PROPERTIES LABELS ${ARG_LABEL})
  endif()
  if(ARG_TIMEOUT)
    set_tests_properties(${name} PROPERTIES TIMEOUT ${ARG_TIMEOUT})
  endif()
endfunction()
