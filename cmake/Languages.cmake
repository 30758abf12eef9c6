# copy_languages(RESULT FOLDER MODULE ...): lays the files of all languages beside modules in a folder, once
# under the name of each, which is how a module finds its texts.
file(GLOB language_files CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/languages/*.txt)
function(copy_languages result folder)
  set(copies)
  foreach(module ${ARGN})
    foreach(file ${language_files})
      cmake_path(GET file FILENAME name)
      configure_file(${file} ${folder}/${module}.${name} COPYONLY)
      list(APPEND copies ${folder}/${module}.${name})
    endforeach()
  endforeach()
  set(${result} ${copies} PARENT_SCOPE)
endfunction()
