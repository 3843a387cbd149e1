# `cpack` in a build folder makes three Debian packages of its build: for running hosts, for HTML views in them, and for
# building hosts. What they depend on is read from the libraries; only what is loaded later is named here.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME qkuilib)
set(CPACK_PACKAGE_VENDOR QKUILib)
set(CPACK_PACKAGE_CONTACT "The QKUILib developers <qkuilib@localhost>")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime html development)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(library_package libqkuilib${PROJECT_VERSION_MAJOR})
set(same_library "${library_package} (= ${PROJECT_VERSION})")

# What packages of hosts depend on.
file(WRITE ${PROJECT_BINARY_DIR}/packages/shlibs
     "libQKUILib ${PROJECT_VERSION_MAJOR} ${library_package} (>= ${PROJECT_VERSION})\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/packages/shlibs)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${library_package})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_RECOMMENDS "fonts-dejavu-core, libcurl4")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SUGGESTS qkuilib-html)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "Skinned desktop dialogs, the library
Dialogs that draw their whole surface themselves, with alpha where they like, and
lightweight drawn items: buttons, texts, pictures, lists of icons.")

set(CPACK_DEBIAN_HTML_PACKAGE_NAME qkuilib-html)
set(CPACK_DEBIAN_HTML_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_HTML_PACKAGE_DEPENDS "${same_library}")
set(CPACK_COMPONENT_HTML_DESCRIPTION "Skinned desktop dialogs, the browser of their HTML views")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libqkuilib-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${same_library}")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_RECOMMENDS "cmake, g++, llvm") # llvm-rc compiles hosts' resources
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "Skinned desktop dialogs, for building programs with them")
include(CPack)
