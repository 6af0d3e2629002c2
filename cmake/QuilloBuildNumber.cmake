# The build number is the commit count of the checkout (0 outside git), fixed at configure time.
set(QUILLO_BUILD_NUMBER 0)
find_package(Git QUIET)
if(GIT_FOUND)
    execute_process(COMMAND ${GIT_EXECUTABLE} rev-list --count HEAD
        WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
        OUTPUT_VARIABLE _count OUTPUT_STRIP_TRAILING_WHITESPACE
        RESULT_VARIABLE _result ERROR_QUIET)
    if(_result EQUAL 0 AND _count MATCHES "^[0-9]+$")
        set(QUILLO_BUILD_NUMBER ${_count})
    endif()
endif()
