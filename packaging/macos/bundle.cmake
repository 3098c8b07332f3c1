# The bundle's Info.plist and the localized texts of permission dialogs. These files are created on every system,
# for the tests; the bundle only on macOS.
set(bundle ${CMAKE_CURRENT_BINARY_DIR}/macos)

foreach(language ${LUMVALE_LANGUAGES})
    tag(tag ${language})
    xml_text(PHOTOS_USAGE ${language} duplicates_permission_text)
    set(strings ${bundle}/${tag}.lproj/InfoPlist.strings)
    configure_file(macos/InfoPlist.strings.in ${strings} @ONLY)
    string(APPEND LOCALIZATIONS "    <string>${tag}</string>\n")
    if(APPLE)
        target_sources(lumvale PRIVATE ${strings})
        set_source_files_properties(${strings} TARGET_DIRECTORY lumvale
            PROPERTIES MACOSX_PACKAGE_LOCATION Resources/${tag}.lproj)
    endif()
endforeach()
xml_text(PHOTOS_USAGE fr duplicates_permission_text)
configure_file(macos/Info.plist.in ${bundle}/Info.plist @ONLY)

if(APPLE)
    drawn_icons(pictures 16 32 64 128 256 512 1024)
    set(iconset ${bundle}/${PROJECT_NAME}.iconset)
    set(icon ${bundle}/${PROJECT_NAME}.icns)
    foreach(side 16 32 128 256 512)
        math(EXPR twice "${side} * 2")
        list(APPEND copies
            COMMAND ${CMAKE_COMMAND} -E copy icons/${side}.png ${iconset}/icon_${side}x${side}.png
            COMMAND ${CMAKE_COMMAND} -E copy icons/${twice}.png ${iconset}/icon_${side}x${side}@2x.png)
    endforeach()
    add_custom_command(OUTPUT ${icon} DEPENDS ${pictures}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${iconset} ${copies}
        COMMAND iconutil --convert icns --output ${icon} ${iconset}
        VERBATIM)
    add_custom_target(lumvale-bundle-icon DEPENDS ${icon})
    add_dependencies(lumvale lumvale-bundle-icon)
    target_sources(lumvale PRIVATE ${icon})
    set_source_files_properties(${icon} TARGET_DIRECTORY lumvale
        PROPERTIES GENERATED ON MACOSX_PACKAGE_LOCATION Resources)
    set_target_properties(lumvale PROPERTIES
        MACOSX_BUNDLE ON
        MACOSX_BUNDLE_INFO_PLIST ${bundle}/Info.plist
        OUTPUT_NAME ${PROJECT_NAME})
    install(TARGETS lumvale BUNDLE DESTINATION .)
endif()
