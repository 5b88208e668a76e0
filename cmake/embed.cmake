# embed(TARGET SYMBOL ROOT folder FILES names...)
#
# Puts files into the program as one object section, so that an edit costs an assembly of a second
# and no compilation. C++ sees them through base/embedded.h: the table SYMBOL holds one entry a file,
# named by its path relative to ROOT, ended by an entry whose name is null.
function(embed target symbol)
    cmake_parse_arguments(PARSE_ARGV 2 EMBED "" "ROOT" "FILES")
    set(data "")
    set(table "")
    set(depends "")
    set(index 0)
    foreach(name IN LISTS EMBED_FILES)
        set(path ${EMBED_ROOT}/${name})
        file(SIZE ${path} unused)
        string(APPEND data
            "${symbol}_name_${index}: .asciz \"${name}\"\n"
            "${symbol}_data_${index}: .incbin \"${path}\"\n"
            "${symbol}_end_${index}: .byte 0\n")
        string(APPEND table
            "    .quad ${symbol}_name_${index}, ${symbol}_data_${index}, "
            "${symbol}_end_${index} - ${symbol}_data_${index}\n")
        list(APPEND depends ${path})
        math(EXPR index "${index} + 1")
    endforeach()
    set(source ${CMAKE_CURRENT_BINARY_DIR}/${symbol}.S)
    file(CONFIGURE OUTPUT ${source} @ONLY CONTENT
"#ifdef __ELF__
    .section .rodata.embedded, \"a\"
#else
    .section .rdata, \"dr\"
#endif
${data}
#ifdef __ELF__
    .section .data.rel.ro.embedded, \"aw\"
#endif
    .balign 8
    .globl ${symbol}
${symbol}:
${table}    .quad 0, 0, 0
#ifdef __ELF__
    .section .note.GNU-stack, \"\", @progbits
#endif
")
    set_source_files_properties(${source} PROPERTIES OBJECT_DEPENDS "${depends}")
    target_sources(${target} PRIVATE ${source})
endfunction()
