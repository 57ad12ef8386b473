# A target for a library of headers that is installed for this system. It gets a copy of that
# library's folder alone: the rest of /usr/include is not for the system that is built for.
function(add_header_library target folder)
    set(copy ${CMAKE_BINARY_DIR}/headers/${folder})
    file(COPY /usr/include/${folder} DESTINATION ${copy})
    add_library(${target} INTERFACE IMPORTED GLOBAL)
    set_target_properties(${target} PROPERTIES INTERFACE_INCLUDE_DIRECTORIES ${copy})
endfunction()
