# Rooms: each folder of the source tree is a target, and a target sees the headers of another room
# only when it links it. Headers are always named from the root ("stock/SurfaceTransfer.h"); a room
# is made visible by a link of its own in the build tree, so a header that a target is not allowed
# to see is not on its include path at all.

function(_qz_link_into place path)
  get_filename_component(folder "${CMAKE_BINARY_DIR}/rooms/${place}/${path}" DIRECTORY)
  file(MAKE_DIRECTORY "${folder}")
  file(CREATE_LINK "${CMAKE_SOURCE_DIR}/${path}" "${CMAKE_BINARY_DIR}/rooms/${place}/${path}"
       COPY_ON_ERROR SYMBOLIC)
endfunction()

# qz_headers(NAME path...): an interface target that shows just these headers or folders.
function(qz_headers name)
  add_library(${name} INTERFACE)
  foreach(path IN LISTS ARGN)
    _qz_link_into(${name} ${path})
  endforeach()
  target_include_directories(${name} INTERFACE "${CMAKE_BINARY_DIR}/rooms/${name}")
endfunction()

# What nearly every source includes of the standard library is read once for all rooms. A source with
# compile options of its own reads what it includes itself, and so does every one for the linter.
if(NOT MSVC)
  file(WRITE ${CMAKE_BINARY_DIR}/standard_headers.cpp "")
  add_library(qz_standard_headers STATIC EXCLUDE_FROM_ALL ${CMAKE_BINARY_DIR}/standard_headers.cpp)
  target_link_libraries(qz_standard_headers PRIVATE qz_flags)
  target_precompile_headers(qz_standard_headers PRIVATE <algorithm> <array> <cmath> <cstdint> <cstdio>
    <cstring> <functional> <map> <memory> <optional> <string> <vector>)
endif()

