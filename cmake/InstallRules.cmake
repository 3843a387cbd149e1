# What a host builds against: the library, its headers under include/QKUILib (the root of <QKUILib.h>, of
# <qkui/...> and of <platform/...>), a CMake package and a pkg-config file. All can be moved to another place together.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)
set(QKUI_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/QKUILib)

# What running a host takes is `runtime`, what building one takes besides is `development`; HTML views are apart,
# since they bring a browser.
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME development)

install(TARGETS QKUILib QKUIMain QKUICustomaryHeaders EXPORT QKUILibTargets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
        INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/QKUILib)
install(TARGETS QKUILib-webkit LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT html) # found beside the library
install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/QKUILib)

install(EXPORT QKUILibTargets NAMESPACE QKUILib:: DESTINATION ${QKUI_PACKAGE_DIR})
configure_package_config_file(cmake/QKUILibConfig.cmake.in ${PROJECT_BINARY_DIR}/QKUILibConfig.cmake
                              INSTALL_DESTINATION ${QKUI_PACKAGE_DIR} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/QKUILibConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/QKUILibConfig.cmake ${PROJECT_BINARY_DIR}/QKUILibConfigVersion.cmake
              cmake/QKUIResources.cmake cmake/QKUIResourceScript.cmake
        DESTINATION ${QKUI_PACKAGE_DIR})

# The prefix is named from where the file lies.
if(PLATFORM_DEBUG_CONTAINERS)
    set(QKUI_PC_DEFINITIONS " -DPLATFORM_DEBUG_CONTAINERS")
else()
    set(QKUI_PC_DEFINITIONS "")
endif()
file(RELATIVE_PATH QKUI_PREFIX_FROM_PC ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
configure_file(cmake/QKUILib.pc.in ${PROJECT_BINARY_DIR}/QKUILib.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/QKUILib.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# Takes away what the last install put in place, and the folders of its own.
if(PROJECT_IS_TOP_LEVEL)
    add_custom_target(uninstall
        COMMAND ${CMAKE_COMMAND} -DMANIFEST=${PROJECT_BINARY_DIR}/install_manifest.txt
                -P ${PROJECT_SOURCE_DIR}/cmake/Uninstall.cmake
        VERBATIM)
    include(DebianPackages)
endif()
