# qz_flags: how our own code is compiled, on every system.
add_library(qz_flags INTERFACE)
target_compile_features(qz_flags INTERFACE cxx_std_20)

# A sanitizer's report needs lines. Otherwise debug information is a good part of the compile time:
# who debugs asks for -g.
if(QZ_SANITIZE OR QZ_SANITIZE_THREADS)
  set(QZ_DEBUG_INFO -g1 CACHE STRING "Debug information of our own code")
else()
  set(QZ_DEBUG_INFO -g0 CACHE STRING "Debug information of our own code")
endif()

if(MSVC)
  target_compile_options(qz_flags INTERFACE /W4 /WX /permissive- /utf-8 /fp:precise)
  # The standard library's own names are what both builds have; their "_s" variants are not.
  target_compile_definitions(qz_flags INTERFACE _CRT_SECURE_NO_WARNINGS)
else()
  # The binary contract's interfaces have no virtual destructor, on purpose; hence no
  # -Wnon-virtual-dtor. No contraction: same input, same bytes on every machine.
  target_compile_options(qz_flags INTERFACE
    -Wall -Wextra -Wpedantic -Werror -Wshadow -Wconversion -Wold-style-cast -Wcast-qual
    -ffp-contract=off -fvisibility=hidden -fvisibility-inlines-hidden)
  target_compile_options(qz_flags INTERFACE ${QZ_DEBUG_INFO})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(qz_flags INTERFACE -Wno-maybe-uninitialized -Wno-dangling-pointer)
  endif()
endif()

if(QZ_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
  # A std::function or a container in one module may be seen by another; the vptr check would need
  # type information that hidden visibility keeps apart.
  add_compile_options(-fno-sanitize=vptr,function)
endif()
if(QZ_SANITIZE_THREADS)
  add_compile_options(-fsanitize=thread)
  add_link_options(-fsanitize=thread)
endif()
if(QZ_COVERAGE)
  add_compile_options(--coverage)
  add_link_options(--coverage)
endif()
if(QZ_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
if(MINGW)
  # An exception of the add-in's callbacks unwinds through the kernel's module: both must have the
  # same run time.
  add_link_options(-shared-libgcc)
  add_compile_options(-Wa,-mbig-obj)
  add_link_options(LINKER:--dynamicbase LINKER:--nxcompat LINKER:--high-entropy-va)
endif()
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
