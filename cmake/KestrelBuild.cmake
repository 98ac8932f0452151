# How everything in this tree is compiled.
set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_INCLUDE_CURRENT_DIR OFF)

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "Build type" FORCE)
endif()

find_program(KESTREL_CCACHE ccache)
if(KESTREL_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  # Build directories of one tree share what they compile, with precompiled headers, too, and whatever the
  # language of the messages is: tests set theirs.
  set(CMAKE_CXX_COMPILER_LAUNCHER env "CCACHE_BASEDIR=${CMAKE_BINARY_DIR}" CCACHE_NOHASHDIR=1
                                  CCACHE_SLOPPINESS=locale,pch_defines,time_macros "${KESTREL_CCACHE}")
endif()

# The same bytes wherever and whenever it is built, and readable debug lines: paths as seen from the top of
# the tree, generated sources that name their headers by include path.
add_compile_options("-ffile-prefix-map=${CMAKE_SOURCE_DIR}/=" "-ffile-prefix-map=${CMAKE_BINARY_DIR}=.")
set(CMAKE_AUTOMOC_PATH_PREFIX ON)

# Runs inside someone else's process, on data from devices and files: what the compiler can guard, it does.
add_compile_options(-fstack-protector-strong -fstack-clash-protection)
add_link_options(-Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
if(NOT KESTREL_SANITIZE)
  add_compile_options("$<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=3>")
endif()

if(KESTREL_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

if(KESTREL_BUILD_FUZZERS)
  # Fuzzers are steered by what their input reaches: everything counts what it runs.
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# Linked by every target of ours; generated code and third-party headers stay outside.
add_library(kestrel_warnings INTERFACE)
target_compile_options(kestrel_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion)
if(KESTREL_WERROR)
  target_compile_options(kestrel_warnings INTERFACE -Werror)
endif()
target_compile_definitions(
  kestrel_warnings INTERFACE QT_DEPRECATED_WARNINGS QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING
                             QT_MESSAGELOGCONTEXT)

# A floor of the library: an object library whose headers are included as <floor>/<file>.
#   kestrel_add_floor(NAME SOURCES ... [FLOORS lower floors ...] [LIBRARIES ...] [WIDGETS])
# WIDGETS: it has QObjects and forms.
function(kestrel_add_floor name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "WIDGETS" "" "SOURCES;FLOORS;LIBRARIES")
  add_library(${name} OBJECT ${arg_SOURCES})
  target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}/kestrelsetUI")
  target_link_libraries(
    ${name}
    PUBLIC ${arg_FLOORS} ${arg_LIBRARIES}
    PRIVATE kestrel_warnings)
  if(arg_WIDGETS)
    set_target_properties(${name} PROPERTIES AUTOMOC ON AUTOUIC ON)
  endif()
endfunction()
