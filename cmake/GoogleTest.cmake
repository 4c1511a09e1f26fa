# GoogleTest from the distribution's sources, compiled with the build's own compiler.
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
set(gtest_force_shared_crt ON CACHE BOOL "" FORCE)
set(QZ_GOOGLETEST_DIR /usr/src/googletest CACHE PATH "GoogleTest's sources")
add_subdirectory(${QZ_GOOGLETEST_DIR} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
foreach(target gtest gtest_main gmock gmock_main)
  if(TARGET ${target})
    set_target_properties(${target} PROPERTIES
      RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests CXX_CLANG_TIDY "")
    if(NOT TARGET GTest::${target})
      add_library(GTest::${target} ALIAS ${target})
    endif()
  endif()
endforeach()

# GoogleMock's headers take longer to read than most tests take to compile. They are read once, for
# all test programs that are compiled with the same options.
file(WRITE ${CMAKE_BINARY_DIR}/test_headers.cpp "int main() { return 0; }\n")
foreach(target qz_test_headers qz_optimised_test_headers)
  add_executable(${target} ${CMAKE_BINARY_DIR}/test_headers.cpp)
  target_link_libraries(${target} PRIVATE qz_flags GTest::gmock GTest::gtest)
  set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  target_precompile_headers(${target} PRIVATE <gmock/gmock.h> <gtest/gtest.h>)
endforeach()
if(NOT MSVC)
  target_compile_options(qz_test_headers PRIVATE -O0)
endif()
