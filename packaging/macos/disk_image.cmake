# The bundle, signed and with all libraries in it, on a disk image: cmake --workflow --preset macos

add_dependencies(lumvale lumvale-bundle-icon)
target_sources(lumvale PRIVATE ${localized} ${icon})
set_source_files_properties(${icon} TARGET_DIRECTORY lumvale
    PROPERTIES GENERATED ON MACOSX_PACKAGE_LOCATION Resources)
set_target_properties(lumvale PROPERTIES
    MACOSX_BUNDLE ON
    MACOSX_BUNDLE_INFO_PLIST ${bundle}/Info.plist
    OUTPUT_NAME ${PROJECT_NAME}
    INSTALL_RPATH_USE_LINK_PATH ON # where macdeployqt looks for the libraries
)
install(TARGETS lumvale BUNDLE DESTINATION .)

set(LUMVALE_SIGNING_IDENTITY - CACHE STRING
    "Name of the certificate that signs the bundle; - for none: only this Mac starts it without a warning")
set(signing -s ${LUMVALE_SIGNING_IDENTITY})
if(NOT LUMVALE_SIGNING_IDENTITY STREQUAL "-") # as notarization requires
    list(APPEND signing --timestamp --options runtime --entitlements ${CMAKE_CURRENT_SOURCE_DIR}/macos/entitlements.plist)
endif()
list(JOIN signing "\" \"" signing)

# Qt's function for QML programs looks for imports in the program's own sources only, not in those of its libraries.
find_program(MACDEPLOYQT macdeployqt HINTS ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_BINS})
install(CODE "
    set(bundle \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${PROJECT_NAME}.app\")
    execute_process(COMMAND \"${MACDEPLOYQT}\" \"\${bundle}\" \"-qmldir=${PROJECT_SOURCE_DIR}/ui\"
        COMMAND_ERROR_IS_FATAL ANY)
    execute_process(COMMAND codesign --force --deep \"${signing}\" \"\${bundle}\" COMMAND_ERROR_IS_FATAL ANY)
")

set(CPACK_GENERATOR DragNDrop)
set(CPACK_PACKAGE_FILE_NAME ${PROJECT_NAME}-${PROJECT_VERSION})
set(CPACK_DMG_VOLUME_NAME ${PROJECT_NAME})
set(CPACK_VERBATIM_VARIABLES ON)
include(CPack)
# Unlike CMake's own target, this doesn't build the tests.
add_custom_target(lumvale-dmg
    COMMAND ${CMAKE_CPACK_COMMAND} --config ${CMAKE_BINARY_DIR}/CPackConfig.cmake
    WORKING_DIRECTORY ${CMAKE_BINARY_DIR}
    VERBATIM
)
add_dependencies(lumvale-dmg lumvale)
