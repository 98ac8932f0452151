# Finds libsane (headers and client library); gives the target Sane::Sane.
find_path(Sane_INCLUDE_DIR sane/sane.h)
find_library(Sane_LIBRARY NAMES sane)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Sane REQUIRED_VARS Sane_LIBRARY Sane_INCLUDE_DIR)

if(Sane_FOUND AND NOT TARGET Sane::Sane)
  # Headers alone: the floors compile against SANE without deciding who answers the calls.
  add_library(Sane::Headers INTERFACE IMPORTED)
  set_target_properties(Sane::Headers PROPERTIES INTERFACE_INCLUDE_DIRECTORIES
                                                 "${Sane_INCLUDE_DIR}")
  add_library(Sane::Sane UNKNOWN IMPORTED)
  set_target_properties(
    Sane::Sane PROPERTIES IMPORTED_LOCATION "${Sane_LIBRARY}" INTERFACE_INCLUDE_DIRECTORIES
                                                              "${Sane_INCLUDE_DIR}")
endif()
mark_as_advanced(Sane_INCLUDE_DIR Sane_LIBRARY)
