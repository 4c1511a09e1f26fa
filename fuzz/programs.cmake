# Machining programs and tool tables.
qz_fuzz(apt AptFuzz.cpp formats_programs)
qz_fuzz(gcode GCodeFuzz.cpp formats_programs)
qz_fuzz(tool_table ToolTableFuzz.cpp formats_programs)
