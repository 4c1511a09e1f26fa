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