# qz_room(NAME FOLDER folder SOURCES file... [LINKS target...] [PRIVATE_LINKS target...]
# [PRECOMPILED header...] [JOINED file...]): a static library of the sources in one folder; whoever
# links it sees that folder's headers. PRECOMPILED: large headers that most of the sources include.
# JOINED: those of the sources that instantiate the same large templates are compiled as one.
function(qz_room name)
  cmake_parse_arguments(ROOM "" "FOLDER" "SOURCES;LINKS;PRIVATE_LINKS;PRECOMPILED;JOINED" ${ARGN})
  _qz_link_into(${name} ${ROOM_FOLDER})
  list(TRANSFORM ROOM_SOURCES PREPEND "${CMAKE_SOURCE_DIR}/${ROOM_FOLDER}/")
  add_library(${name} STATIC ${ROOM_SOURCES})
  target_include_directories(${name} PUBLIC "${CMAKE_BINARY_DIR}/rooms/${name}")
  target_link_libraries(${name} PUBLIC ${ROOM_LINKS} PRIVATE qz_flags ${ROOM_PRIVATE_LINKS})
  if(ROOM_PRECOMPILED)
    target_precompile_headers(${name} PRIVATE ${ROOM_PRECOMPILED})
  elseif(NOT MSVC)
    target_precompile_headers(${name} REUSE_FROM qz_standard_headers)
  endif()
  if(ROOM_JOINED AND QZ_JOIN_SOURCES)
    list(TRANSFORM ROOM_JOINED PREPEND "${CMAKE_SOURCE_DIR}/${ROOM_FOLDER}/")
    set_target_properties(${name} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
    set_source_files_properties(${ROOM_JOINED} PROPERTIES UNITY_GROUP joined)
  endif()
endfunction()

# qz_version(NAME ending type): the Windows file says its version. Type 1: a program, 2: a library.
function(qz_version name ending type)
  if(WIN32)
    target_sources(${name} PRIVATE ${CMAKE_BINARY_DIR}/version/${name}.rc)
    set(QZ_FILE_NAME ${name}.${ending})
    set(QZ_FILE_TYPE ${type})
    configure_file(${CMAKE_SOURCE_DIR}/cmake/version.rc.in ${CMAKE_BINARY_DIR}/version/${name}.rc @ONLY)
  endif()
endfunction()

# qz_module(NAME SOURCES file... [EXPORTS base] [LINKS target...]): a library that is loaded at run
# time, named plainly on both systems ("QZCore.dll", "QZCore.so"). EXPORTS names the explicit list:
# base.def on Windows, base.map elsewhere; without it, what is marked QZ_EXPORT leaves the module.
function(qz_module name)
  cmake_parse_arguments(MODULE "" "EXPORTS" "SOURCES;LINKS" ${ARGN})
  add_library(${name} SHARED ${MODULE_SOURCES})
  set_target_properties(${name} PROPERTIES PREFIX "")
  if(MINGW)
    set_target_properties(${name} PROPERTIES IMPORT_PREFIX "")
  endif()
  target_link_libraries(${name} PRIVATE qz_flags ${MODULE_LINKS})
  qz_version(${name} dll 2)
  if(MODULE_EXPORTS)
    if(WIN32)
      target_sources(${name} PRIVATE ${CMAKE_SOURCE_DIR}/${MODULE_EXPORTS}.def)
    else()
      target_link_options(${name} PRIVATE
        "LINKER:--version-script=${CMAKE_SOURCE_DIR}/${MODULE_EXPORTS}.map")
      set_target_properties(${name} PROPERTIES
        LINK_DEPENDS ${CMAKE_SOURCE_DIR}/${MODULE_EXPORTS}.map)
    endif()
  endif()
endfunction()

# The sources of a target of the tests are compiled as one, but for those of other folders and those
# that have names of their own for what others have too.
function(_qz_join_sources name sources alone)
  if(QZ_JOIN_SOURCES)
    list(FILTER sources INCLUDE REGEX "^${CMAKE_SOURCE_DIR}")
    set_source_files_properties(${sources} ${alone} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
    set_target_properties(${name} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 0)
  endif()
endfunction()

# qz_test_parts(NAME STATIC|OBJECT SOURCES file... [ALONE file...] [LINKS target...]): what test
# programs share, compiled like them. Whoever links it sees the headers under tests/.
function(qz_test_parts name type)
  cmake_parse_arguments(PARTS "" "" "SOURCES;ALONE;LINKS" ${ARGN})
  add_library(${name} ${type} ${PARTS_SOURCES} ${PARTS_ALONE})
  _qz_join_sources(${name} "${PARTS_SOURCES}" "${PARTS_ALONE}")
  if(NOT MSVC)
    target_precompile_headers(${name} REUSE_FROM qz_standard_headers)
  endif()
  target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR}/tests)
  target_link_libraries(${name} PUBLIC ${PARTS_LINKS} GTest::gmock PRIVATE qz_flags)
endfunction()

# qz_test(NAME SOURCES file... [ALONE file...] [LINKS target...] [WRAP function...]
# [ENVIRONMENT var=value...]): a GoogleTest program, run as one test. ALONE names those of the sources
# that cannot be compiled as one with the others. WRAP sends the named functions through __wrap_NAME.
# Test programs are compiled without optimisation, which halves their compile time; OPTIMISED
# is for those that compute a lot themselves.
function(qz_test name)
  cmake_parse_arguments(TEST "OPTIMISED" "" "SOURCES;ALONE;LINKS;WRAP;ENVIRONMENT" ${ARGN})
  add_executable(${name} ${TEST_SOURCES} ${TEST_ALONE})
  _qz_join_sources(${name} "${TEST_SOURCES}" "${TEST_ALONE}")
  if(TEST_OPTIMISED)
    target_precompile_headers(${name} REUSE_FROM qz_optimised_test_headers)
  else()
    if(NOT MSVC)
      target_compile_options(${name} PRIVATE -O0)
    endif()
    target_precompile_headers(${name} REUSE_FROM qz_test_headers)
  endif()
  target_link_libraries(${name} PRIVATE qz_flags ${TEST_LINKS} GTest::gmock GTest::gtest_main)
  foreach(symbol IN LISTS TEST_WRAP)
    target_link_options(${name} PRIVATE "LINKER:--wrap=${symbol}")
  endforeach()
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT 900
    ENVIRONMENT "${QZ_TEST_ENVIRONMENT};${TEST_ENVIRONMENT}"
    FIXTURES_REQUIRED "${QZ_TEST_FIXTURES}")
endfunction()
