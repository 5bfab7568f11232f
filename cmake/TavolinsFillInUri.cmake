# tavolins_fill_in_uri(<source> <destination>)
#
# Copies a QML file that imports the module under its default identifier, so that it is valid as it
# stands, and has the copy import the identifier of this build.
function(tavolins_fill_in_uri source destination)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${source}")
    file(READ "${source}" content)
    string(REPLACE "import Tavolins 1.0" "import ${TAVOLINS_QML_URI} 1.0" content "${content}")
    set(present "")
    if(EXISTS "${destination}")
        file(READ "${destination}" present)
    endif()
    if(NOT content STREQUAL present)
        file(WRITE "${destination}" "${content}")
    endif()
endfunction()
