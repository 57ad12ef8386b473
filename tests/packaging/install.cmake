if(NOT WIN32)
    foreach(library Dorvale DataManager)
        add_test(NAME packaging.state.${library}
                 COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/state.sh $<TARGET_FILE:${library}>
        )
    endforeach()
endif()

# Installs into an empty prefix (not the configured one), and builds hosts against that.
set(prefix ${CMAKE_CURRENT_BINARY_DIR}/prefix)
set(examples ${PROJECT_SOURCE_DIR}/examples)
set(run_environment
    "WINEPATH=${prefix}/bin\\;${CMAKE_RUNTIME_OUTPUT_DIRECTORY}"
    "LD_LIBRARY_PATH=${prefix}/${CMAKE_INSTALL_LIBDIR}"
)
if(CMAKE_TOOLCHAIN_FILE)
    set(toolchain -DCMAKE_TOOLCHAIN_FILE=${CMAKE_TOOLCHAIN_FILE})
else()
    set(toolchain -DCMAKE_CXX_COMPILER=${CMAKE_CXX_COMPILER})
endif()

add_test(NAME packaging.install COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/install.sh
                                        ${PROJECT_BINARY_DIR} ${prefix} ${PROJECT_SOURCE_DIR}
)
set_tests_properties(packaging.install PROPERTIES FIXTURES_SETUP installed)

# Configures and builds a folder with the options given, and runs a program of it.
function(add_build_test name source program)
    set(binary_dir ${CMAKE_CURRENT_BINARY_DIR}/${name})
    add_test(NAME packaging.${name}
             COMMAND
                 ${CMAKE_CTEST_COMMAND} --build-and-test ${source} ${binary_dir}
                 --build-generator ${CMAKE_GENERATOR}
                 --build-options -DCMAKE_BUILD_TYPE=Debug ${toolchain} ${ARGN}
                 --test-command ${CMAKE_CROSSCOMPILING_EMULATOR}
                 ${binary_dir}/${program}${CMAKE_EXECUTABLE_SUFFIX}
    )
    set_tests_properties(
        packaging.${name} PROPERTIES FIXTURES_REQUIRED installed ENVIRONMENT "${run_environment}"
    )
endfunction()
add_build_test(find_package ${examples} all_kinds -DCMAKE_PREFIX_PATH=${prefix})
add_build_test(
    add_subdirectory ${CMAKE_CURRENT_SOURCE_DIR}/consumer all_kinds
    -DDORVALE_SOURCE=${PROJECT_SOURCE_DIR}
)

# The whole library against a model that is not its own: by both common generators, with and without
# the optimiser.
include(ProcessorCount)
ProcessorCount(processors)
function(add_own_model_test generator build_type)
    string(TOLOWER ${build_type} name)
    set(binary_dir ${CMAKE_CURRENT_BINARY_DIR}/own_model_${name})
    add_test(NAME packaging.own_model.${name}
             COMMAND
                 ${CMAKE_CTEST_COMMAND} --build-and-test ${CMAKE_CURRENT_SOURCE_DIR}/own_model
                 ${binary_dir} --build-generator ${generator} --build-noclean
                 --build-options -DCMAKE_BUILD_TYPE=${build_type} ${toolchain}
                 -DDORVALE_SOURCE=${PROJECT_SOURCE_DIR} -DDORVALE_STRICT=${DORVALE_STRICT}
                 --test-command ${CMAKE_CROSSCOMPILING_EMULATOR}
                 ${binary_dir}/viewer${CMAKE_EXECUTABLE_SUFFIX} --gtest_shuffle
    )
    set_tests_properties(
        packaging.own_model.${name}
        # Not the installed libraries: they are built against another model.
        PROPERTIES PROCESSORS ${processors}
                   ENVIRONMENT "MAKEFLAGS=-j${processors};WINEPATH=${CMAKE_RUNTIME_OUTPUT_DIRECTORY}"
    )
endfunction()
find_program(DORVALE_NINJA ninja)
find_program(DORVALE_MAKE make)
mark_as_advanced(DORVALE_NINJA DORVALE_MAKE)
if(DORVALE_NINJA)
    add_own_model_test(Ninja Release)
endif()
if(DORVALE_MAKE)
    add_own_model_test("Unix Makefiles" Debug)
endif()

add_test(NAME packaging.pkg_config
         COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/pkgconfig.sh
                 ${prefix}/${CMAKE_INSTALL_LIBDIR}/pkgconfig ${examples}/first_dimension.cpp
                 ${CMAKE_CURRENT_BINARY_DIR}/pkg_config
                 ${CMAKE_CXX_COMPILER} ${CMAKE_CROSSCOMPILING_EMULATOR}
)
set_tests_properties(
    packaging.pkg_config
    PROPERTIES FIXTURES_REQUIRED installed ENVIRONMENT "${run_environment}"
               PASS_REGULAR_EXPRESSION "^40\\.00"
)

add_test(NAME packaging.cpack
         COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/cpack.sh ${CMAKE_CPACK_COMMAND} ${PROJECT_BINARY_DIR}
                 ${CMAKE_CURRENT_BINARY_DIR}/cpack
)
