# The size of images, by origin, as often as they are linked. The system's own has the packages that
# make_image.py needs.
find_program(ORVANDE_PYTHON python3 PATHS /usr/bin NO_DEFAULT_PATH REQUIRED)

# print_image_size(TARGET IMAGE MAP [LIMIT ...]): LIMIT as tools/image_size.py takes it; a file above it stops
# the build. Files with sanitizers are for tests: what they have does not matter.
function(print_image_size target image map)
  if(ORVANDE_SANITIZE)
    return()
  endif()
  set(tool ${PROJECT_SOURCE_DIR}/tools/image_size.py)
  add_custom_command(TARGET ${target} POST_BUILD VERBATIM
    COMMAND ${ORVANDE_PYTHON} -B ${tool} ${image} ${map} ${ARGN})
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${tool})
endfunction()
