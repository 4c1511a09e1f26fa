# Header-only libraries of the distribution, made visible to both builds. The cross build must never
# see /usr/include itself, so each library's headers are linked into a folder of its own.

function(_qz_header_only target)
  set(folder ${CMAKE_BINARY_DIR}/header_only/${target})
  file(MAKE_DIRECTORY ${folder})
  foreach(entry IN LISTS ARGN)
    get_filename_component(name ${entry} NAME)
    if(EXISTS ${entry})
      file(CREATE_LINK ${entry} ${folder}/${name} SYMBOLIC)
    else()
      message(FATAL_ERROR "${entry} is missing; run scripts/setup.sh")
    endif()
  endforeach()
  add_library(qz_${target} INTERFACE)
  target_include_directories(qz_${target} SYSTEM INTERFACE ${folder})
  add_library(qz::${target} ALIAS qz_${target})
endfunction()

_qz_header_only(json /usr/include/nlohmann)
_qz_header_only(cli11 /usr/include/CLI)
_qz_header_only(cgal /usr/include/CGAL /usr/include/boost /usr/include/eigen3/Eigen)
target_compile_definitions(qz_cgal INTERFACE CGAL_DISABLE_GMP=1 CGAL_DISABLE_MPFR=1)
