# Writes a C++ file that holds the bytes of another file:
#   cmake -DINPUT=file -DOUTPUT=file.cpp -DHEADER=declaring.h -DNAME=symbol -P EmbedFile.cmake
# The symbols are NAME, the bytes, and NAMESize, their number, in namespace vellumtide.
file(READ ${INPUT} bytes HEX)
string(LENGTH "${bytes}" digits)
math(EXPR size "${digits} / 2")
string(REGEX REPLACE "(..)" "0x\\1," bytes "${bytes}")
# 20 bytes, each "0x..,", a line.
string(REPEAT "....." 20 line)
string(REGEX REPLACE "(${line})" "\\1\n    " bytes "${bytes}")
file(WRITE ${OUTPUT} "#include \"${HEADER}\"\n\nnamespace vellumtide {\n\n"
     "const unsigned char ${NAME}[] = {\n    ${bytes}};\n"
     "const std::size_t ${NAME}Size = ${size};\n\n}  // namespace vellumtide\n")
