# The compiler's own run-time libraries, beside whatever is run from the build tree. A Windows
# program looks for them there and nowhere else that the build could reach.
if(MINGW)
  foreach(library libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${library}
                    OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(NOT IS_ABSOLUTE "${path}")
      find_file(path_${library} ${library}
                PATHS ${CMAKE_FIND_ROOT_PATH}/lib ${CMAKE_FIND_ROOT_PATH}/bin NO_CACHE REQUIRED
                NO_CMAKE_FIND_ROOT_PATH)
      set(path ${path_${library}})
    endif()
    foreach(folder bin tests)
      configure_file(${path} ${CMAKE_BINARY_DIR}/${folder}/${library} COPYONLY)
    endforeach()
  endforeach()
endif()
