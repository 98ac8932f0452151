# What a developer of a host finds the installed library with: a CMake package and a pkg-config module.
# Both find their way from where they lie, so that the installed tree may be moved.
include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/KestrelSettingUI")
configure_package_config_file(
  cmake/KestrelSettingUIConfig.cmake.in "${CMAKE_CURRENT_BINARY_DIR}/KestrelSettingUIConfig.cmake"
  INSTALL_DESTINATION "${package_dir}"
  PATH_VARS KESTREL_TRANSLATIONS_DIR
  NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file("${CMAKE_CURRENT_BINARY_DIR}/KestrelSettingUIConfigVersion.cmake"
                                 COMPATIBILITY SameMajorVersion)
install(
  FILES "${CMAKE_CURRENT_BINARY_DIR}/KestrelSettingUIConfig.cmake"
        "${CMAKE_CURRENT_BINARY_DIR}/KestrelSettingUIConfigVersion.cmake" cmake/FindSane.cmake
  DESTINATION "${package_dir}"
  COMPONENT dev)
install(
  EXPORT KestrelSettingUITargets
  NAMESPACE KestrelSettingUI::
  DESTINATION "${package_dir}"
  COMPONENT dev)

set(pkgconfig_dir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
file(RELATIVE_PATH KESTREL_PREFIX_FROM_PC "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${CMAKE_INSTALL_PREFIX}")
configure_file(packaging/kestrel-settingui.pc.in kestrel-settingui.pc @ONLY)
install(
  FILES "${CMAKE_CURRENT_BINARY_DIR}/kestrel-settingui.pc"
  DESTINATION "${pkgconfig_dir}"
  COMPONENT dev)

set(documents "${CMAKE_INSTALL_DATADIR}/doc/libkestrel-settingui-dev")
install(
  FILES docs/host-guide.md docs/settings.md
  DESTINATION "${documents}"
  COMPONENT dev)
# The smallest host that does everything; the tests build it against the installed tree.
install(
  FILES tests/package/consumer/CMakeLists.txt tests/package/consumer/main.cpp
  DESTINATION "${documents}/examples/host"
  COMPONENT dev)
