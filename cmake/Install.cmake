# What `cmake --install` puts where. The CMake package in it is for the ring that was built: each ring has a
# prefix of its own.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)
find_program(ORVANDE_PYTHON python3 PATHS /usr/bin NO_DEFAULT_PATH REQUIRED)

# All that is installed and has to be built.
add_custom_target(installed)
add_dependencies(installed orvande_static)

set(cxx_headers ${CMAKE_INSTALL_INCLUDEDIR}/orvande)
set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/OrvandeOnline)

# install_dll(TARGET NAME DEFINITIONS): a DLL with its debug symbols, its list of exports and what programs
# link: import libraries for Microsoft's linker and for GNU's.
function(install_dll target name definitions)
  set(machine i386)
  if(ORVANDE_RING STREQUAL "device")
    set(machine arm)
  endif()
  set(script ${PROJECT_SOURCE_DIR}/platform/import_library.py)
  set(library ${PROJECT_BINARY_DIR}/${name}.lib)
  add_custom_command(OUTPUT ${library} VERBATIM
    DEPENDS ${script} ${definitions}
    COMMAND ${ORVANDE_PYTHON} -B ${script} ${library} ${definitions} ${machine})
  add_custom_target(${target}_import_library ALL DEPENDS ${library})
  add_dependencies(installed ${target} ${target}_import_library)
  set(symbols ${PROJECT_BINARY_DIR}/${name}.dll.debug)
  if(ORVANDE_RING STREQUAL "device")
    add_custom_command(OUTPUT ${symbols} VERBATIM
      DEPENDS ${target}
      COMMAND ${CMAKE_OBJCOPY} --only-keep-debug $<TARGET_FILE:${target}> ${symbols})
    add_custom_target(${target}_symbols ALL DEPENDS ${symbols})
    add_dependencies(installed ${target}_symbols device_import_${name})
    install(TARGETS device_import_${name} DESTINATION ${CMAKE_INSTALL_LIBDIR})
  else()
    install(FILES $<TARGET_LINKER_FILE:${target}> DESTINATION ${CMAKE_INSTALL_LIBDIR})
  endif()
  install(PROGRAMS ${PROJECT_BINARY_DIR}/${name}.dll DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(FILES ${symbols} DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(FILES ${library} DESTINATION ${CMAKE_INSTALL_LIBDIR})
  install(FILES ${definitions} DESTINATION ${CMAKE_INSTALL_LIBDIR} RENAME ${name}.def)
endfunction()

# The C interface.
file(GLOB headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/include/*.h)
install(FILES ${headers} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})

# The library that programs link into themselves: its headers and those that they include, and the resources
# that go into such a program.
install(TARGETS orvande_static DESTINATION ${CMAKE_INSTALL_LIBDIR})
foreach(header
    account/Account.h
    account/AccountSettings.h
    account/CreateAccountDialog.h
    account/SignIn.h
    account/SignInDialog.h
    base/LastError.h
    frame/LibraryEntry.h
    resources/ResourceIds.h
    resources/UserInterface.rc
    text/WideString.h
    ui/Dialog.h
    ui/Window.h
    ui/WindowBinding.h)
  cmake_path(GET header PARENT_PATH folder)
  install(FILES ${PROJECT_SOURCE_DIR}/src/${header} DESTINATION ${cxx_headers}/${folder})
endforeach()
file(GLOB headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/platform/include/*.h)
install(FILES ${headers} DESTINATION ${cxx_headers})

if(ORVANDE_SHIPS)
  install_dll(orvande_online OrvandeOnline ${PROJECT_SOURCE_DIR}/src/frame/Exports.def)
  install_dll(orvande_account OrvandeAccount ${PROJECT_SOURCE_DIR}/companion/Exports.def)
  install(PROGRAMS ${PROJECT_BINARY_DIR}/mapshop.exe ${PROJECT_BINARY_DIR}/signin.exe
    DESTINATION ${CMAKE_INSTALL_BINDIR})
  add_dependencies(installed mapshop signin)
  copy_languages(translations ${PROJECT_BINARY_DIR} OrvandeOnline OrvandeAccount signin)
  install(FILES ${translations} DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

if(ORVANDE_RING STREQUAL "windows")
  add_dependencies(installed aygshell cellcore)
  foreach(name aygshell cellcore)
    install(PROGRAMS $<TARGET_FILE:${name}> DESTINATION ${CMAKE_INSTALL_BINDIR})
    install(FILES $<TARGET_LINKER_FILE:${name}> DESTINATION ${CMAKE_INSTALL_LIBDIR})
  endforeach()
elseif(ORVANDE_RING STREQUAL "device")
  # What makes images of programs: the runtime, the imports from the system, the tools, and what is said to
  # compiler and linker without CMake.
  set(libraries device_imports device_runtime_library device_program_start_library
    device_console_start_library)
  add_dependencies(installed ${libraries})
  install(TARGETS ${libraries} DESTINATION ${CMAKE_INSTALL_LIBDIR}/orvande-online)
  foreach(step compile link)
    set(file ${PROJECT_BINARY_DIR}/package/${step}.rsp)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/package/${step}.rsp.in ${file})
    install(FILES ${file} DESTINATION ${CMAKE_INSTALL_LIBDIR}/orvande-online)
  endforeach()
  install(FILES
    ${PROJECT_SOURCE_DIR}/platform/device/Image.ld
    ${PROJECT_SOURCE_DIR}/platform/device/check_link.py
    ${PROJECT_SOURCE_DIR}/platform/device/make_image.py
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/orvande-online)
  install(FILES
    ${PROJECT_SOURCE_DIR}/cmake/DeviceLink.cmake
    ${PROJECT_SOURCE_DIR}/cmake/arm-none-eabi.cmake
    DESTINATION ${package_folder})
else()
  # The simulated handheld, for tests of an application on Linux, the service, and the program for
  # translators.
  install(TARGETS simulator simulator_network DESTINATION ${CMAKE_INSTALL_LIBDIR})
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/platform/simulator/ DESTINATION ${cxx_headers}/simulator
    FILES_MATCHING PATTERN *.h)
  get_target_property(resources orvande_resources RESOURCE_FILE)
  install(FILES ${resources} DESTINATION ${CMAKE_INSTALL_DATADIR}/orvande-online)
  add_dependencies(installed simulator simulator_network orvande_resources orvande-service
    orvande-translation)
  install(TARGETS orvande-service orvande-translation DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

# The CMake package, and pkg-config's file.
set(sources ${PROJECT_SOURCE_DIR}/cmake/package)
set(made ${PROJECT_BINARY_DIR}/package)
set(resource_folder ${CMAKE_INSTALL_DATADIR}/orvande-online)
configure_package_config_file(${sources}/OrvandeOnlineConfig.cmake.in ${made}/OrvandeOnlineConfig.cmake
  INSTALL_DESTINATION ${package_folder}
  PATH_VARS CMAKE_INSTALL_INCLUDEDIR CMAKE_INSTALL_LIBDIR CMAKE_INSTALL_BINDIR resource_folder)
write_basic_package_version_file(${made}/OrvandeOnlineConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES
  ${made}/OrvandeOnlineConfig.cmake
  ${made}/OrvandeOnlineConfigVersion.cmake
  ${sources}/${ORVANDE_RING}.cmake
  DESTINATION ${package_folder})
file(RELATIVE_PATH prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(${sources}/orvande-online-${ORVANDE_RING}.pc.in ${made}/orvande-online.pc @ONLY)
install(FILES ${made}/orvande-online.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
