# How every target of the project is compiled. Consumers of the library get none of this.
add_library(dorvale_options INTERFACE)
target_compile_features(dorvale_options INTERFACE cxx_std_20)
# The standard's own C++: another compiler has to understand it too.
set(CMAKE_CXX_EXTENSIONS OFF)
if(MSVC)
    target_compile_options(dorvale_options INTERFACE /W4 /utf-8 /fp:precise)
else()
    target_compile_options(
        dorvale_options
        INTERFACE
            -Wall
            -Wextra
            -Wpedantic
            -Wconversion
            -Wshadow
            # A product and a sum are two roundings on every machine, so that results agree.
            -ffp-contract=off
            # Nobody asks for errno after a square root.
            -fno-math-errno
    )
    if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
        # g++ 12 turns two doubles to float and back as if nothing were lost on the way.
        target_compile_options(dorvale_options INTERFACE -fno-tree-vectorize)
    endif()
    if(NOT WIN32)
        # A call into another library goes straight to it.
        target_compile_options(dorvale_options INTERFACE -fno-plt)
    endif()
endif()
if(DORVALE_STRICT)
    target_compile_options(dorvale_options INTERFACE $<IF:$<BOOL:${MSVC}>,/WX,-Werror>)
endif()
if(DORVALE_SANITIZE)
    target_compile_options(
        dorvale_options INTERFACE -fsanitize=${DORVALE_SANITIZE} -fno-sanitize-recover=all
                                  -fno-omit-frame-pointer
    )
    target_link_options(dorvale_options INTERFACE -fsanitize=${DORVALE_SANITIZE})
endif()
if(DORVALE_COVERAGE)
    # Counters are exact also where threads share them.
    target_compile_options(dorvale_options INTERFACE --coverage -fprofile-update=atomic)
    target_link_options(dorvale_options INTERFACE --coverage)
endif()
