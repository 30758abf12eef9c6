# export_list(RESULT DEFINITIONS): the names that a module-definition file exports.
function(export_list result definitions)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${definitions})
  file(STRINGS ${definitions} names REGEX "^ +[A-Za-z0-9_]+")
  list(TRANSFORM names STRIP)
  set(${result} ${names} PARENT_SCOPE)
endfunction()
