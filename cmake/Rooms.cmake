if(MSVC)
    message(FATAL_ERROR "tensio has not been tried with this compiler. On Windows build it with MinGW.")
endif()

# Warnings and definitions stand on INTERFACE targets, so that every room opts in by linking them.

add_library(project_warnings INTERFACE)
target_compile_options(project_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion
    -Wcast-qual -Wcast-align -Wold-style-cast -Wdouble-promotion -Wfloat-conversion
    -Wformat=2 -Wimplicit-fallthrough -Wmissing-declarations -Wnon-virtual-dtor -Woverloaded-virtual
    -Wextra-semi -Wundef -Wunused -Wswitch -Wredundant-decls -Wzero-as-null-pointer-constant -Wvla)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(project_warnings INTERFACE
        -Wuseless-cast -Wduplicated-cond -Wduplicated-branches -Wlogical-op -Wsuggest-override)
endif()

option(TENSIO_WARNINGS_AS_ERRORS "Stop the build at the first warning" OFF)
if(TENSIO_WARNINGS_AS_ERRORS)
    target_compile_options(project_warnings INTERFACE -Werror)
endif()

add_library(project_qt INTERFACE)
target_compile_definitions(project_qt INTERFACE
    QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_NO_FOREACH
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_USE_QSTRINGBUILDER QT_DISABLE_DEPRECATED_BEFORE=0x060400)

option(TENSIO_SANITIZE "Build with AddressSanitizer and UndefinedBehaviorSanitizer" OFF)
if(TENSIO_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    add_compile_definitions(_GLIBCXX_ASSERTIONS)
    add_link_options(-fsanitize=address,undefined)
endif()

option(TENSIO_FUZZ "Build the fuzz target (Clang only)" OFF)
if(TENSIO_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# tensio_room(NAME SOURCES … LINKS …): one static library a folder; includes are written "room/File.h".
function(tensio_room name)
    cmake_parse_arguments(ROOM "QT" "" "SOURCES;LINKS" ${ARGN})
    add_library(${name} STATIC ${ROOM_SOURCES})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(${name} PUBLIC ${ROOM_LINKS} PRIVATE project_warnings)
    if(ROOM_QT)
        set_target_properties(${name} PROPERTIES AUTOMOC ON AUTOUIC ON)
        target_link_libraries(${name} PRIVATE project_qt)
    endif()
endfunction()

# A locale that writes a comma for the point, in the build folder: the system need not have one.
set(comma_locale ${CMAKE_BINARY_DIR}/locales/de_DE.UTF-8)
add_custom_command(OUTPUT ${comma_locale}/LC_NUMERIC
    COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/locales
    COMMAND localedef -i de_DE -f UTF-8 ${comma_locale})
add_custom_target(comma_locale DEPENDS ${comma_locale}/LC_NUMERIC)

# tensio_test(NAME [LABEL label] SOURCES … LINKS …): a GoogleTest program, run without a display, a locale or a time zone
# of the machine, and once more with a comma locale in Japan, at a device pixel ratio of 1.25. With a label it runs only
# once, and not in ./test.
function(tensio_test name)
    cmake_parse_arguments(TEST "" "LABEL" "SOURCES;LINKS" ${ARGN})
    add_executable(${name} ${TEST_SOURCES} ${PROJECT_SOURCE_DIR}/tests/support/Locale.cpp)
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    target_link_libraries(${name} PRIVATE ${TEST_LINKS} GTest::gtest project_warnings)
    set(environment "QT_QPA_PLATFORM=offscreen;DBUS_SESSION_BUS_ADDRESS=disabled:;FONTCONFIG_FILE=${PROJECT_SOURCE_DIR}/tests/support/fonts.conf;LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/leaks.supp:print_suppressions=0")
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES LABELS "${TEST_LABEL}"
        ENVIRONMENT "${environment};LC_ALL=C.UTF-8;TENSIO_DECIMAL_POINT=.;TZ=UTC")
    if(NOT TEST_LABEL AND CMAKE_HOST_LINUX)
        add_dependencies(${name} comma_locale)
        add_test(NAME ${name}.abroad COMMAND ${name})
        set_tests_properties(${name}.abroad PROPERTIES LABELS abroad ENVIRONMENT
            "${environment};QT_SCALE_FACTOR=1.25;LC_ALL=de_DE.UTF-8;LOCPATH=${CMAKE_BINARY_DIR}/locales;TENSIO_DECIMAL_POINT=,;TZ=JST-9")
    endif()
endfunction()
