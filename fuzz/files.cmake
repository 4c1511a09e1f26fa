# The files of a job and the meshes of other programs.
qz_fuzz(binary_surface BinarySurfaceFuzz.cpp formats)
qz_fuzz(interchange_file InterchangeFileFuzz.cpp formats)
qz_fuzz(path_info_file PathInfoFileFuzz.cpp formats)
qz_fuzz(stl StlFuzz.cpp formats_meshes)
qz_fuzz(ply PlyFuzz.cpp formats_meshes)
qz_fuzz(obj ObjFuzz.cpp formats_meshes)
qz_fuzz(off OffFuzz.cpp formats_meshes)
# The add-in's own readers, on the stand-in host's services.
qz_fuzz(load_binary_surface LoadBinarySurfaceFuzz.cpp stock QZCore)
qz_fuzz(dump_binary_paths_text DumpBinaryPathsTextFuzz.cpp path_files formats QZCore)
qz_fuzz(combine_path_info_files CombinePathInfoFilesFuzz.cpp path_files QZCore)
qz_fuzz(compare_bands CompareBandsFuzz.cpp stock path_files)
qz_fuzz(read_highest_vertex ReadHighestVertexFuzz.cpp stock)
qz_fuzz(shifted_files ShiftedFilesFuzz.cpp origin_shift)
qz_fuzz(curve_xfer_qz CurveXferQZFuzz.cpp curve_channel QZCore)
# Beside the plain channel of the tests.
target_sources(fuzz_curve_xfer_qz PRIVATE ${CMAKE_SOURCE_DIR}/tests/support/PlainCurveChannel.cpp)
target_include_directories(fuzz_curve_xfer_qz PRIVATE ${CMAKE_SOURCE_DIR}/tests)
