# Writes the files of the page as one C++ source, so that the program serves them from wherever it is started:
# cmake -D OUTPUT=FILE -D FOLDER=DIR -D "FILES=index.html;page.js" -P EmbedPage.cmake

function(typeOf file result)
    set(text_html "\\.html$")
    set(text_css "\\.css$")
    set(text_javascript "\\.js$")
    foreach(type IN ITEMS html css javascript)
        if(file MATCHES "${text_${type}}")
            set(${result} "text/${type}; charset=utf-8" PARENT_SCOPE)
            return()
        endif()
    endforeach()
    if(file MATCHES "\\.svg$")
        set(${result} "image/svg+xml" PARENT_SCOPE)
    elseif(file MATCHES "\\.png$")
        set(${result} "image/png" PARENT_SCOPE)
    else()
        message(FATAL_ERROR "${file}: no content type is known for this kind of file")
    endif()
endfunction()

set(arrays "")
set(table "")
set(number 0)
foreach(file IN LISTS FILES)
    typeOf("${file}" type)
    file(READ "${FOLDER}/${file}" digits HEX)
    if(digits STREQUAL "")
        message(FATAL_ERROR "${FOLDER}/${file} is empty")
    endif()
    string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${digits}")
    # The version of the content by which a browser asks whether its copy still holds.
    file(SHA256 "${FOLDER}/${file}" sum)
    string(SUBSTRING "${sum}" 0 16 version)
    set(path "/${file}")
    if(file STREQUAL "index.html")
        set(path "/")
    endif()
    string(APPEND arrays "constexpr unsigned char kFile${number}[] = {${bytes}};\n")
    string(APPEND table "    {\"${path}\", \"${type}\", \"\\\"${version}\\\"\", kFile${number}, sizeof kFile${number}},\n")
    math(EXPR number "${number} + 1")
endforeach()

file(WRITE "${OUTPUT}" "#include \"pagefiles.h\"

namespace server {

namespace {

${arrays}
constexpr PageFile kFiles[] = {
${table}};

}  // namespace

const PageFile* findPageFile(std::string_view path) noexcept
{
    for (const PageFile& file : kFiles) {
        if (path == file.m_pPath) {
            return &file;
        }
    }
    return nullptr;
}

}  // namespace server
")
