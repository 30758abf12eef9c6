# How the files of the libraries that users get are made.

# add_shipped_library(TARGET NAME HEADER DEFINITIONS RESOURCES SOURCES source ... [LIMITS limit ...]):
# NAME.dll, which exports the names of DEFINITIONS, declared in HEADER. The limits are those of
# print_image_size; a build with a trace has none.
#
# It is compiled in one piece, all sources one after the other in one file. The compiler then knows every
# caller, and leaves out whatever none of the exported functions needs. (Its optimisation at link time does
# less, and on Windows loses the debug information.) Names in the sources' unnamed namespaces therefore have
# to differ. Warnings are those of the libraries for tests and programs, where each source is compiled by
# itself.
function(add_shipped_library target)
  cmake_parse_arguments(arg "" "NAME;HEADER;DEFINITIONS;RESOURCES" "SOURCES;LIMITS" ${ARGN})
  if(ORVANDE_TRACE)
    set(arg_LIMITS)
  endif()
  export_list(exports ${arg_DEFINITIONS})
  set(whole "#include \"Platform.h\"\n#include \"${arg_HEADER}\"\n\n")
  string(APPEND whole "extern \"C\" BOOL WINAPI DllMain(HINSTANCE, DWORD, LPVOID);\n")
  foreach(name DllMain ${exports})
    string(APPEND whole "extern \"C\" __attribute__((externally_visible)) decltype(${name}) ${name};\n")
  endforeach()
  foreach(source ${arg_SOURCES} ${PROJECT_SOURCE_DIR}/src/frame/DllMain.cpp)
    string(APPEND whole "#include \"${source}\"\n")
  endforeach()
  set(whole_source ${CMAKE_CURRENT_BINARY_DIR}/${arg_NAME}.cpp)
  file(CONFIGURE OUTPUT ${whole_source} CONTENT "${whole}")
  set_source_files_properties(${whole_source} PROPERTIES
    COMPILE_OPTIONS "-fwhole-program;-fno-rtti;-ffunction-sections")

  # The device's is made of a linked program.
  if(ORVANDE_RING STREQUAL "device")
    add_executable(${target} ${whole_source})
  else()
    add_library(${target} SHARED ${whole_source} ${arg_DEFINITIONS})
  endif()
  set_target_properties(${target} PROPERTIES
    OUTPUT_NAME ${arg_NAME} PREFIX "" LINK_DEPENDS ${arg_DEFINITIONS})
  target_link_libraries(${target} PRIVATE platform)
  target_include_directories(${target} PRIVATE
    $<TARGET_PROPERTY:orvande_objects,INTERFACE_INCLUDE_DIRECTORIES>)

  if(ORVANDE_RING STREQUAL "windows")
    # Debug information is compiled in at every build type.
    target_compile_options(${target} PRIVATE -g)
    target_resources(${target} ${arg_RESOURCES})
    set_target_properties(${target} PROPERTIES
      RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR} ARCHIVE_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR})
    dll_image(${target} ${arg_LIMITS})
  else()
    target_compile_options(${target} PRIVATE -fdata-sections)
    target_link_libraries(${target} PRIVATE device_library_start)
    add_device_image(${target} ${arg_NAME}.dll LibraryStart
      EXPORTS ${arg_DEFINITIONS}
      RESOURCES ${arg_RESOURCES}
      LIMITS ${arg_LIMITS})
  endif()
endfunction()
