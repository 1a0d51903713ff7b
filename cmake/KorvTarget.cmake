# What every target of this project has in common.

add_library(korv_warnings INTERFACE)
target_compile_options(korv_warnings INTERFACE -Wall -Wextra -Wshadow -Wconversion -Werror)

add_library(korv_instrument INTERFACE)
if(KORV_SANITIZE)
  target_compile_options(korv_instrument INTERFACE -fsanitize=${KORV_SANITIZE} -fno-sanitize-recover=all
                                                   -fno-omit-frame-pointer)
  target_link_options(korv_instrument INTERFACE -fsanitize=${KORV_SANITIZE})
endif()
if(KORV_COVERAGE)
  target_compile_options(korv_instrument INTERFACE --coverage)
  target_link_options(korv_instrument INTERFACE --coverage)
endif()

# A program or library of this project: its warnings, its instrumentation, the public headers. __FILE__ is the path below
# the project's root.
function(korv_target name)
  target_link_libraries(${name} PRIVATE korv_warnings korv_instrument)
  target_compile_options(${name} PRIVATE -fmacro-prefix-map=${CMAKE_SOURCE_DIR}/=)
  target_include_directories(${name} PUBLIC $<BUILD_INTERFACE:${CMAKE_SOURCE_DIR}/include>
                                            $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
endfunction()

# A shared library that exports what its headers mark and nothing else.
function(korv_shared_library name)
  add_library(${name} SHARED ${ARGN})
  korv_target(${name})
  set_target_properties(${name} PROPERTIES C_VISIBILITY_PRESET hidden CXX_VISIBILITY_PRESET hidden
                                           VISIBILITY_INLINES_HIDDEN ON
                                           VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
  # Calls within a library stay within it: no host can slip between two of its own functions.
  target_link_options(${name} PRIVATE -Wl,-Bsymbolic-functions)
endfunction()
