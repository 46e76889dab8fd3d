# Builds for Debian's architecture CLI_ARCH, with the packages that scripts/sysroot has downloaded.
if(NOT CLI_ARCH)
  message(FATAL_ERROR "CLI_ARCH names no architecture of Debian")
endif()
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES CLI_ARCH)

execute_process(COMMAND dpkg-architecture -f -A "${CLI_ARCH}" -q DEB_TARGET_GNU_TYPE
  OUTPUT_VARIABLE triplet OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET COMMAND_ERROR_IS_FATAL ANY)
string(REGEX REPLACE "-.*" "" CMAKE_SYSTEM_PROCESSOR "${triplet}")
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_C_COMPILER "${triplet}-gcc")
set(CMAKE_CXX_COMPILER "${triplet}-g++")
set(CMAKE_CXX_FLAGS_MINSIZEREL_INIT "-ffunction-sections -fdata-sections -fvisibility=hidden")
set(CMAKE_EXE_LINKER_FLAGS_MINSIZEREL_INIT "-Wl,--gc-sections")

cmake_path(SET CMAKE_SYSROOT NORMALIZE "${CMAKE_CURRENT_LIST_DIR}/../build/sysroot/${CLI_ARCH}")
if(NOT EXISTS "${CMAKE_SYSROOT}")
  message(FATAL_ERROR "no ${CMAKE_SYSROOT}: scripts/sysroot ${CLI_ARCH} fetches what it takes")
endif()
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Finds the full path of the emulator. On a simulated device, PATH holds only the device's tools.
string(REGEX REPLACE "^i[3-6]86$" "i386" processor "${CMAKE_SYSTEM_PROCESSOR}")
string(REPLACE "powerpc" "ppc" processor "${processor}")
find_program(CLI_EMULATOR "qemu-${processor}" REQUIRED)
set(CMAKE_CROSSCOMPILING_EMULATOR "${CLI_EMULATOR};-L;${CMAKE_SYSROOT}")
