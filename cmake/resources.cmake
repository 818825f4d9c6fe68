# The program's own resources, one script for both systems. For Windows the compiled script is
# linked into each program. For Linux it is linked into a resource-only PE image which is embedded
# whole, so that the reader for modules serves it too.

set(resource_inputs)
file(GLOB resource_inputs CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/resources/*)

function(compile_script script windres out)
    get_filename_component(folder ${CMAKE_SOURCE_DIR}/${script} DIRECTORY)
    add_custom_command(OUTPUT ${out}
        COMMAND ${windres} -c 1252 -I ${CMAKE_SOURCE_DIR} -I ${folder}
            ${CMAKE_SOURCE_DIR}/${script} -O coff -o ${out}
        DEPENDS ${CMAKE_SOURCE_DIR}/${script} ${resource_inputs}
        VERBATIM)
endfunction()

# embed_resources(TARGET SCRIPT): makes the script's resources those of every program that links
# TARGET.
function(embed_resources target script)
    get_filename_component(name ${script} NAME_WE)
    set(object ${CMAKE_BINARY_DIR}/${name}_resources.obj)
    if(WIN32)
        compile_script(${script} ${CMAKE_RC_COMPILER} ${object})
        add_custom_target(${name}_resources DEPENDS ${object})
        return()
    endif()
    find_program(I686_WINDRES i686-w64-mingw32-windres REQUIRED)
    find_program(I686_LD i686-w64-mingw32-ld REQUIRED)
    compile_script(${script} ${I686_WINDRES} ${object})
    set(image ${CMAKE_BINARY_DIR}/${name}_resources.dll)
    add_custom_command(OUTPUT ${image}
        COMMAND ${I686_LD} --dll --entry 0 -s -o ${image} ${object}
        DEPENDS ${object} VERBATIM)
    set(assembly ${CMAKE_BINARY_DIR}/${name}_resources.cpp)
    file(CONFIGURE OUTPUT ${assembly} CONTENT [[
/* The program's resources, a PE image, and its length in bytes. */
__asm__(".section .rodata\n"
        ".balign 16\n"
        ".global QuillmoorResources\n"
        ".global QuillmoorResourcesEnd\n"
        "QuillmoorResources:\n"
        ".incbin \"@image@\"\n"
        "QuillmoorResourcesEnd:\n"
        ".byte 0\n"
        ".previous\n");
]] @ONLY)
    set_source_files_properties(${assembly} PROPERTIES OBJECT_DEPENDS ${image})
    target_sources(${target} PRIVATE ${assembly})
endfunction()

# add_program_resources(PROGRAM): links the program's resources in on Windows; on Linux core
# carries them.
function(add_program_resources program)
    if(WIN32)
        target_sources(${program} PRIVATE ${CMAKE_BINARY_DIR}/quillmoor_resources.obj)
        set_source_files_properties(${CMAKE_BINARY_DIR}/quillmoor_resources.obj PROPERTIES
            EXTERNAL_OBJECT ON GENERATED ON)
        add_dependencies(${program} quillmoor_resources)
    endif()
endfunction()
