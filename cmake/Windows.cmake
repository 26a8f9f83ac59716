# Builds for 64-bit Windows with Debian's mingw-w64, everything linked statically. ZANTO_WINDOWS_LIBRARIES is the
# folder that the libraries were installed to; packaging/make-windows fills one.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(target x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${target}-gcc-posix)
set(CMAKE_CXX_COMPILER ${target}-g++-posix)
set(CMAKE_RC_COMPILER ${target}-windres)

set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES ZANTO_WINDOWS_LIBRARIES)
set(CMAKE_FIND_ROOT_PATH "${ZANTO_WINDOWS_LIBRARIES}" /usr/${target})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_LIBDIR} "${ZANTO_WINDOWS_LIBRARIES}/lib/pkgconfig:/usr/${target}/lib/pkgconfig")
set(PKG_CONFIG_ARGN --static)

set(ZLIB_USE_STATIC_LIBS ON)
set(BUILD_SHARED_LIBS OFF)
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
# At the end of every link: what freeglut, mpg123 and opus do not ask for by themselves, and what CMake takes anyway.
set(CMAKE_CXX_STANDARD_LIBRARIES
  "-lwinmm -lshlwapi -lssp -lkernel32 -luser32 -lgdi32 -lshell32 -lole32 -loleaut32 -luuid -lcomdlg32 -ladvapi32" CACHE STRING "")
# Not what the compiler would choose: Windows 10, the first with UTF-8 as a program's own code page.
add_compile_definitions(_WIN32_WINNT=0x0A00 WINVER=0x0A00)
