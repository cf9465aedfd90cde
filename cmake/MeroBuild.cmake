# One way to declare libraries, programs and tests, so that warnings, language level and sanitizers are the same
# everywhere.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

find_program(MERO_CCACHE ccache)
if(MERO_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${MERO_CCACHE})
endif()

find_program(MERO_LLD ld.lld)
if(MERO_LLD)
  add_link_options(-fuse-ld=lld)
endif()

if(MERO_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
if(MERO_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

function(mero_configure_target target)
  target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR})
  target_compile_options(
    ${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # False alarms in optimised code: concatenation of std::string (GCC bug 105651), std::optional and initialiser
    # lists (GCC bug 80635).
    target_compile_options(${target} PRIVATE -Wno-restrict -Wno-maybe-uninitialized)
  endif()
  if(MERO_UNITY)
    # Sources that are included into one look to the compiler like headers with unnamed namespaces.
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 6)
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
  endif()
endfunction()

# mero_library(name [SEPARATE] SOURCES … LINKS …): one library a folder, its dependencies spelled out. SEPARATE: its sources use
# the same names for their own constants, so that they can't be compiled as one.
function(mero_library name)
  cmake_parse_arguments(ARG "SEPARATE" "" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  mero_configure_target(${name})
  if(ARG_SEPARATE)
    set_target_properties(${name} PROPERTIES UNITY_BUILD OFF)
  endif()
  target_link_libraries(${name} PUBLIC ${ARG_LINKS} PRIVATE ${ARG_PRIVATE_LINKS})
endfunction()

# mero_program(name SOURCES … LINKS …): an executable in build/<preset>/bin.
function(mero_program name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  mero_configure_target(${name})
  target_link_libraries(${name} PRIVATE ${ARG_LINKS})
endfunction()

# Programs that run processes get their memory in large pages, where the allocator for that is there. Sanitizers bring
# an allocator of their own.
function(mero_use_large_pages name)
  if(TARGET mimalloc AND NOT MERO_SANITIZE)
    target_sources(${name} PRIVATE ${PROJECT_SOURCE_DIR}/platform/support/large_pages.cpp)
    target_link_libraries(${name} PRIVATE mimalloc)
  endif()
endfunction()

# mero_test(name SOURCES … LINKS …): a GoogleTest program, registered with CTest as one entry a test case.
function(mero_test name)
  mero_program(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE GTest::gtest GTest::gtest_main)
  target_compile_definitions(${name} PRIVATE MERO_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 300)
endfunction()

# Adds the named folders, in this order, as far as they hold a CMakeLists.txt.
function(mero_add_subdirectories)
  foreach(folder IN LISTS ARGN)
    if(EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/CMakeLists.txt)
      add_subdirectory(${folder})
    endif()
  endforeach()
endfunction()
