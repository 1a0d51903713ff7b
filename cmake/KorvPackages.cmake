# The Debian packages that cpack makes, one a component.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME korv-libyang)
set(CPACK_PACKAGE_VENDOR "")
if(NOT CPACK_PACKAGE_CONTACT)
  set(CPACK_PACKAGE_CONTACT "libkorv_libyang maintainers <maintainers@localhost>")
endif()
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_OUTPUT_FILE_PREFIX ${CMAKE_BINARY_DIR}/packages)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON) # on one another, in the same version
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})

# Two incompatible versions can be installed side by side: the runtime's name has the version that hosts are linked with.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libkorv-libyang${KORV_SOVERSION})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
    "The library libkorv_libyang, its schema layer and its host services.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libkorv-libyang-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
    "Headers, CMake and pkg-config files, documents and examples of libkorv_libyang.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME korv-inspect)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SUGGESTS "graphviz, less")
set(CPACK_COMPONENT_TOOLS_DESCRIPTION
    "The program korv-inspect shows and checks what a device makes of YANG modules.")

set(CPACK_COMPONENTS_ALL runtime development)
if(KORV_BUILD_INSPECT)
  list(APPEND CPACK_COMPONENTS_ALL tools)
  # The notices of the header libraries that the program is compiled with, where Debian's packages of them have them.
  foreach(headers libcli11 rapidjson)
    install(FILES /usr/share/doc/${headers}-dev/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/korv-inspect
            RENAME copyright.${headers} COMPONENT tools OPTIONAL)
  endforeach()
endif()
if(KORV_BUILD_PYTHON)
  list(APPEND CPACK_COMPONENTS_ALL python)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-korv)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
  math(EXPR next_minor "${Python3_VERSION_MINOR} + 1") # the extension module is for one minor version
  set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS
      "python3 (>= 3.${Python3_VERSION_MINOR}), python3 (<< 3.${next_minor})")
  set(CPACK_COMPONENT_PYTHON_DESCRIPTION "The Python package korv: class models of YANG modules as objects.")
  # The notice of the headers that the extension module is compiled with, where Debian's package of them has it.
  install(FILES /usr/share/doc/pybind11-dev/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/python3-korv
          RENAME copyright.pybind11 COMPONENT python OPTIONAL)
endif()
foreach(component ${CPACK_COMPONENTS_ALL})
  string(TOUPPER ${component} upper)
  install(FILES cmake/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME}
          COMPONENT ${component})
endforeach()
include(CPack)
cpack_add_component(runtime)
cpack_add_component(development DEPENDS runtime)
cpack_add_component(tools DEPENDS runtime)
cpack_add_component(python DEPENDS runtime)
