# The same sources give the same files, whenever and in whichever folder they are built: no file holds a time,
# and what is said of sources (in debug information) begins with this name in place of the folder. Compiler
# caches may name the folder as seen from that of the build.
set(ORVANDE_DEBUG_FOLDER /orvande-online)
file(RELATIVE_PATH from_build ${PROJECT_BINARY_DIR} ${PROJECT_SOURCE_DIR})
string(REGEX REPLACE "/$" "" from_build "${from_build}")
add_compile_options(
  -ffile-prefix-map=${PROJECT_SOURCE_DIR}=${ORVANDE_DEBUG_FOLDER}
  -ffile-prefix-map=${from_build}=${ORVANDE_DEBUG_FOLDER})
if(ORVANDE_RING STREQUAL "windows")
  add_link_options(-Wl,--no-insert-timestamp)
endif()
