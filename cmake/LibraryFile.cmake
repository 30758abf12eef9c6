# How the shared library's file is made in each ring: what is linked in, and that it exports exactly the names
# of frame/Exports.def.
set(definitions ${CMAKE_CURRENT_SOURCE_DIR}/frame/Exports.def)
export_list(exports ${definitions})

# What the files may have at most. The build prints what they have.
set(windows_limits --most-bytes 57344 --most-imports 48)
set(device_limits --most-bytes 32768 --most-writable 616)

if(ORVANDE_SHIPS)
  # What is shipped is compiled in one piece: all sources but those of the account, which no DLL exports, one
  # after the other in one file. The compiler then knows every caller, and leaves out whatever none of the
  # exported functions needs. (Its optimisation at link time does less, and on Windows loses the debug
  # information.) Names in the sources' unnamed namespaces therefore have to differ. Warnings are those of
  # orvande_objects, where each source is compiled by itself.
  set(shipped ${sources})
  list(FILTER shipped EXCLUDE REGEX "/account/")
  set(whole "#include \"Platform.h\"\n#include \"LMOnline.h\"\n\n")
  string(APPEND whole "extern \"C\" BOOL WINAPI DllMain(HINSTANCE, DWORD, LPVOID);\n")
  foreach(name DllMain ${exports})
    string(APPEND whole "extern \"C\" __attribute__((externally_visible)) decltype(${name}) ${name};\n")
  endforeach()
  foreach(source ${shipped} ${CMAKE_CURRENT_SOURCE_DIR}/frame/DllMain.cpp)
    string(APPEND whole "#include \"${source}\"\n")
  endforeach()
  set(whole_source ${CMAKE_CURRENT_BINARY_DIR}/OrvandeOnline.cpp)
  file(CONFIGURE OUTPUT ${whole_source} CONTENT "${whole}")
  set_source_files_properties(${whole_source} PROPERTIES
    COMPILE_OPTIONS "-fwhole-program;-fno-rtti;-ffunction-sections")
endif()

# The device's is made of a linked program.
if(ORVANDE_RING STREQUAL "device")
  add_executable(orvande_online ${whole_source})
elseif(ORVANDE_SHIPS)
  add_library(orvande_online SHARED ${whole_source} ${definitions})
else()
  add_library(orvande_online SHARED frame/DllMain.cpp)
endif()
set_target_properties(orvande_online PROPERTIES
  OUTPUT_NAME OrvandeOnline PREFIX "" LINK_DEPENDS ${definitions})
if(ORVANDE_SHIPS)
  target_link_libraries(orvande_online PRIVATE platform)
  target_include_directories(orvande_online PRIVATE
    $<TARGET_PROPERTY:orvande_objects,INTERFACE_INCLUDE_DIRECTORIES>)
endif()

if(ORVANDE_RING STREQUAL "windows")
  # Debug information is compiled in at every build type.
  target_compile_options(orvande_online PRIVATE -g)
  target_resources(orvande_online ${CMAKE_CURRENT_SOURCE_DIR}/resources/OrvandeOnline.rc)
  set_target_properties(orvande_online PROPERTIES
    RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR} ARCHIVE_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR})
  dll_image(orvande_online ${windows_limits})
elseif(ORVANDE_RING STREQUAL "device")
  # The device's loader moves an image by its relocations, so its code need not be position-independent.
  set_target_properties(orvande_objects PROPERTIES POSITION_INDEPENDENT_CODE OFF)
  target_compile_options(orvande_online PRIVATE -fdata-sections)
  target_link_libraries(orvande_online PRIVATE device_library_start)
  add_device_image(orvande_online OrvandeOnline.dll LibraryStart
    EXPORTS ${definitions}
    RESOURCES ${CMAKE_CURRENT_SOURCE_DIR}/resources/OrvandeOnline.rc
    LIMITS ${device_limits})
else()
  # The program that loads the library on the simulated handheld supplies the platform, so the library is
  # linked without one. Symbols of the GNU unique kind would keep the library from being unloaded.
  list(JOIN exports "; " exports)
  set(version_script ${CMAKE_CURRENT_BINARY_DIR}/Exports.map)
  file(CONFIGURE OUTPUT ${version_script} CONTENT "{ global: ${exports}; DllMain; local: *; };\n")

  target_link_libraries(orvande_online PRIVATE orvande_warnings)
  target_sources(orvande_online PRIVATE $<TARGET_OBJECTS:orvande_objects>)
  target_include_directories(orvande_online PRIVATE $<TARGET_PROPERTY:orvande_objects,INCLUDE_DIRECTORIES>)
  target_include_directories(orvande_online SYSTEM PRIVATE
    $<TARGET_PROPERTY:platform,INTERFACE_SYSTEM_INCLUDE_DIRECTORIES>)
  foreach(target orvande_objects orvande_online)
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)
  endforeach()
  target_link_options(orvande_online PRIVATE
    -Wl,--version-script=${version_script} -Wl,-Bsymbolic -Wl,-z,undefs -Wl,--gc-sections)
  set_property(TARGET orvande_online APPEND PROPERTY LINK_DEPENDS ${version_script})
endif()
