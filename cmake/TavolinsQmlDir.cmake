# Where the QML module is installed, and whether Qt finds it there.

# tavolins_query_qt(<result> <property>)
#
# What this Qt's qmake knows under a name, as QT_INSTALL_QML; empty where there is no qmake to ask.
function(tavolins_query_qt result property)
    set(answer "")
    if(TARGET Qt${TAVOLINS_QT_MAJOR}::qmake)
        get_target_property(qmake Qt${TAVOLINS_QT_MAJOR}::qmake LOCATION)
        execute_process(COMMAND "${qmake}" -query ${property}
            OUTPUT_VARIABLE answer OUTPUT_STRIP_TRAILING_WHITESPACE
            RESULT_VARIABLE status ERROR_QUIET)
        if(NOT status EQUAL 0)
            set(answer "")
        endif()
    endif()
    set(${result} "${answer}" PARENT_SCOPE)
endfunction()

# tavolins_default_qml_dir(<result>)
#
# The folder in which this Qt looks for QML modules, below its own prefix. CMAKE_INSTALL_LIBDIR
# depends on the prefix that is configured (on Debian, /usr has a library folder for each platform),
# so a module in there would be lost when another prefix is given at installation.
function(tavolins_default_qml_dir result)
    tavolins_query_qt(qt_prefix QT_INSTALL_PREFIX)
    tavolins_query_qt(qt_qml_dir QT_INSTALL_QML)
    set(folder "${CMAKE_INSTALL_LIBDIR}/qt${TAVOLINS_QT_MAJOR}/qml")
    if(qt_prefix AND qt_qml_dir)
        file(RELATIVE_PATH qt_folder "${qt_prefix}" "${qt_qml_dir}")
        # Qt from its own installer has the folder at the top, which is no place in other prefixes.
        if(qt_folder MATCHES "^lib")
            set(folder "${qt_folder}")
        endif()
    endif()
    set(${result} "${folder}" PARENT_SCOPE)
endfunction()

# tavolins_is_installed(<result>)
#
# Whether the installation of all that is configured has this project's files: a project around it may
# have excluded it.
function(tavolins_is_installed result)
    set(is_installed ON)
    if(CMAKE_SKIP_INSTALL_RULES)
        set(is_installed OFF)
    endif()
    set(folder "${PROJECT_SOURCE_DIR}")
    while(folder AND is_installed)
        get_property(is_excluded DIRECTORY "${folder}" PROPERTY EXCLUDE_FROM_ALL)
        if(is_excluded)
            set(is_installed OFF)
        endif()
        get_property(folder DIRECTORY "${folder}" PROPERTY PARENT_DIRECTORY)
    endwhile()
    set(${result} ${is_installed} PARENT_SCOPE)
endfunction()

# tavolins_tell_qml_dir(<prefix> <install dir> <Qt's prefix> <folder where Qt looks>)
#
# Says where the QML module goes and what to do if Qt does not look there. Also called by the
# installation, which may be given another prefix.
function(tavolins_tell_qml_dir prefix install_dir qt_prefix qt_qml_dir)
    get_filename_component(folder "${install_dir}" ABSOLUTE BASE_DIR "${prefix}")
    set(place "Tavolins: the QML module goes to ${folder}")
    if(NOT qt_qml_dir)
        message(STATUS "${place}; there is no qmake to ask whether Qt looks there")
        return()
    endif()
    get_filename_component(real_folder "${folder}" REALPATH)
    get_filename_component(real_qt_qml_dir "${qt_qml_dir}" REALPATH)
    if(real_folder STREQUAL real_qt_qml_dir)
        message(STATUS "${place}, where Qt looks")
        return()
    endif()
    if("${qt_prefix}/${install_dir}" STREQUAL qt_qml_dir)
        set(other_place "the prefix ${qt_prefix}")
    else()
        set(other_place "TAVOLINS_QML_INSTALL_DIR=${qt_qml_dir}")
    endif()
    message(STATUS "${place}, where Qt does not look (it looks in ${qt_qml_dir}): "
        "run applications with QML2_IMPORT_PATH=${folder}, let them call "
        "QQmlEngine::addImportPath, or install with ${other_place}")
endfunction()
