# Three Debian packages: the library, what developers need, and the simulated scanner with the program
# that shows it. packaging/build-packages.sh makes them: the prefix has to be /usr.
set(debian "${CMAKE_CURRENT_SOURCE_DIR}/packaging/debian")

set(KESTREL_VENDOR_DIR "${CMAKE_INSTALL_FULL_LIBDIR}/kestrel-settingui/simulator/vendor")
set(generated "${CMAKE_CURRENT_BINARY_DIR}/debian")
foreach(script postinst prerm)
  configure_file("${debian}/kestrel-settingui-demo/${script}.in" "${generated}/${script}" @ONLY)
endforeach()

set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kestrel-settingui)
set(CPACK_PACKAGE_VENDOR "The Kestrel SettingUI developers")
set(CPACK_PACKAGE_CONTACT "The Kestrel SettingUI developers <developers@kestrel-settingui.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # the first line of each description
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_THREADS 1)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS "${CMAKE_CURRENT_SOURCE_DIR}/cmake/KestrelStageDebian.cmake")
set(CPACK_KESTREL_DEBIAN_DIR "${debian}")

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime dev demo)
set(debian_version "${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libkestrel-settingui1)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_RECOMMENDS "fonts-noto-cjk | fonts-wqy-microhei | fonts-wqy-zenhei")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA
    "${debian}/libkestrel-settingui1/shlibs;${debian}/libkestrel-settingui1/symbols;${debian}/libkestrel-settingui1/triggers"
)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
    "scan-settings dialog for SANE document scanners
A dialog in Simplified Chinese that scanning programs embed: paper sources,
sizes and areas, image modes of both sides, colour detection, a preview to
draw the scan area on, and user templates, for feeder and flatbed scanners
that are driven through SANE.

This package contains the shared library.")

set(CPACK_DEBIAN_DEV_PACKAGE_NAME libkestrel-settingui-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS
    "libkestrel-settingui1 (= ${debian_version}), libsane-dev, qtbase5-dev (>= 5.15)")
set(CPACK_DEBIAN_DEV_PACKAGE_SUGGESTS "kestrel-settingui-demo")
set(CPACK_COMPONENT_DEV_DESCRIPTION
    "scan-settings dialog for SANE document scanners (development files)
A dialog in Simplified Chinese that scanning programs embed: paper sources,
sizes and areas, image modes of both sides, colour detection, a preview to
draw the scan area on, and user templates, for feeder and flatbed scanners
that are driven through SANE.

This package contains the header, the CMake package and the pkg-config
module, and a small host program to start from.")

set(CPACK_DEBIAN_DEMO_PACKAGE_NAME kestrel-settingui-demo)
set(CPACK_DEBIAN_DEMO_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_DEMO_PACKAGE_DEPENDS "libkestrel-settingui1 (= ${debian_version})")
set(CPACK_DEBIAN_DEMO_PACKAGE_RECOMMENDS qt5-image-formats-plugins) # for TIFF
set(CPACK_DEBIAN_DEMO_PACKAGE_SUGGESTS sane-utils)
set(CPACK_DEBIAN_DEMO_PACKAGE_CONTROL_EXTRA
    "${generated}/postinst;${generated}/prerm")
set(CPACK_COMPONENT_DEMO_DESCRIPTION
    "scanning program and simulated document scanner
kestrel-scan is a small program that scans documents with any SANE scanner
and saves them as PDF, PNG or TIFF. It shows how the scan-settings dialog of
libkestrel-settingui is used.

With it comes a family of simulated document scanners, a SANE backend that
needs no hardware: \"kestrel-scan --simulator\" scans with them. They lie in a
folder of their own, beside what SANE loads by itself.")

include(CPack)
