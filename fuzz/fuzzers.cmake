# The fuzzers, for the fuzzing library and for the tests that replay what it has found.
set(kestrel_fuzzers ini_file device preview_events template_names)
set(fuzz_dir "${CMAKE_CURRENT_LIST_DIR}")
foreach(name IN LISTS kestrel_fuzzers)
  set(fuzz_${name}_sources ${fuzz_dir}/${name}.cpp)
endforeach()
list(APPEND fuzz_preview_events_sources ${fuzz_dir}/preview_input.cpp)
list(APPEND fuzz_device_sources ${fuzz_dir}/hostile_scanner.cpp ${fuzz_dir}/hostile_calls.cpp)
# The device is asked through functions that look at the buffers first.
set(fuzz_device_wraps -Wl,--wrap=sane_control_option -Wl,--wrap=sane_read -Wl,--wrap=usleep)
