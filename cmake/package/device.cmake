# Targets for Windows CE on ARM:
#
#   OrvandeOnline::dll         the DLL, from C or C++, through LMOnline.h
#   OrvandeOnline::account     likewise, through LMAccount.h
#   OrvandeOnline::static      the library itself, with the account and its dialogs, for C++20 (GCC only)
#   OrvandeOnline_RESOURCES    a resource script, to be compiled into a program that links it so
#
# With Debian's bare-metal compiler (CMAKE_TOOLCHAIN_FILE: arm-none-eabi.cmake beside this file) programs need
# one of the three, and become images for Windows CE through
#
#   orvande_device_program(TARGET [CONSOLE] [RESOURCES SCRIPT])
#
# TARGET.exe then lies beside the linked file TARGET.elf, which holds the debug symbols. The program begins
# with wWinMain; with CONSOLE, with wmain. Wine's headers (libwine-dev), pyelftools and, for resources,
# i686-w64-mingw32-windres are needed.
set(OrvandeOnline_RESOURCES ${OrvandeOnline_INCLUDE_DIR}/orvande/resources/UserInterface.rc)

set(libraries dll=OrvandeOnline account=OrvandeAccount)

if(MSVC)
  foreach(library ${libraries})
    string(REGEX MATCH "(.+)=(.+)" library ${library})
    add_library(OrvandeOnline::${CMAKE_MATCH_1} SHARED IMPORTED)
    set_target_properties(OrvandeOnline::${CMAKE_MATCH_1} PROPERTIES
      IMPORTED_LOCATION ${OrvandeOnline_BINARY_DIR}/${CMAKE_MATCH_2}.dll
      IMPORTED_IMPLIB ${OrvandeOnline_LIBRARY_DIR}/${CMAKE_MATCH_2}.lib
      INTERFACE_INCLUDE_DIRECTORIES ${OrvandeOnline_INCLUDE_DIR})
  endforeach()
  return()
endif()

include(${CMAKE_CURRENT_LIST_DIR}/DeviceLink.cmake)
set(OrvandeOnline_KIT ${OrvandeOnline_LIBRARY_DIR}/orvande-online)

# The system's headers, and its functions behind the compiler's library.
add_library(OrvandeOnline::device INTERFACE IMPORTED)
set_target_properties(OrvandeOnline::device PROPERTIES
  INTERFACE_COMPILE_DEFINITIONS WINE_UNICODE_NATIVE=1
  INTERFACE_COMPILE_OPTIONS
    "${ORVANDE_DEVICE_COMPILE_OPTIONS};$<$<COMPILE_LANGUAGE:CXX>:${ORVANDE_DEVICE_CXX_OPTIONS}>"
  INTERFACE_INCLUDE_DIRECTORIES /usr/include/wine/wine/windows
  INTERFACE_LINK_LIBRARIES
    "-Wl,--start-group;-lstdc++;-lgcc;${OrvandeOnline_KIT}/libdevice_imports.a;-Wl,--end-group")

foreach(library ${libraries} static=orvande_static)
  string(REGEX MATCH "(.+)=(.+)" library ${library})
  add_library(OrvandeOnline::${CMAKE_MATCH_1} STATIC IMPORTED)
  set_target_properties(OrvandeOnline::${CMAKE_MATCH_1} PROPERTIES
    IMPORTED_LOCATION ${OrvandeOnline_LIBRARY_DIR}/lib${CMAKE_MATCH_2}.a
    INTERFACE_INCLUDE_DIRECTORIES ${OrvandeOnline_INCLUDE_DIR}
    INTERFACE_LINK_LIBRARIES OrvandeOnline::device)
endforeach()
set_property(TARGET OrvandeOnline::static APPEND PROPERTY
  INTERFACE_INCLUDE_DIRECTORIES ${OrvandeOnline_INCLUDE_DIR}/orvande)
set_property(TARGET OrvandeOnline::static PROPERTY INTERFACE_COMPILE_FEATURES cxx_std_20)

function(orvande_device_program target)
  cmake_parse_arguments(arg "CONSOLE" "RESOURCES" "" ${ARGN})
  find_program(ORVANDE_PYTHON python3 PATHS /usr/bin NO_DEFAULT_PATH REQUIRED)
  find_program(ORVANDE_CXXFILT arm-none-eabi-c++filt REQUIRED)
  set(map ${CMAKE_CURRENT_BINARY_DIR}/${target}.map)
  set(image ${CMAKE_CURRENT_BINARY_DIR}/${target}.exe)
  set(starts ${OrvandeOnline_KIT}/libdevice_program_start.a)
  if(arg_CONSOLE)
    list(APPEND starts ${OrvandeOnline_KIT}/libdevice_console_start.a)
  endif()
  target_link_libraries(${target} PRIVATE
    -Wl,--whole-archive ${starts} ${OrvandeOnline_KIT}/libdevice_runtime.a -Wl,--no-whole-archive)
  target_link_options(${target} PRIVATE ${ORVANDE_DEVICE_LINK_OPTIONS} -Wl,-e,ProgramStart
    -Wl,-T,${OrvandeOnline_KIT}/Image.ld -Wl,-Map=${map})
  set_target_properties(${target} PROPERTIES SUFFIX .elf LINKER_LANGUAGE CXX)
  set(options)
  if(arg_RESOURCES)
    find_program(ORVANDE_WINDRES i686-w64-mingw32-windres REQUIRED)
    set(resources ${CMAKE_CURRENT_BINARY_DIR}/${target}-resources.o)
    cmake_path(ABSOLUTE_PATH arg_RESOURCES BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR})
    add_custom_command(OUTPUT ${resources} VERBATIM
      DEPENDS ${arg_RESOURCES}
      COMMAND ${ORVANDE_WINDRES} -O coff -I ${OrvandeOnline_INCLUDE_DIR}
        -I ${OrvandeOnline_INCLUDE_DIR}/orvande ${arg_RESOURCES} ${resources})
    # Not linked: the image's maker takes it.
    target_sources(${target} PRIVATE ${resources})
    set_source_files_properties(${resources} PROPERTIES HEADER_FILE_ONLY ON)
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${resources})
    set(options --resources ${resources})
  endif()
  add_custom_command(TARGET ${target} POST_BUILD VERBATIM
    COMMAND ${ORVANDE_PYTHON} -B ${OrvandeOnline_KIT}/check_link.py ${map} ${ORVANDE_CXXFILT}
    COMMAND ${ORVANDE_PYTHON} -B ${OrvandeOnline_KIT}/make_image.py $<TARGET_FILE:${target}> ${image}
      ${options}
    BYPRODUCTS ${image})
endfunction()
