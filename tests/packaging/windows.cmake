# Tests of what Windows alone has. Wine takes the code page from the locale.
add_executable(codepage codepage.cpp)
target_link_libraries(codepage PRIVATE Dorvale::Dorvale GTest::gtest_main dorvale_options)
function(add_codepage_test page locale test)
    add_test(NAME packaging.codepage.${page} COMMAND codepage --gtest_filter=CodePage.${test})
    set_tests_properties(packaging.codepage.${page} PROPERTIES ENVIRONMENT LC_ALL=${locale})
endfunction()
add_codepage_test(936 zh_CN.UTF-8 SimplifiedChineseHasTheAngleMark)
add_codepage_test(1252 C.UTF-8 WesternReadsTheMarkAsTwoCharacters)

set(DORVALE_NATIVE_HOST "" CACHE FILEPATH "A pmi-host of this system, to compare pictures with")
if(DORVALE_NATIVE_HOST)
    add_test(NAME packaging.same_result
             COMMAND
                 ${CMAKE_CURRENT_SOURCE_DIR}/same_result.py
                 --scenes ${PROJECT_SOURCE_DIR}/host/scenes
                 --folder ${CMAKE_CURRENT_BINARY_DIR}/galleries --native ${DORVALE_NATIVE_HOST}
                 ${CMAKE_CROSSCOMPILING_EMULATOR} $<TARGET_FILE:pmi-host>
    )
    set_tests_properties(packaging.same_result PROPERTIES ENVIRONMENT LC_ALL=zh_CN.UTF-8)
endif()
