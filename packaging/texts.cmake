# The program's translations, for files that other programs read. Their default language is English, whose texts
# have no language tag.
set(LUMVALE_LANGUAGES en de es fr it pt ru srCyrillic srLatin)

foreach(language ${LUMVALE_LANGUAGES})
    set(file ${PROJECT_SOURCE_DIR}/app/i18n/${language}.json)
    file(READ ${file} LUMVALE_TABLE_${language})
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
endforeach()

# text(OUT LANGUAGE KEY): sets OUT to a text. A missing key is an error.
function(text out language key)
    string(JSON value GET "${LUMVALE_TABLE_${language}}" ${key})
    set(${out} "${value}" PARENT_SCOPE)
endfunction()

# xml_text(OUT LANGUAGE KEY): sets OUT to a text, escaped as the content of an XML element.
function(xml_text out language key)
    text(value ${language} ${key})
    string(REPLACE "&" "&amp;" value "${value}")
    string(REPLACE "<" "&lt;" value "${value}")
    set(${out} "${value}" PARENT_SCOPE)
endfunction()

# tag(OUT LANGUAGE): sets OUT to the language's tag by RFC 5646, such as sr-Latn.
function(tag out language)
    string(REPLACE srCyrillic sr tag ${language})
    string(REPLACE srLatin sr-Latn tag ${tag})
    set(${out} ${tag} PARENT_SCOPE)
endfunction()
