# Compiles a data file into the program as a byte array.
# arden_embed_resource(<target> <file> <symbol>) adds a generated source that defines
#   extern const unsigned char <symbol>[]; extern const std::size_t <symbol>_size;
# The bytes are kept exactly as in the file (no newline or encoding conversion).
function(arden_embed_resource target file symbol)
  set(out ${CMAKE_CURRENT_BINARY_DIR}/${symbol}.cpp)
  add_custom_command(
    OUTPUT ${out}
    COMMAND ${CMAKE_COMMAND} -DIN=${file} -DOUT=${out} -DSYMBOL=${symbol}
            -P ${CMAKE_SOURCE_DIR}/cmake/EmbedResourceScript.cmake
    DEPENDS ${file} ${CMAKE_SOURCE_DIR}/cmake/EmbedResourceScript.cmake
    COMMENT "Embedding ${file}")
  target_sources(${target} PRIVATE ${out})
endfunction()
