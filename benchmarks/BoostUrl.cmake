# Boost.URL is in a newer Boost than the one that the simulated handheld is built with, and Debian installs
# only one of them: this one is unpacked into the build's folder.
set(boost_url_folder ${CMAKE_CURRENT_BINARY_DIR}/boost)
set(boost_url_archive ${boost_url_folder}/usr/lib/x86_64-linux-gnu/libboost_url.a)
if(NOT EXISTS ${boost_url_archive})
  file(MAKE_DIRECTORY ${boost_url_folder})
  foreach(package libboost1.81-dev libboost-url1.81-dev)
    execute_process(COMMAND apt-get -qq download ${package}
      WORKING_DIRECTORY ${boost_url_folder} ERROR_QUIET COMMAND_ERROR_IS_FATAL ANY)
    file(GLOB archive ${boost_url_folder}/${package}_*.deb)
    execute_process(COMMAND dpkg -x ${archive} ${boost_url_folder} COMMAND_ERROR_IS_FATAL ANY)
  endforeach()
endif()
add_library(boost_url STATIC IMPORTED GLOBAL)
set_target_properties(boost_url PROPERTIES IMPORTED_LOCATION ${boost_url_archive})
target_include_directories(boost_url SYSTEM INTERFACE ${boost_url_folder}/usr/include)
