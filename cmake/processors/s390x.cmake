# 64 bits, big-endian.
set(KORV_ARCHITECTURE s390x)
set(KORV_PROCESSOR s390x)
set(KORV_TRIPLET s390x-linux-gnu)
include(${CMAKE_CURRENT_LIST_DIR}/foreign.cmake)
