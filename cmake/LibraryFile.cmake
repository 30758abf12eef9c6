# How the shared library's file is made in each ring: what is linked in, and that it exports exactly the names
# of frame/Exports.def.
set(definitions ${CMAKE_CURRENT_SOURCE_DIR}/frame/Exports.def)

# What the files may have at most. The build prints what they have.
set(windows_limits --most-bytes 57344 --most-imports 48)
set(device_limits --most-bytes 32768 --most-writable 616)

if(ORVANDE_RING STREQUAL "device")
  # The device's loader moves an image by its relocations, so its code need not be position-independent.
  set_target_properties(orvande_objects PROPERTIES POSITION_INDEPENDENT_CODE OFF)
endif()

if(ORVANDE_SHIPS)
  # All sources but those of the account, which has a DLL of its own.
  set(shipped ${sources})
  list(FILTER shipped EXCLUDE REGEX "/account/")
  add_shipped_library(orvande_online NAME OrvandeOnline
    HEADER LMOnline.h
    DEFINITIONS ${definitions}
    RESOURCES ${CMAKE_CURRENT_SOURCE_DIR}/resources/OrvandeOnline.rc
    SOURCES ${shipped}
    LIMITS ${${ORVANDE_RING}_limits})
else()
  # The program that loads the library on the simulated handheld supplies the platform, so the library is
  # linked without one. Symbols of the GNU unique kind would keep the library from being unloaded.
  export_list(exports ${definitions})
  list(JOIN exports "; " exports)
  set(version_script ${CMAKE_CURRENT_BINARY_DIR}/Exports.map)
  file(CONFIGURE OUTPUT ${version_script} CONTENT "{ global: ${exports}; DllMain; local: *; };\n")

  add_library(orvande_online SHARED frame/DllMain.cpp)
  set_target_properties(orvande_online PROPERTIES OUTPUT_NAME OrvandeOnline PREFIX "")
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
  count_coverage(orvande_online)
endif()
