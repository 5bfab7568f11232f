# tavolins_target(<target> [DEPRECATED_QT_ALLOWED])
#
# What all targets of the project have in common: language level, Qt's strictness macros, warnings,
# sanitizers. DEPRECATED_QT_ALLOWED is for code that compares against Qt's older API.
function(tavolins_target target)
    cmake_parse_arguments(arg "DEPRECATED_QT_ALLOWED" "" "" ${ARGN})
    set_target_properties(${target} PROPERTIES
        AUTOMOC ON
        CXX_STANDARD 17
        CXX_STANDARD_REQUIRED ON
        CXX_EXTENSIONS OFF)
    target_compile_definitions(${target} PRIVATE
        QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING)
    if(NOT arg_DEPRECATED_QT_ALLOWED)
        set(deprecated_before 0x050F00)
        if(TAVOLINS_QT_MAJOR EQUAL 6)
            set(deprecated_before 0x060400)
        endif()
        target_compile_definitions(${target} PRIVATE QT_DISABLE_DEPRECATED_BEFORE=${deprecated_before})
    endif()
    if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
        target_compile_options(${target} PRIVATE -Wall -Wextra -Wshadow)
        # Containers count in int with Qt 5 and in 64 bits with Qt 6. Only the library says at each
        # place that int is wide enough; what is written around it would be full of casts.
        if(TAVOLINS_QT_MAJOR EQUAL 5 OR target STREQUAL "tavolins")
            target_compile_options(${target} PRIVATE -Wconversion)
        endif()
        if(TAVOLINS_WARNINGS_AS_ERRORS)
            target_compile_options(${target} PRIVATE -Werror)
        endif()
    endif()
    if(TAVOLINS_BUILD_FUZZERS)
        # The library's own branches are what guides the fuzzer.
        target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
    endif()
    if(TAVOLINS_SANITIZE)
        set(flags -fsanitize=${TAVOLINS_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
        target_compile_options(${target} PRIVATE ${flags})
        target_link_options(${target} PRIVATE ${flags})
    endif()
endfunction()

# tavolins_public_headers(<header>...)
#
# Installs headers of the current folder, which code that uses them includes as it does in the tree.
function(tavolins_public_headers)
    get_filename_component(folder "${CMAKE_CURRENT_SOURCE_DIR}" NAME)
    install(FILES ${ARGN} DESTINATION "${TAVOLINS_HEADERS_INSTALL_DIR}/${folder}")
endfunction()
