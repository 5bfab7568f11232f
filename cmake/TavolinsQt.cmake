# Which Qt the project is built with.

# tavolins_look_for_qt(<result> <major version>)
#
# The version of that Qt; empty where it is not found. A function of its own, which gives the cached
# QT_DIR back: it belongs to the project around this one, which may look for the name QT itself.
function(tavolins_look_for_qt result major)
    set(former "${QT_DIR}")
    unset(QT_DIR CACHE)
    find_package(QT QUIET NAMES Qt${major} COMPONENTS Core Gui Qml)
    if(former)
        set(QT_DIR "${former}" CACHE PATH "The directory containing a CMake configuration file for QT." FORCE)
    else()
        unset(QT_DIR CACHE)
    endif()
    if(QT_FOUND)
        set(${result} "${QT_VERSION}" PARENT_SCOPE)
    else()
        set(${result} "" PARENT_SCOPE)
    endif()
endfunction()

# tavolins_choose_qt()
#
# Sets TAVOLINS_QT_MAJOR where nobody has: to the Qt that the project around this one uses already,
# else to 5 where that is found, else to 6. Sets TAVOLINS_QT_SUFFIX to what the names of installed
# files end in, so that the files of both can lie beside each other, and TAVOLINS_OTHER_QT_MAJOR.
macro(tavolins_choose_qt)
    set(TAVOLINS_QT_MAJOR "" CACHE STRING "Major version of Qt: 5, 6 or, to choose by itself, empty")
    set_property(CACHE TAVOLINS_QT_MAJOR PROPERTY STRINGS "" 5 6)
    if(TAVOLINS_QT_MAJOR STREQUAL "")
        # As TavolinsConfigVersion.cmake.in chooses among installations.
        set(TAVOLINS_QT_CANDIDATES 5 6)
        if(TARGET Qt6::Core AND NOT TARGET Qt5::Core)
            set(TAVOLINS_QT_CANDIDATES 6)
        elseif(TARGET Qt5::Core AND NOT TARGET Qt6::Core)
            set(TAVOLINS_QT_CANDIDATES 5)
        elseif(QT_DEFAULT_MAJOR_VERSION)
            set(TAVOLINS_QT_CANDIDATES ${QT_DEFAULT_MAJOR_VERSION})
        elseif(QT_VERSION_MAJOR)
            set(TAVOLINS_QT_CANDIDATES ${QT_VERSION_MAJOR})
        endif()
        foreach(TAVOLINS_QT_MAJOR IN LISTS TAVOLINS_QT_CANDIDATES)
            tavolins_look_for_qt(TAVOLINS_QT_FOUND ${TAVOLINS_QT_MAJOR})
            if(TAVOLINS_QT_FOUND)
                break()
            endif()
        endforeach()
        if(NOT TAVOLINS_QT_FOUND)
            message(FATAL_ERROR "Neither Qt 5 nor Qt 6 is found with its modules Core, Gui and Qml; "
                                "CMAKE_PREFIX_PATH says where else to look")
        endif()
        # CMake gives a loop's variable the value back that it had before.
        string(REGEX MATCH "^[0-9]+" TAVOLINS_QT_MAJOR "${TAVOLINS_QT_FOUND}")
        set(TAVOLINS_QT_REASON "chosen by itself; TAVOLINS_QT_MAJOR decides")
    else()
        if(NOT TAVOLINS_QT_MAJOR MATCHES "^[56]$")
            message(FATAL_ERROR "TAVOLINS_QT_MAJOR is \"${TAVOLINS_QT_MAJOR}\"; it can be 5 or 6")
        endif()
        math(EXPR TAVOLINS_OTHER_QT_MAJOR "11 - ${TAVOLINS_QT_MAJOR}")
        if(TARGET Qt${TAVOLINS_OTHER_QT_MAJOR}::Core AND NOT TARGET Qt${TAVOLINS_QT_MAJOR}::Core)
            message(FATAL_ERROR "TAVOLINS_QT_MAJOR is ${TAVOLINS_QT_MAJOR}, but the project around this "
                                "one has found Qt ${TAVOLINS_OTHER_QT_MAJOR} before")
        endif()
        set(TAVOLINS_QT_REASON "as TAVOLINS_QT_MAJOR says")
        tavolins_look_for_qt(TAVOLINS_QT_FOUND ${TAVOLINS_QT_MAJOR})
        if(NOT TAVOLINS_QT_FOUND)
            message(FATAL_ERROR "find_package finds no Qt ${TAVOLINS_QT_MAJOR} with its modules Core, "
                                "Gui and Qml; CMAKE_PREFIX_PATH says where else to look")
        endif()
    endif()
    math(EXPR TAVOLINS_OTHER_QT_MAJOR "11 - ${TAVOLINS_QT_MAJOR}")
    message(STATUS "Tavolins: built with Qt ${TAVOLINS_QT_FOUND} (${TAVOLINS_QT_REASON})")
    set(TAVOLINS_QT_SUFFIX "")
    if(NOT TAVOLINS_QT_MAJOR EQUAL 5)
        set(TAVOLINS_QT_SUFFIX "${TAVOLINS_QT_MAJOR}")
    endif()
endmacro()

# tavolins_find_qt(<minor version> <component>...)
#
# Finds modules of the chosen Qt. The version is the least one of the Qt 5 series; of Qt 6 it is 6.4
# throughout.
macro(tavolins_find_qt minor_version)
    set(TAVOLINS_QT_LEAST 6.4)
    if(TAVOLINS_QT_MAJOR EQUAL 5)
        set(TAVOLINS_QT_LEAST 5.${minor_version})
    endif()
    find_package(Qt${TAVOLINS_QT_MAJOR} ${TAVOLINS_QT_LEAST} REQUIRED COMPONENTS ${ARGN})
endmacro()
