# What every target of this project has in common.

if(KORV_LIBCXX) # the test framework as well
  add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-stdlib=libc++>)
  add_link_options(-stdlib=libc++)
endif()

add_library(korv_warnings INTERFACE)
target_compile_options(korv_warnings INTERFACE -Wall -Wextra -Wshadow -Wconversion -Werror)

add_library(korv_instrument INTERFACE)
if(KORV_SANITIZE)
  target_compile_options(korv_instrument INTERFACE -fsanitize=${KORV_SANITIZE} -fno-sanitize-recover=all
                                                   -fno-omit-frame-pointer)
  target_link_options(korv_instrument INTERFACE -fsanitize=${KORV_SANITIZE})
  # In instrumented code gcc believes that the standard library reads what it has not set.
  target_compile_options(korv_warnings INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
endif()
if(KORV_COVERAGE)
  target_compile_options(korv_instrument INTERFACE --coverage)
  target_link_options(korv_instrument INTERFACE --coverage)
endif()
if(KORV_HARDEN)
  target_compile_options(korv_instrument INTERFACE -D_GLIBCXX_ASSERTIONS -fstack-protector-strong
                                                   -fstack-clash-protection)
  # Some compilers define it themselves, and all of them have to optimise for it.
  target_compile_options(korv_instrument INTERFACE $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=3>)
  target_link_options(korv_instrument INTERFACE -Wl,-z,relro,-z,now)
endif()

# A program or library of this project: its warnings, its instrumentation, the public headers. __FILE__ is the path below
# the project's root.
function(korv_target name)
  target_link_libraries(${name} PRIVATE korv_warnings korv_instrument)
  target_compile_options(${name} PRIVATE -fmacro-prefix-map=${CMAKE_SOURCE_DIR}/=)
  target_include_directories(${name} PUBLIC $<BUILD_INTERFACE:${CMAKE_SOURCE_DIR}/include>
                                            $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
endfunction()

# What hosts of a version can rely on is its major version, and while that is 0, its minor version, too.
set(KORV_COMPATIBLE SameMajorVersion)
set(KORV_SOVERSION ${PROJECT_VERSION_MAJOR})
if(PROJECT_VERSION_MAJOR EQUAL 0)
  set(KORV_COMPATIBLE SameMinorVersion)
  set(KORV_SOVERSION 0.${PROJECT_VERSION_MINOR})
endif()

# A shared library that exports what its headers mark and nothing else.
function(korv_shared_library name)
  add_library(${name} SHARED ${ARGN})
  korv_target(${name})
  set_target_properties(${name} PROPERTIES C_VISIBILITY_PRESET hidden CXX_VISIBILITY_PRESET hidden
                                           VISIBILITY_INLINES_HIDDEN ON
                                           VERSION ${PROJECT_VERSION} SOVERSION ${KORV_SOVERSION})
  # Calls within a library stay within it: no host can slip between two of its own functions.
  target_link_options(${name} PRIVATE -Wl,-Bsymbolic-functions)
endfunction()
