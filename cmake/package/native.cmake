# Targets for Linux, to test an application that uses the library:
#
#   OrvandeOnline::static             the library with its C functions (LMOnline.h), the account and its
#                                     dialogs, for C++20, on the simulated handheld
#   OrvandeOnline::simulator          the simulated handheld, which a test scripts through Device.h
#   OrvandeOnline::simulator_network  in addition, for hosts that are servers on this computer
#   OrvandeOnline_RESOURCE_FILE       the library's resources as Device::SetProgramResources takes them
#
# Wine's headers (libwine-dev) are needed. The service, orvande-service, is a program.
set(OrvandeOnline_RESOURCE_FILE ${OrvandeOnline_DATA_DIR}/OrvandeOnline.res)

set(headers ${OrvandeOnline_INCLUDE_DIR}/orvande)

foreach(target static simulator simulator_network)
  add_library(OrvandeOnline::${target} STATIC IMPORTED)
  set_target_properties(OrvandeOnline::${target} PROPERTIES
    IMPORTED_LOCATION ${OrvandeOnline_LIBRARY_DIR}/liborvande_${target}.a
    INTERFACE_COMPILE_FEATURES cxx_std_20)
endforeach()
set_target_properties(OrvandeOnline::simulator PROPERTIES
  INTERFACE_INCLUDE_DIRECTORIES
    "${headers};${headers}/simulator;/usr/include/wine/wine/windows"
  INTERFACE_COMPILE_DEFINITIONS DECLSPEC_HIDDEN=
  INTERFACE_LINK_LIBRARIES "${CMAKE_DL_LIBS}")
set_target_properties(OrvandeOnline::simulator_network PROPERTIES
  INTERFACE_LINK_LIBRARIES OrvandeOnline::simulator)
set_target_properties(OrvandeOnline::static PROPERTIES
  INTERFACE_INCLUDE_DIRECTORIES ${OrvandeOnline_INCLUDE_DIR}
  INTERFACE_LINK_LIBRARIES OrvandeOnline::simulator)
