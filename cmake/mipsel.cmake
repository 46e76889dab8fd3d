set(CLI_ARCH mipsel)
include("${CMAKE_CURRENT_LIST_DIR}/debian.cmake")
