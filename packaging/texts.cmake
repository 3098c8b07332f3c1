# The program's translations, for files that other programs read. Their default language is English, whose texts
# have no language tag.
set(LUMVALE_LANGUAGES en de es fr it pt ru srCyrillic srLatin)

foreach(language ${LUMVALE_LANGUAGES})
    foreach(folder i18n i18n/additional)
        set(file ${PROJECT_SOURCE_DIR}/app/${folder}/${language}.json)
        file(READ ${file} LUMVALE_TEXTS_${folder}_${language})
        set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
    endforeach()
endforeach()

# text(OUT LANGUAGE KEY): sets OUT to a text of the table or of the additional texts. A missing key is an error.
function(text out language key)
    string(JSON value ERROR_VARIABLE missing GET "${LUMVALE_TEXTS_i18n_${language}}" ${key})
    if(missing)
        string(JSON value GET "${LUMVALE_TEXTS_i18n/additional_${language}}" ${key})
    endif()
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
