# Targets for desktop Windows:
#
#   OrvandeOnline::dll         the DLL, from C or C++, through LMOnline.h. The stand-ins for two libraries of
#                              the handheld belong beside it: TARGET_RUNTIME_DLLS names all three
#   OrvandeOnline::account     likewise, through LMAccount.h
#   OrvandeOnline::static      the library itself, with the account and its dialogs, for C++20 (GCC only)
#   OrvandeOnline_RESOURCES    a resource script, to be compiled into a program that links it so

# add_dll(NAME): a DLL that was installed, with the import library that the compiler's linker reads.
function(orvande_add_dll target name)
  add_library(OrvandeOnline::${target} SHARED IMPORTED)
  set(import_library ${OrvandeOnline_LIBRARY_DIR}/lib${name}.dll.a)
  if(MSVC)
    set(import_library ${OrvandeOnline_LIBRARY_DIR}/${name}.lib)
  endif()
  set_target_properties(OrvandeOnline::${target} PROPERTIES
    IMPORTED_LOCATION ${OrvandeOnline_BINARY_DIR}/${name}.dll
    IMPORTED_IMPLIB ${import_library}
    INTERFACE_INCLUDE_DIRECTORIES ${OrvandeOnline_INCLUDE_DIR})
endfunction()

orvande_add_dll(dll OrvandeOnline)
orvande_add_dll(account OrvandeAccount)
set(OrvandeOnline_RESOURCES ${OrvandeOnline_INCLUDE_DIR}/orvande/resources/UserInterface.rc)

# Microsoft's compiler cannot read what GCC has made of C++.
if(NOT MSVC)
  orvande_add_dll(aygshell aygshell)
  orvande_add_dll(cellcore cellcore)
  set_property(TARGET OrvandeOnline::dll OrvandeOnline::account PROPERTY
    INTERFACE_LINK_LIBRARIES OrvandeOnline::aygshell OrvandeOnline::cellcore)
  add_library(OrvandeOnline::static STATIC IMPORTED)
  set_target_properties(OrvandeOnline::static PROPERTIES
    IMPORTED_LOCATION ${OrvandeOnline_LIBRARY_DIR}/liborvande_static.a
    INTERFACE_INCLUDE_DIRECTORIES "${OrvandeOnline_INCLUDE_DIR};${OrvandeOnline_INCLUDE_DIR}/orvande"
    INTERFACE_COMPILE_FEATURES cxx_std_20
    INTERFACE_LINK_LIBRARIES
      "OrvandeOnline::aygshell;OrvandeOnline::cellcore;wininet;shell32;comctl32;advapi32;user32")
endif()
