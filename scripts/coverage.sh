#!/usr/bin/env bash
# Prints how many lines of the add-in's rooms its tests run, and every line that they do not; fails
# below 98 %.
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

rooms=(addin blocks callbacks curves stock toolpaths)
tests=(addin_tests callbacks_tests curve_channel_tests curves_tests fault_tests format_number_tests
    formats_addin_tests path_files_tests stock_jobs_tests stock_tests sweep_tests)

scripts/build.sh coverage --target "${tests[@]}"
find build/coverage -name '*.gcda' -delete
ctest --test-dir build/coverage --output-on-failure -j "$jobs" -R "^($(IFS='|' && echo "${tests[*]}"))\$"
python3 scripts/count_lines_run.py build/coverage 98 "${rooms[@]}"
