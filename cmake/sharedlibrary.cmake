# How a shared library of the project is named and linked. It exports what its map names (ELF) or
# what the code marks (Windows), and nothing else.
function(dorvale_shared_library library map)
    set_target_properties(
        ${library}
        PROPERTIES CXX_VISIBILITY_PRESET hidden
                   VISIBILITY_INLINES_HIDDEN ON
                   VERSION ${PROJECT_VERSION}
                   SOVERSION ${PROJECT_VERSION_MAJOR}
                   # The two libraries find each other wherever they are installed together.
                   INSTALL_RPATH $ORIGIN
    )
    target_compile_features(${library} PUBLIC cxx_std_17)
    if(WIN32)
        set_target_properties(${library} PROPERTIES PREFIX "")
    endif()
    if(MINGW)
        target_link_options(${library} PRIVATE LINKER:--exclude-all-symbols)
    elseif(NOT MSVC)
        set(map ${CMAKE_CURRENT_SOURCE_DIR}/${map})
        target_link_options(${library} PRIVATE LINKER:--version-script=${map})
        set_property(TARGET ${library} APPEND PROPERTY LINK_DEPENDS ${map})
    endif()
endfunction()
