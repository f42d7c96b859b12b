# One INTERFACE target carries every flag, so that no folder can forget one.
add_library(blipsy_flags INTERFACE)
target_compile_features(blipsy_flags INTERFACE cxx_std_20)
target_compile_options(blipsy_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast -Wnon-virtual-dtor
    -Wcast-qual -Woverloaded-virtual -Wundef -Werror)
target_compile_definitions(blipsy_flags INTERFACE
    QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_NO_FOREACH QT_STRICT_ITERATORS QT_USE_QSTRINGBUILDER
    QT_DISABLE_DEPRECATED_BEFORE=0x060400
    BLIPSY_VERSION="${PROJECT_VERSION}"
    $<$<CONFIG:Debug>:QT_FORCE_ASSERTS _GLIBCXX_ASSERTIONS>)
if(BLIPSY_SANITIZERS)
    target_compile_options(blipsy_flags INTERFACE
        -fsanitize=${BLIPSY_SANITIZERS} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(blipsy_flags INTERFACE -fsanitize=${BLIPSY_SANITIZERS})
endif()

# blipsy_add_library(NAME SOURCES file... [LINKS target...] [PRIVATE_LINKS target...])
#
# A static library for one folder. Its headers are visible to exactly the targets that link it, so an include that
# the architecture does not allow does not compile.
function(blipsy_add_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS;PRIVATE_LINKS")
    add_library(${name} STATIC ${arg_SOURCES})
    target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(${name} PUBLIC ${arg_LINKS} PRIVATE ${arg_PRIVATE_LINKS} blipsy_flags)
endfunction()

# blipsy_add_test(NAME SOURCES file... LINKS target... [X_SERVER] [SOUND_SERVER])
#
# A Qt Test program under CTest, run by tests/run-isolated in a world of its own (home folder, XDG folders, session
# bus), on the offscreen platform. With X_SERVER there is an X server too, for what talks to one itself; with SOUND_SERVER
# a sound server with silent outputs.
function(blipsy_add_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "X_SERVER;SOUND_SERVER" "" "SOURCES;LINKS")
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE ${arg_LINKS} Qt6::Test blipsy_flags)
    set(runners ${PROJECT_SOURCE_DIR}/tests/run-isolated)
    if(arg_X_SERVER)
        list(APPEND runners ${PROJECT_SOURCE_DIR}/tests/with-x-server)
    endif()
    if(arg_SOUND_SERVER)
        list(APPEND runners ${PROJECT_SOURCE_DIR}/tests/with-sound-server)
    endif()
    add_test(NAME ${name} COMMAND ${runners} $<TARGET_FILE:${name}>)
    set_tests_properties(${name} PROPERTIES TIMEOUT 300)
endfunction()
