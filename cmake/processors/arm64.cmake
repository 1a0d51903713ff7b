# 64 bits, little-endian.
set(KORV_ARCHITECTURE arm64)
set(KORV_PROCESSOR aarch64)
set(KORV_TRIPLET aarch64-linux-gnu)
include(${CMAKE_CURRENT_LIST_DIR}/foreign.cmake)
