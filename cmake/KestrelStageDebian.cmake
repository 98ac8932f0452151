# Run by CPack between staging and packing: what Debian wants of a package beyond what was installed.
# Sets the dependencies on shared libraries itself, so that the library's package gets the trigger of
# today's Debian and no maintainer scripts that call ldconfig.
set(staged "${CPACK_TEMPORARY_DIRECTORY}")
set(documents_mode OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)

# Built again from the same sources, a package has the same bytes: its time is the changelog's.
if("$ENV{SOURCE_DATE_EPOCH}" STREQUAL "")
  execute_process(
    COMMAND dpkg-parsechangelog -l "${CPACK_KESTREL_DEBIAN_DIR}/changelog" -S Timestamp
    OUTPUT_VARIABLE timestamp
    OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  set(ENV{SOURCE_DATE_EPOCH} "${timestamp}")
endif()

function(kestrel_gzip source target)
  execute_process(COMMAND gzip -9nc "${source}" OUTPUT_FILE "${target}" COMMAND_ERROR_IS_FATAL ANY)
  file(CHMOD "${target}" PERMISSIONS ${documents_mode})
endfunction()

function(kestrel_stage_documents root package)
  set(documents "${root}/share/doc/${package}")
  file(
    COPY "${CPACK_KESTREL_DEBIAN_DIR}/copyright"
    DESTINATION "${documents}"
    FILE_PERMISSIONS ${documents_mode})
  kestrel_gzip("${CPACK_KESTREL_DEBIAN_DIR}/changelog" "${documents}/changelog.Debian.gz")
  kestrel_gzip("${CPACK_KESTREL_DEBIAN_DIR}/../../CHANGELOG.md" "${documents}/changelog.gz")
  file(GLOB pages "${root}/share/man/man*/*.[1-8]")
  foreach(page IN LISTS pages)
    kestrel_gzip("${page}" "${page}.gz")
    file(REMOVE "${page}")
  endforeach()
  configure_file("${CPACK_KESTREL_DEBIAN_DIR}/lintian-overrides" "${root}/share/lintian/overrides/${package}"
                 COPYONLY)
  file(CHMOD "${root}/share/lintian/overrides/${package}" PERMISSIONS ${documents_mode})
endfunction()

# The programs and libraries among the files of a component.
function(kestrel_linked_files component result)
  file(GLOB_RECURSE files "${staged}/${component}/*")
  set(linked "")
  foreach(file IN LISTS files)
    if(NOT IS_SYMLINK "${file}")
      file(READ "${file}" magic LIMIT 4 HEX)
      if(magic STREQUAL 7f454c46)
        list(APPEND linked "${file}")
      endif()
    endif()
  endforeach()
  set(${result} "${linked}" PARENT_SCOPE)
endfunction()

# The packages with the libraries that these files are linked with.
function(kestrel_library_dependencies component package files result)
  # dpkg-shlibdeps wants to be where a source package is.
  set(work "${staged}-shlibdeps/${component}")
  file(MAKE_DIRECTORY "${work}/debian")
  file(WRITE "${work}/debian/control" "Source: kestrel-settingui\n\nPackage: ${package}\nArchitecture: any\n")
  configure_file("${CPACK_KESTREL_DEBIAN_DIR}/libkestrel-settingui1/shlibs" "${work}/debian/shlibs.local" COPYONLY)
  file(GLOB libraries "${staged}/runtime/usr/lib/*/libkestrel-settingui.so.*")
  list(GET libraries 0 library)
  cmake_path(GET library PARENT_PATH library_dir)
  execute_process(
    COMMAND dpkg-shlibdeps -O "-l${library_dir}" ${files}
    WORKING_DIRECTORY "${work}"
    OUTPUT_VARIABLE answer
    ERROR_VARIABLE complaints
    RESULT_VARIABLE failed
    OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(failed)
    message(FATAL_ERROR "dpkg-shlibdeps: ${complaints}")
  endif()
  string(REGEX REPLACE "^shlibs:Depends=" "" answer "${answer}")
  set(${result} "${answer}" PARENT_SCOPE)
endfunction()

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER ${component} upper)
  set(package "${CPACK_DEBIAN_${upper}_PACKAGE_NAME}")
  kestrel_stage_documents("${staged}/${component}/usr" ${package})
  kestrel_linked_files(${component} linked)
  if(linked)
    execute_process(COMMAND strip --strip-unneeded --remove-section=.comment --remove-section=.note ${linked}
                            COMMAND_ERROR_IS_FATAL ANY)
    kestrel_library_dependencies(${component} ${package} "${linked}" libraries)
    # The library's own package is named with its exact version where it is needed.
    string(REGEX REPLACE "(, )?libkestrel-settingui1 \\([^)]*\\)" "" libraries "${libraries}")
    string(REGEX REPLACE "^, " "" libraries "${libraries}")
    list(APPEND CPACK_DEBIAN_${upper}_PACKAGE_DEPENDS "${libraries}")
    list(JOIN CPACK_DEBIAN_${upper}_PACKAGE_DEPENDS ", " CPACK_DEBIAN_${upper}_PACKAGE_DEPENDS)
  endif()
endforeach()
