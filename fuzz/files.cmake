# The files of a job and the meshes of other programs.
function(qz_file_fuzz name source)
  add_executable(fuzz_${name} ${source})
  target_link_libraries(fuzz_${name} PRIVATE qz_flags ${ARGN})
  target_link_options(fuzz_${name} PRIVATE -fsanitize=fuzzer)
endfunction()

qz_file_fuzz(binary_surface BinarySurfaceFuzz.cpp formats)
qz_file_fuzz(interchange_file InterchangeFileFuzz.cpp formats)
qz_file_fuzz(path_info_file PathInfoFileFuzz.cpp formats)
qz_file_fuzz(stl StlFuzz.cpp formats_meshes)
qz_file_fuzz(ply PlyFuzz.cpp formats_meshes)
qz_file_fuzz(obj ObjFuzz.cpp formats_meshes)
qz_file_fuzz(off OffFuzz.cpp formats_meshes)
# The add-in's own readers, on the stand-in host's services.
qz_file_fuzz(load_binary_surface LoadBinarySurfaceFuzz.cpp stock QZCore)
qz_file_fuzz(dump_binary_paths_text DumpBinaryPathsTextFuzz.cpp path_files formats QZCore)
qz_file_fuzz(combine_path_info_files CombinePathInfoFilesFuzz.cpp path_files QZCore)
