# What both modules begin with: how they are built, and the library's sources. Warnings of these are
# the business of the other builds; the layouts and the module's own entry are those of shared
# libraries.
set(CMAKE_CXX_FLAGS_RELEASE -DNDEBUG)
if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release)
endif()
get_filename_component(root ${CMAKE_CURRENT_LIST_DIR}/.. ABSOLUTE)
file(GLOB library_sources CONFIGURE_DEPENDS ${root}/src/*/*.cpp)
list(FILTER library_sources EXCLUDE REGEX "/(module|layout)[.]cpp$")
