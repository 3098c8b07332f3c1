# Creates and installs the menu entry, the AppStream metadata, the manual page and the icons.
include(GNUInstallDirs)

# localized_elements(OUT ELEMENT INDENTATION KEY): sets OUT to XML elements with the text in every language.
function(localized_elements out element indentation key)
    set(lines "")
    foreach(language ${LUMVALE_LANGUAGES})
        xml_text(text ${language} ${key})
        tag(tag ${language})
        string(APPEND lines "${indentation}<${element} xml:lang=\"${tag}\">${text}</${element}>\n")
    endforeach()
    string(REPLACE " xml:lang=\"en\"" "" lines "${lines}")
    set(${out} "${lines}" PARENT_SCOPE)
endfunction()

localized_elements(SUMMARIES summary "  " cleanup_subtitle)
localized_elements(MESSAGES p "    " onboard_message_welcome)
set(features cleanup uninstall startup duplicates)
foreach(feature ${features})
    localized_elements(lines li "      " onboard_feature_${feature})
    string(APPEND FEATURES "${lines}")
endforeach()
set(metainfo ${CMAKE_CURRENT_BINARY_DIR}/${LUMVALE_IDENTIFIER}.metainfo.xml)
configure_file(linux/lumvale.metainfo.xml.in ${metainfo} @ONLY)

foreach(language ${LUMVALE_LANGUAGES})
    text(text ${language} cleanup_subtitle)
    string(REPLACE "\\" "\\\\" text "${text}")
    tag(tag ${language})
    string(REPLACE -Latn @latin tag ${tag}) # as the C library names scripts
    string(APPEND COMMENTS "Comment[${tag}]=${text}\n")
endforeach()
string(REPLACE "[en]" "" COMMENTS "${COMMENTS}")
set(desktop ${CMAKE_CURRENT_BINARY_DIR}/${LUMVALE_IDENTIFIER}.desktop)
configure_file(linux/lumvale.desktop.in ${desktop} @ONLY)

# All libraries are the system's, found without an RPATH.
set_target_properties(lumvale PROPERTIES INSTALL_RPATH "")
install(TARGETS lumvale DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${desktop} DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${metainfo} DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES linux/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/lumvale)

# install_compressed(FILE DESTINATION): installs a text compressed, without the time in it.
function(install_compressed file destination)
    cmake_path(GET file FILENAME name)
    set(compressed ${CMAKE_CURRENT_BINARY_DIR}/${name}.gz)
    execute_process(COMMAND gzip -9nc ${file} OUTPUT_FILE ${compressed} COMMAND_ERROR_IS_FATAL ANY)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
    install(FILES ${compressed} DESTINATION ${destination})
endfunction()

configure_file(linux/lumvale.1.in ${CMAKE_CURRENT_BINARY_DIR}/lumvale.1 @ONLY)
install_compressed(${CMAKE_CURRENT_BINARY_DIR}/lumvale.1 ${CMAKE_INSTALL_MANDIR}/man1)
install_compressed(${CMAKE_CURRENT_SOURCE_DIR}/linux/changelog ${CMAKE_INSTALL_DATADIR}/doc/lumvale)

set(themed ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
drawn_icons(pictures 16 22 24 32 48 64 128 256 512)
foreach(picture ${pictures})
    cmake_path(GET picture STEM side)
    install(FILES ${picture} DESTINATION ${themed}/${side}x${side}/apps RENAME ${LUMVALE_IDENTIFIER}.png)
endforeach()
install(FILES ${PROJECT_SOURCE_DIR}/ui/icon/lumvale.svg
    DESTINATION ${themed}/scalable/apps RENAME ${LUMVALE_IDENTIFIER}.svg)
install(FILES ${PROJECT_SOURCE_DIR}/ui/icon/lumvale-symbolic.svg
    DESTINATION ${themed}/symbolic/apps RENAME ${LUMVALE_IDENTIFIER}-symbolic.svg)
