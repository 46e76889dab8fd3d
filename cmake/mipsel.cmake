# Builds for MIPS32, little-endian. With CLI_MIPS16E, uses the short instructions of MIPS16e.
set(CLI_ARCH mipsel)
include("${CMAKE_CURRENT_LIST_DIR}/debian.cmake")

# On MIPS the compiler makes position-independent code by default, even for a program at a fixed address.
set(CMAKE_CXX_FLAGS_INIT "-fno-pic -mplt")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-no-pie")
if(CLI_MIPS16E)
  list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES CLI_MIPS16E)
  string(APPEND CMAKE_CXX_FLAGS_INIT " -mips16")
  # MIPS16e has no instruction that swaps bytes; the compiler calls its library.
  string(APPEND CMAKE_EXE_LINKER_FLAGS_INIT " -static-libgcc")
endif()
