# Builds for MIPS32, little-endian. With CLI_MIPS16E for those that know the instructions of half the length too.
set(CLI_ARCH mipsel)
include("${CMAKE_CURRENT_LIST_DIR}/debian.cmake")

# This architecture's default is code for any address, whether the program is linked to have one or not.
set(CMAKE_CXX_FLAGS_INIT "-fno-pic -mplt")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-no-pie")
if(CLI_MIPS16E)
  list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES CLI_MIPS16E)
  string(APPEND CMAKE_CXX_FLAGS_INIT " -mips16")
  # These instructions swap no bytes: a call to the compiler's library does.
  string(APPEND CMAKE_EXE_LINKER_FLAGS_INIT " -static-libgcc")
endif()
