# Lets the library find the project's own layers when nobody else brings any: dlopen of libkorv_libyang.so alone will do.
#
# The library names libkorv_layers.so in an auxiliary entry (DT_AUXILIARY): the run-time linker of the GNU C library loads
# such a file if it lies beside the library, and goes on without a word if it does not. A plain dependency would have to
# be there. libkorv_layers.so itself is empty and depends on the two layers. So they come into the search order behind
# everything that the program itself was linked with, and a device's layers win over them.
if(KORV_SANITIZE)
  set(KORV_FIND_LAYERS OFF) # AddressSanitizer takes a device's g_aucZorMemPt and ours for one variable defined twice
endif()
if(KORV_FIND_LAYERS)
  set(layers_source ${CMAKE_BINARY_DIR}/korv_layers.c)
  file(CONFIGURE OUTPUT ${layers_source} CONTENT "typedef int KORV_LAYERS_T; /* no code of its own */\n")
  korv_shared_library(korv_layers ${layers_source})
  target_link_options(korv_layers PRIVATE -Wl,--no-as-needed)
  target_link_libraries(korv_layers PRIVATE qxyang korv_platform)
  # In a file, since a "$" on the command line means something to the shell and to each generator.
  set(layers_option ${CMAKE_BINARY_DIR}/korv_layers.option)
  file(CONFIGURE OUTPUT ${layers_option} CONTENT "--auxiliary=$ORIGIN/libkorv_layers.so.${KORV_SOVERSION}\n")
  target_link_options(korv_libyang PRIVATE "LINKER:@${layers_option}")
  add_dependencies(korv_libyang korv_layers)
endif()
