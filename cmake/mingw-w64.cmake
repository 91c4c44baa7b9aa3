# Linux host, 64-bit Windows target, Debian's mingw-w64 with posix threads.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(_triple x86_64-w64-mingw32)

set(CMAKE_C_COMPILER ${_triple}-gcc-posix)
set(CMAKE_CXX_COMPILER ${_triple}-g++-posix)
set(CMAKE_RC_COMPILER ${_triple}-windres)
set(CMAKE_AR /usr/bin/${_triple}-gcc-ar-posix CACHE FILEPATH "")
set(CMAKE_RANLIB /usr/bin/${_triple}-gcc-ranlib-posix CACHE FILEPATH "")

# libstdc++, libgcc and winpthread go into the executable.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")

set(CMAKE_FIND_ROOT_PATH /usr/${_triple})
# The folder of a static Qt for Windows (scripts/qt-for-windows): the root path is the only way in for it, because
# packages are looked for nowhere else. Probes of the compiler see it, too.
if(QUILLBAY_WINDOWS_QT)
  list(PREPEND CMAKE_FIND_ROOT_PATH ${QUILLBAY_WINDOWS_QT})
  list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES QUILLBAY_WINDOWS_QT)
endif()
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_CROSSCOMPILING_EMULATOR wine)
