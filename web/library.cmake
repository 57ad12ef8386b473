# What the modules of the web are made of: the library's own sources as the target `library`.
set(CMAKE_CXX_FLAGS_RELEASE -DNDEBUG)
if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release)
endif()
get_filename_component(root ${CMAKE_CURRENT_LIST_DIR}/.. ABSOLUTE)

# Warnings of these are the business of the other builds. The layouts and the module's own entry are
# those of shared libraries.
file(GLOB library_sources CONFIGURE_DEPENDS ${root}/src/*/*.cpp)
list(FILTER library_sources EXCLUDE REGEX "/(module|layout)[.]cpp$")
add_library(library OBJECT ${library_sources})
