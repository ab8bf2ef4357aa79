# SPDX-License-Identifier: MIT
# Install rules and the packages that find_package and pkg-config read. Included after every subsystem,
# because the list of public headers is complete only then.

include(CMakePackageConfigHelpers)

set(J6CORE_INSTALL_HEADERDIR "${CMAKE_INSTALL_INCLUDEDIR}/j6Core")
set(J6CORE_INSTALL_CMAKEDIR "${CMAKE_INSTALL_LIBDIR}/cmake/j6Core")
set(J6CORE_PACKAGE_DIR "${PROJECT_BINARY_DIR}/package")

# Fails for a header in include/ that no subsystem lists: it would compile here and be missing where it is
# installed.
function(j6_require_listed_headers listed)
    file(GLOB present CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/include/*.h")
    list(REMOVE_ITEM present ${listed})
    if(present)
        message(FATAL_ERROR "In include/ but in the HEADERS of no j6_subsystem(): ${present}")
    endif()
endfunction()

function(j6_install_library)
    get_property(headers GLOBAL PROPERTY J6CORE_PUBLIC_HEADERS)
    j6_require_listed_headers("${headers}")
    install(FILES ${headers}
        "${J6CORE_GENERATED_INCLUDE_DIR}/j6Core_export.h"
        "${J6CORE_GENERATED_INCLUDE_DIR}/j6Core_version.h"
        DESTINATION "${J6CORE_INSTALL_HEADERDIR}")
    set_target_properties(j6Core PROPERTIES INSTALL_RPATH "")
    install(TARGETS j6Core EXPORT j6CoreTargets
        RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}"
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
        ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}")
endfunction()

function(j6_install_cmake_package)
    install(EXPORT j6CoreTargets NAMESPACE j6Core:: DESTINATION "${J6CORE_INSTALL_CMAKEDIR}")
    configure_package_config_file(
        "${PROJECT_SOURCE_DIR}/cmake/j6CoreConfig.cmake.in" "${J6CORE_PACKAGE_DIR}/j6CoreConfig.cmake"
        INSTALL_DESTINATION "${J6CORE_INSTALL_CMAKEDIR}"
        NO_SET_AND_CHECK_MACRO)
    write_basic_package_version_file("${J6CORE_PACKAGE_DIR}/j6CoreConfigVersion.cmake"
        COMPATIBILITY SameMajorVersion)
    install(FILES
        "${J6CORE_PACKAGE_DIR}/j6CoreConfig.cmake"
        "${J6CORE_PACKAGE_DIR}/j6CoreConfigVersion.cmake"
        DESTINATION "${J6CORE_INSTALL_CMAKEDIR}")
endfunction()

function(j6_install_pkgconfig_file)
    # From the file's own directory, so that an installed tree may be moved.
    file(RELATIVE_PATH J6CORE_PC_PREFIX
        "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${CMAKE_INSTALL_PREFIX}")
    string(REGEX REPLACE "/$" "" J6CORE_PC_PREFIX "${J6CORE_PC_PREFIX}")
    file(RELATIVE_PATH J6CORE_PC_LIBDIR "${CMAKE_INSTALL_PREFIX}" "${CMAKE_INSTALL_FULL_LIBDIR}")
    file(RELATIVE_PATH J6CORE_PC_HEADERDIR
        "${CMAKE_INSTALL_PREFIX}" "${CMAKE_INSTALL_FULL_INCLUDEDIR}/j6Core")
    set(J6CORE_PC_CFLAGS "")
    if(Qt5_POSITION_INDEPENDENT_CODE AND NOT WIN32)
        # Qt's headers demand it, and Qt's own pkg-config files do not pass it on.
        string(APPEND J6CORE_PC_CFLAGS " -fPIC")
    endif()
    if(NOT BUILD_SHARED_LIBS)
        string(APPEND J6CORE_PC_CFLAGS " -DJ6CORE_STATIC_DEFINE")
    endif()
    configure_file("${PROJECT_SOURCE_DIR}/cmake/j6Core.pc.in" "${J6CORE_PACKAGE_DIR}/j6Core.pc" @ONLY)
    install(FILES "${J6CORE_PACKAGE_DIR}/j6Core.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
endfunction()

j6_install_library()
j6_install_cmake_package()
j6_install_pkgconfig_file()
