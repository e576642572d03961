# What every target of this project has in common: language level, warnings, sanitizers, and the
# one floating-point setting that the evaluator depends on.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
# Installed programs and libraries find the libraries installed beside them, whatever the prefix, and
# those that they were linked with elsewhere.
set(CMAKE_INSTALL_RPATH_USE_LINK_PATH ON)
if(APPLE)
    set(CMAKE_INSTALL_RPATH "@loader_path;@loader_path/../${CMAKE_INSTALL_LIBDIR}")
else()
    set(CMAKE_INSTALL_RPATH "$ORIGIN;$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
endif()

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

find_program(KV_CCACHE ccache)
if(KV_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${KV_CCACHE}")
endif()

# Contraction (fused multiply-add) would change the last bit of curve values from one processor to
# the next; evaluation is defined without it.
if(MSVC)
    add_compile_options(/fp:precise)
else()
    add_compile_options(-ffp-contract=off)
endif()

# A function of a shared library may be replaced by one of the same name from elsewhere, for which sake
# compilers call even the functions next door through a table and never inline them. Nobody replaces
# functions here, and the records of a tick pass through dozens of such calls.
if(NOT MSVC)
    include(CheckCXXCompilerFlag)
    include(CheckLinkerFlag)
    check_cxx_compiler_flag(-fno-semantic-interposition KV_HAS_NO_SEMANTIC_INTERPOSITION)
    check_linker_flag(CXX LINKER:-Bsymbolic-functions KV_HAS_BSYMBOLIC_FUNCTIONS)
    if(KV_HAS_NO_SEMANTIC_INTERPOSITION)
        add_compile_options($<$<NOT:$<CONFIG:Debug>>:-fno-semantic-interposition>)
    endif()
    if(KV_HAS_BSYMBOLIC_FUNCTIONS)
        add_link_options(
            $<$<AND:$<NOT:$<CONFIG:Debug>>,$<STREQUAL:$<TARGET_PROPERTY:TYPE>,SHARED_LIBRARY>>:LINKER:-Bsymbolic-functions>)
    endif()
endif()

if(KV_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()

# The readers report to the fuzzers which ways they went.
if(KV_FUZZ)
    add_compile_options(-O1 -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all
        -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()

# Warnings for the project's own code; dependencies come in as system headers.
add_library(kv_warnings INTERFACE)
if(MSVC)
    target_compile_options(kv_warnings INTERFACE /W4 $<$<BOOL:${KV_WERROR}>:/WX>)
else()
    target_compile_options(kv_warnings INTERFACE
        -Wall -Wextra -Wpedantic -Wconversion $<$<BOOL:${KV_WERROR}>:-Werror>)
endif()

# kv_sources(<variable> <directory>...): every .cpp below the directories, so that a new file in a
# room is built without a list to keep.
function(kv_sources result)
    set(all)
    foreach(directory IN LISTS ARGN)
        file(GLOB_RECURSE found CONFIGURE_DEPENDS "${directory}/*.cpp")
        list(APPEND all ${found})
    endforeach()
    set(${result} ${all} PARENT_SCOPE)
endfunction()
