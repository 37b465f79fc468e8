# What every target of the project shares: language level, warnings, sanitizers, output folders, ccache.
set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTOUIC ON)
set(CMAKE_AUTORCC ON)

option(PM_WARNINGS_AS_ERRORS "Treat compiler warnings as errors" OFF)
option(PM_BUILD_BENCH "Build the programs of bench/" OFF)
set(PM_SANITIZE "" CACHE STRING "Sanitizers to build with, such as address,undefined or thread")

if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "Kind of build" FORCE)
endif()

# Precompiled headers are cached only with these two: their macros and times then no longer count.
find_program(CCACHE_PROGRAM ccache)
set(PM_CCACHE_BASEDIR ${PROJECT_SOURCE_DIR})
if(DEFINED ENV{CCACHE_BASEDIR}) # several build folders can share one cache by a folder above them all
  set(PM_CCACHE_BASEDIR $ENV{CCACHE_BASEDIR})
endif()
if(CCACHE_PROGRAM)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros
    CCACHE_BASEDIR=${PM_CCACHE_BASEDIR} ${CCACHE_PROGRAM})
  add_compile_options(-fpch-preprocess)
endif()

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
set(CMAKE_INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR};$ORIGIN")

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual)
# Texts are UTF-8 Unicode literals, so a plain char* must never become a QString by accident of a locale.
add_compile_definitions(QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_DEPRECATED_WARNINGS)
if(PM_WARNINGS_AS_ERRORS)
  add_compile_options(-Werror)
endif()
if(PM_SANITIZE)
  add_compile_options(-fsanitize=${PM_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
  add_link_options(-fsanitize=${PM_SANITIZE})
endif()

include(GenerateExportHeader)
include(CMakePackageConfigHelpers)

# pm_library(NAME EXPORT_MACRO): one shared library of the project, exported as PatientManager::NAME.
# Public headers are listed as the target's PUBLIC_HEADER property by the caller.
function(pm_library name export_macro)
  string(TOLOWER ${name} lower)
  add_library(${name} SHARED)
  add_library(PatientManager::${name} ALIAS ${name})
  generate_export_header(${name} BASE_NAME ${lower} EXPORT_MACRO_NAME ${export_macro}
    EXPORT_FILE_NAME ${CMAKE_CURRENT_BINARY_DIR}/include/${lower}_export.h)
  target_include_directories(${name} PUBLIC
    $<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}>
    $<BUILD_INTERFACE:${CMAKE_CURRENT_BINARY_DIR}/include>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/PatientManager/${name}>)
  set_target_properties(${name} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
  set_property(GLOBAL APPEND PROPERTY PM_LIBRARIES ${name})
endfunction()

# pm_public_headers(NAME FILE...): headers that are installed with the library, relative to its folder.
function(pm_public_headers name)
  set_property(TARGET ${name} APPEND PROPERTY PM_HEADERS ${ARGN})
endfunction()
