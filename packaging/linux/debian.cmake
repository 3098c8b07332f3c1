# The Debian package: cmake --build --preset release --target lumvale-deb

# The list of packages names dependencies other than linked libraries: QML modules and Qt's plugin for Wayland, which
# are required, and fonts and programs, which are recommended.
set(list ${PROJECT_SOURCE_DIR}/setup/packages)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${list})
file(STRINGS ${list} lines)
foreach(line IN LISTS lines)
    if(line MATCHES "^\\[(.*)\\]")
        set(section ${CMAKE_MATCH_1})
    elseif(section STREQUAL run AND line MATCHES "^(q(ml6|t6)-[^ ]+)")
        list(APPEND needed ${CMAKE_MATCH_1})
    elseif(section STREQUAL run AND NOT line MATCHES "^lib" AND line MATCHES "^([a-z][^ ]+)")
        list(APPEND wanted ${CMAKE_MATCH_1})
    endif()
endforeach()
list(JOIN needed ", " CPACK_DEBIAN_PACKAGE_DEPENDS)
list(JOIN wanted ", " CPACK_DEBIAN_PACKAGE_RECOMMENDS)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME lumvale)
set(CPACK_PACKAGE_CONTACT "${PROJECT_NAME} <hello@lumvale.example>")
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)

# Lines of at most 79 characters. CPack strips the last one unless it ends with a newline.
text(CPACK_PACKAGE_DESCRIPTION_SUMMARY en cleanup_subtitle)
text(message en onboard_message_welcome)
string(REPLACE " " ";" words "${message}")
set(line "")
foreach(word IN LISTS words)
    string(LENGTH "${line} ${word}" length)
    if(length GREATER 79)
        string(APPEND CPACK_DEBIAN_PACKAGE_DESCRIPTION "${line}\n")
        set(line "")
    endif()
    string(APPEND line " ${word}")
    string(STRIP "${line}" line)
endforeach()
string(APPEND CPACK_DEBIAN_PACKAGE_DESCRIPTION "${line}\n")
foreach(feature ${features})
    text(text en onboard_feature_${feature})
    string(APPEND CPACK_DEBIAN_PACKAGE_DESCRIPTION " * ${text}\n")
endforeach()

include(CPack)
# Unlike CMake's own target, this doesn't build the tests.
add_custom_target(lumvale-deb
    COMMAND ${CMAKE_CPACK_COMMAND} --config ${CMAKE_BINARY_DIR}/CPackConfig.cmake
    WORKING_DIRECTORY ${CMAKE_BINARY_DIR}
    VERBATIM
)
add_dependencies(lumvale-deb lumvale lumvale-icons)
