# Cross-building for the BMC's 32-bit ARM (Debian armhf) against a sysroot
# made by scripts/make-armhf-sysroot.sh:
#   cmake -DCMAKE_TOOLCHAIN_FILE=cmake/armhf-toolchain.cmake -DBMC_ARMHF_SYSROOT=DIR
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(CMAKE_LIBRARY_ARCHITECTURE arm-linux-gnueabihf)
set(CMAKE_C_COMPILER arm-linux-gnueabihf-gcc)
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)

# Checks of the compiler run in their own projects, which see only the
# variables listed here.
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES BMC_ARMHF_SYSROOT)
if(NOT BMC_ARMHF_SYSROOT)
  message(FATAL_ERROR "BMC_ARMHF_SYSROOT: the armhf sysroot's directory")
endif()
set(CMAKE_SYSROOT ${BMC_ARMHF_SYSROOT})
set(CMAKE_FIND_ROOT_PATH ${BMC_ARMHF_SYSROOT})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The programs run on this machine under qemu-user, started by lighttpd and
# by each other with no emulator settings in their environment: each names
# the sysroot's loader and libraries itself, for the libraries' own
# dependencies too (an RPATH, not a RUNPATH). An image for a real BMC links
# without these.
set(CMAKE_EXE_LINKER_FLAGS_INIT
    "-Wl,--dynamic-linker=${BMC_ARMHF_SYSROOT}/lib/ld-linux-armhf.so.3 -Wl,--disable-new-dtags -Wl,-rpath,${BMC_ARMHF_SYSROOT}/lib/arm-linux-gnueabihf:${BMC_ARMHF_SYSROOT}/usr/lib/arm-linux-gnueabihf")
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm-static)
# GCC's notes on an argument-passing change of GCC 7.1: nothing of this
# build links code compiled before it.
set(CMAKE_CXX_FLAGS_INIT -Wno-psabi)

# The target has no sanitizer run; the amd64 build has it.
set(BMC_SANITIZER_BUILD OFF CACHE BOOL "" FORCE)
