# Machining programs and tool tables.
foreach(target apt gcode tool_table)
  set(source_apt AptFuzz.cpp)
  set(source_gcode GCodeFuzz.cpp)
  set(source_tool_table ToolTableFuzz.cpp)
  add_executable(fuzz_${target} ${source_${target}})
  target_link_libraries(fuzz_${target} PRIVATE qz_flags formats_programs)
  target_link_options(fuzz_${target} PRIVATE -fsanitize=fuzzer)
endforeach()
