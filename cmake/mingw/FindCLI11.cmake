include(${CMAKE_CURRENT_LIST_DIR}/headers.cmake)
add_header_library(CLI11::CLI11 CLI)
set(CLI11_FOUND TRUE)
