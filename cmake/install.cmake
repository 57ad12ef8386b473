# What an installation holds: headers, libraries, a CMake package and a pkg-config file. Nothing in
# it knows where it was built or where it stands.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Dorvale)
set(generated ${PROJECT_BINARY_DIR}/package)

install(
    TARGETS Dorvale DataManager
    EXPORT DorvaleTargets
    RUNTIME COMPONENT runtime
    LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
    ARCHIVE COMPONENT development
)
install(
    DIRECTORY ${PROJECT_SOURCE_DIR}/include/dorvale
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
    COMPONENT development
)

install(
    EXPORT DorvaleTargets
    NAMESPACE Dorvale::
    DESTINATION ${package_dir}
    COMPONENT development
)
configure_package_config_file(
    ${CMAKE_CURRENT_LIST_DIR}/DorvaleConfig.cmake.in ${generated}/DorvaleConfig.cmake
    INSTALL_DESTINATION ${package_dir}
)
write_basic_package_version_file(
    ${generated}/DorvaleConfigVersion.cmake COMPATIBILITY SameMajorVersion
)
install(
    FILES ${generated}/DorvaleConfig.cmake ${generated}/DorvaleConfigVersion.cmake
    DESTINATION ${package_dir}
    COMPONENT development
)

# The way from the pkg-config file up to the prefix.
file(RELATIVE_PATH pc_prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(${CMAKE_CURRENT_LIST_DIR}/dorvale.pc.in ${generated}/dorvale.pc @ONLY)
install(
    FILES ${generated}/dorvale.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
    COMPONENT development
)
