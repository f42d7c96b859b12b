# SPDX-License-Identifier: MIT
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

# blipsy_show_folder(NAME SCOPE)
#
# Lets those that link NAME include the headers of this folder by its path from the project's root, and no others: an
# include folder of the target's own holds a link to this one.
function(blipsy_show_folder name scope)
    cmake_path(RELATIVE_PATH CMAKE_CURRENT_SOURCE_DIR BASE_DIRECTORY ${PROJECT_SOURCE_DIR} OUTPUT_VARIABLE folder)
    set(road ${PROJECT_BINARY_DIR}/include/${name})
    cmake_path(GET folder PARENT_PATH parent)
    file(MAKE_DIRECTORY ${road}/${parent})
    file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${road}/${folder} SYMBOLIC)
    target_include_directories(${name} ${scope} ${road})
endfunction()

# blipsy_record_room(NAME target...)
#
# Adds a line "folder target linked-target..." to what `./dev architecture` draws and checks.
function(blipsy_record_room name)
    cmake_path(RELATIVE_PATH CMAKE_CURRENT_SOURCE_DIR BASE_DIRECTORY ${PROJECT_SOURCE_DIR} OUTPUT_VARIABLE folder)
    list(FILTER ARGN INCLUDE REGEX "^blipsy_")
    list(JOIN ARGN " " links)
    set_property(GLOBAL APPEND PROPERTY BLIPSY_ROOMS "${folder} ${name} ${links}")
endfunction()

# blipsy_add_library(NAME SOURCES file... [LINKS target...] [PRIVATE_LINKS target...])
#
# A static library for one folder. Its headers are included by the folder's path (<platform/plist/PropertyList.h>) and
# are visible to exactly the targets that link it, so an include that the architecture does not allow does not compile.
# It links only what was added before it: an arrow up, or a circle, ends the configuration.
function(blipsy_add_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS;PRIVATE_LINKS")
    foreach(link ${arg_LINKS})
        if(NOT TARGET ${link})
            message(FATAL_ERROR "${name} links ${link}, which is no room below it")
        endif()
    endforeach()
    add_library(${name} STATIC ${arg_SOURCES})
    list(TRANSFORM arg_SOURCES PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
    set_property(GLOBAL APPEND PROPERTY BLIPSY_TEXT_SOURCES ${arg_SOURCES})
    blipsy_show_folder(${name} PUBLIC)
    blipsy_record_room(${name} ${arg_LINKS})
    target_link_libraries(${name} PUBLIC ${arg_LINKS} PRIVATE ${arg_PRIVATE_LINKS} blipsy_flags)
endfunction()

# blipsy_add_forms(NAME form...)
#
# Compiles interface files of this folder, form.ui, into NAME with the product's text look-up, so that their texts come
# from the same strings table as all others. Those that link NAME can include what comes of a form, "ui_form.h". What
# comes of it is also what the texts are collected from: in the form itself each would belong to the form.
function(blipsy_add_forms name)
    set(folder ${CMAKE_CURRENT_BINARY_DIR}/forms)
    file(MAKE_DIRECTORY ${folder})
    foreach(form ${ARGN})
        set(output ${folder}/ui_${form}.h)
        add_custom_command(
            OUTPUT ${output}
            COMMAND Qt6::uic --no-autoconnection --translate Text::tr --include platform/desktop/Text.h
                -o ${output} ${CMAKE_CURRENT_SOURCE_DIR}/${form}.ui
            DEPENDS ${form}.ui
            VERBATIM)
        target_sources(${name} PRIVATE ${output})
        set_property(GLOBAL APPEND PROPERTY BLIPSY_TEXT_SOURCES ${output})
        list(APPEND outputs ${output})
    endforeach()
    # A target of its own: for the translations the forms are compiled without the libraries below them.
    add_custom_target(${name}_forms DEPENDS ${outputs})
    set_property(GLOBAL APPEND PROPERTY BLIPSY_FORMS ${name}_forms)
    target_include_directories(${name} PUBLIC ${folder})
endfunction()

# blipsy_add_test(NAME SOURCES file... LINKS target... [X_SERVER] [SOUND_SERVER] [WAITS])
#
# A Qt Test program under CTest, run by tests/run-isolated in a world of its own (home folder, XDG folders, session
# bus), on the offscreen platform. With X_SERVER there is an X server too, for what talks to one itself; with SOUND_SERVER
# a sound server with silent outputs. One that mostly WAITS starts first, and runs beside the others.
function(blipsy_add_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "X_SERVER;SOUND_SERVER;WAITS" "" "SOURCES;LINKS")
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE ${arg_LINKS} blipsy_test_support blipsy_flags)
    set(runners ${PROJECT_SOURCE_DIR}/tests/run-isolated)
    if(arg_X_SERVER)
        list(APPEND runners ${PROJECT_SOURCE_DIR}/tests/with-x-server)
    endif()
    if(arg_SOUND_SERVER)
        list(APPEND runners ${PROJECT_SOURCE_DIR}/tests/with-sound-server)
    endif()
    add_test(NAME ${name} COMMAND ${runners} $<TARGET_FILE:${name}>)
    set_tests_properties(${name} PROPERTIES TIMEOUT 300)
    if(arg_WAITS)
        set_tests_properties(${name} PROPERTIES COST 1000)
    else()
        # Their time limits are for a machine that runs one of them.
        set_tests_properties(${name} PROPERTIES RESOURCE_LOCK processors)
    endif()
endfunction()
