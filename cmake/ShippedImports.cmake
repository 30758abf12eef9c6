# The DLLs that another build has made, for programs of this one.
set(ORVANDE_SHIPPED_FOLDER ${PROJECT_SOURCE_DIR}/build/windows CACHE PATH "Where the DLL was built")
foreach(name Online Account)
  string(TOLOWER orvande_${name} target)
  add_library(${target} SHARED IMPORTED GLOBAL)
  set_target_properties(${target} PROPERTIES
    IMPORTED_LOCATION ${ORVANDE_SHIPPED_FOLDER}/Orvande${name}.dll
    IMPORTED_IMPLIB ${ORVANDE_SHIPPED_FOLDER}/libOrvande${name}.dll.a)
endforeach()
