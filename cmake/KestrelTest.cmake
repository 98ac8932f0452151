# Under an emulator everything takes longer, but a test that hangs has to end.
set(KESTREL_TEST_TIMEOUT_FACTOR
    1
    CACHE STRING "What the time limit of a test is multiplied with")

# For the leak checker, where there is one. What is kept on purpose is named in leaks.supp. The watch over
# __tls_get_addr is off: the checker takes one thread's block in 256, by its address, for one of an old C
# library's, and crashes when the process ends.
set(KESTREL_LEAK_CHECK
    "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/leaks.supp:print_suppressions=0:intercept_tls_get_addr=0"
)

# There are some two hundred programs to link, each with the debug information of what it tests.
include(CheckLinkerFlag)
check_linker_flag(CXX -fuse-ld=gold KESTREL_HAS_GOLD)

# How the tests themselves are compiled: for a quick round. What is tested is optimised as it ships.
set(KESTREL_TEST_OPTIONS -O0 -g1 -U_FORTIFY_SOURCE)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # Lets ccache see through the precompiled header.
  list(APPEND KESTREL_TEST_OPTIONS -fpch-preprocess)
endif()

# One test program, one ctest entry. Programs are kept small so that ctest can run them side by side.
#   kestrel_add_test(NAME SOURCES ... [LIBRARIES ...] [GUI] [TIMEOUT seconds] [LABELS ...] [ENVIRONMENT ...])
# GUI: the program gets a QApplication on the offscreen platform; without it there is no application at
# all. Either way a Qt warning that a test did not announce fails that test.
function(kestrel_add_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "GUI" "TIMEOUT" "SOURCES;LIBRARIES;LABELS;ENVIRONMENT")
  add_executable(${name} ${arg_SOURCES})
  if(arg_GUI)
    set(main kestrel_test_main_gui)
  else()
    set(main kestrel_test_main)
  endif()
  target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} ${main} kestrel_warnings)
  target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
  target_compile_options(${name} PRIVATE ${KESTREL_TEST_OPTIONS})
  target_precompile_headers(${name} REUSE_FROM ${main})
  if(KESTREL_HAS_GOLD)
    target_link_options(${name} PRIVATE -fuse-ld=gold)
  endif()
  add_test(NAME ${name} COMMAND ${name} --gtest_shuffle)
  if(NOT arg_TIMEOUT)
    set(arg_TIMEOUT 300)
  endif()
  math(EXPR arg_TIMEOUT "${arg_TIMEOUT} * ${KESTREL_TEST_TIMEOUT_FACTOR}")
  set_tests_properties(
    ${name}
    PROPERTIES TIMEOUT ${arg_TIMEOUT}
               LABELS "${arg_LABELS}"
               ENVIRONMENT
               "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;QT_SCALE_FACTOR=1;${KESTREL_LEAK_CHECK};${arg_ENVIRONMENT}")
endfunction()

# Runs the program of a test at the other scales of usual desktops, too: NAME_at_1.5 and NAME_at_2.
function(kestrel_test_at_scales name)
  get_test_property(${name} ENVIRONMENT environment)
  get_test_property(${name} TIMEOUT timeout)
  foreach(scale IN ITEMS 1.5 2)
    add_test(NAME ${name}_at_${scale} COMMAND ${name} --gtest_shuffle)
    set_tests_properties(${name}_at_${scale} PROPERTIES TIMEOUT ${timeout} ENVIRONMENT
                                                        "${environment};QT_SCALE_FACTOR=${scale}")
  endforeach()
endfunction()
