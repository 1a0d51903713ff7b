# What `cmake --install` puts where, in three components: runtime, development, tools. No installed file names the prefix, so
# that a tree may be installed here and used there.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/korv_libyang)
set(pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

file(RELATIVE_PATH KORV_LIBDIR ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_LIBDIR})
file(RELATIVE_PATH KORV_INCLUDEDIR ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_INCLUDEDIR})
file(RELATIVE_PATH KORV_PREFIX_FROM_PC ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" KORV_PREFIX_FROM_PC ${KORV_PREFIX_FROM_PC})
file(RELATIVE_PATH KORV_LIBDIR_FROM_BINDIR ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})

# One imported target and one pkg-config file a piece: they do not know each other, since a host may bring its own layers.
function(korv_install_piece piece description)
  install(TARGETS ${piece} EXPORT korv_libyang
          LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development)
  configure_file(${CMAKE_SOURCE_DIR}/cmake/korv.pc.in ${piece}.pc @ONLY)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${piece}.pc DESTINATION ${pkgconfig_dir} COMPONENT development)
endfunction()
korv_install_piece(korv_libyang "${PROJECT_DESCRIPTION}")
korv_install_piece(qxyang "Schema layer of libkorv_libyang: loads, expands and checks YIN files")
korv_install_piece(korv_platform "Host services of libkorv_libyang, for hosts that bring none of their own")
if(KORV_FIND_LAYERS) # nobody links it
  set_target_properties(korv_layers PROPERTIES INSTALL_RPATH "$ORIGIN")
  install(TARGETS korv_layers LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_SKIP)
endif()

install(EXPORT korv_libyang NAMESPACE korv_libyang:: FILE korv_libyangConfig.cmake DESTINATION ${package_dir}
        COMPONENT development)
write_basic_package_version_file(korv_libyangConfigVersion.cmake COMPATIBILITY ${KORV_COMPATIBLE})
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/korv_libyangConfigVersion.cmake DESTINATION ${package_dir}
        COMPONENT development)

install(FILES include/korv_lib_yang.h include/korv_lib_yang_query.h include/korv_platform.h include/qxyang.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
        COMPONENT development)
install(FILES include/korv_lib_yang.hpp DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
install(DIRECTORY include/korv_lib_yang_cpp DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
# For hosts that call the lower units: <korv_lib_yang/telem_yang/telem_yang.h>, and so on.
foreach(unit telem_yang_lib telem_yang korv_lib_yang)
  install(FILES korv_lib_yang/${unit}/${unit}.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/korv_lib_yang/${unit}
          COMPONENT development)
endforeach()

# The schema layer finds it from where its own library lies: qxyang/files/own_models.cpp.
install(FILES examples/yin/quelvo-mim-extensions.yin DESTINATION ${CMAKE_INSTALL_DATADIR}/korv_libyang/models
        COMPONENT runtime)

install(FILES README.md CHANGELOG.md CONTRIBUTING.md SECURITY.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development)
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development PATTERN *.in EXCLUDE
        PATTERN schemas EXCLUDE)
install(DIRECTORY examples/host_c examples/host_cpp examples/python examples/yin DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples
        COMPONENT development)

if(KORV_BUILD_INSPECT)
  set_target_properties(korv-inspect PROPERTIES INSTALL_RPATH "$ORIGIN/${KORV_LIBDIR_FROM_BINDIR}")
  install(TARGETS korv-inspect RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)
  install(FILES inspect/line/korv-inspect.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
          RENAME korv-inspect COMPONENT tools)
  install(FILES inspect/line/korv-inspect.zsh DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions
          RENAME _korv-inspect COMPONENT tools)
  install(FILES inspect/line/korv-inspect.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d
          COMPONENT tools)
  install(DIRECTORY docs/schemas DESTINATION ${CMAKE_INSTALL_DATADIR}/korv-inspect COMPONENT tools)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/inspect/korv-inspect.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tools)
endif()
