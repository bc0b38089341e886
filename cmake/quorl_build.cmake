# Settings that every target shares, and the two helpers with which the folders declare themselves.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# Everything that runs lies in one folder, so that the module path of a build tree is the program's folder.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_BUILD_RPATH "$ORIGIN")
# The sanitizers' run-time library of clang is shared by the program and its modules, and lies in a folder of its own.
if(CMAKE_CXX_FLAGS MATCHES "-shared-libasan")
  execute_process(COMMAND "${CMAKE_CXX_COMPILER}" -print-file-name=libclang_rt.asan-${CMAKE_HOST_SYSTEM_PROCESSOR}.so
    OUTPUT_VARIABLE asan_library OUTPUT_STRIP_TRAILING_WHITESPACE)
  get_filename_component(asan_folder "${asan_library}" DIRECTORY)
  list(APPEND CMAKE_BUILD_RPATH "${asan_folder}")
endif()
set(CMAKE_INSTALL_RPATH "$ORIGIN;$ORIGIN/../lib/quorl")

if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release)
endif()
# Assertions state bugs in our own code; they stay on in what ships.
string(REPLACE "-DNDEBUG" "" CMAKE_CXX_FLAGS_RELEASE "${CMAKE_CXX_FLAGS_RELEASE}")
string(REPLACE "-O3" "-O2" CMAKE_CXX_FLAGS_RELEASE "${CMAKE_CXX_FLAGS_RELEASE}")

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
# A module must leave the process when it is unloaded; unique symbols would pin it.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  add_compile_options(-fno-gnu-unique)
endif()
# Calls inside one library go straight to their target instead of through the table of another.
add_compile_options(-fno-semantic-interposition)
# Contraction of a*b+c would make results differ between machines.
add_compile_options(-ffp-contract=off)

find_program(QUORL_LLD ld.lld)
if(QUORL_LLD)
  add_link_options(-fuse-ld=lld)
endif()
add_link_options(-Wl,-z,defs -Wl,-Bsymbolic-functions)

# One box of the host: an object library whose sources go into libquorl, and a shared library of the
# same objects that links against the allowed boxes only, so that a wrong arrow does not link.
#   quorl_box(db SOURCES a.cpp ... HEADERS a.h ... USES rx ... LIBRARIES fmt::fmt ...)
function(quorl_box name)
  cmake_parse_arguments(BOX "" "" "SOURCES;HEADERS;USES;LIBRARIES" ${ARGN})
  add_library(quorl_${name}_objects OBJECT ${BOX_SOURCES} ${BOX_HEADERS})
  target_include_directories(quorl_${name}_objects PUBLIC "${PROJECT_SOURCE_DIR}")
  target_link_libraries(quorl_${name}_objects PUBLIC ${BOX_LIBRARIES})
  add_library(quorl_arrow_${name} SHARED $<TARGET_OBJECTS:quorl_${name}_objects>)
  set_target_properties(quorl_arrow_${name} PROPERTIES
    LINKER_LANGUAGE CXX LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/arrows")
  target_link_libraries(quorl_arrow_${name} PUBLIC ${BOX_LIBRARIES} ${CMAKE_DL_LIBS})
  foreach(lower ${BOX_USES})
    target_link_libraries(quorl_arrow_${name} PUBLIC quorl_arrow_${lower})
  endforeach()
  set_property(GLOBAL APPEND PROPERTY QUORL_BOXES ${name})
  set_property(GLOBAL APPEND PROPERTY QUORL_BOX_LIBRARIES ${BOX_LIBRARIES})
endfunction()
