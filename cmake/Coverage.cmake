# count_coverage(TARGET ...): counts in builds that are made for it which lines and branches of the targets
# run.
function(count_coverage)
  if(NOT ORVANDE_COVERAGE)
    return()
  endif()
  foreach(target ${ARGN})
    # Atomic where that is possible: the service has threads.
    target_compile_options(${target} PRIVATE --coverage -fprofile-update=prefer-atomic)
    target_link_options(${target} PUBLIC --coverage)
  endforeach()
endfunction()
