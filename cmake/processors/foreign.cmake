# Another processor's programs: Debian's cross compiler, that processor's packages in build/sysroot (.ci/sysroot), and an
# emulator. Who includes this file has set KORV_ARCHITECTURE (Debian's name), KORV_PROCESSOR (the emulator's) and
# KORV_TRIPLET (the compiler's).
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR ${KORV_PROCESSOR})
get_filename_component(CMAKE_SYSROOT ${CMAKE_CURRENT_LIST_DIR}/../../build/sysroot/${KORV_ARCHITECTURE} ABSOLUTE)
set(CMAKE_LIBRARY_ARCHITECTURE ${KORV_TRIPLET})
set(CMAKE_C_COMPILER ${KORV_TRIPLET}-gcc)
set(CMAKE_CXX_COMPILER ${KORV_TRIPLET}-g++)
set(CMAKE_CROSSCOMPILING_EMULATOR "qemu-${KORV_PROCESSOR};-L;${CMAKE_SYSROOT}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)
set(ENV{PKG_CONFIG_SYSROOT_DIR} ${CMAKE_SYSROOT})
set(ENV{PKG_CONFIG_LIBDIR} ${CMAKE_SYSROOT}/usr/lib/${KORV_TRIPLET}/pkgconfig:${CMAKE_SYSROOT}/usr/share/pkgconfig)
