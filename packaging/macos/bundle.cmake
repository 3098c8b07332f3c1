# The bundle's Info.plist, its icon and the localized texts of permission dialogs. These files are created on every
# system, for the tests; the bundle only on macOS.
set(bundle ${CMAKE_CURRENT_BINARY_DIR}/macos)

# usages(OUT LANGUAGE): sets OUT to the keys and texts of the permissions that macOS asks for.
function(usages out language)
    set(lines "")
    foreach(usage
        DesktopFolder=usage_folder
        DocumentsFolder=usage_folder
        DownloadsFolder=usage_folder
        PhotoLibrary=duplicates_permission_text
        RemovableVolumes=usage_volume
    )
        string(REGEX MATCH "(.*)=(.*)" usage ${usage})
        set(key ${CMAKE_MATCH_1})
        xml_text(text ${language} ${CMAKE_MATCH_2})
        string(APPEND lines "  <key>NS${key}UsageDescription</key>\n  <string>${text}</string>\n")
    endforeach()
    set(${out} "${lines}" PARENT_SCOPE)
endfunction()

foreach(language ${LUMVALE_LANGUAGES})
    tag(tag ${language})
    usages(USAGES ${language})
    set(strings ${bundle}/${tag}.lproj/InfoPlist.strings)
    configure_file(macos/InfoPlist.strings.in ${strings} @ONLY)
    string(APPEND LOCALIZATIONS "    <string>${tag}</string>\n")
    list(APPEND localized ${strings})
    set_source_files_properties(${strings} TARGET_DIRECTORY lumvale
        PROPERTIES MACOSX_PACKAGE_LOCATION Resources/${tag}.lproj)
endforeach()
usages(USAGES fr)
configure_file(macos/Info.plist.in ${bundle}/Info.plist @ONLY)

set(icon ${bundle}/${PROJECT_NAME}.icns)
add_custom_command(OUTPUT ${icon} COMMAND lumvale-draw-icons ${icon} VERBATIM)
add_custom_target(lumvale-bundle-icon ALL DEPENDS ${icon})

if(APPLE)
    include(macos/disk_image.cmake)
endif()
