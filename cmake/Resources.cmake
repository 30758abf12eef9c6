# Resource scripts, compiled in the same way in every ring.
find_program(ORVANDE_WINDRES i686-w64-mingw32-windres REQUIRED)

# compile_resources(OUTPUT SCRIPT FORMAT): FORMAT is `coff`, an object to be linked, or `res`, only resources.
function(compile_resources output script format)
  cmake_path(GET script PARENT_PATH folder)
  file(GLOB parts CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/resources/* ${folder}/*)
  add_custom_command(OUTPUT ${output} VERBATIM
    COMMAND ${ORVANDE_WINDRES} -O ${format} -I ${PROJECT_SOURCE_DIR}/src -I ${PROJECT_SOURCE_DIR}/include
      ${script} ${output}
    DEPENDS ${script} ${parts} ${PROJECT_SOURCE_DIR}/include/LMOnlineVersion.h)
endfunction()

# target_resources(TARGET SCRIPT): links the resources into a Windows program or DLL.
function(target_resources target script)
  set(object ${CMAKE_CURRENT_BINARY_DIR}/${target}-resources.o)
  compile_resources(${object} ${script} coff)
  target_sources(${target} PRIVATE ${object})
  set_source_files_properties(${object} PROPERTIES EXTERNAL_OBJECT ON GENERATED ON)
endfunction()
