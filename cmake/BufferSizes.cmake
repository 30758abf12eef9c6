# Refuses sizes of the library's buffers that cannot be meant.

# check_buffer_size(NAME MOST WHY)
function(check_buffer_size name most why)
  set(size "${${name}}")
  if(NOT size MATCHES "^[1-9][0-9]*$" OR size LESS 256 OR size GREATER most)
    message(FATAL_ERROR "${name} is '${size}'. It must be a number of bytes from 256 to ${most}${why}.")
  endif()
endfunction()

check_buffer_size(ORVANDE_RECEIVE_BUFFER 65536 "")
if(ORVANDE_RING STREQUAL "device")
  check_buffer_size(ORVANDE_DOWNLOAD_CHUNK 16384 " (on a handheld, where the stack has 64 KB)")
else()
  check_buffer_size(ORVANDE_DOWNLOAD_CHUNK 65536 "")
endif()
