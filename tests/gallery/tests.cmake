foreach(name tst_gallerycurrenttheme tst_gallerycommand tst_galleryview tst_themefollower tst_themes)
    tavolins_test(gallery/${name} QUICK SOURCES gallery/readable.h)
    target_link_libraries(${name} PRIVATE tavolins_gallery)
    target_compile_definitions(${name} PRIVATE
        GALLERY_THEMES_DIR="${TAVOLINS_THEMES_DIR}"
        GALLERY_PROGRAM="$<TARGET_FILE:tavolins-gallery>"
        GALLERY_BUILD_DIR="${PROJECT_BINARY_DIR}"
        GALLERY_CMAKE="${CMAKE_COMMAND}")
endforeach()
add_dependencies(tst_gallerycommand tavolins-gallery)
if(TARGET tavolins_qmltypes)
    # What the test installs.
    add_dependencies(tst_gallerycommand tavolins_qmltypes)
endif()
