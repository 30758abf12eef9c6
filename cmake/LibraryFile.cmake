# How the shared library's file is made in each ring: what is linked in, and that it exports exactly the names
# of frame/Exports.def.
set(definitions ${CMAKE_CURRENT_SOURCE_DIR}/frame/Exports.def)
set_target_properties(orvande_online PROPERTIES LINK_DEPENDS ${definitions})

if(ORVANDE_RING STREQUAL "windows")
  # Debug information is compiled in at every build type, and taken out of the DLL into a file of its own.
  target_compile_options(orvande_objects PRIVATE -g)
  target_sources(orvande_online PRIVATE
    ${definitions}
    ${PROJECT_SOURCE_DIR}/platform/windows/RuntimeSemaphores.c
    ${PROJECT_SOURCE_DIR}/platform/windows/TerminateHandler.cpp)
  target_resources(orvande_online ${CMAKE_CURRENT_SOURCE_DIR}/resources/OrvandeOnline.rc)
  # From the archive the linker takes only what the DLL needs: the dialogs, which it does not export, stay
  # out.
  target_link_libraries(orvande_online PRIVATE orvande_static)
  target_link_options(orvande_online PRIVATE -Wl,--gc-sections)
  set_target_properties(orvande_online PROPERTIES
    RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR} ARCHIVE_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR})
  set(file $<TARGET_FILE:orvande_online>)
  add_custom_command(TARGET orvande_online POST_BUILD VERBATIM
    COMMAND ${CMAKE_OBJCOPY} --only-keep-debug ${file} ${file}.debug
    COMMAND ${CMAKE_OBJCOPY} --strip-all --add-gnu-debuglink=${file}.debug ${file}
    BYPRODUCTS ${PROJECT_BINARY_DIR}/OrvandeOnline.dll.debug)
elseif(ORVANDE_RING STREQUAL "device")
  # The device's loader moves an image by its relocations, so its code need not be position-independent.
  set_target_properties(orvande_objects PROPERTIES POSITION_INDEPENDENT_CODE OFF)
  target_link_libraries(orvande_online PRIVATE orvande_objects device_library_start)
  add_device_image(orvande_online OrvandeOnline.dll LibraryStart
    EXPORTS ${definitions}
    RESOURCES ${CMAKE_CURRENT_SOURCE_DIR}/resources/OrvandeOnline.rc)
else()
  # The program that loads the library on the simulated handheld supplies the platform, so the library is
  # linked without one. Symbols of the GNU unique kind would keep the library from being unloaded.
  export_list(exports ${definitions})
  list(JOIN exports "; " exports)
  set(version_script ${CMAKE_CURRENT_BINARY_DIR}/Exports.map)
  file(CONFIGURE OUTPUT ${version_script} CONTENT "{ global: ${exports}; DllMain; local: *; };\n")

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
