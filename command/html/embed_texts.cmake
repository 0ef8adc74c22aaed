# Writes a source that defines a text for each file. Run while the project is being built:
#
#   cmake -D "FILES=NAME=FILE;..." -D SOURCE=FILE -P embed_texts.cmake
#
# Each byte becomes a character, since compilers limit how long a text in quotes may be.
set(definitions "")
foreach(entry IN LISTS FILES)
    string(REGEX MATCH "^([^=]+)=(.*)$" entry "${entry}")
    set(name "${CMAKE_MATCH_1}")
    file(READ "${CMAKE_MATCH_2}" bytes HEX)
    # Lines of 16 bytes.
    string(REGEX REPLACE "(................................)" "\\1\n" bytes "${bytes}")
    string(REGEX REPLACE "([0-9a-f][0-9a-f])" "'\\\\x\\1'," bytes "${bytes}")
    string(APPEND definitions
        "namespace {\nconstexpr char ${name}Bytes[] = {\n${bytes}};\n}\n"
        "extern const std::string_view ${name};\n"
        "const std::string_view ${name}(${name}Bytes, sizeof ${name}Bytes);\n")
endforeach()
file(WRITE "${SOURCE}" "#include <string_view>\nnamespace zelutil::command::html {\n${definitions}}\n")
