file(READ ${IN} hex HEX)
string(LENGTH "${hex}" hexlen)
math(EXPR size "${hexlen} / 2")
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${hex}")
string(REGEX REPLACE "((0x[0-9a-f][0-9a-f],){32})" "\\1\n" bytes "${bytes}")
file(WRITE ${OUT} "// Generated from ${IN}; do not edit.\n#include <cstddef>\n"
  "extern const unsigned char ${SYMBOL}[];\nextern const std::size_t ${SYMBOL}_size;\n"
  "const unsigned char ${SYMBOL}[] = {\n${bytes}0x00};\n"
  "const std::size_t ${SYMBOL}_size = ${size};\n")
